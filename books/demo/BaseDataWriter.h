#pragma once

#include "books/database/Connection.h"
#include "books/demo/Company.h"
#include "books/demo/Prices.h"
#include "books/demo/Shelves.h"

namespace books::demo {

// Writes what stands in the book before the first bill: trees, items with their units, levels and price
// lists, partners, staff and users.
void WriteBaseData(database::Connection& connection, const Plan& plan, const Company& company,
                   const Shelves& shelves, const Prices& prices);

}  // namespace books::demo
