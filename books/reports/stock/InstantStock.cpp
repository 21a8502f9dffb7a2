// Items come in the report's order; each one's cells are put together by warehouse, or by auxiliary property,
// batch and warehouse, into rows whose places stand one behind the other in one list. Walking the rows then
// sums them up by warehouse for every open category and for the whole.
#include "books/reports/stock/InstantStock.h"

#include <algorithm>
#include <optional>
#include <tuple>

namespace books::reports {
namespace {

using platform::FieldType;
using platform::RowAppender;

constexpr std::int32_t kShowTypes = 4;
constexpr std::int32_t kTotalSort = 101;

struct LeadingField {
  std::string_view name;
  std::string StockItem::*text;
};

constexpr LeadingField kLeading[] = {
    {"FItemNumber", &StockItem::number}, {"FItemName", &StockItem::name},
    {"FModel", &StockItem::model},       {"FBarCode", &StockItem::barcode},
    {"FUnitName", &StockItem::unit},     {"FSecUnitName", &StockItem::auxUnit},
};

CellsAsked AskedOf(const ReportFilter& filter) {
  CellsAsked asked;
  if (FlagOf(filter, "OnTime", true)) {
    asked.checked = FlagOf(filter, "CheckItem");
    asked.shareOddAmounts = asked.checked && FlagOf(filter, "ShareAbnormalAmt");
    asked.withUnaudited = FlagOf(filter, "ContainBills");
  } else {
    asked.atEndOf = DayOf(filter, "EDate");
    if (!asked.atEndOf) RefuseFilter("EDate", "是必需的：未选“即时库存”时要有截至日期");
  }
  asked.batches = filter.NumberRange("BatchNo");
  asked.auxes = filter.NumberRange("AuxNumber");
  return asked;
}

Conditions ItemsOf(services::Store& store, const ReportFilter& filter) {
  Conditions items = ItemConditions(filter, store.UsesShortNumbers());
  if (!FlagOf(filter, "ShowDeletedItem")) items.Add({.sql = "b.disabled = 0", .parameters = {}});
  return items;
}

}  // namespace

InstantStock::InstantStock(services::Store& store, const ReportFilter& filter)
    : warehouses_(ChooseWarehouses(store, filter, "d")),
      levels_(LevelsOf(filter)),
      showType_(ChoiceOf(filter, "ShowType", kShowTypes)),
      showZero_(showType_ == 0 && !warehouses_.empty() && FlagOf(filter, "ShowZero")),
      notShowMinus_(FlagOf(filter, "NotShowMinus")),
      items_(store, ItemsOf(store, filter), ItemSortOf(filter), levels_),
      scratch_(warehouses_.size()) {
  StockCells cells(store, warehouses_, AskedOf(filter));
  if (warehouses_.empty()) return;
  for (const StockItem& item : items_.All()) {
    if (showType_ == 0) {
      AddItem(item, cells);
    } else {
      AddExpanded(item, cells);
    }
  }
}

bool InstantStock::Keep(const Figures& figures) {
  if (notShowMinus_ && figures.quantity < 0) {
    droppedMinus_ = true;
    return false;
  }
  return !figures.IsZero();
}

void InstantStock::AddItem(const StockItem& item, StockCells& cells) {
  droppedMinus_ = false;
  std::ranges::fill(scratch_, Figures());
  for (const Cell& cell : cells.Of(item.id)) scratch_[cell.warehouse] += cell.figures;
  StockRow row{.item = &item, .aux = {}, .batch = {}, .first = places_.size()};
  for (std::size_t i = 0; i < scratch_.size(); ++i) {
    if (Keep(scratch_[i])) places_.push_back({.warehouse = i, .figures = scratch_[i]});
  }
  if (showZero_ && row.first == places_.size() && !droppedMinus_) {
    row.last = row.first;
    rows_.push_back(std::move(row));
    return;
  }
  AddRow(std::move(row));
}

void InstantStock::AddExpanded(const StockItem& item, StockCells& cells) {
  struct Part {
    std::string_view auxNumber;
    std::string_view auxName;
    std::string_view batch;
    std::size_t warehouse = 0;
    Figures figures;

    auto Row() const { return std::tie(auxNumber, auxName, batch); }
    auto Place() const { return std::tie(auxNumber, auxName, batch, warehouse); }
  };
  std::vector<Part> parts;
  for (const Cell& cell : cells.Of(item.id)) {
    Part part{
        .auxNumber = {}, .auxName = {}, .batch = {}, .warehouse = cell.warehouse, .figures = cell.figures};
    if (ShowsAux()) {
      part.auxNumber = cells.Aux(cell.aux).number;
      part.auxName = cells.Aux(cell.aux).name;
    }
    if (ShowsBatches()) part.batch = cells.Batch(cell.batch).number;
    parts.push_back(part);
  }
  std::ranges::sort(parts, [](const Part& left, const Part& right) { return left.Place() < right.Place(); });
  for (std::size_t i = 0; i < parts.size();) {
    StockRow row{.item = &item,
                 .aux = std::string(parts[i].auxName),
                 .batch = std::string(parts[i].batch),
                 .first = places_.size()};
    const std::size_t begin = i;
    while (i < parts.size() && parts[i].Row() == parts[begin].Row()) {
      Placed placed{.warehouse = parts[i].warehouse, .figures = {}};
      for (const auto place = parts[i].Place(); i < parts.size() && parts[i].Place() == place; ++i) {
        placed.figures += parts[i].figures;
      }
      if (Keep(placed.figures)) places_.push_back(placed);
    }
    AddRow(std::move(row));
  }
}

void InstantStock::AddRow(StockRow row) {
  if (row.first == places_.size()) return;
  row.last = places_.size();
  rows_.push_back(std::move(row));
}

std::vector<bool> InstantStock::Used() const {
  std::vector<bool> used(warehouses_.size());
  for (const Placed& placed : places_) used[placed.warehouse] = true;
  return used;
}

void InstantStock::Walk(StockRowSink& sink) const {
  const auto levels = static_cast<std::size_t>(levels_.Count());
  const std::vector<Figures> none(warehouses_.size());
  std::vector<const Category*> open(levels);
  std::vector<std::vector<Figures>> sums(levels, none);
  std::vector<Figures> total = none;
  // Closes the open categories from the deepest level up to this one.
  const auto closeTo = [&](std::size_t level) {
    for (std::size_t i = levels; i > level; --i) {
      const std::size_t at = i - 1;
      if (open[at] == nullptr) continue;
      SumRow sum{
          .above = open, .level = levels_.begin + static_cast<std::int32_t>(at), .byWarehouse = sums[at]};
      std::fill(sum.above.begin() + static_cast<std::ptrdiff_t>(i), sum.above.end(), nullptr);
      sink.Sum(sum);
      open[at] = nullptr;
      sums[at] = none;
    }
  };
  for (const StockRow& row : rows_) {
    if (levels > 0) {
      const auto differs = std::ranges::mismatch(open, row.item->above).in1;
      closeTo(static_cast<std::size_t>(differs - open.begin()));
      open = row.item->above;
    }
    const std::span<const Placed> places(places_.data() + row.first, row.last - row.first);
    for (const Placed& placed : places) {
      total[placed.warehouse] += placed.figures;
      for (std::size_t i = 0; i < levels; ++i) {
        if (open[i] != nullptr) sums[i][placed.warehouse] += placed.figures;
      }
    }
    sink.Row(row, places);
  }
  closeTo(0);
  if (!rows_.empty()) sink.Sum({.above = open, .level = 0, .byWarehouse = std::move(total)});
}

InstantFields::InstantFields(const InstantStock& stock, platform::Recordset& rows)
    : levels_(stock.Levels()), aux_(stock.ShowsAux()), batches_(stock.ShowsBatches()) {
  for (std::int32_t level = levels_.begin; level <= levels_.end; ++level) {
    rows.AppendField("FItemLevel0" + std::to_string(level) + "Name", FieldType::kText);
  }
  for (const LeadingField& field : kLeading) rows.AppendField(field.name, FieldType::kText);
  if (aux_) rows.AppendField("FAuxPropName", FieldType::kText);
  if (batches_) rows.AppendField("FBatchNo", FieldType::kText);
  sumSort_ = rows.Fields().size();
  rows.AppendField("FSumSort", FieldType::kInt32);
}

void InstantFields::SetRow(RowAppender& to, const StockRow& row) const {
  std::size_t column = 0;
  for (const Category* category : row.item->above)
    to.SetText(column++, category == nullptr ? "" : category->name);
  for (const LeadingField& field : kLeading) to.SetText(column++, row.item->*field.text);
  if (aux_) to.SetText(column++, row.aux);
  if (batches_) to.SetText(column++, row.batch);
  to.SetInteger(sumSort_, 0);
}

void InstantFields::SetSum(RowAppender& to, const SumRow& sum) const {
  std::size_t column = 0;
  for (const Category* category : sum.above) to.SetText(column++, category == nullptr ? "" : category->name);
  to.SetText(column, sum.level == 0 ? "合计" : "小计");
  to.SetInteger(sumSort_, sum.level == 0 ? kTotalSort : sum.level);
}

}  // namespace books::reports
