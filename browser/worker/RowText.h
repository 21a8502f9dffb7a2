#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/rows/Recordset.h"

namespace browser {

// The type of a field in the words of the protocol.
std::string_view CellType(platform::FieldType type);
// Appends a cell as JSON, straight from the store: money from its scaled integer as exact text.
void AppendCell(std::string& out, const platform::Recordset& rows, std::size_t column, std::size_t row);
void AppendJsonText(std::string& out, std::string_view text);
// A cell as a user reads it; "" for a null.
std::string CellText(const platform::Recordset& rows, std::size_t column, std::size_t row);

}  // namespace browser
