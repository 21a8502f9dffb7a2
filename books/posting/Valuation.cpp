// One walk over the movements in costing order. Everything that an amount can depend on comes before it in
// that order, with one exception: an issue beyond the stock is corrected by the receipts that cover it, which
// the pool does.
#include "books/posting/Valuation.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

#include "books/posting/CostPool.h"

namespace books::posting {
namespace {

using database::Quantity;
using platform::Currency;
using schema::DayOrder;

constexpr Quantity kNone;

class Valuer {
 public:
  Valuer(std::span<Movement> movements, const std::unordered_map<Id, schema::Valuation>& methods,
         const CostingRules& rules)
      : movements_(movements), methods_(methods), rules_(rules), amounts_(movements.size()) {}

  void Open(std::span<const OpeningStock> openings) {
    std::map<PoolKey, CostPool::Cost> sums;
    for (const OpeningStock& opening : openings) {
      if (IsGift(opening.warehouseId)) continue;
      CostPool::Cost& sum = sums[KeyOfPool(opening.itemId, opening.warehouseId, opening.batchId)];
      sum.quantity += opening.quantity;
      sum.amount += opening.amount;
    }
    for (const auto& [key, sum] : sums) {
      PoolAt(key).BringForward(sum.quantity, sum.amount);
      if (sum.quantity > kNone && sum.amount > Currency()) known_[std::get<0>(key)] = sum;
    }
  }

  void Run();

 private:
  using PoolKey = std::tuple<Id, Id, Id>;       // item, warehouse or 0, batch or 0
  using LineKey = std::pair<Id, std::int32_t>;  // bill, line
  struct Route {
    Id from = 0;
    Id to = 0;
  };
  // What an assembly or a transfer passes on. A transfer has one for each line, an assembly one for the bill.
  struct Passing {
    Currency left;
    Currency weightLeft;
    Quantity quantityLeft;
    int receivers = 0;
    bool byWeight = true;
  };

  bool IsGift(Id warehouse) const { return rules_.giftWarehouses.contains(warehouse); }
  schema::Valuation MethodOf(Id item) const {
    const auto found = methods_.find(item);
    return found == methods_.end() ? schema::Valuation::kMovingAverage : found->second;
  }
  PoolKey KeyOfPool(Id item, Id warehouse, Id batch) const {
    return {item, rules_.costPerWarehouse ? warehouse : 0,
            MethodOf(item) == schema::Valuation::kBatchCost ? batch : 0};
  }
  CostPool& PoolAt(const PoolKey& key) {
    const bool oldestFirst = MethodOf(std::get<0>(key)) == schema::Valuation::kFirstInFirstOut;
    const auto order = oldestFirst ? CostPool::Order::kFirstInFirstOut : CostPool::Order::kAverage;
    return pools_.try_emplace(key, order).first->second;
  }
  CostPool& PoolOf(const Movement& movement) {
    return PoolAt(KeyOfPool(movement.itemId, movement.warehouseId, movement.batchId));
  }

  // The order of costing.
  auto KeyOf(const Movement& movement) const {
    const bool waits = movement.dayOrder == DayOrder::kIssue &&
                       MethodOf(movement.itemId) == schema::Valuation::kMonthlyAverage;
    return std::tuple(movement.period, waits, movement.date, movement.dayOrder, movement.billId,
                      movement.direction, movement.line, movement.itemId);
  }

  static bool IsTransfer(const Movement& movement) {
    return movement.billClass == schema::BillClass::kTransfer;
  }
  Passing& PassingOf(const Movement& movement) {
    return passings_[{movement.billId, IsTransfer(movement) ? movement.line : 0}];
  }

  void GatherConversions(const std::vector<std::size_t>& order) {
    for (const std::size_t index : order) {
      const Movement& movement = movements_[index];
      if (movement.dayOrder != DayOrder::kConversion) continue;
      if (IsTransfer(movement)) {
        Route& route = routes_[{movement.billId, movement.line}];
        (movement.direction < 0 ? route.from : route.to) = movement.warehouseId;
      }
      if (movement.direction < 0) continue;
      Passing& passing = PassingOf(movement);
      ++passing.receivers;
      passing.quantityLeft += movement.quantity;
      passing.byWeight = passing.byWeight && movement.given.value_or(Currency()) > Currency();
      passing.weightLeft += movement.given.value_or(Currency());
    }
  }

  Currency ValueOne(std::size_t index) {
    const Movement& movement = movements_[index];
    switch (movement.dayOrder) {
      case DayOrder::kReceipt:
        return ValueReceipt(movement);
      case DayOrder::kAmountOnly:
        return ValueAmountOnly(movement);
      case DayOrder::kConversion:
        return movement.direction < 0 ? ValueDeparture(movement) : ValueArrival(movement);
      case DayOrder::kIssue:
        return ValueIssue(movement, index);
    }
    return {};
  }

