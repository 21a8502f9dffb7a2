// Stock comes item by item, orders and levels at once; the rows of an item are its auxiliary properties in
// the order of their numbers.
#include "books/reports/stock/Data10424.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/OpenOrders.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"
#include "platform/value/Clock.h"

namespace books::reports {
namespace {

using platform::FieldType;
using platform::RowAppender;

constexpr std::int32_t kTotalSort = 101;

struct Available {
  std::int64_t aux = 0;
  std::int64_t stock = 0;
  std::int64_t fromSuppliers = 0;
  std::int64_t forCustomers = 0;
  std::int64_t lowest = 0;

  Available& operator+=(const Available& other) {
    stock += other.stock;
    fromSuppliers += other.fromSuppliers;
    forCustomers += other.forCustomers;
    lowest += other.lowest;
    return *this;
  }
  bool IsZero() const { return stock == 0 && fromSuppliers == 0 && forCustomers == 0 && lowest == 0; }
};

struct Term {
  std::string_view key;
  std::string_view field;
  std::int64_t Available::*figure;
  int sign;
};
constexpr Term kTerms[] = {
    {"chkInv", "FInvQty", &Available::stock, 1},
    {"chkCGBook", "FMovingCgQty", &Available::fromSuppliers, 1},
    {"chkXSBook", "FMovingXsQty", &Available::forCustomers, -1},
    {"chkLmtQ", "FLowLimitQty", &Available::lowest, -1},
};
constexpr std::array<std::string_view, 5> kTexts = {"FItemNumber", "FItemName", "FModel", "FAuxPropName",
                                                    "FUnitName"};

// The set in front of the bar: "(501,502)".
reader::SqlText StockSet(const ReportFilter& filter) {
  const std::string text = filter.Text("txtStock");
  const std::string_view set = std::string_view(text).substr(0, text.find('|'));
  if (set.empty()) return {};
  const auto refuse = [&] { RefuseFilter("txtStock", "应为“(仓库,仓库)|名称”：" + text); };
  if (set.size() < 3 || set.front() != '(' || set.back() != ')') refuse();
  reader::SqlText condition{.sql = "d.FItemID IN (", .parameters = {}};
  for (std::size_t at = 1; at < set.size();) {
    const std::size_t end = std::min(set.find(',', at), set.size() - 1);
    std::int64_t id = 0;
    const auto [stop, error] = std::from_chars(set.data() + at, set.data() + end, id);
    if (error != std::errc() || stop != set.data() + end) refuse();
    condition.sql += condition.parameters.empty() ? "?" : ", ?";
    condition.parameters.emplace_back(id);
    at = end + 1;
  }
  condition.sql += ")";
  return condition;
}

CellsAsked AskedOf(const ReportFilter& filter) {
  CellsAsked asked;
  const std::optional<platform::Date> day = DayOf(filter, "EDate");
  if (FlagOf(filter, "OnTime", true)) {
    asked.checked = FlagOf(filter, "CheckItem");
    asked.withUnaudited = FlagOf(filter, "ContainBills");
  } else {
    asked.atEndOf = day;
    if (!day) RefuseFilter("EDate", "是必需的：未选“即时库存”时要有截至日期");
  }
  if (!FlagOf(filter, "IncludeExpireGoodQty")) {
    asked.goodOn = day.value_or(platform::Clock::Today().DayOnly());
  }
  return asked;
}

class AvailableRows {
 public:
  AvailableRows(platform::Recordset& rows, const ReportFilter& filter) {
    for (const std::string_view name : kTexts) rows.AppendField(name, FieldType::kText);
    rows.AppendField("FSuggestQty", FieldType::kDouble);
    for (const Term& term : kTerms) {
      rows.AppendField(term.field, FieldType::kDouble);
      counted_.push_back(FlagOf(filter, term.key));
    }
    rows.AppendField("FSumSort", FieldType::kInt32);
    rows.Open();
    to_.emplace(rows);
  }

  void AddItem(const StockItem& item, const std::vector<Available>& parts, StockCells& cells) {
    for (const Available& part : parts) {
      to_->SetText(0, item.number);
      to_->SetText(1, item.name);
      to_->SetText(2, item.model);
      to_->SetText(3, cells.Aux(part.aux).name);
      to_->SetText(4, item.unit);
      AddFigures(part, 0);
      total_ += part;
      any_ = true;
    }
  }

