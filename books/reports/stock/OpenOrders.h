#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "books/services/Store.h"
#include "platform/value/Date.h"

namespace books::reports {

// What orders still wait for, in millionths of the base unit.
struct OnOrder {
  std::int64_t aux = 0;  // 0 for none
  std::int64_t fromSuppliers = 0;
  std::int64_t forCustomers = 0;
};

// By item. At the end of a day when one is given, else now; with `unaudited`, orders and deliveries that are
// not audited count too.
std::unordered_map<std::int64_t, std::vector<OnOrder>> ReadOpenOrders(
    services::Store& store, const std::optional<platform::Date>& atEndOf, bool unaudited);

// The lowest levels by item, of the item itself or of these warehouses. An item's own level counts when
// `wholeBook`; where the one kind is not set the other stands in. Items without a level are left out.
std::unordered_map<std::int64_t, std::int64_t> ReadLowestLevels(services::Store& store,
                                                                const std::vector<std::int64_t>& warehouses,
                                                                bool wholeBook);

}  // namespace books::reports
