#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "books/database/Quantity.h"
#include "books/posting/Document.h"
#include "books/schema/Codes.h"
#include "platform/value/Currency.h"

namespace books::posting {

// A movement while it is valued: a row of the table `movement`, with what its entry says about the amount.
struct Movement {
  Id itemId = 0;
  std::int32_t date = 0;
  schema::DayOrder dayOrder = schema::DayOrder::kReceipt;
  Id billId = 0;
  std::int32_t direction = 1;
  std::int32_t line = 0;
  std::int32_t period = 0;
  schema::BillClass billClass = schema::BillClass::kPurchaseReceipt;
  Id warehouseId = 0;
  Id batchId = 0;
  Id auxId = 0;
  database::Quantity quantity;
  database::Quantity auxQuantity;
  std::optional<platform::Currency> given;
  platform::Currency amount;
};

struct CostingRules {
  bool costPerWarehouse = false;
  std::unordered_set<Id> giftWarehouses;
};

// Works out the amounts of all movements of a group of items: the items themselves and all that assemblies
// tie to them. A pure function of its arguments, whatever amounts stood there before. What it does:
//
//   receipt            its given amount; without one, the cost as it stands
//   returned receipt   leaves at cost, like an issue
//   issue              cost by the item's method
//   returned issue     comes in at the cost as it stands
//   transfer           arrives with the cost that it left with, or with its given amount
//   assembly           what comes in shares the cost of what went out by the given weights, else by
//                      quantity; the last line takes the rest
//   amount only        changes the amount of what is in stock
//   gift warehouse     everything is 0
//
// Movements are taken in the order of their key. With a monthly average, plain issues wait for the end of
// their period, so that they meet the average over all its receipts; what leaves into a transfer or an
// assembly is valued on its day, since somebody goes on with that cost. With batch cost every batch has a
// cost of its own. The goods of all ordinary warehouses have one cost, or those of every warehouse one of
// their own.
void ValueMovements(std::span<Movement> movements, std::span<const OpeningStock> openings,
                    const std::unordered_map<Id, schema::Valuation>& methods, const CostingRules& rules);

}  // namespace books::posting
