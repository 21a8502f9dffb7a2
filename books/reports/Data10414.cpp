#include "books/reports/Data10414.h"

#include "books/reports/ReportFilter.h"
#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using services::Kept;
using services::RowField;

constexpr RowField kFields[] = {
    {"FItemNumber", Kept::kText},  {"FItemName", Kept::kText},     {"FModel", Kept::kText},
    {"FUnitName", Kept::kText},    {"FLowerQty", Kept::kQuantity}, {"FMostQty", Kept::kQuantity},
    {"FQty", Kept::kQuantity},     {"FStatus", Kept::kText},       {"FOverQty", Kept::kQuantity},
    {"FSecUnitName", Kept::kText}, {"FSecQty", Kept::kQuantity},
};

constexpr SortField kSortFields[] = {
    {"FItemNumber", "number"},    {"FItemName", "name"},       {"FModel", "model"},
    {"FUnitName", "unit"},        {"FLowerQty", "lowest"},     {"FMostQty", "highest"},
    {"FQty", "quantity"},         {"FStatus", "status"},       {"FOverQty", "surplus"},
    {"FSecUnitName", "aux_unit"}, {"FSecQty", "aux_quantity"},
};

// chosen: the warehouses; held: what lies there; placed: the levels set there; judged: the levels that count.
constexpr std::string_view kSql = R"sql(
WITH chosen AS (
  SELECT t4.FItemID AS id FROM t_Stock t4 WHERE {warehouses}
), held AS (
  SELECT item_id, SUM(quantity) AS quantity, SUM(aux_quantity) AS aux_quantity
  FROM stock WHERE warehouse_id IN (SELECT id FROM chosen)
  GROUP BY item_id
), placed AS (
  SELECT item_id, SUM(min_quantity) AS lowest, SUM(max_quantity) AS highest
  FROM item_limit WHERE warehouse_id IN (SELECT id FROM chosen)
  GROUP BY item_id
), whole AS (
  SELECT (SELECT COUNT(*) FROM chosen) = (SELECT COUNT(*) FROM warehouse) AS book
), listed AS (
  SELECT i.id AS id, i.unit_id AS unit_id, i.aux_unit_id AS aux_unit_id, i.model AS model,
         b.{number} AS number, b.name AS name,
         COALESCE(h.quantity, 0) AS quantity, COALESCE(h.aux_quantity, 0) AS aux_quantity,
         CASE WHEN (w.book AND (i.min_quantity > 0 OR i.max_quantity > 0))
                OR (COALESCE(p.lowest, 0) <= 0 AND COALESCE(p.highest, 0) <= 0) THEN 1 ELSE 0 END AS own,
         i.min_quantity AS own_lowest, i.max_quantity AS own_highest,
         p.lowest AS placed_lowest, p.highest AS placed_highest
  FROM item i
  JOIN base_data b ON b.id = i.id
  CROSS JOIN whole w
  LEFT JOIN held h ON h.item_id = i.id
  LEFT JOIN placed p ON p.item_id = i.id
  WHERE b.disabled = 0 AND {items}
), judged AS (
  SELECT id, unit_id, aux_unit_id, model, number, name, quantity, aux_quantity,
         CASE WHEN own = 1 THEN own_lowest ELSE placed_lowest END AS lowest,
         CASE WHEN own = 1 THEN own_highest ELSE placed_highest END AS highest
  FROM listed
)
SELECT number, j.name AS name, model, u.name AS unit, lowest, highest, quantity,
       CASE WHEN quantity < lowest THEN '短缺' ELSE '超储' END AS status,
       CASE WHEN quantity < lowest THEN quantity - lowest ELSE quantity - highest END AS surplus,
       COALESCE(a.name, '') AS aux_unit,
       CASE WHEN a.id IS NULL THEN NULL ELSE aux_quantity END AS aux_quantity
FROM judged j
JOIN unit u ON u.id = j.unit_id
LEFT JOIN unit a ON a.id = j.aux_unit_id
WHERE ((lowest > 0 AND quantity < lowest) OR (highest > 0 AND quantity > highest))
  AND EXISTS (SELECT 1 FROM chosen)
ORDER BY {order}
)sql";

}  // namespace

platform::Ref<platform::Recordset> Data10414::GetRpt10414Data(const std::string& /*props*/,
                                                              platform::Variant& filter) {
  const ReportFilter asked(filter);
  const bool shortNumbers = store_->UsesShortNumbers();
  static const reader::ConditionAlias kAliases[] = {{"t4", *reader::FindTable("t_Stock")}};

  Conditions warehouses;
  warehouses.AddRange(shortNumbers ? "t4.FShortNumber" : "t4.FNumber", asked.NumberRange("StockNumber"));
  warehouses.Add(asked.Rights(kAliases));
  Conditions items;
  items.AddRange(shortNumbers ? "b.short_number" : "b.number", asked.NumberRange("ItemNumber"));

  const Slot slots[] = {{"warehouses", warehouses},
                        {"items", items},
                        {"number", shortNumbers ? "short_number" : "number"},
                        {"order", asked.OrderBy(kSortFields, "number, j.id")}};
  return store_->Fetch(Compose(kSql, slots), kFields);
}

}  // namespace books::reports
