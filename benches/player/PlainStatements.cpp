// The figures are the book's whole numbers, divided where a clerk would want to read them.
#include "benches/player/PlainStatements.h"

#include <string>
#include <string_view>

#include "books/schema/Codes.h"
#include "platform/value/Date.h"

namespace bench {
namespace {

using platform::Date;

constexpr std::string_view kStockSql = R"sql(
SELECT b.number, b.name, i.model, u.name, w.name, s.quantity / 1e6, s.aux_quantity / 1e6, s.amount
FROM (SELECT item_id, warehouse_id, SUM(quantity) AS quantity, SUM(aux_quantity) AS aux_quantity,
             SUM(amount) AS amount
      FROM stock GROUP BY item_id, warehouse_id) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
JOIN base_data w ON w.id = s.warehouse_id
WHERE b.disabled = 0 AND (s.quantity <> 0 OR s.aux_quantity <> 0 OR s.amount <> 0)
ORDER BY b.number, w.number
)sql";

// At the end of the last day of the period before ?, and the movements from its first day to ?.
constexpr std::string_view kPastStockSql = R"sql(
SELECT b.number, b.name, i.model, u.name, w.name, SUM(s.quantity) / 1e6, SUM(s.aux_quantity) / 1e6,
       SUM(s.amount)
FROM (SELECT item_id, warehouse_id, quantity, aux_quantity, amount FROM balance WHERE period = ? - 1
      UNION ALL
      SELECT item_id, warehouse_id, direction * quantity, direction * aux_quantity, direction * amount
      FROM movement WHERE period = ? AND date <= ?) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
JOIN base_data w ON w.id = s.warehouse_id
WHERE b.disabled = 0
GROUP BY s.item_id, s.warehouse_id
HAVING SUM(s.quantity) <> 0 OR SUM(s.amount) <> 0
ORDER BY b.number, w.number
)sql";

constexpr std::string_view kSummarySql = R"sql(
SELECT b.number, b.name, i.model, i.barcode, u.name, SUM(s.opening), SUM(s.opening_amount), SUM(s.come),
       SUM(s.come_amount), SUM(s.gone), SUM(s.gone_amount),
       SUM(s.opening + s.come - s.gone), SUM(s.opening_amount + s.come_amount - s.gone_amount)
FROM (SELECT item_id, quantity AS opening, amount AS opening_amount, 0 AS come, 0 AS come_amount, 0 AS gone,
             0 AS gone_amount
      FROM balance WHERE period = ? - 1
      UNION ALL
      SELECT item_id, 0, 0, CASE WHEN direction > 0 THEN quantity ELSE 0 END,
             CASE WHEN direction > 0 THEN amount ELSE 0 END,
             CASE WHEN direction < 0 THEN quantity ELSE 0 END,
             CASE WHEN direction < 0 THEN amount ELSE 0 END
      FROM movement WHERE period BETWEEN ? AND ?) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
GROUP BY s.item_id
ORDER BY b.number
)sql";

constexpr std::string_view kBusinessSql = R"sql(
SELECT b.number, b.name, i.model, i.barcode, u.name, m.bill_class, m.direction, SUM(m.quantity) / 1e6,
       SUM(m.aux_quantity) / 1e6, SUM(m.amount)
FROM movement m
JOIN base_data b ON b.id = m.item_id
JOIN item i ON i.id = m.item_id
JOIN unit u ON u.id = i.unit_id
WHERE m.period BETWEEN ? AND ?
GROUP BY m.item_id, m.bill_class, m.direction
ORDER BY b.number, m.bill_class
)sql";

// {items} chooses among the items.
constexpr std::string_view kDetailSql = R"sql(
SELECT m.date, c.name, v.number, v.explanation, b.number, b.name, i.model, u.name,
       CASE WHEN m.direction > 0 THEN m.quantity / 1e6 END, CASE WHEN m.direction > 0 THEN m.amount END,
       CASE WHEN m.direction < 0 THEN m.quantity / 1e6 END, CASE WHEN m.direction < 0 THEN m.amount END,
       SUM(m.direction * m.quantity) OVER (PARTITION BY m.item_id
         ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line ROWS UNBOUNDED PRECEDING)
FROM movement m
JOIN bill v ON v.id = m.bill_id
JOIN bill_class c ON c.id = m.bill_class
JOIN base_data b ON b.id = m.item_id
JOIN item i ON i.id = m.item_id
JOIN unit u ON u.id = i.unit_id
WHERE m.period BETWEEN ? AND ? {items}
ORDER BY b.number, m.date, m.day_order, m.bill_id, m.direction, m.line
)sql";

// {columns} are a warehouse's quantity and amount each, {stock} what lies where.
constexpr std::string_view kPivotSql = R"sql(
SELECT b.number, b.name, i.model, i.barcode, u.name, SUM(s.quantity) / 1e6, SUM(s.amount) {columns}
FROM {stock} s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
WHERE b.disabled = 0
GROUP BY s.item_id
HAVING SUM(s.quantity) <> 0 OR SUM(s.amount) <> 0
ORDER BY b.number
)sql";

