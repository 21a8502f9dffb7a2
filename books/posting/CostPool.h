#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>

#include "books/database/Quantity.h"
#include "platform/value/Currency.h"

namespace books::posting {

// Goods that share one cost: what came in, in layers that are used up oldest first. With an average cost
// there is one layer, into which every receipt is merged. Taking the whole of a layer takes its whole amount,
// so the rest of every division stays with the goods that are left and goes out with the last of them.
//
// More can be taken than is there. The part that is short leaves at the last known cost for the time being;
// receipts that follow in the same period cover it, oldest first, and the issue then takes their cost. What
// is not covered by the end of its period keeps its cost, and the difference stays with the goods in stock.
class CostPool {
 public:
  enum class Order { kAverage, kFirstInFirstOut };

  // A cost to fall back on: `amount` for `quantity`.
  struct Cost {
    platform::Currency amount;
    database::Quantity quantity;

    // For this many, rounded half to even.
    platform::Currency For(database::Quantity many) const;
  };

  // Who takes: an issue whose amount can be corrected later in the same period, or, without an index, one
  // whose amount somebody has already built on.
  struct Taker {
    std::int32_t period = 0;
    std::optional<std::size_t> index;
  };

  explicit CostPool(Order order) : order_(order) {}

  // `amounts` are those of the takers, which are corrected when this covers what they were short of.
  void Receive(database::Quantity quantity, platform::Currency amount, std::int32_t period,
               std::span<platform::Currency> amounts);
  // The cost of what is taken; `fallback` serves when the pool has never known a cost.
  platform::Currency Take(database::Quantity quantity, const Taker& taker,
                          const std::optional<Cost>& fallback);
  // The cost that Take would answer.
  platform::Currency Peek(database::Quantity quantity, const std::optional<Cost>& fallback) const;
  // Adds to the amount of the goods in stock; with none there it waits for the next receipt.
  void Adjust(platform::Currency amount);
  // A balance brought forward, which may be negative.
  void BringForward(database::Quantity quantity, platform::Currency amount);

  // The average of what is there, else the last known cost, else nothing.
  std::optional<Cost> UnitCost() const;

 private:
  struct Layer {
    database::Quantity quantity;
    platform::Currency amount;
  };
  struct Short {
    database::Quantity quantity;
    platform::Currency amount;
    Taker taker;
  };

  void Cover(database::Quantity& quantity, platform::Currency& amount, std::int32_t period,
             std::span<platform::Currency> amounts);
  void AddLayer(database::Quantity quantity, platform::Currency amount);

  Order order_;
  std::deque<Layer> layers_;   // never empty layers
  std::deque<Short> shorts_;   // only while there are no layers
  platform::Currency parked_;  // only while there are no layers
  std::optional<Cost> last_;
};

}  // namespace books::posting
