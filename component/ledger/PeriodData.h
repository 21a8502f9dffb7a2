#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/ledger/LedgerFigures.h"
#include "platform/rows/Recordset.h"

// What the data component answers for one period, as values. A null figure counts as 0, a null text is empty;
// a field that is missing raises only where there is a row to read.
namespace component {

// One recordset of the answer. Its columns are looked up once and then found again in every further recordset
// of the same layout, at once in one that shows other rows of the same table. Fields are read by row number,
// which RowAt gives for a position; texts stay good until the next row is read or the recordset goes.
class LedgerSource {
 public:
  // Names by their place; read by the places.
  explicit LedgerSource(std::span<const std::string_view> fields)
      : fields_(fields), columns_(fields.size()), texts_(fields.size()) {}

  void Take(const platform::Ref<platform::Recordset>& rows);
  std::size_t Count() const { return count_; }
  // The rows as the data component made them, for a caller that filters or merges them.
  const platform::Ref<platform::Recordset>& Rows() const { return rows_; }

  std::size_t RowAt(std::size_t position) const { return rows_->RowAt(position); }
  std::string_view Text(std::size_t field, std::size_t row);
  std::int32_t Integer(std::size_t field, std::size_t row) const;
  double Double(std::size_t field, std::size_t row) const;
  platform::Currency Amount(std::size_t field, std::size_t row) const;
  platform::Date Day(std::size_t field, std::size_t row) const;

 private:
  struct Column {
    std::size_t index = 0;
    bool isText = false;
  };

  bool Fits() const;
  void FindColumns();
  platform::Variant ValueOf(std::size_t field, std::size_t row) const;

  std::span<const std::string_view> fields_;
  std::vector<Column> columns_;
  std::vector<std::string> texts_;  // of columns that are no texts
  platform::Ref<platform::Recordset> rows_;
  std::size_t count_ = 0;
  bool knowsColumns_ = false;  // those of `rows_`
};

struct LedgerBalance {
  std::string_view batchNo;
  LedgerFigures figures;  // priced
};

struct LedgerMovement {
  std::int32_t id = 0;
  std::int32_t entryId = 0;
  platform::Date date;
  std::string_view voucherNo;
  std::string_view batchNo;
  std::string_view note;
  std::string_view tranTypeName;
  std::string_view auxName;
  std::string_view billNo;
  std::int32_t tranType = 0;
  LedgerFigures in;
  LedgerFigures out;
};

// The answer to one call. Kept between calls, so that the layout of its recordsets is known.
class PeriodData {
 public:
  PeriodData();

  // Takes what the call answered: an object that is indexed by a text key.
  void Take(const platform::Variant& answer);

  std::int32_t RowCount() const {
    return static_cast<std::int32_t>(opening.Count() + happened.Count() + closing.Count());
  }
  LedgerBalance Opening(std::size_t position) { return Balance(opening, position); }
  LedgerBalance Closing(std::size_t position) { return Balance(closing, position); }
  // `withDiff` reads the cost differences too, which only the builders for all items have.
  LedgerMovement Movement(std::size_t position, bool withDiff);

  LedgerSource opening;
  LedgerSource happened;
  LedgerSource differences;  // the movements' cost differences
  LedgerSource closing;
  platform::Date firstDay;
  platform::Date lastDay;  // the day that summary rows are dated

 private:
  static LedgerBalance Balance(LedgerSource& source, std::size_t position);
};

// An entry of the keyed answer; "rsBegBal" and the like.
platform::Variant KeyedValue(const platform::Variant& answer, const std::string& key);
// The same as rows; anything else raises, and the text names the key.
platform::Ref<platform::Recordset> KeyedRows(const platform::Variant& answer, const std::string& key);

}  // namespace component
