#include "books/reports/tracking/LinkedBills.h"

#include <array>
#include <cmath>

#include "books/reports/ReportFilter.h"
#include "books/reports/ReportSql.h"
#include "books/reports/stock/StockFilter.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::Recordset;
using platform::Ref;
using services::Kept;
using services::RowField;

constexpr RowField kFields[] = {
    {"FDate", Kept::kDate},           {"FBillType", Kept::kText},     {"FBillNo", Kept::kText},
    {"FCustNumber", Kept::kText},     {"FCustName", Kept::kText},     {"FSupplyNumber", Kept::kText},
    {"FSupplyName", Kept::kText},     {"FDeptNumber", Kept::kText},   {"FDeptName", Kept::kText},
    {"FEmpNumber", Kept::kText},      {"FEmpName", Kept::kText},      {"FItemNumber", Kept::kText},
    {"FItemName", Kept::kText},       {"FModel", Kept::kText},        {"FAuxName", Kept::kText},
    {"FBatchNo", Kept::kText},        {"FUnit", Kept::kText},         {"FShowUnit", Kept::kText},
    {"FSecUnit", Kept::kText},        {"FInQty", Kept::kQuantity},    {"FInPrice", Kept::kReal},
    {"FInShowQty", Kept::kQuantity},  {"FInShowPrice", Kept::kReal},  {"FInSecQty", Kept::kQuantity},
    {"FInAmount", Kept::kAmount},     {"FOutQty", Kept::kQuantity},   {"FOutPrice", Kept::kReal},
    {"FOutShowQty", Kept::kQuantity}, {"FOutShowPrice", Kept::kReal}, {"FOutSecQty", Kept::kQuantity},
    {"FOutAmount", Kept::kAmount},    {"FNote", Kept::kText},         {"FSumSort", Kept::kInteger},
};

// By the position in the dialog's list of account items.
struct LinkedItem {
  std::string_view id;  // what a bill must have, and what rows are summed up by
  bool matched = false;
  std::string_view partner = {};  // the alias that the partner range speaks of; none for 4 and 5
};
constexpr std::array kLinkedItems = {
    LinkedItem{.id = "customer_id", .partner = "tog"},
    LinkedItem{.id = "supplier_id", .partner = "ts"},
    LinkedItem{.id = "customer_id", .matched = true, .partner = "tog"},
    LinkedItem{.id = "supplier_id", .matched = true, .partner = "ts"},
    LinkedItem{.id = "department_id"},
    LinkedItem{.id = "employee_id"},
};

// By the position in the dialog's list of sorts, over the columns of the rows.
constexpr std::array<std::string_view, 8> kSorts = {"date",     "type",       "bill",     "customer",
                                                    "supplier", "department", "employee", "item"};

// linked: the bills with the firm on both sides where it is matched; line: their goods as they moved.
constexpr std::string_view kLines = R"sql(
WITH matched_customer AS (
  SELECT customer_id, MIN(supplier_id) AS supplier_id FROM partner_match GROUP BY customer_id
), matched_supplier AS (
  SELECT supplier_id, MIN(customer_id) AS customer_id FROM partner_match GROUP BY supplier_id
), linked AS (
  SELECT v.id AS id, v.bill_class AS bill_class, v.number AS number, v.date AS date,
         {customer} AS customer_id, {supplier} AS supplier_id,
         v.department_id AS department_id, v.employee_id AS employee_id
  FROM bill v
  LEFT JOIN matched_customer mc ON mc.customer_id = v.customer_id
  LEFT JOIN matched_supplier ms ON ms.supplier_id = v.supplier_id
  WHERE v.bill_class IN (1040001, 1040002) AND {days}
), line AS (
  SELECT l.id AS bill_id, e.line AS line_no, l.{linked} AS linked_id, l.date AS date, l.bill_class AS type,
         k.name AS type_name, l.number AS bill, tog.{number} AS customer, tog.FName AS customer_name,
         ts.{number} AS supplier, ts.FName AS supplier_name, d.{number} AS department,
         d.FName AS department_name, w.{number} AS employee, w.FName AS employee_name,
         g.{number} AS item, g.FName AS item_name, i.id AS item_id, i.model AS model, e.aux_id AS aux_id,
         COALESCE(x.FName, '') AS property, COALESCE(h.number, '') AS batch, u.name AS unit,
         e.unit_id AS unit_id, n.name AS show_unit, COALESCE(a.name, '') AS aux_unit,
         m.direction AS direction, m.quantity AS quantity, e.unit_quantity AS unit_quantity,
         CASE WHEN i.aux_unit_id IS NULL THEN NULL ELSE m.aux_quantity END AS aux_quantity,
         m.amount AS amount, e.note AS note
  FROM linked l
  CROSS JOIN bill_entry e ON e.bill_id = l.id
  CROSS JOIN movement m ON m.item_id = e.item_id AND m.date = l.date AND m.bill_id = l.id AND m.line = e.line
  JOIN bill_class k ON k.id = l.bill_class
  JOIN item i ON i.id = e.item_id
  JOIN t_Item g ON g.FItemID = e.item_id
  JOIN unit u ON u.id = i.unit_id
  JOIN unit n ON n.id = e.unit_id
  LEFT JOIN unit a ON a.id = i.aux_unit_id
  LEFT JOIN batch h ON h.id = m.batch_id
  LEFT JOIN t_Item x ON x.FItemID = e.aux_id
  LEFT JOIN t_Item tog ON tog.FItemID = l.customer_id
  LEFT JOIN t_Item ts ON ts.FItemID = l.supplier_id
  LEFT JOIN t_Item d ON d.FItemID = l.department_id
  LEFT JOIN t_Item w ON w.FItemID = l.employee_id
  WHERE l.{linked} IS NOT NULL AND {lines}
)
)sql";

