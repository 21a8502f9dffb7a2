#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace books::reports {

// A unit in which an item is packed whole, and how much of its base unit is in one, in millionths.
struct Package {
  std::string unit;
  std::int64_t factor = 0;
};

// 整件散包: a quantity (millionths of the base unit) as whole packages and the loose rest, "3箱5瓶". Packages
// come with the largest first; an item without any has a loose rest only. A shortage carries one sign in
// front, "-1箱2瓶". No quantity is no text.
std::string WholeAndLoose(std::int64_t quantity, const std::vector<Package>& packages,
                          const std::string& baseUnit);

}  // namespace books::reports
