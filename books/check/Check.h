#pragma once

#include <cstddef>
#include <vector>

#include "books/check/Violation.h"
#include "books/database/Connection.h"

namespace books::check {

// Verifies everything that docs/book.md says always holds, as of one moment; a connection for reading will
// do. An empty answer is a sound book. At most `limit` violations a rule.
std::vector<Violation> Check(database::Connection& connection, std::size_t limit = 100);

}  // namespace books::check
