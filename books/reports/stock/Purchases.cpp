#include "books/reports/stock/Purchases.h"

#include <unordered_set>

#include "books/reports/ReportSql.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/StockFilter.h"
#include "books/schema/Codes.h"

namespace books::reports {
namespace {

using database::Statement;
using schema::BillClass;

// A bill comes before its entries, so that the days are found by their index and the order costs nothing.
constexpr std::string_view kEntrySql = R"sql(
SELECT e.item_id, {group}, e.quantity, e.amount, b.date, COALESCE(b.supplier_id, 0)
FROM bill b
CROSS JOIN bill_entry e
CROSS JOIN t_Stock t4
LEFT JOIN t_Item t7 ON t7.FItemID = b.supplier_id
LEFT JOIN base_data d ON d.id = b.department_id
LEFT JOIN base_data m ON m.id = b.employee_id
WHERE b.audited = 1 AND {bills} AND e.bill_id = b.id AND t4.FItemID = e.warehouse_id AND {selected}
ORDER BY b.date, b.id, e.line
)sql";

// Without a supplier the rights to suppliers let everything pass, and those to warehouses are left.
constexpr std::string_view kSeenSql = R"sql(
SELECT t4.FItemID
FROM t_Stock t4
LEFT JOIN t_Item t7 ON t7.FItemID = 0
WHERE {warehouses}
)sql";

constexpr std::string_view kStockSql = "SELECT item_id, warehouse_id, quantity FROM stock";

// In the order of the numbers of "cboType".
struct BillTypes {
  BillClass first;
  BillClass second;
};
constexpr BillTypes kTypes[] = {
    {BillClass::kPurchaseReceipt, BillClass::kEstimatedReceipt},
    {BillClass::kEstimatedReceipt, BillClass::kEstimatedReceipt},
    {BillClass::kPurchaseReceipt, BillClass::kPurchaseReceipt},
};

constexpr std::string_view kGroupColumns[] = {"0", "COALESCE(b.employee_id, 0)",
                                              "COALESCE(b.department_id, 0)", "e.warehouse_id"};

reader::SqlText RightsOf(const ReportFilter& filter) {
  const reader::ConditionAlias aliases[] = {{"t7", *reader::FindTable("t_Item")},
                                            {"t4", *reader::FindTable("t_Stock")}};
  return filter.Rights(aliases);
}

Conditions BillsOf(const ReportFilter& filter) {
  const BillTypes& types = kTypes[ChoiceOf(filter, "cboType", std::size(kTypes))];
  Conditions bills;
  bills.Add(
      {.sql = "b.bill_class IN (?, ?)",
       .parameters = {static_cast<std::int64_t>(types.first), static_cast<std::int64_t>(types.second)}});
  if (const auto begin = DayOf(filter, "BDate")) {
    bills.Add({.sql = "b.date >= ?", .parameters = {std::int64_t{begin->Days()}}});
  }
  if (const auto end = DayOf(filter, "EDate")) {
    bills.Add({.sql = "b.date <= ?", .parameters = {std::int64_t{end->Days()}}});
  }
  return bills;
}

}  // namespace

void Bought::Add(std::int64_t quantity, std::optional<std::int64_t> amount, platform::Date day,
                 std::int64_t supplier) {
  quantity_ += quantity;
  amount_ += amount.value_or(0);
  if (quantity <= 0 || !amount) return;
  const double price = PriceOf(*amount, quantity);
  const bool first = prices_ == 0;
  last_.at(prices_++ % kKeptPrices) = price;
  if (first || price > highest_) highest_ = price;
  if (first || price <= lowest_) {
    lowest_ = price;
    lowestSupplier_ = supplier;
    lowestDay_ = day;
  }
}

Purchases ReadPurchases(services::Store& store, const ReportFilter& filter, PurchaseGroup group) {
  const bool shortNumbers = store.UsesShortNumbers();
  const std::string number = shortNumbers ? ".short_number" : ".number";
  const std::string seenNumber = shortNumbers ? ".FShortNumber" : ".FNumber";
  Conditions selected;
  selected.AddRange("t7" + seenNumber, filter.NumberRange("SupplyNumber"));
  selected.AddRange("t4" + seenNumber, filter.NumberRange("StockNumber"));
  selected.AddRange("d" + number, filter.NumberRange("DeptNumber"));
  selected.AddRange("m" + number, filter.NumberRange("EmpNumber"));
  selected.Add(RightsOf(filter));
  const Slot slots[] = {{"group", std::string(kGroupColumns[static_cast<std::size_t>(group)])},
                        {"bills", BillsOf(filter)},
                        {"selected", selected}};
  const reader::SqlText text = Compose(kEntrySql, slots);
  Statement row = store.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  Purchases purchases;
  while (row.Step()) {
    const auto amount = row.IsNull(3) ? std::nullopt : std::optional(row.Integer(3));
    purchases[row.Integer(1)][row.Integer(0)].Add(row.Integer(2), amount, row.GetDate(4), row.Integer(5));
  }
  return purchases;
}

std::optional<std::unordered_map<std::int64_t, std::int64_t>> ReadStockSeen(services::Store& store,
                                                                            const ReportFilter& filter) {
  Conditions warehouses;
  warehouses.AddRange(store.UsesShortNumbers() ? "t4.FShortNumber" : "t4.FNumber",
                      filter.NumberRange("StockNumber"));
  warehouses.Add(RightsOf(filter));
  const Slot slots[] = {{"warehouses", warehouses}};
  const reader::SqlText text = Compose(kSeenSql, slots);
  Statement seen = store.Reading().Prepare(text.sql);
  services::BindAll(seen, text.parameters);
  std::unordered_set<std::int64_t> selected;
  while (seen.Step()) selected.insert(seen.Integer(0));
  if (selected.empty()) return std::nullopt;
  std::unordered_map<std::int64_t, std::int64_t> stock;
  Statement row = store.Reading().Prepare(kStockSql);
  while (row.Step()) {
    if (selected.contains(row.Integer(1))) stock[row.Integer(0)] += row.Integer(2);
  }
  return stock;
}

}  // namespace books::reports
