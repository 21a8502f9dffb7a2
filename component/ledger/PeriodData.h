#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/ledger/LedgerFigures.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/RowReader.h"
#include "platform/value/Convert.h"

// What the data component answers for one period, as values. A null figure counts as 0, a null text is empty;
// a field that is missing raises only where there is a row to read.
namespace component {

// One recordset of the answer. Its columns are looked up once and then found again in every further recordset
// of the same layout, at once in one that shows other rows of the same table. Fields are those of the row
// that GoTo chose last; texts stay good until the next row is read or the recordset goes.
class LedgerSource {
 public:
  // Names by their place; read by the places.
  explicit LedgerSource(std::span<const std::string_view> fields)
      : fields_(fields), columns_(fields.size()), texts_(fields.size()) {}

  void Take(const platform::Ref<platform::Recordset>& rows);
  std::size_t Count() const { return count_; }
  // The rows as the data component made them, for a caller that filters or merges them.
  const platform::Ref<platform::Recordset>& Rows() const { return rows_; }

  void GoTo(std::size_t position) { row_ = platform::RowReader(*rows_, rows_->RowAt(position)); }
  std::string_view Text(std::size_t field) {
    const Column& column = columns_[field];
    return column.isText ? row_.Text(column.index) : TextOf(field);
  }
  std::int32_t Integer(std::size_t field) const {
    const Column& column = columns_[field];
    return column.isText ? platform::ToInt32(ValueOf(field)) : row_.Integer(column.index);
  }
  double Double(std::size_t field) const {
    const Column& column = columns_[field];
    return column.isText ? platform::ToDouble(ValueOf(field)) : row_.Double(column.index);
  }
  platform::Currency Amount(std::size_t field) const {
    const Column& column = columns_[field];
    return column.isText ? platform::ToCurrency(ValueOf(field)) : row_.Amount(column.index);
  }
  platform::Date Day(std::size_t field) const {
    const Column& column = columns_[field];
    return column.isDate ? row_.Day(column.index) : platform::ToDate(ValueOf(field));
  }

 private:
  struct Column {
    std::size_t index = 0;
    bool isText = false;
    bool isDate = false;
  };

  bool Fits() const;
  void FindColumns();
  // For a field of another type than the one it is read as; Empty for a null.
  platform::Variant ValueOf(std::size_t field) const;
  std::string_view TextOf(std::size_t field);

  std::span<const std::string_view> fields_;
  std::vector<Column> columns_;
  std::vector<std::string> texts_;  // of columns that are no texts
  platform::Ref<platform::Recordset> rows_;
  platform::RowReader row_;
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

// What a call answered: an object that is indexed by a text key, "rsBegBal" and the like. It lives as long as
// the answer.
class KeyedAnswer {
 public:
  // Raises for an answer that is no object.
  explicit KeyedAnswer(const platform::Variant& answer)
      : keyed_(answer.AsObject()), dictionary_(dynamic_cast<const platform::Dictionary*>(&keyed_)) {}

  platform::Variant Value(std::string_view key) const {
    return dictionary_ != nullptr ? dictionary_->Value(key) : keyed_.Get("Item", std::string(key));
  }
  // The same as rows; anything else raises, and the text names the key.
  platform::Ref<platform::Recordset> Rows(std::string_view key) const;

 private:
  platform::Object& keyed_;
  const platform::Dictionary* dictionary_;
};

}  // namespace component
