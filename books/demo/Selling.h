#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "books/demo/Business.h"

namespace books::demo {

// Sales: bills to customers from what lies in a warehouse, some of them on an order, some on consignment, a
// few returns, rebates in goods, sales of goods whose receipt is not booked yet, and orders still to be
// delivered.
class Selling {
 public:
  explicit Selling(Business& business);

  // Writes bills until the journal holds this many entries.
  void Sell(std::int64_t untilEntries);
  void SellSpecially(std::int64_t entriesTimesThousand);

 private:
  struct Draft {
    posting::Document bill;
    std::vector<OrderLine> order;
    bool ordered = false;
    bool free = false;  // nothing is asked for the goods
  };

  void WriteSale();
  void AddLine(Draft& draft, std::size_t index, const Customer& customer);
  void WriteOrderOf(Draft& draft, const Customer& customer);
  void TakeBack();
  void GiveRebate();
  void SellBeyond();
  void TakeOrder();
  std::int64_t QuantityFor(const Shelf& shelf, const Customer& customer);
  const Customer& DrawCustomer(Role role);

  Business& business_;
  Random random_;
  Pace returns_;
  Pace rebates_;
  Pace orders_;
  std::vector<std::int32_t> beyondDays_;  // earliest last
};

}  // namespace books::demo
