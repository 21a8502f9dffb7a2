#pragma once

#include <cstdint>
#include <optional>

#include "books/demo/Company.h"
#include "platform/value/Currency.h"

namespace books::demo {

// What goods cost on a day: the family's drift through the years, a wobble from month to month, wider for
// what is fresh, and the level of the partner. Prices are for a base unit, in whole 分, as ten-thousandths.
class Prices {
 public:
  Prices(const Plan& plan, const Company& company) : plan_(plan), company_(company) {}

  std::int64_t CostOn(const Item& item, platform::Date day) const;
  std::int64_t BuyingPrice(const Item& item, std::size_t supplier, platform::Date day) const;
  std::int64_t SellingPrice(const Item& item, const Customer& customer, platform::Date day) const;

 private:
  std::int64_t Wobble(const Item& item, std::int32_t month) const;

  const Plan& plan_;
  const Company& company_;
};

// Of so many millionths at this price.
platform::Currency AmountOf(std::int64_t price, std::int64_t quantity);

// A quantity in a unit that suits it: whole packages when it makes some, otherwise the base unit.
struct InUnit {
  Id unitId = 0;
  std::int64_t quantity = 0;  // millionths of the unit
  std::int64_t factor = 1;    // base units in one
};
InUnit InSuitingUnit(const Item& item, std::int64_t quantity);

}  // namespace books::demo
