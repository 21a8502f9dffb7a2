#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "books/database/Statement.h"
#include "platform/rows/Recordset.h"

namespace books::services {

// How a book keeps the value of a column, and with it the type of the field that callers see: a quantity
// becomes a double, an amount a currency.
enum class Kept { kText, kInteger, kReal, kQuantity, kAmount, kDate, kBoolean };

struct RowField {
  std::string_view name;
  Kept kept = Kept::kText;
  std::size_t width = 0;  // of a text, 0 for any
};

platform::FieldType TypeOf(Kept kept);

// An empty recordset with these fields, open.
platform::Ref<platform::Recordset> NewRows(std::span<const RowField> fields);

// Runs the statement to its end. Its columns are the fields, in order; a null stays null.
platform::Ref<platform::Recordset> ReadRows(database::Statement& statement, std::span<const RowField> fields);

// Binds all values in order.
void BindAll(database::Statement& statement, std::span<const platform::Variant> values);

}  // namespace books::services
