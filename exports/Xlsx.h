#pragma once

#include <filesystem>

#include "exports/Sheet.h"

namespace exports {

// A workbook: the name, the title lines, a heading whose groups are merged over their columns, and the rows
// below it, which stay under the frozen heading. Figures are numbers in the format of their column type,
// negative ones red, summary rows bold; texts stay texts whatever they begin with. More rows than a sheet
// can hold go on in further sheets. Where the sheet has items, each one's rows stand below a line with its
// title lines, and begin a new page when they are printed. Rows pass through, memory does not grow with them.
//
// False when `progress` stopped it; then, and after a failure, no file is left. Raises kBadArgument for a
// file that cannot be written.
bool WriteXlsx(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress = {});

}  // namespace exports
