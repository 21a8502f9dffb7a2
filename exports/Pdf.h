#pragma once

#include <filesystem>

#include "exports/Paper.h"
#include "exports/Sheet.h"

namespace exports {

// Pages for paper: on each the report's name, the title lines, the heading, the page's number and the date of
// printing. Columns that do not fit the sheet (upright, or lying where that is open) are made somewhat
// smaller, else parted into pages across with the key columns repeated. Each item of a sheet with items
// begins a page and has page numbers of its own; one that takes several pages ends each with the line 过次页
// and begins the next with 承前页 (CarriedTotals.h). Pages leave memory as they are done.
//
// False when `progress` stopped it; then, and after a failure, no file is left. Raises kBadArgument for a
// file that cannot be written.
bool WritePdf(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress = {},
              const PageSetup& setup = {});

}  // namespace exports
