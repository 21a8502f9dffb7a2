#pragma once

#include <filesystem>

#include "exports/Sheet.h"

namespace exports {

// Sheets of paper in points, upright.
struct Paper {
  double width = 595.28;  // A4
  double height = 841.89;
};

// Pages for paper: on each the report's name, the heading and the page's number, on the first of each page
// across the title lines too. Upright where the columns fit, else lying, else somewhat smaller, else parted
// into pages across with the key columns repeated. Pages leave memory as they are done.
//
// False when `progress` stopped it; then, and after a failure, no file is left. Raises kBadArgument for a
// file that cannot be written.
bool WritePdf(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress = {},
              const Paper& paper = {});

}  // namespace exports
