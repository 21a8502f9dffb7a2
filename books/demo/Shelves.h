#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "books/demo/Company.h"
#include "books/demo/Random.h"

namespace books::demo {

// Goods of one batch and auxiliary property. Quantities are millionths.
struct Lot {
  Id batchId = 0;
  Id auxId = 0;
  std::int32_t expiryDay = 0;  // 0: never
  std::int64_t quantity = 0;
  std::int64_t auxQuantity = 0;
};

// An item in a warehouse, as the people who work there see it: what is there decides what they do. Nothing of
// it is written; the book's figures come from posting what they did.
struct Shelf {
  std::size_t item = 0;  // indexes of the company
  std::size_t warehouse = 0;
  std::int64_t quantity = 0;
  std::int64_t coming = 0;   // ordered or on its way
  std::int64_t sale = 0;     // an ordinary line of a bill here
  std::int64_t reorder = 0;  // below it, more is fetched
  std::int64_t full = 0;     // up to here
  int weight = 0;            // how often it is sold here
  bool wanted = false;       // stands in its warehouse's list
  std::vector<Lot> lots;
  std::vector<Id> serials;  // oldest first; as many as the quantity
};

struct Taken {
  Lot lot;
  std::vector<Id> serials;
};

class Shelves {
 public:
  Shelves(const Plan& plan, const Company& company);

  Shelf& At(std::size_t index) { return shelves_[index]; }
  const Shelf& At(std::size_t index) const { return shelves_[index]; }
  std::size_t Count() const { return shelves_.size(); }
  const Item& ItemOf(const Shelf& shelf) const { return company_.items[shelf.item]; }
  const std::vector<std::size_t>& InWarehouse(std::size_t warehouse) const { return byWarehouse_[warehouse]; }
  // The first one is the item's home, in a central warehouse.
  const std::vector<std::size_t>& OfItem(std::size_t item) const { return byItem_[item]; }

  void Put(std::size_t index, const Lot& lot, std::vector<Id> serials = {});
  // Up to `quantity`, of what has not expired by `day`, mostly what expires first.
  std::vector<Taken> Take(std::size_t index, std::int64_t quantity, std::int32_t day, Random& random);
  // All lots that had expired by `day`.
  std::vector<Taken> TakeExpired(std::size_t index, std::int32_t day);
  // More than there is: a sale before the goods that cover it are booked.
  void TakeBeyond(std::size_t index, std::int64_t quantity);
  std::int64_t Sellable(std::size_t index, std::int32_t day) const;

  // Draws by what sells in this calendar month, 1 to 12; SetMonth first.
  void SetMonth(int month);
  std::size_t DrawWarehouse(Random& random) const;
  std::size_t DrawShelf(std::size_t warehouse, Random& random) const;
  bool Sells(std::size_t warehouse) const {
    return !drawn_[warehouse].empty() && drawn_[warehouse].back() > 0;
  }
  void StopSelling(std::size_t warehouse);

  // Shelves that fell below their reorder level, taken out of their warehouse's list.
  std::vector<std::size_t> CollectWanted(std::size_t warehouse);
  void Want(std::size_t index);

 private:
  void Settle(std::size_t index);
  void AddShelf(std::size_t item, std::size_t warehouse, int weight);
  void PlaceItem(std::size_t item, Random& random);
  void SetLevels(std::int64_t linesPerDayTimesMillion);

  const Company& company_;
  std::vector<Shelf> shelves_;
  std::vector<std::vector<std::size_t>> byWarehouse_;
  std::vector<std::vector<std::size_t>> byItem_;
  std::vector<std::vector<std::size_t>> wanted_;
  std::vector<std::vector<std::int64_t>> drawn_;  // running sums of weights, by warehouse
  std::vector<std::int64_t> warehouseSums_;
  std::vector<bool> closed_;
};

// Down to a quantity that can be handed over: whole pieces, or a tenth of what is weighed.
std::int64_t RoundDown(const Item& item, std::int64_t quantity);

}  // namespace books::demo
