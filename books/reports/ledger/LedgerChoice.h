#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_set>

#include "books/reports/ReportFilter.h"
#include "books/services/Store.h"

namespace books::reports {

// Whose figures a ledger shows: warehouses and batches, by a filter and the rights that it carries.
struct LedgerChoice {
  LedgerChoice(services::Store& store, const platform::Variant& filter);

  bool HasWarehouse(std::int64_t id) const { return everyWarehouse || warehouses.contains(id); }
  bool HasBatchRange() const { return !batches.from.empty() || !batches.to.empty(); }

  bool everyWarehouse = true;
  std::unordered_set<std::int64_t> warehouses;
  Range batches;
  bool leavesOutZero = false;
  std::int32_t lastPeriod = 0;  // of the filter's range; 0 when it has none
};

// The last period that a filter asks for; 0 when it names none.
std::int32_t LastPeriodOf(const platform::Variant& filter);

// The filter's values that decide what a ledger shows, to see whether a filter is still the same.
class LedgerFilterMark {
 public:
  bool Fits(const platform::Variant& filter) const;
  void Take(const platform::Variant& filter);

 private:
  static constexpr std::array<std::string_view, 8> kKeys = {"BStockNumber", "EStockNumber",   "BBatchNo",
                                                            "EBatchNo",     "DataRightWhere", "EYear",
                                                            "EPeriod",      "Balance"};

  platform::Dictionary::State taken_;
  std::array<platform::Variant, kKeys.size()> values_;
  std::array<std::size_t, kKeys.size()> places_{};  // where the keys stood among the filter's entries
};

// A condition of the component ("AND t0.FNumber>='01' …", also with an order behind it) on the base data view
// under `alias`, as SQL; and its order, empty when it has none. Raises for a text that is not understood.
struct ItemCondition {
  reader::SqlText where;
  std::string order;
};
ItemCondition ReadItemCondition(std::string_view text, std::string_view alias);

}  // namespace books::reports
