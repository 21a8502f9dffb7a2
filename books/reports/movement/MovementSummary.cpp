// Items are read in the order of the report, each with its balances and movements in one go, and its rows are
// summed here. By warehouse the rows are then brought under their warehouses.
#include "books/reports/movement/MovementSummary.h"

#include <algorithm>

#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using database::Statement;

constexpr std::int32_t kInnerSumSort = 100;
constexpr std::int32_t kTotalSort = 101;

constexpr std::string_view kWarehouseSql = R"sql(
SELECT id, name, COALESCE(parent_id, 0) FROM base_data
WHERE class_id = 5 AND detail = 1
ORDER BY {order}
)sql";

constexpr std::string_view kWarehouseGroupSql = R"sql(
SELECT id, COALESCE(parent_id, 0), level, number, name FROM base_data
WHERE class_id = 5 AND detail = 0
ORDER BY number
)sql";

constexpr std::string_view kSupplierSql = R"sql(
SELECT i.id, b.name FROM item i JOIN base_data b ON b.id = i.default_supplier_id
)sql";

constexpr std::string_view kBatchSql = R"sql(
SELECT t.id, t.number
FROM batch t
JOIN item i ON i.id = t.item_id
JOIN base_data b ON b.id = i.id
WHERE {items}
)sql";

std::vector<const Category*> Above(const std::unordered_map<std::int64_t, Category>& groups,
                                   std::int64_t parent, LevelRange levels) {
  std::vector<const Category*> above(static_cast<std::size_t>(levels.Count()));
  for (auto group = groups.find(parent); group != groups.end(); group = groups.find(group->second.parent)) {
    const std::int32_t level = group->second.level;
    if (level < levels.begin || level > levels.end) continue;
    above[static_cast<std::size_t>(level - levels.begin)] = &group->second;
  }
  return above;
}

}  // namespace

void SummaryFigures::Add(const SummaryFigures& other) {
  opening += other.opening;
  receipts += other.receipts;
  issues += other.issues;
  groups.resize(other.groups.size());
  for (std::size_t i = 0; i < groups.size(); ++i) groups[i] += other.groups[i];
  moved = moved || other.moved;
}

MovementSummary::MovementSummary(services::Store& store, const ReportFilter& asked, MovementChoice choice,
                                 const SummaryShape& shape)
    : store_(store),
      choice_(std::move(choice)),
      shape_(shape),
      order_(OrderOf(asked, store.UsesShortNumbers())),
      items_(store, MovementItems(asked, shape.goods, store.UsesShortNumbers()), order_.items,
             shape.by == SummaryBy::kWarehouse ? LevelRange() : shape.levels) {
  choice_.byWarehouse = shape.by == SummaryBy::kWarehouse;
  if (choice_.byWarehouse) ReadWarehouses(order_.warehouses);
  if (shape.by == SummaryBy::kBatch) ReadBatches(MovementItems(asked, shape.goods, store.UsesShortNumbers()));
  ReadSuppliers();
}

// Items by warehouse stay in ascending order when the warehouses are sorted, and the other way round.
MovementSummary::Order MovementSummary::OrderOf(const ReportFilter& asked, bool shortNumbers) {
  static constexpr SortField kFields[] = {{"FItemNumber", "item"}, {"FCommonName", "warehouse"}};
  const std::string order = asked.OrderBy(kFields, "");
  const bool descending = order.find(" DESC") != std::string::npos;
  const bool byWarehouse = order.starts_with("warehouse");
  const std::string number = shortNumbers ? "b.short_number" : "b.number";
  const auto directed = [](bool down) { return std::string(down ? " DESC" : " ASC"); };
  Order result;
  result.items.descending = descending && !byWarehouse;
  result.items.sql = number + directed(result.items.descending) + ", b.id";
  result.warehouses = byWarehouse ? "name" + directed(descending) + ", number" : "number";
  return result;
}

