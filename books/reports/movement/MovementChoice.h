#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "books/posting/Periods.h"
#include "books/reports/ReportFilter.h"
#include "books/reports/stock/StockFilter.h"
#include "books/services/Store.h"

namespace books::reports {

// Ids of base data or batches that a range, or a right, leaves in.
struct Selection {
  bool all = true;
  std::unordered_set<std::int64_t> ids;  // unused with `all`

  bool Has(std::int64_t id) const { return all || ids.contains(id); }
};

// Which figures a movement report shows.
//
// - Days: BDate to EDate, both included; without BDate from the beginning, without EDate to the end.
// - Goods without batch or auxiliary property have no number that could lie in a range of them.
// - A department and an employee are known of bills only: their ranges choose movements, the opening figures
//   stay those of the goods, and closing figures follow from what is shown.
// - A transfer at the same price is left out with chkNoDB, and with a chkShowTran that is given as 0; but
//   only where both its halves are shown in one place, so that figures always add up.
struct MovementChoice {
  // `stockAlias` is what the clause of rights calls the warehouses.
  MovementChoice(services::Store& store, const ReportFilter& filter, std::string_view stockAlias);

  bool Happens(platform::Date day) const { return day >= base.from && day <= lastDay; }

  // Where the opening figures come from, and the first day shown.
  struct Base {
    posting::BalanceBase balance;
    platform::Date from;
  };
  Base base;
  platform::Date lastDay;
  Selection warehouses;
  Selection batches;
  Selection auxiliaries;
  bool byBill = false;  // whether `bills` says anything
  Conditions bills;     // on d (department) and e (employee), the bill's base data
  bool hidesSamePrice = false;
  bool byWarehouse = false;  // the report tells warehouses apart; set by the report
};

// Whether a report is about all items, or those that are managed by batch.
enum class MovementGoods { kAll, kBatchManaged };

// The filter's range of items, on b (base data) and i (item).
Conditions MovementItems(const ReportFilter& filter, MovementGoods goods, bool shortNumbers);

}  // namespace books::reports
