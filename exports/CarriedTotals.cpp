#include "exports/CarriedTotals.h"

namespace exports {
namespace {

constexpr std::string_view kCaptionField = "FTranTypeName";

}  // namespace

CarriedTotals::CarriedTotals(const ItemPages& pages, const Grid& grid)
    : pages_(pages), grid_(grid), totals_(pages.Rows()) {
  const auto& columns = grid.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].field == kCaptionField) captionColumn_ = i;
  }
}

std::string CarriedTotals::Cell(std::size_t column, const std::string& caption) const {
  if (column == captionColumn_) return caption;
  const platform::Variant figure = totals_.Of(grid_.Columns()[column].field);
  return figure.IsNull() ? std::string() : grid_.Shown(column, figure);
}

}  // namespace exports
