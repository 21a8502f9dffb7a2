// Where the goods lie while the company's days are played through. Levels follow from how often an item is
// sold: goods that keep are fetched for about four sales at once, perishable ones for a part of their shelf
// life.
#include "books/demo/Shelves.h"

#include <algorithm>

namespace books::demo {
namespace {

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::int64_t kTenth = 100'000;
// Share of all entries that are sales, in thousandths: the rest fetches and keeps what is sold.
constexpr std::int64_t kSalesShare = 660;

std::int64_t RoundUp(const Item& item, std::int64_t quantity) {
  const std::int64_t step = item.packageUnitId != 0 ? item.family->packageFactor * kMillion
                            : item.Weighed()        ? kTenth
                                                    : kMillion;
  return (quantity + step - 1) / step * step;
}

}  // namespace

std::int64_t RoundDown(const Item& item, std::int64_t quantity) {
  const std::int64_t step = item.Weighed() ? kTenth : kMillion;
  return quantity / step * step;
}

Shelves::Shelves(const Plan& plan, const Company& company)
    : company_(company),
      byWarehouse_(company.warehouses.size()),
      byItem_(company.items.size()),
      wanted_(company.warehouses.size()),
      drawn_(company.warehouses.size()),
      closed_(company.warehouses.size()) {
  Random random(plan.seed, "shelves");
  for (std::size_t item = 0; item < company.items.size(); ++item) PlaceItem(item, random);
  SetLevels(plan.entries * kSalesShare * 1000 / std::max(plan.Days(), 1));
}

void Shelves::PlaceItem(std::size_t item, Random& random) {
  const Item& facts = company_.items[item];
  std::size_t centrals = 0;
  std::vector<std::size_t> shops;
  for (std::size_t index = 0; index < company_.warehouses.size(); ++index) {
    if (company_.warehouses[index].role == Role::kCentral) ++centrals;
    if (company_.warehouses[index].role == Role::kShop) shops.push_back(index);
  }
  // Food, hardware and appliances have a central warehouse of their own where there are several.
  const char department = facts.family->number[1];
  std::size_t home = 0;
  if (department == '1' && centrals > 1) home = 1;
  if ((department == '3' || department == '4') && centrals > 2) home = 2;
  if (department == '5' && centrals > 3) home = 3;
  AddShelf(item, home, facts.weight * 2);
  // Fresh goods are delivered from the cold store alone.
  if (!shops.empty() && !facts.Perishable()) {
    const std::size_t wished = facts.weight >= 60 ? 4 : facts.weight >= 12 ? 2 : 1;
    const std::size_t count = std::min(shops.size(), wished);
    const std::size_t first = random.Below(shops.size());
    for (std::size_t step = 0; step < count; ++step) {
      AddShelf(item, shops[(first + (step * 3)) % shops.size()], facts.weight);
    }
  }
  for (std::size_t index = 0; index < company_.warehouses.size(); ++index) {
    const Role role = company_.warehouses[index].role;
    if (!facts.Is(Handling::kPlain) || !facts.auxIds.empty()) continue;
    if (role == Role::kClosed && random.Chance(180)) AddShelf(item, index, facts.weight);
    if (role == Role::kGift && item % 9 == 4) AddShelf(item, index, 0);
  }
}

void Shelves::AddShelf(std::size_t item, std::size_t warehouse, int weight) {
  // A stride through few shops can come back to the same one.
  for (const std::size_t other : byItem_[item]) {
    if (shelves_[other].warehouse == warehouse) return;
  }
  byItem_[item].push_back(shelves_.size());
  byWarehouse_[warehouse].push_back(shelves_.size());
  shelves_.push_back({.item = item, .warehouse = warehouse, .weight = weight});
}

void Shelves::SetLevels(std::int64_t linesPerDayTimesMillion) {
  std::int64_t total = 0;
  for (const Shelf& shelf : shelves_) total += shelf.weight;
  for (Shelf& shelf : shelves_) {
    const Item& item = company_.items[shelf.item];
    const bool central = company_.warehouses[shelf.warehouse].role == Role::kCentral;
    const bool perishable = item.Perishable();
    shelf.sale = central && !perishable ? RoundUp(item, item.sale * 2) : item.sale;
    const std::int64_t rate = linesPerDayTimesMillion / std::max<std::int64_t>(total, 1) * shelf.weight;
    std::int64_t fetch = shelf.sale * 4;
    if (item.family->shelfLifeDays > 0) {
      const std::int64_t sellable = rate * item.family->shelfLifeDays * 2 / 5 / 1000 * shelf.sale / 1000;
      fetch = std::clamp(sellable, shelf.sale / 2, fetch);
    }
    shelf.reorder = item.family->shelfLifeDays > 0 ? shelf.sale / 2 : shelf.sale * (central ? 2 : 1);
    shelf.reorder += rate * (perishable ? 2 : 5) / 1000 * shelf.sale / 1000;
    shelf.reorder = std::max(RoundDown(item, shelf.reorder), RoundDown(item, kMillion));
    // A central warehouse buys whole packages, a shop fetches what it needs.
    shelf.full =
        shelf.reorder + (central ? RoundUp(item, fetch) : std::max(RoundDown(item, fetch), kMillion));
  }
}

void Shelves::Put(std::size_t index, const Lot& lot, std::vector<Id> serials) {
  Shelf& shelf = shelves_[index];
  shelf.quantity += lot.quantity;
  shelf.serials.insert(shelf.serials.end(), serials.begin(), serials.end());
  const auto same = std::ranges::find_if(
      shelf.lots, [&](const Lot& other) { return other.batchId == lot.batchId && other.auxId == lot.auxId; });
  if (same == shelf.lots.end()) {
    shelf.lots.push_back(lot);
    return;
  }
  same->quantity += lot.quantity;
  same->auxQuantity += lot.auxQuantity;
  if (same->quantity == 0 && same->auxQuantity == 0) shelf.lots.erase(same);
}

std::vector<Taken> Shelves::Take(std::size_t index, std::int64_t quantity, std::int32_t day, Random& random) {
  Shelf& shelf = shelves_[index];
  std::vector<Taken> taken;
  std::ranges::stable_sort(shelf.lots, {}, &Lot::expiryDay);
  // Now and then somebody takes what lies in front, and the older goods grow older.
  if (shelf.lots.size() > 1 && random.Chance(120))
    std::rotate(shelf.lots.begin(), shelf.lots.end() - 1, shelf.lots.end());
  for (Lot& lot : shelf.lots) {
    if (quantity <= 0) break;
    if (lot.quantity <= 0 || (lot.expiryDay != 0 && lot.expiryDay <= day)) continue;
    Taken part{.lot = lot, .serials = {}};
    if (quantity < lot.quantity) {
      part.lot.quantity = quantity;
      part.lot.auxQuantity =
          lot.auxQuantity / kMillion * (quantity / kTenth) / (lot.quantity / kTenth) * kMillion;
    }
    lot.quantity -= part.lot.quantity;
    lot.auxQuantity -= part.lot.auxQuantity;
    shelf.quantity -= part.lot.quantity;
    quantity -= part.lot.quantity;
    const auto pieces = static_cast<std::ptrdiff_t>(
        std::min(static_cast<std::size_t>(part.lot.quantity / kMillion), shelf.serials.size()));
    part.serials.assign(shelf.serials.begin(), shelf.serials.begin() + pieces);
    shelf.serials.erase(shelf.serials.begin(), shelf.serials.begin() + pieces);
    taken.push_back(std::move(part));
  }
  Settle(index);
  return taken;
}

std::vector<Taken> Shelves::TakeExpired(std::size_t index, std::int32_t day) {
  Shelf& shelf = shelves_[index];
  std::vector<Taken> taken;
  for (Lot& lot : shelf.lots) {
    if (lot.expiryDay == 0 || lot.expiryDay > day || lot.quantity <= 0) continue;
    taken.push_back({.lot = lot, .serials = {}});
    shelf.quantity -= lot.quantity;
    lot.quantity = 0;
    lot.auxQuantity = 0;
  }
  Settle(index);
  return taken;
}

void Shelves::TakeBeyond(std::size_t index, std::int64_t quantity) {
  Put(index, {.quantity = -quantity});
  Settle(index);
}

std::int64_t Shelves::Sellable(std::size_t index, std::int32_t day) const {
  std::int64_t sellable = 0;
  for (const Lot& lot : shelves_[index].lots) {
    if (lot.quantity > 0 && (lot.expiryDay == 0 || lot.expiryDay > day)) sellable += lot.quantity;
  }
  return sellable;
}

void Shelves::Settle(std::size_t index) {
  Shelf& shelf = shelves_[index];
  std::erase_if(shelf.lots, [](const Lot& lot) { return lot.quantity == 0 && lot.auxQuantity == 0; });
  if (shelf.quantity + shelf.coming < shelf.reorder) Want(index);
}

void Shelves::Want(std::size_t index) {
  Shelf& shelf = shelves_[index];
  const Role role = company_.warehouses[shelf.warehouse].role;
  if (shelf.wanted || (role != Role::kCentral && role != Role::kShop)) return;
  shelf.wanted = true;
  wanted_[shelf.warehouse].push_back(index);
}

std::vector<std::size_t> Shelves::CollectWanted(std::size_t warehouse) {
  std::vector<std::size_t> collected = std::move(wanted_[warehouse]);
  wanted_[warehouse].clear();
  for (const std::size_t index : collected) shelves_[index].wanted = false;
  return collected;
}

void Shelves::SetMonth(int month) {
  warehouseSums_.assign(company_.warehouses.size(), 0);
  std::int64_t total = 0;
  for (std::size_t warehouse = 0; warehouse < company_.warehouses.size(); ++warehouse) {
    std::vector<std::int64_t>& sums = drawn_[warehouse];
    sums.clear();
    std::int64_t sum = 0;
    for (const std::size_t index : byWarehouse_[warehouse]) {
      const Shelf& shelf = shelves_[index];
      const int season = ItemOf(shelf).family->season.at(static_cast<std::size_t>(month) - 1);
      sum += closed_[warehouse] ? 0 : std::int64_t{shelf.weight} * season;
      sums.push_back(sum);
    }
    total += sum;
    warehouseSums_[warehouse] = total;
  }
}

std::size_t Shelves::DrawWarehouse(Random& random) const {
  const std::int64_t draw =
      static_cast<std::int64_t>(random.Next() >> 2U) % std::max<std::int64_t>(warehouseSums_.back(), 1);
  return static_cast<std::size_t>(std::ranges::upper_bound(warehouseSums_, draw) - warehouseSums_.begin());
}

std::size_t Shelves::DrawShelf(std::size_t warehouse, Random& random) const {
  const std::vector<std::int64_t>& sums = drawn_[warehouse];
  const std::int64_t draw = static_cast<std::int64_t>(random.Next() >> 2U) % sums.back();
  return byWarehouse_[warehouse]
                     [static_cast<std::size_t>(std::ranges::upper_bound(sums, draw) - sums.begin())];
}

void Shelves::StopSelling(std::size_t warehouse) {
  closed_[warehouse] = true;
  for (std::int64_t& sum : drawn_[warehouse]) sum = 0;
}

}  // namespace books::demo
