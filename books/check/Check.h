#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "books/database/Connection.h"

namespace books::check {

struct Violation {
  std::string rule;                    // "balance", "movement", "serial"…
  std::string description;             // what was found and what was expected, for an operator
  std::vector<std::string> documents;  // the bills that cause it, by class and number; empty when none does
};

// Verifies everything that docs/book.md says always holds, as of one moment; a connection for reading will
// do. An empty answer is a sound book. At most `limit` violations a rule.
std::vector<Violation> Check(database::Connection& connection, std::size_t limit = 100);

}  // namespace books::check
