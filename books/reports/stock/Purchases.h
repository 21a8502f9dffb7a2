#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>

#include "books/reports/ReportFilter.h"
#include "books/services/Store.h"
#include "platform/value/Date.h"

namespace books::reports {

// What was bought of an item, put together entry by entry in the order of the bills. A price is an entry's
// amount by its quantity in the base unit. A return takes quantity and amount back and names no price; nor
// does an entry without an amount.
class Bought {
 public:
  static constexpr std::size_t kKeptPrices = 7;

  void Add(std::int64_t quantity, std::optional<std::int64_t> amount, platform::Date day,
           std::int64_t supplier);

  std::int64_t Quantity() const { return quantity_; }
  std::int64_t Amount() const { return amount_; }
  // Of all that were named, the last ones are kept.
  std::size_t KeptPrices() const { return std::min(prices_, kKeptPrices); }
  // 0 is the last one.
  double Price(std::size_t back) const { return last_.at((prices_ - 1 - back) % kKeptPrices); }
  // Of these there must be a price.
  double Highest() const { return highest_; }
  double Lowest() const { return lowest_; }
  // Who named the lowest price, and when; of equal ones the last.
  std::int64_t LowestSupplier() const { return lowestSupplier_; }
  platform::Date LowestDay() const { return lowestDay_; }

 private:
  std::int64_t quantity_ = 0;
  std::int64_t amount_ = 0;
  std::size_t prices_ = 0;
  std::array<double, kKeptPrices> last_{};
  double highest_ = 0;
  double lowest_ = 0;
  std::int64_t lowestSupplier_ = 0;
  platform::Date lowestDay_;
};

// What the purchases of a report are put together by.
enum class PurchaseGroup : std::int8_t { kNothing, kEmployee, kDepartment, kWarehouse };

// By the group's base data (0 for none) and by item. Audited purchase receipts and estimated receipts that
// the filter selects: BDate, EDate; the ranges SupplyNumber, DeptNumber, StockNumber, EmpNumber; cboType;
// DataRightWhere on t7, the supplier, and t4, the warehouse.
using Purchases = std::map<std::int64_t, std::unordered_map<std::int64_t, Bought>>;
Purchases ReadPurchases(services::Store& store, const ReportFilter& filter, PurchaseGroup group);

// What lies of the items now in the warehouses that the filter selects and its user may see, in millionths;
// nothing when there is no such warehouse.
std::optional<std::unordered_map<std::int64_t, std::int64_t>> ReadStockSeen(services::Store& store,
                                                                            const ReportFilter& filter);

}  // namespace books::reports
