#include "exports/CarriedTotals.h"

#include <algorithm>

namespace exports {
namespace {

using platform::Variant;

constexpr std::array<std::string_view, 6> kFigureFields = {"FInQty",     "FInAmount", "FOutQty",
                                                           "FOutAmount", "FBalQty",   "FBalAmount"};
constexpr std::string_view kCaptionField = "FTranTypeName";

constexpr std::int32_t kOpening = -1;  // the mark (FID) of a row that opens a period

}  // namespace

CarriedTotals::CarriedTotals(const ItemPages& pages, const Grid& grid) : pages_(pages), grid_(grid) {
  ResolveFields();
  const auto& columns = grid.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto figure = std::ranges::find(kFigureFields, columns[i].field);
    const bool carried = carries_ && figure != kFigureFields.end();
    columns_.push_back(carried ? std::optional(static_cast<Figure>(figure - kFigureFields.begin()))
                               : std::nullopt);
    if (columns[i].field == kCaptionField) captionColumn_ = i;
  }
}

void CarriedTotals::ResolveFields() {
  const platform::Recordset& rows = pages_.Rows();
  bool all = true;
  const auto resolve = [&](std::string_view name, std::size_t& field) {
    const std::optional<std::size_t> found = rows.FindField(name);
    all = all && found;
    field = found.value_or(0);
  };
  for (std::size_t i = 0; i < kFigures; ++i) resolve(kFigureFields[i], figureFields_[i]);
  resolve("FYear", year_);
  resolve("FPeriod", period_);
  resolve("FID", mark_);
  resolve("FSumSort", sumSort_);
  carries_ = all;
}

void CarriedTotals::BeginItem() {
  in_ = out_ = balance_ = {};
  running_ = 0;
}

CarriedTotals::Figures CarriedTotals::FiguresAt(Figure quantity, std::size_t row) const {
  const platform::Recordset& rows = pages_.Rows();
  return {.quantity = rows.DoubleAt(figureFields_[quantity], row),
          .amount = rows.CurrencyAt(figureFields_[quantity + 1], row)};
}

void CarriedTotals::Add(std::size_t position) {
  if (!carries_) return;
  constexpr std::int32_t kPeriodsAYear = 100;  // more than there are
  const platform::Recordset& rows = pages_.Rows();
  const std::size_t row = rows.RowAt(position);
  const std::int32_t period = rows.IntegerAt(year_, row) * kPeriodsAYear + rows.IntegerAt(period_, row);
  if (period != running_) in_ = out_ = balance_ = {};
  running_ = period;
  if (rows.IntegerAt(sumSort_, row) == 0) {
    in_.Add(FiguresAt(kInQty, row));
    out_.Add(FiguresAt(kOutQty, row));
    balance_ = FiguresAt(kBalQty, row);
  } else if (rows.IntegerAt(mark_, row) == kOpening) {
    balance_.Add(FiguresAt(kBalQty, row));
  }
}

std::string CarriedTotals::Cell(std::size_t column, const std::string& caption) const {
  if (column == captionColumn_) return caption;
  if (!columns_[column]) return {};
  const Figure figure = *columns_[column];
  const Figures figures = figure < kOutQty ? in_ : figure < kBalQty ? out_ : balance_;
  const bool isQuantity = figure == kInQty || figure == kOutQty || figure == kBalQty;
  return grid_.Shown(column, isQuantity ? Variant(figures.quantity) : Variant(figures.amount));
}

}  // namespace exports
