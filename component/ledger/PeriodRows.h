#pragma once

#include <functional>

#include "component/ledger/LedgerPage.h"
#include "component/ledger/PeriodData.h"

namespace component {

// How many decimals the browser shows; nothing is rounded to them.
struct LedgerDecimals {
  std::int16_t quantity = 0;
  std::int16_t price = 0;
};

// The rows of one period of one item: it keeps the running balance and the period's totals, and gives each
// row away as it is made. Whoever drives it decides which rows a period has.
class PeriodRows {
 public:
  using AddRow = std::function<void(const LedgerRow&)>;
  enum class Differences : std::uint8_t { kLeftOut, kRolled };

  // Left out, cost differences show on opening and closing rows alone, as the data component has them.
  PeriodRows(PeriodData& data, Differences differences, AddRow add)
      : data_(data), withDiff_(differences == Differences::kRolled), add_(std::move(add)) {}

  // Running balance and totals start at 0.
  void Begin(std::int16_t year, std::int16_t period, LedgerDecimals decimals);

  void AddEmptyOpening();
  void AddOpening(std::size_t position);
  void AddMovement(std::size_t position);
  void AddPeriodTotal(const LedgerFigures& balance);
  void AddClosing(const platform::RowText& batchNo, const LedgerFigures& figures);

  const LedgerFigures& Balance() const { return running_.Figures(); }
  const LedgerTotals& Totals() const { return totals_; }

 private:
  void Add(LedgerRow& row);

  PeriodData& data_;
  bool withDiff_;
  AddRow add_;
  std::int16_t year_ = 0;
  std::int16_t period_ = 0;
  LedgerDecimals decimals_;
  RunningBalance running_;
  LedgerTotals totals_;
};

}  // namespace component
