#include "exports/LedgerTotals.h"

#include <algorithm>

namespace exports {
namespace {

constexpr std::int32_t kOpening = -1;  // the mark (FID) of a row that opens a period

}  // namespace

LedgerTotals::LedgerTotals(const platform::Recordset& rows) : rows_(rows) {
  const auto resolve = [&](std::string_view name) {
    const std::optional<std::size_t> found = rows.FindField(name);
    carries_ = carries_ && found;
    return found.value_or(0);
  };
  std::ranges::transform(kFields, fields_.begin(), resolve);
  year_ = resolve("FYear");
  period_ = resolve("FPeriod");
  mark_ = resolve("FID");
  sumSort_ = resolve("FSumSort");
}

void LedgerTotals::Begin() {
  totals_ = {};
  running_ = 0;
}

LedgerTotals::Figures LedgerTotals::FiguresAt(Side side, std::size_t row) const {
  return {.quantity = rows_.DoubleAt(fields_.at(2 * side), row),
          .amount = rows_.CurrencyAt(fields_.at(2 * side + 1), row)};
}

void LedgerTotals::Add(std::size_t row) {
  if (!carries_) return;
  constexpr std::int32_t kPeriodsAYear = 100;  // more than there are
  const std::int32_t period = rows_.IntegerAt(year_, row) * kPeriodsAYear + rows_.IntegerAt(period_, row);
  if (period != running_) totals_ = {};
  running_ = period;
  if (rows_.IntegerAt(sumSort_, row) == 0) {
    totals_[kIn].Add(FiguresAt(kIn, row));
    totals_[kOut].Add(FiguresAt(kOut, row));
    totals_[kBalance] = FiguresAt(kBalance, row);
  } else if (rows_.IntegerAt(mark_, row) == kOpening) {
    totals_[kBalance].Add(FiguresAt(kBalance, row));
  }
}

platform::Variant LedgerTotals::Of(std::string_view field) const {
  const auto place = static_cast<std::size_t>(std::ranges::find(kFields, field) - kFields.begin());
  if (place == kFields.size() || !carries_) return platform::Null{};
  const Figures& figures = totals_.at(place / 2);
  return place % 2 == 0 ? platform::Variant(figures.quantity) : platform::Variant(figures.amount);
}

}  // namespace exports