constexpr std::string_view kStockAtADay = R"sql(
  (SELECT item_id, warehouse_id, quantity, amount FROM balance WHERE period = ? - 1
   UNION ALL
   SELECT item_id, warehouse_id, direction * quantity, direction * amount
   FROM movement WHERE period = ? AND date <= ?)
)sql";

// By batch, with the shares in the category and in all.
constexpr std::string_view kStructureSql = R"sql(
SELECT b.number, g.name, b.name, i.model, u.name, COALESCE(t.number, ''), SUM(s.quantity) / 1e6,
       SUM(s.amount), 100.0 * SUM(s.amount) / SUM(SUM(s.amount)) OVER (PARTITION BY b.parent_id),
       100.0 * SUM(s.amount) / SUM(SUM(s.amount)) OVER (),
       100.0 * SUM(SUM(s.amount)) OVER (ORDER BY b.number, t.number ROWS UNBOUNDED PRECEDING)
         / SUM(SUM(s.amount)) OVER ()
FROM stock s
JOIN base_data b ON b.id = s.item_id
LEFT JOIN base_data g ON g.id = b.parent_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
LEFT JOIN batch t ON t.id = s.batch_id
GROUP BY s.item_id, s.batch_id
HAVING SUM(s.quantity) <> 0 OR SUM(s.amount) <> 0
ORDER BY b.number, t.number
)sql";

// What lies there (batches past their expiry left out), what is on its way in and out, and the lowest level.
constexpr std::string_view kAvailableSql = R"sql(
SELECT b.number, b.name, i.model, x.name, u.name,
       (SUM(a.stock) + SUM(a.coming) - SUM(a.going) - i.min_quantity) / 1e6, SUM(a.stock) / 1e6,
       SUM(a.coming) / 1e6, SUM(a.going) / 1e6, i.min_quantity / 1e6
FROM (SELECT s.item_id, s.aux_id, s.quantity AS stock, 0 AS coming, 0 AS going
      FROM stock s LEFT JOIN batch t ON t.id = s.batch_id
      WHERE t.expiry_date IS NULL OR t.expiry_date >= ?
      UNION ALL
      SELECT e.item_id, COALESCE(e.aux_id, 0), 0,
             CASE WHEN o.bill_class = 1020001 THEN MAX(e.quantity - e.delivered_quantity, 0) ELSE 0 END,
             CASE WHEN o.bill_class = 1030001 THEN MAX(e.quantity - e.delivered_quantity, 0) ELSE 0 END
      FROM order_entry e JOIN order_bill o ON o.id = e.order_id
      WHERE e.closed = 0 AND o.closed = 0 AND o.audited = 1) a
JOIN base_data b ON b.id = a.item_id
JOIN item i ON i.id = a.item_id
JOIN unit u ON u.id = i.unit_id
LEFT JOIN base_data x ON x.id = a.aux_id
WHERE b.disabled = 0
GROUP BY a.item_id, a.aux_id
HAVING SUM(a.stock) <> 0 OR SUM(a.coming) <> 0 OR SUM(a.going) <> 0 OR i.min_quantity <> 0
ORDER BY b.number, x.number
)sql";

constexpr std::string_view kShelfLifeSql = R"sql(
SELECT w.number, w.name, b.number, b.name, i.model, x.name, u.name, s.quantity / 1e6, s.aux_quantity / 1e6,
       s.amount, t.number, t.production_date, t.shelf_life_days, t.expiry_date, ? - t.expiry_date
FROM stock s
JOIN batch t ON t.id = s.batch_id
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
JOIN base_data w ON w.id = s.warehouse_id
LEFT JOIN base_data x ON x.id = s.aux_id
WHERE t.expiry_date IS NOT NULL AND s.quantity <> 0
ORDER BY b.number, ? - t.expiry_date DESC
)sql";

// Of every item with its purchases of the days: the sums, the extremes, the last seven prices and whose the
// lowest was.
constexpr std::string_view kPriceSql = R"sql(
WITH bought AS (
  SELECT e.item_id, e.quantity, e.amount, v.date, v.supplier_id,
         CASE WHEN e.quantity > 0 THEN e.amount * 100.0 / e.quantity END AS price,
         ROW_NUMBER() OVER (PARTITION BY e.item_id ORDER BY v.date DESC, v.id DESC, e.line DESC) AS nth,
         ROW_NUMBER() OVER (PARTITION BY e.item_id
                            ORDER BY e.amount * 100.0 / e.quantity, v.date DESC) AS cheap
  FROM bill v JOIN bill_entry e ON e.bill_id = v.id
  WHERE v.date BETWEEN ? AND ? AND v.audited = 1 AND v.bill_class IN (1020002, 1020003)
), sums AS (
  SELECT item_id, SUM(quantity) AS quantity, SUM(amount) AS amount, MAX(price) AS highest,
         MIN(price) AS lowest, MAX(CASE WHEN nth = 1 THEN price END) AS price1,
         MAX(CASE WHEN nth = 2 THEN price END) AS price2, MAX(CASE WHEN nth = 3 THEN price END) AS price3,
         MAX(CASE WHEN nth = 4 THEN price END) AS price4, MAX(CASE WHEN nth = 5 THEN price END) AS price5,
         MAX(CASE WHEN nth = 6 THEN price END) AS price6, MAX(CASE WHEN nth = 7 THEN price END) AS price7,
         MAX(CASE WHEN cheap = 1 THEN supplier_id END) AS supplier,
         MAX(CASE WHEN cheap = 1 THEN date END) AS day
  FROM bought GROUP BY item_id
)
SELECT b.number, b.name, i.model, i.barcode, u.name, p.quantity / 1e6, p.amount,
       p.amount * 100.0 / p.quantity, p.highest, p.lowest, p.price1, p.price2, p.price3, p.price4, p.price5,
       p.price6, p.price7, s.name, p.day
