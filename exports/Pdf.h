#pragma once

#include <filesystem>

#include "exports/Paper.h"
#include "exports/Sheet.h"

namespace exports {

// Pages for paper: on each the report's name, the heading and the page's number, on the first of each page
// across the title lines too. Columns that do not fit the sheet (upright, or lying where that is open) are
// made somewhat smaller, else parted into pages across with the key columns repeated. Pages leave memory as
// they are done.
//
// False when `progress` stopped it; then, and after a failure, no file is left. Raises kBadArgument for a
// file that cannot be written.
bool WritePdf(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress = {},
              const PageSetup& setup = {});

}  // namespace exports