constexpr std::string_view kByLine = R"sql(
SELECT date, type_name, bill, COALESCE(customer, ''), COALESCE(customer_name, ''), COALESCE(supplier, ''),
       COALESCE(supplier_name, ''), COALESCE(department, ''), COALESCE(department_name, ''),
       COALESCE(employee, ''), COALESCE(employee_name, ''), item, item_name, model, property, batch, unit,
       show_unit, aux_unit,
       CASE WHEN direction > 0 THEN quantity END,
       CASE WHEN direction > 0 AND quantity <> 0 THEN amount * 100.0 / quantity END,
       CASE WHEN direction > 0 THEN unit_quantity END,
       CASE WHEN direction > 0 AND unit_quantity <> 0 THEN amount * 100.0 / unit_quantity END,
       CASE WHEN direction > 0 THEN aux_quantity END, CASE WHEN direction > 0 THEN amount END,
       CASE WHEN direction < 0 THEN quantity END,
       CASE WHEN direction < 0 AND quantity <> 0 THEN amount * 100.0 / quantity END,
       CASE WHEN direction < 0 THEN unit_quantity END,
       CASE WHEN direction < 0 AND unit_quantity <> 0 THEN amount * 100.0 / unit_quantity END,
       CASE WHEN direction < 0 THEN aux_quantity END, CASE WHEN direction < 0 THEN amount END,
       note, 0
FROM line
ORDER BY {order}, date, bill_id, line_no
)sql";

// Only the account item that rows are summed up by is told: of the others there may be several.
constexpr std::string_view kByItem = R"sql(
, summed AS (
  SELECT {cust} AS customer, {cust_name} AS customer_name, {supply} AS supplier,
         {supply_name} AS supplier_name, {dept} AS department, {dept_name} AS department_name,
         {emp} AS employee, {emp_name} AS employee_name,
         linked_id, item_id, aux_id, batch, unit_id, MAX(item) AS item, MAX(item_name) AS item_name,
         MAX(model) AS model, MAX(property) AS property, MAX(unit) AS unit, MAX(show_unit) AS show_unit,
         MAX(aux_unit) AS aux_unit, MIN(date) AS date, MIN(type) AS type, MIN(bill) AS bill,
         SUM(CASE WHEN direction > 0 THEN quantity END) AS come,
         SUM(CASE WHEN direction > 0 THEN unit_quantity END) AS come_units,
         SUM(CASE WHEN direction > 0 THEN aux_quantity END) AS come_aux,
         SUM(CASE WHEN direction > 0 THEN amount END) AS come_amount,
         SUM(CASE WHEN direction < 0 THEN quantity END) AS gone,
         SUM(CASE WHEN direction < 0 THEN unit_quantity END) AS gone_units,
         SUM(CASE WHEN direction < 0 THEN aux_quantity END) AS gone_aux,
         SUM(CASE WHEN direction < 0 THEN amount END) AS gone_amount
  FROM line
  GROUP BY linked_id, item_id, aux_id, batch, unit_id
)
SELECT NULL, '', '', customer, customer_name, supplier, supplier_name, department, department_name,
       employee, employee_name, item, item_name, model, property, batch, unit, show_unit, aux_unit,
       come, CASE WHEN come <> 0 THEN come_amount * 100.0 / come END,
       come_units, CASE WHEN come_units <> 0 THEN come_amount * 100.0 / come_units END, come_aux, come_amount,
       gone, CASE WHEN gone <> 0 THEN gone_amount * 100.0 / gone END,
       gone_units, CASE WHEN gone_units <> 0 THEN gone_amount * 100.0 / gone_units END, gone_aux, gone_amount,
       '', 0
FROM summed
ORDER BY {order}, customer, supplier, department, employee, item, item_id, aux_id, batch, unit_id
)sql";