  void AddTotal() {
    if (!any_) return;
    to_->SetText(0, "合计");
    AddFigures(total_, kTotalSort);
  }

 private:
  void AddFigures(const Available& part, std::int32_t sort) {
    std::int64_t available = 0;
    std::size_t column = kTexts.size() + 1;
    for (std::size_t i = 0; i < counted_.size(); ++i) {
      const std::int64_t figure = part.*kTerms[i].figure;
      if (counted_[i]) available += kTerms[i].sign * figure;
      to_->SetDouble(column++, AsQuantity(figure));
    }
    to_->SetDouble(kTexts.size(), AsQuantity(available));
    to_->SetInteger(column, sort);
    to_->CommitRow();
  }

  std::vector<bool> counted_;
  std::optional<RowAppender> to_;
  Available total_;
  bool any_ = false;
};

struct Sources {
  StockCells cells;
  std::unordered_map<std::int64_t, std::vector<OnOrder>> orders;
  std::unordered_map<std::int64_t, std::int64_t> lowest;
};

std::vector<Available> PartsOf(std::int64_t item, Sources& sources) {
  std::vector<Available> parts;
  const auto part = [&](std::int64_t aux) -> Available& {
    const auto found = std::ranges::find(parts, aux, &Available::aux);
    return found == parts.end() ? parts.emplace_back(Available{.aux = aux}) : *found;
  };
  for (const Cell& cell : sources.cells.Of(item)) part(cell.aux).stock += cell.figures.quantity;
  if (const auto orders = sources.orders.find(item); orders != sources.orders.end()) {
    for (const OnOrder& order : orders->second) {
      part(order.aux) += {.fromSuppliers = order.fromSuppliers, .forCustomers = order.forCustomers};
    }
  }
  std::erase_if(parts, [](const Available& each) { return each.IsZero(); });
  std::ranges::sort(parts, {}, [&](const Available& each) { return sources.cells.Aux(each.aux).number; });
  if (const auto lowest = sources.lowest.find(item); lowest != sources.lowest.end()) {
    if (parts.empty()) parts.emplace_back();
    parts.front().lowest = lowest->second;
  }
  return parts;
}

std::int64_t CountWarehouses(services::Store& store) {
  database::Statement row = store.Reading().Prepare("SELECT COUNT(*) FROM warehouse");
  return row.Step() ? row.Integer(0) : 0;
}

}  // namespace

platform::Ref<platform::Vector> Data10424::GetRptData(const std::string& /*props*/,
                                                      platform::Variant& filter) {
  const database::Transaction onePicture(store_->Reading(), database::Transaction::Kind::kRead);
  const ReportFilter asked(filter);
  const CellsAsked cells = AskedOf(asked);
  const std::vector<Warehouse> warehouses = ChooseWarehouses(*store_, asked, "d", StockSet(asked));
  Conditions chosen = ItemConditions(asked, store_->UsesShortNumbers());
  if (!FlagOf(asked, "ShowDeletedItem")) chosen.Add({.sql = "b.disabled = 0", .parameters = {}});
  const StockItems items(*store_, chosen, ItemSortOf(asked), {});

  const auto rows = platform::MakeRef<platform::Recordset>();
  {
    AvailableRows to(*rows, asked);
    if (!warehouses.empty()) {
      std::vector<std::int64_t> ids;
      ids.reserve(warehouses.size());
      for (const Warehouse& warehouse : warehouses) ids.push_back(warehouse.id);
      const bool wholeBook = CountWarehouses(*store_) == static_cast<std::int64_t>(ids.size());
      Sources sources{.cells = StockCells(*store_, warehouses, cells),
                      .orders = ReadOpenOrders(*store_, cells.atEndOf, cells.withUnaudited),
                      .lowest = ReadLowestLevels(*store_, ids, wholeBook)};
      for (const StockItem& item : items.All()) to.AddItem(item, PartsOf(item.id, sources), sources.cells);
    }
    to.AddTotal();
  }
  auto answer = platform::MakeRef<platform::Vector>();
  answer->Add(rows);
  return answer;
}

}  // namespace books::reports
