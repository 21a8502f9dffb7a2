#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Grid.h"

namespace cli {

// Columns that a text takes in a terminal: two for a Chinese character, none for a combining mark.
std::size_t DisplayWidth(std::string_view text);

// The report as a table of text: its name, the title lines, a heading of one or two lines with groups over
// their columns, and the rows, aligned in a terminal. At most `limit` rows.
void WriteTable(std::ostream& out, std::string_view name, const std::vector<std::string>& titleLines,
                const Grid& grid, std::optional<std::size_t> limit);

// Comma-separated values as spreadsheets read them: a byte order mark, one line of captions (group and second
// heading joined by a blank), quotes where a value needs them, lines ended by CR LF. A text that a
// spreadsheet would take for a formula gets an apostrophe in front.
void WriteCsv(std::ostream& out, const Grid& grid, std::optional<std::size_t> limit);

}  // namespace cli
