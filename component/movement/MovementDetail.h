#pragma once

#include "component/movement/MovementColumns.h"

namespace component {

// The columns of a movement detail, one row a bill entry: the bill, the item, what came in and went out, and
// what lay in stock afterwards where rows are shown item by item ("chkGroupByGood" of the filter is 1).
void AddDetailColumns(Variety variety, const platform::Dictionary& filter);

}  // namespace component
