#pragma once

#include <string>
#include <vector>

namespace books::check {

struct Violation {
  std::string rule;                    // "balance", "movement", "serial"…
  std::string description;             // what was found and what was expected, for an operator
  std::vector<std::string> documents;  // the bills that cause it, by class and number; empty when none does
};

}  // namespace books::check