FROM base_data b
JOIN item i ON i.id = b.id
JOIN unit u ON u.id = i.unit_id
LEFT JOIN sums p ON p.item_id = b.id
LEFT JOIN base_data s ON s.id = p.supplier
WHERE b.disabled = 0
ORDER BY b.number
)sql";

constexpr std::string_view kBatchSummarySql = R"sql(
SELECT b.number, b.name, t.number, i.model, i.barcode, u.name, SUM(s.opening) / 1e6, SUM(s.come) / 1e6,
       SUM(s.gone) / 1e6, SUM(s.opening + s.come - s.gone) / 1e6
FROM (SELECT item_id, batch_id, quantity AS opening, 0 AS come, 0 AS gone FROM balance WHERE period = ? - 1
      UNION ALL
      SELECT item_id, batch_id, 0, CASE WHEN direction > 0 THEN quantity ELSE 0 END,
             CASE WHEN direction < 0 THEN quantity ELSE 0 END
      FROM movement WHERE period BETWEEN ? AND ?) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
LEFT JOIN batch t ON t.id = s.batch_id
WHERE i.batch_managed = 1
GROUP BY s.item_id, s.batch_id
HAVING SUM(s.opening) <> 0 OR SUM(s.come) <> 0 OR SUM(s.gone) <> 0
ORDER BY b.number, t.number
)sql";

std::string With(std::string_view sql, std::string_view slot, std::string_view text) {
  std::string filled(sql);
  return filled.replace(filled.find(slot), slot.size(), text);
}

std::string Pivot(const std::vector<std::int64_t>& warehouses, std::string_view stock) {
  std::string columns;
  for (const std::int64_t id : warehouses) {
    const std::string when = ", SUM(CASE WHEN s.warehouse_id = " + std::to_string(id) + " THEN s.";
    columns += when + "quantity END) / 1e6" + when + "amount END)";
  }
  return With(With(kPivotSql, "{columns}", columns), "{stock}", stock);
}

}  // namespace

std::vector<PlainStatement> PlainStatements(const std::vector<std::int64_t>& warehouses) {
  const std::int64_t day = Date::Of(2026, 6, 20).Days();
  const std::int64_t today = Date::Of(2026, 11, 21).Days();
  const std::int64_t june = books::schema::PeriodOf(2026, 6);
  const std::int64_t october = books::schema::PeriodOf(2026, 10);
  const std::int64_t first = books::schema::PeriodOf(2024, 12);
  const std::int64_t last = books::schema::PeriodOf(2026, 11);
  const std::string stock(kStockSql);
  const std::string business(kBusinessSql);
  const std::string summary(kSummarySql);
  return {
      {"InstantStock", Pivot(warehouses, "stock"), {}},
      {"InstantStockAtADay", Pivot(warehouses, kStockAtADay), {june, june, day}},
      {"InstantStockByRows", stock, {}},
      {"InstantStockByRowsAtADay", std::string(kPastStockSql), {june, june, day}},
      {"Structure", std::string(kStructureSql), {}},
      {"AvailableStock", std::string(kAvailableSql), {today}},
      {"ShelfLife", std::string(kShelfLifeSql), {today, today}},
      {"PurchasePricesOfAMonth",
       std::string(kPriceSql),
       {Date::Of(2026, 10, 1).Days(), Date::Of(2026, 10, 31).Days()}},
      {"BusinessSummaryOfAMonth", business, {october, october}},
      {"BusinessSummaryOfTwoYears", business, {first, last}},
      {"MovementSummaryOfAMonth", summary, {october, october, october}},
      {"MovementSummaryOfTwoYears", summary, {first, first, last}},
      {"MovementDetailOfAMonth", With(kDetailSql, "{items}", ""), {october, october}},
      {"MovementDetailOfAnItem",
       With(kDetailSql, "{items}", "AND b.number = '01.01.01.0001'"),
       {first, last}},
      {"BatchSummaryOfAMonth", std::string(kBatchSummarySql), {october, october, october}},
      {"BatchDetailOfAMonth", With(kDetailSql, "{items}", "AND i.batch_managed = 1"), {october, october}},
  };
}

}  // namespace bench
