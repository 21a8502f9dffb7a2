#pragma once

#include <string>

#include "platform/rows/Recordset.h"

namespace platform {

// A recordset as text, for tests and for people who look for an error: a line of columns, a line a row that
// passes the filter, the current one marked by '>', and the position.
//
//   FID integer | FName text(20)
//     1 | 'screw'
//   > 2 | null
//   position 2 of 2
std::string Picture(const Recordset& recordset);

}  // namespace platform
