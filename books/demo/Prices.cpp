#include "books/demo/Prices.h"

#include <algorithm>

#include "books/demo/Random.h"

namespace books::demo {
namespace {

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kFen = 100;
constexpr int kFreshDays = 45;

std::int64_t InWholeFen(std::int64_t price) {
  return std::max<std::int64_t>((price + 50) / kFen * kFen, kFen);
}

}  // namespace

std::int64_t Prices::Wobble(const Item& item, std::int32_t month) const {
  const bool fresh = item.family->shelfLifeDays > 0 && item.family->shelfLifeDays <= kFreshDays;
  Random random(
      plan_.seed + (static_cast<std::uint64_t>(item.id) * 1009U) + static_cast<std::uint64_t>(month),
      "price");
  return random.Between(-1000, 1000) * (fresh ? 130 : 25) / 1000;
}

std::int64_t Prices::CostOn(const Item& item, platform::Date day) const {
  const std::int32_t days = day.Days() - plan_.firstDay.Days();
  const std::int32_t month = days / 30;
  const std::int64_t before = Wobble(item, month);
  const std::int64_t after = Wobble(item, month + 1);
  const std::int64_t wobble = before + ((after - before) * (days % 30) / 30);
  const std::int64_t drift = std::int64_t{item.family->drift} * days / 365;
  return InWholeFen(item.cost * (1000 + drift + wobble) / 1000);
}

std::int64_t Prices::BuyingPrice(const Item& item, std::size_t supplier, platform::Date day) const {
  return InWholeFen(CostOn(item, day) * company_.suppliers[supplier].priceLevel / 1000);
}

std::int64_t Prices::SellingPrice(const Item& item, const Customer& customer, platform::Date day) const {
  return InWholeFen(CostOn(item, day) * item.markup / 1000 * customer.priceLevel / 1000);
}

platform::Currency AmountOf(std::int64_t price, std::int64_t quantity) {
  return platform::MultiplyDivide(platform::Currency::FromUnits(price), quantity, kMillion);
}

InUnit InSuitingUnit(const Item& item, std::int64_t quantity) {
  const std::int64_t package = item.family->packageFactor;
  if (item.packageUnitId != 0 && quantity != 0 && quantity % (package * kMillion) == 0) {
    return {.unitId = item.packageUnitId, .quantity = quantity / package, .factor = package};
  }
  return {.unitId = item.unitId, .quantity = quantity, .factor = 1};
}

}  // namespace books::demo
