#pragma once

#include <span>
#include <string_view>

namespace books::check {

// A rule that a query can tell: its rows are the violations, as description and document (null when none
// causes it). Rows of the same description stand together.
struct Rule {
  std::string_view name;
  std::string_view sql;
};

std::span<const Rule> Rules();

}  // namespace books::check
