#pragma once

#include "platform/rows/Recordset.h"

namespace platform {

// Reads the fields of a row, row by row: the quickest way to go over many. Rows are named by their numbers,
// as Recordset::RowAt gives them; values read and errors raise as with Recordset's readers. The recordset
// must outlive the reader and keep the row.
class RowReader {
 public:
  RowReader() = default;
  // Raises kObjectClosed, or kNoCurrentRow for a row that is not there.
  RowReader(const Recordset& recordset, std::size_t row) : rows_(recordset.rows_.get()) {
    recordset.RequireRow(row);
    at_ = rows_->At(row);
  }

  // Columns are those of Recordset::FieldIndex; one that the recordset does not have is the caller's fault.
  bool IsNull(std::size_t column) const { return rows_->IsNull(column, at_); }
  Variant Value(std::size_t column) const { return rows_->Value(column, at_); }
  std::string_view Text(std::size_t column) const {
    if (!IsTextType(rows_->Type(column))) RaiseWrongType(column, "text");
    return rows_->Text(column, at_);
  }
  // The same by its id, for rows that share the texts; it holds as long as they are kept.
  RowText KeptText(std::size_t column) const {
    if (!IsTextType(rows_->Type(column))) RaiseWrongType(column, "text");
    TextStore::Id id = rows_->EmptyId(column);
    rows_->Read(column, at_, id);
    return RowText(*rows_->Texts(), id);
  }
  std::int32_t Integer(std::size_t column) const {
    const FieldType type = rows_->Type(column);
    if (type == FieldType::kInt32) return rows_->Cell<std::int32_t>(column, at_);
    if (type == FieldType::kInt16) return rows_->Cell<std::int16_t>(column, at_);
    return ToInteger(column);
  }
  double Double(std::size_t column) const {
    const FieldType type = rows_->Type(column);
    if (type == FieldType::kDouble || type == FieldType::kNumeric) return rows_->Cell<double>(column, at_);
    if (type == FieldType::kCurrency) return rows_->Cell<Currency>(column, at_).ToDouble();
    return ToDouble(column);
  }
  Currency Amount(std::size_t column) const {
    if (rows_->Type(column) == FieldType::kCurrency) return rows_->Cell<Currency>(column, at_);
    return ToAmount(column);
  }
  Date Day(std::size_t column) const {
    if (rows_->Type(column) != FieldType::kDate) RaiseWrongType(column, "a date");
    return rows_->Cell<Date>(column, at_);
  }
  bool Boolean(std::size_t column) const {
    if (rows_->Type(column) != FieldType::kBoolean) RaiseWrongType(column, "a boolean");
    return rows_->Cell<bool>(column, at_);
  }

 private:
  friend class Recordset;

  // Of a row that is known to be there.
  RowReader(const RowStore& rows, std::size_t row) : rows_(&rows), at_(rows.At(row)) {}

  // Of a column of another type of number.
  std::int32_t ToInteger(std::size_t column) const;
  double ToDouble(std::size_t column) const;
  Currency ToAmount(std::size_t column) const;
  Variant NumberAt(std::size_t column, std::string_view wanted) const;
  [[noreturn]] void RaiseWrongType(std::size_t column, std::string_view wanted) const;

  const RowStore* rows_ = nullptr;
  RowStore::Place at_;
};

}  // namespace platform
