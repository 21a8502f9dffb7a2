#include "books/reports/stock/StockItems.h"

#include <algorithm>
#include <numeric>

#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using database::Statement;

// The item itself is found through its base data, whose numbers are indexed.
constexpr std::string_view kItemSql = R"sql(
SELECT i.id, b.{number}, b.name, i.model, i.barcode, i.unit_id, COALESCE(i.aux_unit_id, 0), b.disabled,
       COALESCE(b.parent_id, 0)
FROM base_data b
CROSS JOIN item i
WHERE b.class_id = 4 AND i.id = b.id AND {items}
ORDER BY {order}
)sql";

constexpr std::string_view kPackageSql =
    "SELECT item_id, unit_id, factor FROM item_unit WHERE package = 1 AND item_id BETWEEN ? AND ?";

constexpr std::string_view kCategorySql =
    "SELECT id, COALESCE(parent_id, 0), level, {number}, name FROM base_data "
    "WHERE class_id = 4 AND detail = 0 ORDER BY number";

}  // namespace

StockItems::StockItems(services::Store& store, const Conditions& where, const ItemSort& order,
                       LevelRange levels)
    : shortNumbers_(store.UsesShortNumbers()) {
  ReadUnits(store);
  ReadItems(store, where, order);
  ReadPackages(store);
  if (levels.Count() == 0) return;
  ReadCategories(store, levels);
  SortByCategory(order.descending);
}

void StockItems::ReadItems(services::Store& store, const Conditions& where, const ItemSort& order) {
  const Slot slots[] = {
      {"number", shortNumbers_ ? "short_number" : "number"}, {"items", where}, {"order", order.sql}};
  const reader::SqlText text = Compose(kItemSql, slots);
  Statement row = store.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  while (row.Step()) {
    StockItem& item = items_.emplace_back();
    item.id = row.Integer(0);
    item.number = row.TextView(1);
    item.name = row.TextView(2);
    item.model = row.TextView(3);
    item.barcode = row.TextView(4);
    item.unit = units_[row.Integer(5)];
    item.auxUnit = units_[row.Integer(6)];
    item.disabled = row.Boolean(7);
    parents_.push_back(row.Integer(8));
  }
}

void StockItems::ReadUnits(services::Store& store) {
  Statement row = store.Reading().Prepare("SELECT id, name FROM unit");
  while (row.Step()) units_.emplace(row.Integer(0), row.Text(1));
}

void StockItems::ReadPackages(services::Store& store) {
  if (items_.empty()) return;
  std::unordered_map<std::int64_t, StockItem*> byId;
  byId.reserve(items_.size());
  for (StockItem& item : items_) byId.emplace(item.id, &item);
  const auto [first, last] = std::ranges::minmax_element(items_, {}, &StockItem::id);
  Statement row = store.Reading().Query(kPackageSql, first->id, last->id);
  while (row.Step()) {
    const auto item = byId.find(row.Integer(0));
    if (item == byId.end()) continue;
    item->second->packages.push_back({.unit = units_[row.Integer(1)], .factor = row.Integer(2)});
  }
  for (StockItem& item : items_) {
    std::ranges::sort(item.packages, [](const Package& left, const Package& right) {
      return left.factor != right.factor ? left.factor > right.factor : left.unit < right.unit;
    });
  }
}

void StockItems::ReadCategories(services::Store& store, LevelRange levels) {
  const Slot slots[] = {{"number", shortNumbers_ ? "short_number" : "number"}};
  Statement row = store.Reading().Prepare(Compose(kCategorySql, slots).sql);
  while (row.Step()) {
    const auto rank = static_cast<std::int32_t>(categories_.size()) + 1;
    categories_.emplace(row.Integer(0), Category{.parent = row.Integer(1),
                                                 .level = row.Int32(2),
                                                 .number = row.Text(3),
                                                 .name = row.Text(4),
                                                 .rank = rank});
  }
  for (std::size_t i = 0; i < items_.size(); ++i) {
    items_[i].above.resize(static_cast<std::size_t>(levels.Count()));
    auto group = categories_.find(parents_[i]);
    for (; group != categories_.end(); group = categories_.find(group->second.parent)) {
      const std::int32_t level = group->second.level;
      if (level >= levels.begin && level <= levels.end) {
        items_[i].above[static_cast<std::size_t>(level - levels.begin)] = &group->second;
      }
    }
  }
}

void StockItems::SortByCategory(bool descending) {
  const auto rankOf = [](const Category* category) { return category == nullptr ? 0 : category->rank; };
  const auto before = [&](const StockItem& left, const StockItem& right) {
    return std::ranges::lexicographical_compare(left.above, right.above, {}, rankOf, rankOf);
  };
  std::ranges::stable_sort(items_, [&](const StockItem& left, const StockItem& right) {
    return descending ? before(right, left) : before(left, right);
  });
  parents_.clear();
}

}  // namespace books::reports
