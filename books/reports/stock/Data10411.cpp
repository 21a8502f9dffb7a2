#include "books/reports/stock/Data10411.h"

#include <algorithm>
#include <array>
#include <deque>
#include <tuple>
#include <utility>

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"
#include "platform/value/Clock.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::RowAppender;

constexpr std::int32_t kGroupSort = 1;
constexpr std::int32_t kTotalSort = 101;

enum class GroupedBy : std::int8_t { kNothing, kItem, kWarehouse };
constexpr std::int32_t kGroups = 3;

enum Column : std::size_t {
  kStockNumber,
  kStockName,
  kItemNumber,
  kItemName,
  kModel,
  kAuxPropName,
  kUnitName,
  kSecUnitName,
  kQty,
  kSecQty,
  kBal,
  kBatchNo,
  kProduced,
  kPeriod,
  kExpires,
  kOverdays,
  kSumSort,
};

struct NamedField {
  std::string_view name;
  FieldType type = FieldType::kText;
};
constexpr std::array<NamedField, kSumSort + 1> kFields = {{
    {"FStockNumber"},
    {"FStockName"},
    {"FItemNumber"},
    {"FItemName"},
    {"FModel"},
    {"FAuxPropName"},
    {"FUnitName"},
    {"FSecUnitName"},
    {"FQty", FieldType::kDouble},
    {"FSecQty", FieldType::kDouble},
    {"FBal", FieldType::kCurrency},
    {"FBatchNo"},
    {"FKFDate", FieldType::kDate},
    {"FKFPeriod", FieldType::kInt32},
    {"FExpDate", FieldType::kDate},
    {"Overdays", FieldType::kInt32},
    {"FSumSort", FieldType::kInt32},
}};

// Small, as many are sorted. Batches stay where they are kept, auxiliary properties with the cells.
struct Line {
  std::size_t item = 0;  // place in the list of items
  std::size_t warehouse = 0;
  const std::string* aux = nullptr;
  const BatchFacts* batch = nullptr;
  std::int32_t overdays = 0;
  Figures figures;
};

// What a line is sorted by, as a number; items are in the order of theirs.
using SortKey = std::int64_t (*)(const Line&);
struct Order {
  SortKey key;
  bool descending = false;
};

Order OrderOf(const ReportFilter& filter) {
  static constexpr SortField kSortFields[] = {
      {"FItemNumber", "item"}, {"FQty", "quantity"}, {"FBal", "amount"}, {"Overdays", "overdays"}};
  static constexpr std::pair<std::string_view, SortKey> kKeys[] = {
      {"item", [](const Line& line) { return static_cast<std::int64_t>(line.item); }},
      {"quantity", [](const Line& line) { return line.figures.quantity; }},
      {"amount", [](const Line& line) { return line.figures.amount; }},
      {"overdays", [](const Line& line) { return std::int64_t{line.overdays}; }},
  };
  const std::string text = filter.OrderBy(kSortFields, "item ASC");
  const std::string_view first = std::string_view(text).substr(0, text.find(','));
  const std::string_view name = first.substr(0, first.find(' '));
  const auto key = std::ranges::find(kKeys, name, &std::pair<std::string_view, SortKey>::first);
  return {.key = key->second, .descending = first.ends_with("DESC")};
}

std::size_t GroupOf(const Line& line, GroupedBy by) {
  if (by == GroupedBy::kNothing) return 0;
  return by == GroupedBy::kItem ? line.item : line.warehouse;
}

// The lines' batches are added to `kept`.
std::vector<Line> LinesOf(const std::vector<StockItem>& items, StockCells& cells, platform::Date due,
                          std::deque<BatchFacts>& kept) {
  std::vector<Line> lines;
  for (std::size_t i = 0; i < items.size(); ++i) {
    for (const Cell& cell : cells.Of(items[i].id)) {
      const BatchFacts& batch = cells.Batch(cell.batch);
      if (!batch.expires) continue;
      lines.push_back({.item = i,
                       .warehouse = cell.warehouse,
                       .aux = &cells.Aux(cell.aux).name,
                       .batch = &kept.emplace_back(batch),
                       .overdays = due.Days() - batch.expires->Days(),
                       .figures = cell.figures});
    }
  }
  return lines;
}

void Sort(std::vector<Line>& lines, GroupedBy by, Order order) {
  std::ranges::sort(lines, [&](const Line& left, const Line& right) {
    const std::size_t leftGroup = GroupOf(left, by);
    const std::size_t rightGroup = GroupOf(right, by);
    if (leftGroup != rightGroup) return leftGroup < rightGroup;
    const std::int64_t leftKey = order.key(left);
    const std::int64_t rightKey = order.key(right);
    if (leftKey != rightKey) return order.descending ? leftKey > rightKey : leftKey < rightKey;
    // Equal lines: what has expired first.
    return std::forward_as_tuple(left.item, right.overdays, left.batch->number, left.warehouse, *left.aux) <
           std::forward_as_tuple(right.item, left.overdays, right.batch->number, right.warehouse, *right.aux);
  });
}

