#pragma once

#include "component/frame/MRpt.h"
#include "component/movement/MovementColumns.h"

namespace component {

// The columns of a movement summary: category levels, the item with what the rows are grouped by, then
// opening balance, receipts, issues and closing balance. Writes the frozen block into `property`.
void AddSummaryColumns(Variety variety, const LevelRange& levels, const platform::Dictionary& filter,
                       platform::Dictionary& property);

}  // namespace component
