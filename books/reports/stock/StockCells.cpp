// Every source is asked item by item: all stock tables are clustered by item, so that an item's rows lie in
// one place and the items of a narrow filter cost no more than themselves. What the sources answer is merged
// by warehouse, batch and auxiliary property, cut down to what the filter selects, and only then shared out.
#include "books/reports/stock/StockCells.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "books/posting/Periods.h"
#include "books/reports/ReportSql.h"
#include "books/reports/stock/StockFilter.h"
#include "books/schema/Codes.h"
#include "platform/value/Convert.h"
#include "platform/value/Currency.h"

namespace books::reports {
namespace {

using database::Statement;
using platform::Currency;
using platform::Date;

constexpr std::string_view kKeptSql =
    "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM stock "
    "WHERE item_id = ? AND (quantity <> 0 OR aux_quantity <> 0 OR amount <> 0)";
constexpr std::string_view kBatchStockSql =
    "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM stock "
    "WHERE item_id = ? AND quantity <> 0 AND batch_id <> 0";
constexpr std::string_view kOpeningSql =
    "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM opening_stock "
    "WHERE item_id = ?";
constexpr std::string_view kBalanceSql =
    "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM balance "
    "WHERE item_id = ? AND period = ? AND (quantity <> 0 OR aux_quantity <> 0 OR amount <> 0)";
constexpr std::string_view kMovementSql =
    "SELECT warehouse_id, batch_id, aux_id, direction * quantity, direction * aux_quantity, "
    "direction * amount FROM movement WHERE item_id = ? AND date BETWEEN ? AND ?";
constexpr std::string_view kUnauditedSql =
    "SELECT item_id, warehouse_id, batch_id, aux_id, direction * quantity, direction * aux_quantity "
    "FROM unaudited_movement";
constexpr std::string_view kBatchSql =
    "SELECT number, production_date, shelf_life_days, expiry_date FROM batch WHERE id = ?";
constexpr std::string_view kAuxSql =
    "SELECT id, {number}, name, {selected} FROM base_data WHERE class_id = 10";

constexpr std::string_view kWarehouseSql = R"sql(
SELECT {alias}.FItemID, {alias}.{number}, {alias}.FName, {alias}.FTypeID
FROM t_Stock {alias}
WHERE {warehouses}
ORDER BY {alias}.FNumber, {alias}.FItemID
)sql";

constexpr std::int32_t kLastDay = 1'000'000'000;  // later than any

std::optional<Date> OptionalDate(const Statement& row, int column) {
  return row.IsNull(column) ? std::nullopt : std::optional(row.GetDate(column));
}

auto KeyOf(const Cell& cell) { return std::tie(cell.warehouse, cell.batch, cell.aux); }

}  // namespace

bool Warehouse::IsOrdinary() const {
  return type == static_cast<std::int32_t>(schema::WarehouseType::kOrdinary);
}

std::vector<Warehouse> ChooseWarehouses(services::Store& store, const ReportFilter& filter,
                                        std::string_view alias, const reader::SqlText& more) {
  const std::string as(alias);
  const std::string number = store.UsesShortNumbers() ? "FShortNumber" : "FNumber";
  Conditions where;
  where.AddRange(as + "." + number, filter.NumberRange("StockNumber"));
  const std::int32_t kind = ChoiceOf(filter, "StockType", 3);
  if (kind != 0) {
    where.Add({.sql = as + ".FTypeID " + (kind == 1 ? "= ?" : "<> ?"),
               .parameters = {static_cast<std::int32_t>(schema::WarehouseType::kOrdinary)}});
  }
  where.Add(more);
  const reader::ConditionAlias aliases[] = {{alias, *reader::FindTable("t_Stock")}};
  where.Add(filter.Rights(aliases));
  const Slot slots[] = {{"alias", as}, {"number", number}, {"warehouses", where}};
  const reader::SqlText text = Compose(kWarehouseSql, slots);
  Statement row = store.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  std::vector<Warehouse> warehouses;
  while (row.Step()) {
    warehouses.push_back(
        {.id = row.Integer(0), .number = row.Text(1), .name = row.Text(2), .type = row.Int32(3)});
  }
  return warehouses;
}