struct Side {
  std::string_view id;
  std::string_view number;
  std::string_view name;
  std::string_view numberSql;
  std::string_view nameSql;
};
constexpr std::array kSides = {
    Side{"customer_id", "cust", "cust_name", "COALESCE(MAX(customer), '')",
         "COALESCE(MAX(customer_name), '')"},
    Side{"supplier_id", "supply", "supply_name", "COALESCE(MAX(supplier), '')",
         "COALESCE(MAX(supplier_name), '')"},
    Side{"department_id", "dept", "dept_name", "MAX(department)", "MAX(department_name)"},
    Side{"employee_id", "emp", "emp_name", "MAX(employee)", "MAX(employee_name)"},
};

std::string SortOf(const ReportFilter& filter) {
  const std::int32_t chosen = ChoiceOf(filter, "OrderBy", kSorts.size());
  return std::string(kSorts.at(static_cast<std::size_t>(chosen))) +
         (FlagOf(filter, "OptSortD", true) ? " ASC" : " DESC");
}

Conditions DaysOf(const ReportFilter& filter) {
  Conditions days;
  if (const auto first = DayOf(filter, "BDate")) days.Add({.sql = "v.date >= ?", .parameters = {*first}});
  if (const auto last = DayOf(filter, "EDate")) days.Add({.sql = "v.date <= ?", .parameters = {*last}});
  return days;
}

Conditions LinesOf(const ReportFilter& filter, const LinkedItem& linked, std::string_view number) {
  static const reader::ConditionAlias kAliases[] = {{"tog", reader::BaseDataTable()},
                                                    {"ts", reader::BaseDataTable()}};
  const auto column = [number](std::string_view alias) {
    return std::string(alias) + "." + std::string(number);
  };
  Conditions lines;
  lines.AddRange(column("g"), filter.NumberRange("ItemNumber"));
  lines.AddRange("h.number", filter.NumberRange("BatchNo"));
  lines.AddRange(column("d"), filter.NumberRange("DeptNumber"));
  lines.AddRange(column("w"), filter.NumberRange("EmpNumber"));
  lines.AddRange(column("x"), filter.NumberRange("AuxPropNumber"));
  if (!linked.partner.empty()) lines.AddRange(column(linked.partner), filter.NumberRange("CustNumber"));
  lines.Add(filter.Rights(kAliases));
  return lines;
}

std::vector<Slot> SlotsOf(const ReportFilter& filter, const LinkedItem& linked, bool shortNumbers) {
  const std::string number = shortNumbers ? "FShortNumber" : "FNumber";
  std::vector<Slot> slots = {
      {"customer", linked.matched ? "COALESCE(mc.customer_id, ms.customer_id)" : "v.customer_id"},
      {"supplier", linked.matched ? "COALESCE(ms.supplier_id, mc.supplier_id)" : "v.supplier_id"},
      {"days", DaysOf(filter)},
      {"linked", std::string(linked.id)},
      {"number", number},
      {"lines", LinesOf(filter, linked, number)},
      {"order", SortOf(filter)},
  };
  for (const Side& side : kSides) {
    const bool isPartner = !linked.partner.empty() && (&side == &kSides[0] || &side == &kSides[1]);
    const bool told = side.id == linked.id || (linked.matched && isPartner);
    slots.emplace_back(side.number, std::string(told ? side.numberSql : "''"));
    slots.emplace_back(side.name, std::string(told ? side.nameSql : "''"));
  }
  return slots;
}

// The figures that can be summed up over items: base quantities, auxiliary ones and amounts.
void AddTotal(Recordset& rows) {
  const std::size_t count = rows.ViewCount();
  if (count == 0) return;
  platform::RowAppender total(rows);
  total.SetText(rows.FieldIndex("FBillType"), "合计");
  for (const char* field : {"FInQty", "FInSecQty", "FOutQty", "FOutSecQty"}) {
    const std::size_t column = rows.FieldIndex(field);
    double sum = 0;
    for (std::size_t row = 0; row < count; ++row) sum += rows.DoubleAt(column, row);
    total.SetDouble(column, std::round(sum * 1e6) / 1e6);  // quantities are whole millionths
  }
  for (const char* field : {"FInAmount", "FOutAmount"}) {
    const std::size_t column = rows.FieldIndex(field);
    Currency sum;
    for (std::size_t row = 0; row < count; ++row) sum = sum + rows.CurrencyAt(column, row);
    total.SetCurrency(column, sum);
  }
  total.SetInteger(rows.FieldIndex("FSumSort"), 1);
  total.CommitRow();
}

}  // namespace

Ref<Recordset> ReadLinkedBills(services::Store& store, const platform::Variant& filter) {
  const ReportFilter asked(filter);
  const LinkedItem& linked =
      kLinkedItems.at(static_cast<std::size_t>(ChoiceOf(asked, "InvoiceStyle", kLinkedItems.size())));
  const std::string sql = std::string(kLines) + std::string(FlagOf(asked, "chkShowItem") ? kByItem : kByLine);
  Ref<Recordset> rows = store.Fetch(Compose(sql, SlotsOf(asked, linked, store.UsesShortNumbers())), kFields);
  AddTotal(*rows);
  return rows;
}

}  // namespace books::reports
