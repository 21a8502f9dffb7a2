#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "exports/Sheet.h"

namespace cli {

// Columns that a text takes in a terminal: two for a Chinese character, none for a combining mark.
std::size_t DisplayWidth(std::string_view text);

// The report as a table of text: its name, the title lines, a heading of one or two lines with groups over
// their columns, and the rows, aligned in a terminal.
void WriteTable(std::ostream& out, const exports::Sheet& sheet);

}  // namespace cli
