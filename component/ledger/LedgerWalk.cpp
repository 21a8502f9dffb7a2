// The walk goes year by year and, within a year, period by period. A period is fetched, then its rows are
// added in the order of the page: opening, movements, period total, closing. Only a period without a single
// row may be left out; one with balances and no movement stays.
#include "component/ledger/LedgerWalk.h"

#include <limits>

namespace component {

bool LedgerPeriod::NextInYear() {
  if (period_ >= range_.endPeriod && year_ == range_.endYear) return false;
  if (period_ == 12) {
    period_ = 1;
    return false;
  }
  if (period_ == std::numeric_limits<std::int16_t>::max()) {
    throw platform::Error(platform::ErrorNumber::kOverflow, "TOVStockRpt.Rpt10402",
                          "overflow: there is no period after " + std::to_string(period_));
  }
  ++period_;
  return true;
}

void LedgerPeriod::NextYear() {
  if (year_ == std::numeric_limits<std::int16_t>::max()) {
    throw platform::Error(platform::ErrorNumber::kOverflow, "TOVStockRpt.Rpt10402",
                          "overflow: there is no year after " + std::to_string(year_));
  }
  ++year_;
}

void LedgerWalk::Run(const LedgerRange& range, const Fetch& fetch) {
  for (LedgerPeriod at(range); !at.IsPastEnd(); at.NextYear()) {
    year_ = {};
    do {
      AddPeriod(at, fetch);
    } while (at.NextInYear());
    AddYearTotal(at);
  }
}

void LedgerWalk::AddPeriod(const LedgerPeriod& at, const Fetch& fetch) {
  progress_.BeginFetch(at.Year(), at.Period());
  data_.Take(fetch(at.Year(), at.Period()));
  const std::int32_t rowCount = data_.RowCount();
  page_.ShareTexts(*data_.happened.Rows());
  progress_.BeginRows(at.Year(), at.Period(), rowCount);
  if (rowCount > 0 || item_.showNoHappen) {
    rows_.Begin(at.Year(), at.Period(), item_.decimals);
    if (rowCount > 0) progress_.ShowBar();
    AddOpening();
    AddMovements();
    year_.Add(rows_.Totals());
    AddClosing();
    if (!data_.KeepsTextsIn(page_.Texts())) page_.WriteRows();  // the texts go with the answer
  }
  progress_.Full();
}

void LedgerWalk::AddOpening() {
  const std::size_t count = data_.opening.Count();
  if (count == 0) rows_.AddEmptyOpening();
  for (std::size_t i = 0; i < count; ++i) {
    rows_.AddOpening(i);
    progress_.RowDone();
  }
}

void LedgerWalk::AddMovements() {
  const std::size_t count = data_.happened.Count();
  for (std::size_t i = 0; i < count; ++i) {
    rows_.AddMovement(i);
    progress_.RowDone();
  }
  if (count > 0) rows_.AddPeriodTotal({});
}

// Without closing rows the running balance closes the period, and its price is still 0 when nothing moved:
// such a row shows quantity and amount alone. Closing rows are shown as they are, but for zero rows beside
// others.
void LedgerWalk::AddClosing() {
  const std::size_t count = data_.closing.Count();
  if (count == 0) rows_.AddClosing({}, rows_.Balance());
  for (std::size_t i = 0; i < count; ++i) {
    const LedgerBalance& closing = data_.Closing(i);
    const bool isZero = closing.figures.quantity == 0 && closing.figures.amount == platform::Currency();
    if (count == 1 || !isZero) rows_.AddClosing(closing.batchNo, closing.figures);
    progress_.RowDone();
  }
}

void LedgerWalk::AddYearTotal(const LedgerPeriod& at) {
  if (year_.IsZero()) return;
  LedgerRow row = SummaryRow(LedgerRowKind::kYearTotal, at.Year(), at.Period(), data_.lastDay);
  row.in = year_.In();
  row.out = year_.Out();
  row.qtyDecimal = item_.decimals.quantity;
  row.priceDecimal = item_.decimals.price;
  page_.AddLedgerRow(row);
}

}  // namespace component
