#include "component/movement/MovementColumns.h"

#include <string>
#include <vector>

#include "component/frame/MMTS.h"

namespace component {
namespace {

Column Narrowed(const FigureColumn& figure, const FigureGroup& group, Variety variety) {
  const bool shown = variety != Variety::kBatches ||
                     (figure.type != ColumnType::kPrice && figure.type != ColumnType::kAmount);
  return {.caption = figure.caption,
          .second = figure.second,
          .type = figure.type,
          .field = group.fields.*figure.field,
          .visible = figure.visible && shown,
          .mask = shown ? static_cast<std::int16_t>(figure.mask & group.mask) : std::int16_t{0}};
}

}  // namespace

void AddLeadingColumns(std::span<const LeadingColumn> columns, Variety variety, RowGroup group) {
  const std::int32_t appType = GetAppType();
  for (const LeadingColumn& leading : columns) {
    if (leading.group != kNoGroup && leading.group != group) continue;
    if (leading.variety != Variety::kEvery && leading.variety != variety) continue;
    if ((leading.appTypes & appType) != appType) continue;
    AddColumns({&leading.column, 1});
  }
}

void AddFigureGroup(const FigureGroup& group, std::span<const FigureColumn> layout, Variety variety) {
  std::vector<Column> columns;
  for (const FigureColumn& figure : layout) {
    if (variety == Variety::kBatches && figure.type == ColumnType::kPackages) continue;
    columns.push_back(Narrowed(figure, group, variety));
  }
  std::string caption(group.name);
  for (std::size_t i = 1; i < columns.size(); ++i) caption += "+|";
  columns.front().caption = caption;
  AddColumns(columns);
}

double FilterNumber(const platform::Dictionary& filter, std::string_view key) {
  return platform::LeadingNumber(platform::ToText(filter.Value(key)));
}

RowGroup FilterGroup(const platform::Dictionary& filter, std::string_view key) {
  const double number = FilterNumber(filter, key);
  for (const RowGroup group : {kByItem, kByStock, kByBatch}) {
    if (number == static_cast<double>(group)) return group;
  }
  return kNoGroup;
}

}  // namespace component
