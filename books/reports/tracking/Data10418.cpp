#include "books/reports/tracking/Data10418.h"

#include <array>

#include "books/reports/ReportFilter.h"
#include "books/reports/ReportSql.h"
#include "books/reports/stock/StockFilter.h"

namespace books::reports {
namespace {

using services::Kept;
using services::RowField;

// The bill's columns stand in both forms, empty without bills, so that a heading of either fits.
constexpr RowField kFields[] = {
    {"FItemNumber", Kept::kText},     {"FItemName", Kept::kText},     {"FModel", Kept::kText},
    {"FSerialNo", Kept::kText},       {"FStockName", Kept::kText},    {"FAuxPropName", Kept::kText},
    {"FSerialNoStatus", Kept::kText}, {"FSerialNoNote", Kept::kText}, {"FBillNo", Kept::kText},
    {"FBillType", Kept::kText},       {"FDate", Kept::kDate},         {"FSuppOrgName", Kept::kText},
    {"FShowPrice", Kept::kReal},      {"FEntryNote", Kept::kText},
};

// piece: the numbers that are chosen by what they are and where they stand.
constexpr std::string_view kPieces = R"sql(
WITH piece AS (
  SELECT s.id AS id, g.{number} AS item, g.FName AS item_name, i.model AS model, s.number AS number,
         COALESCE(t4.FName, '') AS warehouse, COALESCE(x.name, '') AS property,
         CASE s.state WHEN 1 THEN '在库' WHEN 2 THEN '已出库' ELSE '' END AS state, s.note AS note
  FROM serial s
  JOIN item i ON i.id = s.item_id
  JOIN t_Item g ON g.FItemID = s.item_id
  LEFT JOIN t_Stock t4 ON t4.FItemID = s.warehouse_id
  LEFT JOIN base_data x ON x.id = s.aux_id
  WHERE {pieces}
)
)sql";

constexpr std::string_view kNumbers = R"sql(
SELECT item, item_name, model, number, warehouse, property, state, note, '', '', NULL, '', NULL, ''
FROM piece p
WHERE EXISTS (
  SELECT 1
  FROM bill_serial m
  JOIN bill v ON v.id = m.bill_id
  LEFT JOIN t_Item t7 ON t7.FItemID = v.supplier_id
  LEFT JOIN t_Item t8 ON t8.FItemID = v.customer_id
  WHERE m.serial_id = p.id AND v.audited = 1 AND {bills}
)
ORDER BY {order}, item, number, p.id
)sql";

// Movements of a day come in the order in which they are costed: receipts, transfers and assemblies, issues.
constexpr std::string_view kBills = R"sql(
, told AS (
  SELECT p.*, v.number AS bill, k.name AS type, v.date AS date,
         COALESCE(t7.FName, t8.FName, '') AS partner, e.price AS price, e.note AS entry_note,
         ROW_NUMBER() OVER (
           PARTITION BY p.id
           ORDER BY v.date, CASE k.kind WHEN 1 THEN 1 WHEN 2 THEN 3 ELSE 2 END, v.id, m.line) AS place
  FROM piece p
  JOIN bill_serial m ON m.serial_id = p.id
  JOIN bill v ON v.id = m.bill_id
  JOIN bill_class k ON k.id = v.bill_class
  JOIN bill_entry e ON e.bill_id = m.bill_id AND e.line = m.line
  LEFT JOIN t_Item t7 ON t7.FItemID = v.supplier_id
  LEFT JOIN t_Item t8 ON t8.FItemID = v.customer_id
  WHERE v.audited = 1 AND {bills}
)
SELECT CASE WHEN {full} THEN item ELSE '' END, CASE WHEN {full} THEN item_name ELSE '' END,
       CASE WHEN {full} THEN model ELSE '' END, CASE WHEN {full} THEN number ELSE '' END,
       CASE WHEN {full} THEN warehouse ELSE '' END, CASE WHEN {full} THEN property ELSE '' END,
       CASE WHEN {full} THEN state ELSE '' END, CASE WHEN {full} THEN note ELSE '' END,
       bill, type, date, partner, price, entry_note
FROM told p
ORDER BY {order}, item, number, p.id, place
)sql";

constexpr std::array<std::string_view, 3> kSorts = {"item", "model", "number"};

Conditions PiecesOf(const ReportFilter& filter, const std::string& number) {
  static const reader::ConditionAlias kAliases[] = {{"t4", *reader::FindTable("t_Stock")}};
  Conditions pieces;
  pieces.AddRange("s.number", filter.NumberRange("SerialNo"));
  pieces.AddRange("g." + number, filter.NumberRange("ItemNumber"));
  pieces.AddRange("t4." + number, filter.NumberRange("StockNumber"));
  AddContained(pieces, "i.model", filter.Text("Model"));
  AddContained(pieces, "s.note", filter.Text("SerialNoNote"));
  if (const std::int32_t state = ChoiceOf(filter, "cboSerialNoStatus", 3)) {
    pieces.Add({.sql = "s.state = ?", .parameters = {state}});
  }
  pieces.Add(filter.Rights(kAliases, "DataRightWhereStock"));
  return pieces;
}

Conditions BillsOf(const ReportFilter& filter, const std::string& number) {
  static const reader::ConditionAlias kAliases[] = {{"t7", reader::BaseDataTable()},
                                                    {"t8", reader::BaseDataTable()}};
  Conditions bills;
  if (const auto first = DayOf(filter, "BDate")) bills.Add({.sql = "v.date >= ?", .parameters = {*first}});
  if (const auto last = DayOf(filter, "EDate")) bills.Add({.sql = "v.date <= ?", .parameters = {*last}});
  bills.AddRange("t7." + number, filter.NumberRange("SupplyNumber"));
  bills.AddRange("t8." + number, filter.NumberRange("CustNumber"));
  bills.Add(filter.Rights(kAliases));
  return bills;
}

}  // namespace

platform::Ref<platform::Recordset> Data10418::GetRpt10418Data(const std::string& /*props*/,
                                                              platform::Variant& filter) {
  const ReportFilter asked(filter);
  const std::string number = store_->UsesShortNumbers() ? "FShortNumber" : "FNumber";
  const auto sort = static_cast<std::size_t>(ChoiceOf(asked, "cboSort", kSorts.size()));
  const Slot slots[] = {
      {"number", number},
      {"pieces", PiecesOf(asked, number)},
      {"bills", BillsOf(asked, number)},
      {"full", FlagOf(asked, "chkAllDetailShow") ? "1" : "place = 1"},
      {"order", std::string(kSorts.at(sort)) + (FlagOf(asked, "OptSortD") ? " DESC" : " ASC")},
  };
  const std::string sql = std::string(kPieces) + std::string(FlagOf(asked, "chkDetail") ? kBills : kNumbers);
  return store_->Fetch(Compose(sql, slots), kFields);
}

}  // namespace books::reports
