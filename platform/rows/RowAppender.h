#pragma once

#include "platform/rows/Recordset.h"

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
  void SetText(std::size_t column, std::string_view text) { rows_->SetText(column, row_, text); }
  // The text of the row before once more; there must be such a row, with a text in this column.
  void RepeatText(std::size_t column) {
    rows_->SetCell(column, row_, rows_->Cell<TextStore::Id>(column, row_ - 1));
  }
  void SetInteger(std::size_t column, std::int32_t number) { rows_->SetInteger(column, row_, number); }
  void SetDouble(std::size_t column, double number) { rows_->SetDouble(column, row_, number); }
  void SetCurrency(std::size_t column, Currency amount) { rows_->SetCurrency(column, row_, amount); }
  void SetDate(std::size_t column, Date date) { rows_->SetDate(column, row_, date); }
  void SetBoolean(std::size_t column, bool flag) { rows_->SetBoolean(column, row_, flag); }
  void SetNull(std::size_t column) { rows_->SetNull(column, row_); }
  void SetValue(std::size_t column, const Variant& value) { rows_->SetValue(column, row_, value); }

  void CommitRow() {
    rows_->AppendTail();
    ++row_;
  }

 private:
  std::shared_ptr<RowStore> rows_;
  std::size_t row_;
};

}  // namespace platform
