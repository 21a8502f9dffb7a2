#include "tests/books/sample/Data10499.h"

#include "books/reports/ReportFilter.h"
#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using services::Kept;
using services::RowField;

constexpr RowField kFields[] = {
    {"FItemNumber", Kept::kText}, {"FItemName", Kept::kText},     {"FBarCode", Kept::kText},
    {"FSupplyName", Kept::kText}, {"FLowerQty", Kept::kQuantity}, {"FSecUnitName", Kept::kText},
};

constexpr SortField kSortFields[] = {{"FItemNumber", "b.number"}, {"FBarCode", "i.barcode"}};

constexpr std::string_view kSql = R"sql(
SELECT b.{number}, b.name, i.barcode, COALESCE(t7.FName, ''), i.min_quantity, COALESCE(a.name, '')
FROM item i
JOIN base_data b ON b.id = i.id
LEFT JOIN t_Item t7 ON t7.FItemID = i.default_supplier_id
LEFT JOIN unit a ON a.id = i.aux_unit_id
WHERE b.disabled = 0 AND {items}
ORDER BY {order}
)sql";

}  // namespace

platform::Ref<platform::Recordset> Data10499::GetRpt10499Data(const std::string& /*props*/,
                                                              platform::Variant& filter) {
  const ReportFilter asked(filter);
  const bool shortNumbers = store_->UsesShortNumbers();
  static const reader::ConditionAlias kAliases[] = {{"t7", reader::BaseDataTable()}};

  Conditions items;
  items.AddRange(shortNumbers ? "b.short_number" : "b.number", asked.NumberRange("ItemNumber"));
  if (asked.Text("chkNoCode") == "1") items.Add({.sql = "i.barcode = ''", .parameters = {}});
  items.Add(asked.Rights(kAliases));

  const Slot slots[] = {{"items", items},
                        {"number", shortNumbers ? "short_number" : "number"},
                        {"order", asked.OrderBy(kSortFields, "b.number, b.id")}};
  return store_->Fetch(Compose(kSql, slots), kFields);
}

}  // namespace books::reports
