// Access to the fields of a recordset: by cursor, by row number, and late bound.
#include <algorithm>

#include "platform/rows/Recordset.h"
#include "platform/rows/RowReader.h"
#include "platform/value/Convert.h"

namespace platform {
namespace {

[[noreturn]] void Raise(ErrorNumber number, const std::string& description) {
  throw Error(number, "Recordset", description);
}

[[noreturn]] void RaiseNoColumn(const std::string& column) {
  Raise(ErrorNumber::kUnknownField, "the recordset has no field number " + column);
}

}  // namespace

void Recordset::RequireColumn(std::size_t column) const {
  if (column >= rows_->Fields().size()) RaiseNoColumn(std::to_string(column));
}

void Recordset::RaiseNoCell(std::size_t column, std::size_t row) const {
  RequireOpen();
  RequireColumn(column);
  Raise(ErrorNumber::kNoCurrentRow, "no current row: there is no row number " + std::to_string(row));
}

RowStore::Place Recordset::PlaceToWrite(std::size_t column) {
  RequireOpen();
  RequireColumn(column);
  if (adding_) return rows_->At(rows_->RowCount());
  const std::size_t row = CurrentRow();
  const RowStore::Place at = rows_->At(row);
  const bool kept = std::ranges::any_of(
      oldCells_, [&](const OldCell& old) { return old.column == column && old.row == row; });
  if (!kept) oldCells_.push_back({.column = column, .row = row, .value = rows_->Value(column, at)});
  return at;
}

Variant Recordset::Value(std::size_t column) const {
  RequireOpen();
  RequireColumn(column);
  return rows_->Value(column, rows_->At(adding_ ? rows_->RowCount() : CurrentRow()));
}

void Recordset::SetValue(std::size_t column, const Variant& value) {
  rows_->SetValue(column, PlaceToWrite(column), value);
}

bool Recordset::IsNullAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return rows_->IsNull(column, rows_->At(row));
}

Variant Recordset::ValueAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return rows_->Value(column, rows_->At(row));
}

std::string_view Recordset::TextAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Text(column);
}

std::int32_t Recordset::IntegerAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Integer(column);
}

double Recordset::DoubleAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Double(column);
}

Currency Recordset::CurrencyAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Amount(column);
}

Date Recordset::DateAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Day(column);
}

bool Recordset::BooleanAt(std::size_t column, std::size_t row) const {
  RequireCell(column, row);
  return RowReader(*rows_, row).Boolean(column);
}

std::size_t Recordset::ColumnOf(const Variant& field) const {
  if (const auto* name = field.As<std::string>()) return FieldIndex(*name);
  const std::int32_t index = ToInt32(field);
  if (index < 0 || index >= FieldCount()) RaiseNoColumn(std::to_string(index));
  return static_cast<std::size_t>(index);
}

void Recordset::AppendFieldByName(const std::string& name, const std::string& type,
                                  const std::optional<std::int32_t>& size) {
  const std::optional<FieldType> known = FieldTypeFromText(type);
  if (!known) Raise(ErrorNumber::kBadArgument, "field " + name + ": there is no type '" + type + "'");
  const std::int32_t width = size.value_or(0);
  if (width < 0) Raise(ErrorNumber::kBadArgument, "field " + name + ": a size cannot be negative");
  AppendField(name, *known, static_cast<std::size_t>(width));
}

Variant Recordset::FieldValue(const Variant& field) const { return Value(ColumnOf(field)); }

void Recordset::SetFieldValue(const Variant& field, const Variant& value) {
  SetValue(ColumnOf(field), value);
}

std::string Recordset::FieldName(const Variant& field) const { return Fields()[ColumnOf(field)].name; }

std::string Recordset::FieldTypeName(const Variant& field) const {
  return std::string(ToString(Fields()[ColumnOf(field)].type));
}

std::int32_t Recordset::FieldSize(const Variant& field) const {
  return static_cast<std::int32_t>(Fields()[ColumnOf(field)].width);
}

}  // namespace platform
