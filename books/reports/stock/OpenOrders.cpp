#include "books/reports/stock/OpenOrders.h"

#include <array>
#include <unordered_set>

#include "books/reports/ReportSql.h"
#include "books/schema/Codes.h"

namespace books::reports {
namespace {

using database::Statement;

// The deliveries that the order lines count are those of audited bills up to now. From them go those after
// the day, or to them come those that are not audited; either way few bills, found by their indexes.
// An order comes before its lines: they lie together, while by item they would be fetched one by one.
constexpr std::string_view kOrderSql = R"sql(
WITH changed AS (
  SELECT e.order_id AS order_id, e.order_line AS order_line, SUM(e.quantity) AS quantity
  FROM bill b
  CROSS JOIN bill_entry e
  WHERE {bills} AND e.bill_id = b.id AND e.order_id IS NOT NULL
  GROUP BY e.order_id, e.order_line
), open AS (
  SELECT l.item_id AS item_id, COALESCE(l.aux_id, 0) AS aux_id, o.bill_class AS bill_class,
         l.quantity - l.delivered_quantity {sign} COALESCE(c.quantity, 0) AS quantity
  FROM order_bill o
  CROSS JOIN order_entry l
  LEFT JOIN changed c ON c.order_id = l.order_id AND c.order_line = l.line
  WHERE o.closed = 0 AND l.order_id = o.id AND l.closed = 0 AND {orders}
)
SELECT item_id, aux_id,
       SUM(CASE WHEN bill_class = ? THEN quantity ELSE 0 END),
       SUM(CASE WHEN bill_class = ? THEN quantity ELSE 0 END)
FROM open
WHERE quantity > 0
GROUP BY item_id, aux_id
)sql";

constexpr std::string_view kLevelSql = "SELECT id, min_quantity FROM item WHERE min_quantity > 0";
constexpr std::string_view kPlacedLevelSql =
    "SELECT item_id, warehouse_id, min_quantity FROM item_limit WHERE min_quantity > 0";

reader::SqlText OrderText(const std::optional<platform::Date>& atEndOf, bool unaudited) {
  Conditions bills;
  Conditions orders;
  if (atEndOf) {
    const std::int64_t day = atEndOf->Days();
    bills.Add({.sql = "b.audited = 1 AND b.date > ?", .parameters = {day}});
    orders.Add({.sql = "o.date <= ?", .parameters = {day}});
  } else {
    bills.Add({.sql = unaudited ? "b.audited = 0" : "0", .parameters = {}});
  }
  if (!unaudited) orders.Add({.sql = "o.audited = 1", .parameters = {}});
  const Slot slots[] = {{"bills", bills}, {"sign", atEndOf ? "+" : "-"}, {"orders", orders}};
  reader::SqlText text = Compose(kOrderSql, slots);
  for (const schema::BillClass side : {schema::BillClass::kPurchaseOrder, schema::BillClass::kSalesOrder}) {
    text.parameters.emplace_back(static_cast<std::int64_t>(side));
  }
  return text;
}

}  // namespace

std::unordered_map<std::int64_t, std::vector<OnOrder>> ReadOpenOrders(
    services::Store& store, const std::optional<platform::Date>& atEndOf, bool unaudited) {
  const reader::SqlText text = OrderText(atEndOf, unaudited);
  Statement row = store.Reading().Prepare(text.sql);
  services::BindAll(row, text.parameters);
  std::unordered_map<std::int64_t, std::vector<OnOrder>> orders;
  while (row.Step()) {
    orders[row.Integer(0)].push_back(
        {.aux = row.Integer(1), .fromSuppliers = row.Integer(2), .forCustomers = row.Integer(3)});
  }
  return orders;
}

std::unordered_map<std::int64_t, std::int64_t> ReadLowestLevels(services::Store& store,
                                                                const std::vector<std::int64_t>& warehouses,
                                                                bool wholeBook) {
  std::unordered_map<std::int64_t, std::int64_t> own;
  Statement level = store.Reading().Prepare(kLevelSql);
  while (level.Step()) own[level.Integer(0)] = level.Integer(1);

  const std::unordered_set<std::int64_t> selected(warehouses.begin(), warehouses.end());
  std::unordered_map<std::int64_t, std::int64_t> placed;
  Statement place = store.Reading().Prepare(kPlacedLevelSql);
  while (place.Step()) {
    if (selected.contains(place.Integer(1))) placed[place.Integer(0)] += place.Integer(2);
  }
  // The first to be there wins.
  auto& preferred = wholeBook ? own : placed;
  preferred.merge(wholeBook ? placed : own);
  return std::move(preferred);
}

}  // namespace books::reports
