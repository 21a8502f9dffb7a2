#pragma once

#include <cstddef>
#include <vector>

#include "books/check/Check.h"

namespace books::check {

// The movements that were posted are those that the audited bills make, one for one.
std::vector<Violation> CheckMovements(database::Connection& connection, std::size_t limit);

}  // namespace books::check