Figures& Figures::operator+=(const Figures& other) {
  quantity += other.quantity;
  auxQuantity += other.auxQuantity;
  amount += other.amount;
  valued += other.valued;
  return *this;
}

StockCells::StockCells(services::Store& store, const std::vector<Warehouse>& warehouses, CellsAsked asked)
    : store_(store),
      warehouses_(warehouses),
      asked_(std::move(asked)),
      batchRows_(store.Reading().Prepare(kBatchSql)) {
  for (std::size_t i = 0; i < warehouses.size(); ++i) places_.emplace(warehouses[i].id, i);
  database::Connection& book = store.Reading();
  if (asked_.atEndOf) {
    const posting::BalanceBase base = posting::BalanceBefore(book, asked_.atEndOf->AddDays(1));
    sources_.push_back({book.Prepare(kBalanceSql), {base.period}});
    sources_.push_back({book.Prepare(kMovementSql), {base.firstDay.Days(), asked_.atEndOf->Days()}});
  } else if (asked_.checked) {
    sources_.push_back({book.Prepare(kOpeningSql), {}});
    sources_.push_back({book.Prepare(kMovementSql), {0, kLastDay}});
  } else {
    sources_.push_back({book.Prepare(asked_.onlyBatches ? kBatchStockSql : kKeptSql), {}});
  }
  ReadAuxFacts();
  if (asked_.withUnaudited) ReadUnaudited();
}

void StockCells::ReadAuxFacts() {
  const std::string number = store_.UsesShortNumbers() ? "short_number" : "number";
  Conditions selected;
  selected.AddRange(number, asked_.auxes);
  const Slot slots[] = {{"number", number}, {"selected", selected}};
  const reader::SqlText text = Compose(kAuxSql, slots);
  Statement row = store_.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  auxSelected_[0] = selected.IsEmpty();
  auxes_[0] = {};
  while (row.Step()) {
    auxes_[row.Integer(0)] = {.number = row.Text(1), .name = row.Text(2)};
    auxSelected_[row.Integer(0)] = row.Boolean(3);
  }
}

void StockCells::ReadUnaudited() {
  Statement row = store_.Reading().Prepare(kUnauditedSql);
  while (row.Step()) {
    const auto place = places_.find(row.Integer(1));
    if (place == places_.end()) continue;
    unaudited_[row.Integer(0)].push_back(
        {.warehouse = place->second,
         .batch = row.Integer(2),
         .aux = row.Integer(3),
         .figures = {.quantity = row.Integer(4), .auxQuantity = row.Integer(5)}});
  }
}

const std::vector<Cell>& StockCells::Of(std::int64_t item) {
  item_ = item;
  cells_.clear();
  for (Source& source : sources_) {
    source.rows.Reset();
    source.rows.BindAt(0, item);
    for (std::size_t i = 0; i < source.more.size(); ++i) {
      source.rows.BindAt(static_cast<int>(i) + 1, source.more[i]);
    }
    Append(source.rows);
  }
  if (const auto waiting = unaudited_.find(item); waiting != unaudited_.end()) {
    cells_.insert(cells_.end(), waiting->second.begin(), waiting->second.end());
  }
  if (sources_.size() > 1 || asked_.withUnaudited) Merge();
  DropUnselected();
  if (asked_.shareOddAmounts) ShareOddAmounts();
  std::erase_if(cells_, [](const Cell& cell) { return cell.figures.IsZero(); });
  return cells_;
}

