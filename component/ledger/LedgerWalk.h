#pragma once

#include <functional>
#include <utility>

#include "component/ledger/LedgerProgress.h"
#include "component/ledger/PeriodRows.h"

namespace component {

// Accounting periods from the one to the other, twelve a year whatever the calendar of the books.
struct LedgerRange {
  std::int16_t beginYear = 0;
  std::int16_t beginPeriod = 0;
  std::int16_t endYear = 0;
  std::int16_t endPeriod = 0;
};

// A period on the way through a range. An end before the beginning within one year still visits the first
// period; an end in an earlier year visits none.
class LedgerPeriod {
 public:
  explicit LedgerPeriod(const LedgerRange& range)
      : range_(range), year_(range.beginYear), period_(range.beginPeriod) {}

  std::int16_t Year() const { return year_; }
  std::int16_t Period() const { return period_; }
  bool IsPastEnd() const { return year_ > range_.endYear; }
  // Goes on within the year. False at the end of the year or of the range: after a twelfth period the number
  // is back at 1 while the year still stands, and that is how the year's total shows it.
  bool NextInYear();
  void NextYear();

 private:
  LedgerRange range_;
  std::int16_t year_;
  std::int16_t period_;
};

// The ledger of one item over a range of periods: for each period the balance brought forward, every movement
// with the balance after it, the period's total and the balance carried forward, and after each year's last
// period the year's total. Each period starts from its own opening rows; nothing is carried over.
class LedgerWalk {
 public:
  // Asks the data component for one period.
  using Fetch = std::function<platform::Variant(std::int16_t year, std::int16_t period)>;
  struct Item {
    LedgerDecimals decimals;
    bool showNoHappen = false;  // keeps periods without a single row
  };

  LedgerWalk(const Item& item, PeriodData& data, LedgerProgress progress, LedgerPage& page)
      : item_(item),
        data_(data),
        progress_(std::move(progress)),
        page_(page),
        rows_(data, PeriodRows::Differences::kLeftOut,
              [&page](const LedgerRow& row) { page.AddLedgerRow(row); }) {}

  void Run(const LedgerRange& range, const Fetch& fetch);

 private:
  void AddPeriod(const LedgerPeriod& at, const Fetch& fetch);
  void AddOpening();
  void AddMovements();
  void AddClosing();
  void AddYearTotal(const LedgerPeriod& at);

  Item item_;
  PeriodData& data_;
  LedgerProgress progress_;
  LedgerPage& page_;
  PeriodRows rows_;
  LedgerTotals year_;
};

}  // namespace component