  Currency ValueReceipt(const Movement& movement) {
    if (IsGift(movement.warehouseId)) return {};
    if (movement.quantity < kNone) return -Take(movement, -movement.quantity, {});
    if (movement.quantity == kNone) return ValueAmountOnly(movement);
    const Currency amount = movement.given ? *movement.given : AtCost(movement, movement.quantity);
    Receive(movement, movement.quantity, amount);
    return amount;
  }

  Currency ValueAmountOnly(const Movement& movement) {
    if (IsGift(movement.warehouseId)) return {};
    const Currency amount = movement.given.value_or(Currency());
    PoolOf(movement).Adjust(amount);
    return amount;
  }

  Currency ValueIssue(const Movement& movement, std::size_t index) {
    if (IsGift(movement.warehouseId)) return {};
    if (movement.quantity >= kNone) return Take(movement, movement.quantity, index);
    const Currency amount = AtCost(movement, -movement.quantity);
    Receive(movement, -movement.quantity, amount);
    return -amount;
  }

  Currency ValueDeparture(const Movement& movement) {
    Currency amount;
    if (!IsGift(movement.warehouseId)) {
      amount = StaysInPool(movement) ? PoolOf(movement).Peek(movement.quantity, Known(movement))
                                     : Take(movement, movement.quantity, {});
    }
    PassingOf(movement).left += amount;
    return amount;
  }

  Currency ValueArrival(const Movement& movement) {
    Passing& passing = PassingOf(movement);
    if (IsTransfer(movement)) {
      if (IsGift(movement.warehouseId)) return {};
      const Currency amount = movement.given.value_or(passing.left);
      if (StaysInPool(movement)) {
        PoolOf(movement).Adjust(amount - passing.left);
      } else {
        Receive(movement, movement.quantity, amount);
      }
      return amount;
    }
    const Currency share = ShareOf(passing, movement);
    if (IsGift(movement.warehouseId)) return {};
    Receive(movement, movement.quantity, share);
    return share;
  }

  // The lines share what is left by what is left of the weights, so that nothing remains after the last one.
  static Currency ShareOf(Passing& passing, const Movement& movement) {
    const Currency weight = movement.given.value_or(Currency());
    Currency share = passing.left;
    if (passing.receivers > 1) {
      share = passing.byWeight
                  ? MultiplyDivide(passing.left, weight.Units(), passing.weightLeft.Units())
                  : MultiplyDivide(passing.left, movement.quantity.Units(), passing.quantityLeft.Units());
    }
    --passing.receivers;
    passing.left -= share;
    passing.weightLeft -= weight;
    passing.quantityLeft -= movement.quantity;
    return share;
  }

  // A transfer between warehouses that have one cost leaves the goods in their place among the layers.
  bool StaysInPool(const Movement& movement) const {
    if (!IsTransfer(movement) || rules_.costPerWarehouse) return false;
    const Route& route = routes_.at({movement.billId, movement.line});
    return !IsGift(route.from) && !IsGift(route.to);
  }

  std::optional<CostPool::Cost> Known(const Movement& movement) const {
    const auto found = known_.find(movement.itemId);
    return found == known_.end() ? std::nullopt : std::optional(found->second);
  }
  Currency Take(const Movement& movement, Quantity quantity, std::optional<std::size_t> index) {
    return PoolOf(movement).Take(quantity, {movement.period, index}, Known(movement));
  }
  void Receive(const Movement& movement, Quantity quantity, Currency amount) {
    PoolOf(movement).Receive(quantity, amount, movement.period, amounts_);
    if (amount > Currency()) known_[movement.itemId] = {amount, quantity};
  }
  Currency AtCost(const Movement& movement, Quantity quantity) {
    std::optional<CostPool::Cost> cost = PoolOf(movement).UnitCost();
    if (!cost) cost = Known(movement);
    return cost ? cost->For(quantity) : Currency();
  }

  std::span<Movement> movements_;
  const std::unordered_map<Id, schema::Valuation>& methods_;
  const CostingRules& rules_;
  std::vector<Currency> amounts_;  // beside the movements, so that pools can correct them
  std::map<PoolKey, CostPool> pools_;
  std::map<LineKey, Passing> passings_;
  std::map<LineKey, Route> routes_;
  std::unordered_map<Id, CostPool::Cost> known_;  // an item's last cost in any of its pools
};

void Valuer::Run() {
  std::vector<std::size_t> order(movements_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, {}, [&](std::size_t index) { return KeyOf(movements_[index]); });
  GatherConversions(order);
  for (const std::size_t index : order) amounts_[index] = ValueOne(index);
  for (std::size_t index = 0; index < movements_.size(); ++index) {
    movements_[index].amount = amounts_[index];
  }
}

}  // namespace

void ValueMovements(std::span<Movement> movements, std::span<const OpeningStock> openings,
                    const std::unordered_map<Id, schema::Valuation>& methods, const CostingRules& rules) {
  Valuer valuer(movements, methods, rules);
  valuer.Open(openings);
  valuer.Run();
}

}  // namespace books::posting
