#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "books/demo/Business.h"

namespace books::demo {

// Keeps the shelves filled: what lay there on the first day, purchases and orders, deliveries as they arrive,
// and transfers from the central warehouses to the shops. Some items run short towards the end because their
// supplier does not deliver, and of some far too much was bought.
class Buying {
 public:
  explicit Buying(Business& business);

  // Before the first day.
  void FillShelves();
  // Once a day, deliveries first.
  void Receive();
  void Replenish(std::int64_t entriesTimesThousand);

 private:
  struct Line {
    std::size_t shelf = 0;
    std::int64_t quantity = 0;
    std::int64_t price = 0;
    std::optional<Id> order;
    std::int32_t orderLine = 0;
  };
  struct Delivery {
    std::size_t supplier = 0;
    std::vector<Line> lines;
  };

  void Buy(std::size_t warehouse, const std::vector<std::size_t>& wanted);
  void BuyFrom(std::size_t supplier, std::vector<Line> lines);
  void Schedule(std::size_t supplier, const std::vector<Line>& lines);
  void Feed(std::size_t warehouse, const std::vector<std::size_t>& wanted);
  void ReceiveDelivery(const Delivery& delivery);
  void ReturnToSupplier();
  void BuyTooMuch();
  void OpenShelf(std::size_t index, std::vector<posting::OpeningStock>& rows);
  // New goods of a lot or several, as the item's batches and properties ask for.
  std::vector<Taken> NewGoods(const Item& item, std::int64_t quantity, std::int32_t oldest);
  std::int64_t Missing(const Shelf& shelf) const;
  bool Starved(std::size_t item) const;

  Business& business_;
  Random random_;
  std::map<std::int32_t, std::vector<Delivery>> deliveries_;  // by day
  std::vector<std::int32_t> starvedFrom_;                     // day, by item; none: beyond the last
  std::map<std::int32_t, std::vector<std::size_t>> surplus_;  // items, by day
  Pace returns_;
};

}  // namespace books::demo