void MovementSummary::ReadWarehouseGroups() {
  Statement row = store_.Reading().Prepare(kWarehouseGroupSql);
  while (row.Step()) {
    const auto rank = static_cast<std::int32_t>(warehouseGroups_.size()) + 1;
    warehouseGroups_.emplace(row.Integer(0), Category{.parent = row.Integer(1),
                                                      .level = row.Int32(2),
                                                      .number = row.Text(3),
                                                      .name = row.Text(4),
                                                      .rank = rank});
  }
}

void MovementSummary::ReadWarehouses(const std::string& order) {
  ReadWarehouseGroups();
  const Slot slots[] = {{"order", order}};
  Statement row = store_.Reading().Prepare(Compose(kWarehouseSql, slots).sql);
  while (row.Step()) {
    warehouses_.push_back({.id = row.Integer(0),
                           .name = row.Text(1),
                           .above = Above(warehouseGroups_, row.Integer(2), shape_.levels)});
  }
  const auto rankOf = [](const Category* group) { return group == nullptr ? 0 : group->rank; };
  std::ranges::stable_sort(warehouses_, [&](const SummaryWarehouse& left, const SummaryWarehouse& right) {
    return std::ranges::lexicographical_compare(left.above, right.above, {}, rankOf, rankOf);
  });
  for (std::size_t i = 0; i < warehouses_.size(); ++i) warehouseAt_.emplace(warehouses_[i].id, i);
}

void MovementSummary::ReadSuppliers() {
  Statement row = store_.Reading().Prepare(kSupplierSql);
  while (row.Step()) suppliers_.emplace(row.Integer(0), row.Text(1));
}

void MovementSummary::ReadBatches(const Conditions& items) {
  const Slot slots[] = {{"items", items}};
  const reader::SqlText text = Compose(kBatchSql, slots);
  Statement row = store_.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  while (row.Step()) batches_.emplace(row.Integer(0), row.Text(1));
}

const std::string& MovementSummary::SupplierOf(std::int64_t itemId) const {
  static const std::string kNone;
  const auto known = suppliers_.find(itemId);
  return known == suppliers_.end() ? kNone : known->second;
}

void MovementSummary::Read(const std::function<void(const SummaryLine&)>& sink) {
  MovementReader reader(store_, choice_,
                        {.openings = shape_.by == SummaryBy::kItem ? Openings::kSum : Openings::kByPlace,
                         .bills = false,
                         .warehouses = choice_.byWarehouse,
                         .batches = shape_.by == SummaryBy::kBatch,
                         .auxiliaries = false});
  rows_.clear();
  for (const StockItem& item : items_.All()) AddRows(item, reader.Read(item.id));
  if (shape_.by == SummaryBy::kWarehouse) {
    std::ranges::stable_sort(rows_, {}, &SummaryLine::warehouse);
  }
  HandOut(sink);
}

// The item's row for a place, new when it has none yet.
SummaryLine& MovementSummary::RowOf(const StockItem& item, const Place& place) {
  const std::int64_t group = shape_.by == SummaryBy::kWarehouse ? place.warehouseId
                             : shape_.by == SummaryBy::kBatch   ? place.batchId
                                                                : 0;
  RowOfPlace& known = rowOf_[group];
  if (known.item == &item) return rows_[known.row];
  known = {.item = &item, .row = rows_.size()};
  SummaryLine& row = rows_.emplace_back();
  row.item = &item;
  if (shape_.by == SummaryBy::kWarehouse) row.warehouse = &warehouses_[warehouseAt_.at(group)];
  if (const auto batch = batches_.find(group); batch != batches_.end()) row.batch = batch->second;
  row.above = row.warehouse != nullptr ? row.warehouse->above : item.above;
  row.figures.groups.resize(shape_.groupCount);
  return row;
}