class ShelfLifeRows {
 public:
  ShelfLifeRows(platform::Recordset& rows, const std::vector<StockItem>& items,
                const std::vector<Warehouse>& warehouses)
      : to_(rows), items_(items), warehouses_(warehouses) {}

  void Add(const Line& line) {
    const StockItem& item = items_[line.item];
    SetWarehouse(line);
    SetItem(item);
    to_.SetText(kModel, item.model);
    to_.SetText(kAuxPropName, *line.aux);
    to_.SetText(kUnitName, item.unit);
    to_.SetText(kSecUnitName, item.auxUnit);
    if (!item.auxUnit.empty()) to_.SetDouble(kSecQty, AsQuantity(line.figures.auxQuantity));
    to_.SetText(kBatchNo, line.batch->number);
    if (line.batch->produced) to_.SetDate(kProduced, *line.batch->produced);
    to_.SetInteger(kPeriod, line.batch->shelfLifeDays);
    to_.SetDate(kExpires, *line.batch->expires);
    to_.SetInteger(kOverdays, line.overdays);
    Commit(line.figures, 0);
  }

  // The sum of the group that the line belongs to.
  void AddGroup(const Line& line, GroupedBy by, const Figures& figures) {
    if (by == GroupedBy::kItem) SetItem(items_[line.item]);
    if (by == GroupedBy::kWarehouse) SetWarehouse(line);
    // In the first column of the two that the group does not use.
    to_.SetText(by == GroupedBy::kItem ? kStockName : kItemNumber, "小计");
    Commit(figures, kGroupSort);
  }

  void AddTotal(const Figures& figures) {
    to_.SetText(kStockName, "合计");
    Commit(figures, kTotalSort);
  }

 private:
  void SetWarehouse(const Line& line) {
    to_.SetText(kStockNumber, warehouses_[line.warehouse].number);
    to_.SetText(kStockName, warehouses_[line.warehouse].name);
  }

  void SetItem(const StockItem& item) {
    to_.SetText(kItemNumber, item.number);
    to_.SetText(kItemName, item.name);
  }

  void Commit(const Figures& figures, std::int32_t sort) {
    to_.SetDouble(kQty, AsQuantity(figures.quantity));
    to_.SetCurrency(kBal, Currency::FromUnits(figures.amount));
    to_.SetInteger(kSumSort, sort);
    to_.CommitRow();
  }

  RowAppender to_;
  const std::vector<StockItem>& items_;
  const std::vector<Warehouse>& warehouses_;
};

void AddLines(ShelfLifeRows& to, const std::vector<Line>& lines, GroupedBy by) {
  Figures total;
  Figures group;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    to.Add(lines[i]);
    total += lines[i].figures;
    group += lines[i].figures;
    const bool last = i + 1 == lines.size() || GroupOf(lines[i + 1], by) != GroupOf(lines[i], by);
    if (!last || by == GroupedBy::kNothing) continue;
    to.AddGroup(lines[i], by, std::exchange(group, {}));
  }
  if (!lines.empty()) to.AddTotal(total);
}

}  // namespace

platform::Ref<platform::Recordset> ReadShelfLife(services::Store& store, const platform::Variant& filter) {
  const database::Transaction onePicture(store.Reading(), database::Transaction::Kind::kRead);
  const ReportFilter asked(filter);
  const platform::Date due = DayOf(asked, "EDate").value_or(platform::Clock::Today());
  const auto by = static_cast<GroupedBy>(ChoiceOf(asked, "cmbGroup", kGroups));
  const Order order = OrderOf(asked);
  const std::vector<Warehouse> warehouses = ChooseWarehouses(store, asked, "t3");
  Conditions chosen = ItemConditions(asked, store.UsesShortNumbers());
  // Few items have batches at all; the others need not be read.
  chosen.Add({.sql = "EXISTS (SELECT 1 FROM batch t WHERE t.item_id = i.id)", .parameters = {}});
  if (FlagOf(asked, "chkHideForbiddenGood")) chosen.Add({.sql = "b.disabled = 0", .parameters = {}});
  const StockItems items(store, chosen, {.sql = "b.number, b.id"}, {});
  CellsAsked goods;
  goods.onlyBatches = true;
  StockCells cells(store, warehouses, std::move(goods));
  std::deque<BatchFacts> batches;
  std::vector<Line> lines = LinesOf(items.All(), cells, due, batches);
  Sort(lines, by, order);

  auto rows = platform::MakeRef<platform::Recordset>();
  for (const NamedField& field : kFields) rows->AppendField(field.name, field.type);
  rows->Open();
  ShelfLifeRows to(*rows, items.All(), warehouses);
  AddLines(to, lines, by);
  return rows;
}

}  // namespace books::reports