void StockCells::Append(Statement& rows) {
  while (rows.Step()) {
    const auto place = places_.find(rows.Integer(0));
    if (place == places_.end()) continue;
    Figures figures{.quantity = rows.Integer(3), .auxQuantity = rows.Integer(4), .amount = rows.Integer(5)};
    if (warehouses_[place->second].IsOrdinary()) figures.valued = figures.quantity;
    cells_.push_back(
        {.warehouse = place->second, .batch = rows.Integer(1), .aux = rows.Integer(2), .figures = figures});
  }
}

void StockCells::Merge() {
  if (cells_.empty()) return;
  std::ranges::sort(cells_, {}, KeyOf);
  std::size_t last = 0;
  for (std::size_t i = 1; i < cells_.size(); ++i) {
    if (KeyOf(cells_[i]) == KeyOf(cells_[last])) {
      cells_[last].figures += cells_[i].figures;
    } else {
      cells_[++last] = cells_[i];
    }
  }
  cells_.resize(last + 1);
}

void StockCells::DropUnselected() {
  const bool byAux = !asked_.auxes.from.empty() || !asked_.auxes.to.empty();
  if (!byAux && !asked_.KnowsBatches()) return;
  std::erase_if(cells_, [&](const Cell& cell) { return !IsSelected(cell); });
}

bool StockCells::IsSelected(const Cell& cell) {
  const auto aux = auxSelected_.find(cell.aux);
  if (aux == auxSelected_.end() || !aux->second) return false;
  if (!asked_.KnowsBatches()) return true;
  const BatchFacts& batch = Batch(cell.batch);
  if (asked_.goodOn && batch.expires && *batch.expires < *asked_.goodOn) return false;
  const Range& range = asked_.batches;
  if (range.from.empty() && range.to.empty()) return true;
  if (cell.batch == 0) return false;
  // As numbers compare in the book: without regard to the case of letters.
  const std::string number = platform::ToUpperAscii(batch.number);
  return number >= platform::ToUpperAscii(range.from) &&
         (range.to.empty() || number <= platform::ToUpperAscii(range.to));
}

void StockCells::ShareOddAmounts() {
  std::int64_t odd = 0;
  std::int64_t goods = 0;
  for (const Cell& cell : cells_) {
    if (!warehouses_[cell.warehouse].IsOrdinary()) continue;
    if (cell.figures.valued == 0) odd += cell.figures.amount;
    if (cell.figures.valued > 0) goods += cell.figures.valued;
  }
  if (goods == 0) return;
  std::int64_t left = odd;
  std::int64_t goodsLeft = goods;
  for (Cell& cell : cells_) {
    if (!warehouses_[cell.warehouse].IsOrdinary()) continue;
    if (cell.figures.valued == 0) cell.figures.amount = 0;
    if (cell.figures.valued <= 0) continue;
    // Of what is left by what is left: the last cell takes the rest, and nothing is lost.
    const std::int64_t share =
        MultiplyDivide(Currency::FromUnits(left), cell.figures.valued, goodsLeft).Units();
    cell.figures.amount += share;
    left -= share;
    goodsLeft -= cell.figures.valued;
  }
}

void StockCells::ReadBatch(std::int64_t id, BatchFacts& facts) {
  batchRows_.Bind(id);
  if (!batchRows_.Step()) return;
  facts = {.number = batchRows_.Text(0),
           .produced = OptionalDate(batchRows_, 1),
           .shelfLifeDays = batchRows_.Int32(2),
           .expires = OptionalDate(batchRows_, 3)};
  if (!facts.expires && facts.produced && facts.shelfLifeDays > 0) {
    facts.expires = facts.produced->AddDays(facts.shelfLifeDays);
  }
}

// One by one: most batches of an item are long gone.
const BatchFacts& StockCells::Batch(std::int64_t id) {
  if (loaded_.item != item_) loaded_ = {.item = item_, .batches = {}};
  const auto [known, isNew] = loaded_.batches.try_emplace(id);
  if (isNew && id != 0) ReadBatch(id, known->second);
  return known->second;
}

const AuxFacts& StockCells::Aux(std::int64_t id) { return auxes_[id]; }

}  // namespace books::reports
