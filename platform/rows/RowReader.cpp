#include "platform/rows/RowReader.h"

#include "platform/value/Convert.h"

namespace platform {

void RowReader::RaiseWrongType(std::size_t column, std::string_view wanted) const {
  const Field& field = rows_->Fields()[column];
  throw Error(ErrorNumber::kTypeMismatch, "Recordset",
              "field " + field.name + " (" + std::string(ToString(field.type)) + ") cannot be read as " +
                  std::string(wanted));
}

Variant RowReader::NumberAt(std::size_t column, std::string_view wanted) const {
  const FieldType type = rows_->Type(column);
  if (IsTextType(type) || type >= FieldType::kDate) RaiseWrongType(column, wanted);
  Variant value = rows_->Value(column, at_);
  return value.IsNull() ? Variant(0) : value;
}

std::int32_t RowReader::ToInteger(std::size_t column) const {
  return ToInt32(NumberAt(column, "an integer"));
}

double RowReader::ToDouble(std::size_t column) const {
  return platform::ToDouble(NumberAt(column, "a double"));
}

Currency RowReader::ToAmount(std::size_t column) const { return ToCurrency(NumberAt(column, "an amount")); }

}  // namespace platform
