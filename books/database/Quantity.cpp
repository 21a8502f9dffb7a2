#include "books/database/Quantity.h"

#include <cmath>

#include "platform/value/Error.h"

namespace books::database {

Quantity Quantity::FromDouble(double value) {
  // Below 2^62 millionths, so that a sum of two quantities always fits.
  constexpr double kLimit = 4.6e18;
  const double units = value * static_cast<double>(kScale);
  if (!(std::fabs(units) < kLimit)) {
    throw platform::Error(platform::ErrorNumber::kOverflow, "Quantity",
                          "overflow: the quantity does not fit");
  }
  return FromUnits(static_cast<std::int64_t>(std::nearbyint(units)));
}

}  // namespace books::database
