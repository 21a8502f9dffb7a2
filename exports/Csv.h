#pragma once

#include <iosfwd>

#include "exports/Sheet.h"

namespace exports {

// Comma-separated values as spreadsheets read them: a byte order mark, one line of captions (group and second
// heading joined by a blank), quotes where a value needs them, lines ended by CR LF. A text that a
// spreadsheet would take for a formula gets an apostrophe in front. False when `progress` stopped it.
bool WriteCsv(std::ostream& out, const Sheet& sheet, const Progress& progress = {});

}  // namespace exports