void MovementSummary::AddRows(const StockItem& item, const ItemMovement& movement) {
  const std::size_t first = rows_.size();
  for (const OpeningFigures& each : movement.opening) {
    if (!each.sums.IsZero()) RowOf(item, each.place).figures.opening += each.sums;
  }
  for (const Move& move : movement.moves) {
    SummaryFigures& figures = RowOf(item, move.place).figures;
    figures.moved = true;
    (move.receipt ? figures.receipts : figures.issues) += move.sums;
    if (shape_.groupOf != nullptr) figures.groups[shape_.groupOf(move)] += move.sums;
  }
  Finish(first);
}

bool MovementSummary::IsShown(const SummaryFigures& figures) const {
  if (!figures.moved && (shape_.hidesUnmoved || figures.opening.IsNothing(shape_.goods))) return false;
  return !(shape_.hidesEmpty && figures.Closing().IsNothing(shape_.goods));
}

// Takes out the item's rows that the filter does not want, and brings the others into order.
void MovementSummary::Finish(std::size_t first) {
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(first);
  rows_.erase(
      std::remove_if(begin, rows_.end(), [this](const SummaryLine& row) { return !IsShown(row.figures); }),
      rows_.end());
  std::stable_sort(
      rows_.begin() + static_cast<std::ptrdiff_t>(first), rows_.end(),
      [](const SummaryLine& left, const SummaryLine& right) { return left.batch < right.batch; });
}

// The sum behind the rows that `last` ends, over what the first `depth` parts of its path name.
SummaryLine MovementSummary::SumOver(const SummaryLine& last, std::size_t depth) const {
  SummaryLine sum{.kind = SummaryLine::Kind::kLevelSum, .above = last.above, .batch = {}};
  if (depth <= sum.above.size()) {
    sum.above.resize(depth);
    sum.sumSort = shape_.levels.begin + static_cast<std::int32_t>(depth) - 1;
    return sum;
  }
  const bool byWarehouse = shape_.by == SummaryBy::kWarehouse;
  sum.kind = byWarehouse ? SummaryLine::Kind::kWarehouseSum : SummaryLine::Kind::kItemSum;
  sum.sumSort = kInnerSumSort;
  sum.warehouse = last.warehouse;
  if (!byWarehouse) sum.item = last.item;
  return sum;
}

// A row's path are its groups, then its warehouse or, by batch, its item. Goods that stand above a level have
// no group there: they count for the next sum outwards.
void MovementSummary::HandOut(const std::function<void(const SummaryLine&)>& sink) {
  const auto levels = static_cast<std::size_t>(shape_.levels.Count());
  const std::size_t depth = levels + (shape_.by == SummaryBy::kItem ? 0 : 1);
  std::vector<SummaryFigures> sums(depth + 1);  // the total, then from the outermost part inwards
  std::vector<const void*> open(depth);
  std::vector<const void*> path(depth);
  const SummaryLine* last = nullptr;
  const auto closeTo = [&](std::size_t outer) {
    for (std::size_t at = depth; at > outer; --at) {
      if (open[at - 1] != nullptr) {
        SummaryLine sum = SumOver(*last, at);
        sum.figures = std::move(sums[at]);
        sink(sum);
      }
      sums[at] = {};
      open[at - 1] = nullptr;
    }
  };
  for (const SummaryLine& row : rows_) {
    std::ranges::copy(row.above, path.begin());
    if (depth > levels) {
      path[levels] = row.warehouse != nullptr ? static_cast<const void*>(row.warehouse) : row.item;
    }
    closeTo(static_cast<std::size_t>(std::ranges::mismatch(open, path).in1 - open.begin()));
    open = path;
    last = &row;
    for (SummaryFigures& sum : sums) sum.Add(row.figures);
    if (!shape_.onlySums) sink(row);
  }
  closeTo(0);
  if (last == nullptr) return;
  SummaryLine total{.kind = SummaryLine::Kind::kTotal, .sumSort = kTotalSort, .batch = {}};
  total.figures = std::move(sums.front());
  sink(total);
}

}  // namespace books::reports
