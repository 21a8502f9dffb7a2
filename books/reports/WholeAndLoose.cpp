#include "books/reports/WholeAndLoose.h"

#include "books/database/Quantity.h"
#include "platform/value/Convert.h"

namespace books::reports {

std::string WholeAndLoose(std::int64_t quantity, const std::vector<Package>& packages,
                          const std::string& baseUnit) {
  std::string text;
  if (quantity < 0) text = "-";
  std::int64_t rest = quantity < 0 ? -quantity : quantity;
  for (const Package& package : packages) {
    if (package.factor <= 0 || rest < package.factor) continue;
    text += std::to_string(rest / package.factor) + package.unit;
    rest %= package.factor;
  }
  if (rest != 0) text += platform::NumberToText(database::Quantity::FromUnits(rest).ToDouble()) + baseUnit;
  return text;
}

}  // namespace books::reports
