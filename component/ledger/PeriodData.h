#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/ledger/LedgerRow.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/RowReader.h"
#include "platform/value/Convert.h"

// What the data component answers for one period, as values. A null figure counts as 0, a null text is empty;
// a field that is missing raises only where there is a row to read.
namespace component {

// One recordset of the answer, read row by row. Its columns are looked up once and then found again in every
// further recordset of the same layout, at once in one that shows other rows of the same table. Texts stay
// good until the next Take, while the recordset lives.
class LedgerSource {
 public:
  // Names by their place; read by the places.
  explicit LedgerSource(std::span<const std::string_view> fields)
      : fields_(fields), columns_(fields.size()) {}

  void Take(const platform::Ref<platform::Recordset>& rows);
  // How often it has taken rows: tells readers whether they know the present ones.
  std::size_t Takes() const { return takes_; }
  std::size_t Count() const { return count_; }
  const platform::Ref<platform::Recordset>& Rows() const { return rows_; }
  // Every text that was read is kept there.
  bool KeepsTextsIn(const platform::TextStore& texts) const {
    return rows_->Texts().get() == &texts && converted_.empty();
  }

  // visit(i, row) for the i-th row, whose fields those below read.
  template <class Visit>
  void EachRow(Visit visit) const {
    for (std::size_t i = 0; i < count_; ++i) visit(i, platform::RowReader(*rows_, rows_->RowAt(i)));
  }
  platform::RowText Text(std::size_t field, const platform::RowReader& row) {
    const Column column = columns_[field];
    return column.isText ? row.KeptText(column.index) : Converted(column, row);
  }
  std::int32_t Integer(std::size_t field, const platform::RowReader& row) const {
    const Column column = columns_[field];
    return column.isText ? platform::ToInt32(ValueOf(column, row)) : row.Integer(column.index);
  }
  double Double(std::size_t field, const platform::RowReader& row) const {
    const Column column = columns_[field];
    return column.isText ? platform::ToDouble(ValueOf(column, row)) : row.Double(column.index);
  }
  platform::Currency Amount(std::size_t field, const platform::RowReader& row) const {
    const Column column = columns_[field];
    return column.isText ? platform::ToCurrency(ValueOf(column, row)) : row.Amount(column.index);
  }
  platform::Date Day(std::size_t field, const platform::RowReader& row) const {
    const Column column = columns_[field];
    return column.isDate ? row.Day(column.index) : platform::ToDate(ValueOf(column, row));
  }

 private:
  struct Column {
    std::uint32_t index = 0;
    bool isText = false;
    bool isDate = false;
  };

  bool Fits() const;
  void FindColumns();
  // For a field of another type than the one it is read as; Empty for a null.
  static platform::Variant ValueOf(Column column, const platform::RowReader& row);
  platform::RowText Converted(Column column, const platform::RowReader& row);

  std::span<const std::string_view> fields_;
  std::vector<Column> columns_;
  std::deque<std::string> converted_;  // texts of columns that are no texts
  platform::Ref<platform::Recordset> rows_;
  std::size_t count_ = 0;
  std::size_t takes_ = 0;
  bool knowsColumns_ = false;  // those of `rows_`
};

struct LedgerBalance {
  platform::RowText batchNo;
  LedgerFigures figures;  // priced
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
  // Every text of the answer that was read is kept there, and stays when the answer goes.
  bool KeepsTextsIn(const platform::TextStore& texts) const {
    return opening.KeepsTextsIn(texts) && happened.KeepsTextsIn(texts) && closing.KeepsTextsIn(texts);
  }
  const LedgerBalance& Opening(std::size_t position) { return Balance(opening, openings_, position); }
  const LedgerBalance& Closing(std::size_t position) { return Balance(closing, closings_, position); }
  // What the data component tells of a movement; the rest of the row is empty, for the caller to fill.
  // `withDiff` reads the cost differences too, which only the builders for all items have.
  LedgerRow& Movement(std::size_t position, bool withDiff);

  LedgerSource opening;
  LedgerSource happened;
  LedgerSource differences;  // the movements' cost differences
  LedgerSource closing;
  platform::Date firstDay;
  platform::Date lastDay;  // the day that summary rows are dated

 private:
  // What was read of a source, and the Take that it was read from.
  template <class Row>
  struct Known {
    std::vector<Row> rows;
    std::size_t take = 0;
  };

  static const LedgerBalance& Balance(LedgerSource& source, Known<LedgerBalance>& known,
                                      std::size_t position);
  void ReadMovements(bool withDiff);

  Known<LedgerBalance> openings_;
  Known<LedgerRow> movements_;
  Known<LedgerBalance> closings_;
};

// What a call answered: an object that is indexed by a text key, "rsBegBal" and the like. It lives as long as
// the answer.
class KeyedAnswer {
 public:
  // Raises for an answer that is no object.
  explicit KeyedAnswer(const platform::Variant& answer)
      : keyed_(answer.AsObject()), dictionary_(platform::ObjectAs<platform::Dictionary>(&keyed_)) {}

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
