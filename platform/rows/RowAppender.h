#pragma once

#include "platform/rows/Recordset.h"
#include "platform/rows/RowStretches.h"

namespace platform {

// Adds many rows to an open recordset: the quickest way to fill one. Set fields in any order, then CommitRow;
// a field that was not set is null. The cursor stays where it is (in a recordset without rows it comes to
// stand on the first). While an appender lives, nobody else adds rows to the recordset or its clones; a row
// that was begun and not committed is dropped with it. Values that do not fit raise as Recordset's do.
class RowAppender {
 public:
  explicit RowAppender(Recordset& recordset);
  ~RowAppender();
  RowAppender(const RowAppender&) = delete;
  RowAppender& operator=(const RowAppender&) = delete;

  // Columns are those of Recordset::FieldIndex; one that the recordset does not have is the caller's fault.
  void SetText(std::size_t column, std::string_view text) { rows_->SetText(column, at_, text); }
  void SetInteger(std::size_t column, std::int32_t number) { rows_->SetInteger(column, at_, number); }
  void SetDouble(std::size_t column, double number) { rows_->SetDouble(column, at_, number); }
  void SetCurrency(std::size_t column, Currency amount) { rows_->SetCurrency(column, at_, amount); }
  void SetDate(std::size_t column, Date date) { rows_->SetDate(column, at_, date); }
  void SetBoolean(std::size_t column, bool flag) { rows_->SetBoolean(column, at_, flag); }
  void SetNull(std::size_t column) { rows_->SetNull(column, at_); }
  void SetValue(std::size_t column, const Variant& value) { rows_->SetValue(column, at_, value); }
  // One text in all rows from number `firstRow` to the one that was committed last. Quicker than to set it in
  // each of them.
  void FillText(std::size_t column, std::size_t firstRow, std::string_view text) {
    rows_->FillText(column, firstRow, row_, text);
  }

  // Many rows at once, before anything is set of the row in the making: `count` rows of nulls, whose first
  // one's number is given, and then column by column: `value(i)` is that of the i-th of them, an int16_t,
  // int32_t, double, Currency, Date or RowText. Quicker than row by row.
  std::size_t AddRows(std::size_t count) {
    const std::size_t first = row_;
    for (; row_ < first + count; ++row_) rows_->AppendTail();
    at_ = rows_->At(row_);
    return first;
  }
  template <class Value>
  void Fill(std::size_t column, std::size_t firstRow, std::size_t count, Value value) {
    rows_->Fill(column, firstRow, count, value);
  }

  void CommitRow() {
    rows_->AppendTail();
    at_ = rows_->At(++row_);
  }
  // The number of the row that is in the making.
  std::size_t Row() const { return row_; }

 private:
  std::shared_ptr<RowStore> rows_;
  std::size_t row_;
  RowStore::Place at_;
};

}  // namespace platform
