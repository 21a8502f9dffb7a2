#pragma once

#include <cstddef>
#include <vector>

#include "books/check/Check.h"

namespace books::check {

// For every item, warehouse, batch and auxiliary property: opening stock + in − out = closing in each period,
// instant stock = the last closing, and a row for each period with movements.
std::vector<Violation> CheckBalances(database::Connection& connection, std::size_t limit);

// The amounts of all movements are those that costing works out of the documents; items whose business waits
// are left out, with all that assemblies tie to them.
std::vector<Violation> CheckCosts(database::Connection& connection, std::size_t limit);

}  // namespace books::check
