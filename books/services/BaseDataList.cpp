#include "books/services/BaseDataList.h"

#include <string>

#include "books/schema/Codes.h"
#include "books/services/Session.h"

namespace books::services {
namespace {

using database::Statement;
using platform::Variant;
using reader::SqlText;

constexpr auto kWarehouse = static_cast<std::int32_t>(schema::BaseClass::kWarehouse);

void Append(SqlText& to, const SqlText& condition) {
  if (condition.sql.empty()) return;
  to.sql += " AND " + condition.sql;
  to.parameters.insert(to.parameters.end(), condition.parameters.begin(), condition.parameters.end());
}

// `text` as a part of a LIKE pattern with the escape character !.
std::string Containing(std::string_view text) {
  std::string pattern = "%";
  for (const char c : text) {
    if (c == '%' || c == '_' || c == '!') pattern += '!';
    pattern += c;
  }
  return pattern + "%";
}

SqlText BaseDataFilter(std::string_view filter) {
  const reader::ConditionAlias aliases[] = {{"t1", reader::BaseDataTable(), true}};
  return reader::ReadConditionText(filter, aliases);
}

// The condition that the user may see the row of `id`: rows that name him, and the groups above them, without
// which a tree could not show them. The user's id is looked for as a plain text, as in the clause that
// reports send, so that lookups and reports agree.
SqlText VisibleTo(Store& store, std::int32_t userId, std::int32_t dataType, const std::string& id) {
  if (!NeedRight(store, userId)) return {};
  const std::string user = std::to_string(userId);
  const std::int64_t type = dataType;
  return {.sql = "(NOT EXISTS (SELECT 1 FROM base_data r WHERE r.class_id = ? AND r.right_users <> '') OR " +
                 id +
                 " IN (SELECT r.id FROM base_data r WHERE r.class_id = ? AND instr(r.right_users, ?) > 0"
                 " UNION SELECT a.ancestor_id FROM base_ancestor a JOIN base_data r ON r.id = a.id"
                 " WHERE r.class_id = ? AND instr(r.right_users, ?) > 0))",
          .parameters = {type, type, user, type, user}};
}

constexpr RowField kItemListFields[] = {
    {"FItemID", Kept::kInteger},   {"FParentID", Kept::kInteger}, {"FNumber", Kept::kText},
    {"FShortNumber", Kept::kText}, {"FName", Kept::kText},        {"FDetail", Kept::kInteger},
    {"FDeleted", Kept::kInteger},
};

constexpr RowField kBatchFields[] = {
    {"FBatchNo", Kept::kText}, {"FStockPlaceID", Kept::kInteger}, {"FKFPeriod", Kept::kInteger},
    {"FKFDate", Kept::kDate},  {"FStockID", Kept::kInteger},      {"FAuxPropID", Kept::kInteger},
    {"FQty", Kept::kReal},     {"FItemNumber", Kept::kText},      {"FItemName", Kept::kText},
};

// A batch that lies nowhere any more has one row without a warehouse, so that it can still be chosen for what
// it did before.
constexpr std::string_view kBatches = R"sql(
SELECT t1.FBatchNo, t1.FStockPlaceID, t1.FKFPeriod, t1.FKFDate, t1.FStockID, t1.FAuxPropID, t1.FQty,
       t3.FNumber, t3.FName
FROM (
  SELECT b.item_id AS FItemID, b.number AS FBatchNo, 0 AS FStockPlaceID, b.shelf_life_days AS FKFPeriod,
         b.production_date AS FKFDate, COALESCE(s.warehouse_id, 0) AS FStockID,
         COALESCE(s.aux_id, 0) AS FAuxPropID, COALESCE(s.quantity, 0) / 1000000.0 AS FQty
  FROM batch b
  LEFT JOIN stock s ON s.item_id = b.item_id AND s.batch_id = b.id
) t1
JOIN t_Item t3 ON t3.FItemID = t1.FItemID
WHERE t1.FBatchNo LIKE ? ESCAPE '!')sql";

}  // namespace

std::vector<BaseDataRow> BaseData(Store& store, const BaseDataQuery& query) {
  SqlText text{.sql =
                   "SELECT t1.FItemID, t1.FParentID, t1.FNumber, t1.FShortNumber, t1.FName,"
                   " COALESCE(i.model, ''), t1.FDetail, t1.FDeleted"
                   " FROM t_Item t1 LEFT JOIN item i ON i.id = t1.FItemID WHERE t1.FItemClassID = ?",
               .parameters = {query.dataType}};
  if (query.detailOnly) text.sql += " AND t1.FDetail = 1";
  if (!query.search.empty()) {
    const Variant pattern = Containing(query.search);
    Append(text, {.sql = "(t1.FNumber LIKE ? ESCAPE '!' OR t1.FShortNumber LIKE ? ESCAPE '!'"
                         " OR t1.FName LIKE ? ESCAPE '!' OR i.model LIKE ? ESCAPE '!'"
                         " OR i.barcode LIKE ? ESCAPE '!')",
                  .parameters = {pattern, pattern, pattern, pattern, pattern}});
  }
  Append(text, BaseDataFilter(query.filter));
  Append(text, VisibleTo(store, query.userId, query.dataType, "t1.FItemID"));
  text.sql += " ORDER BY t1.FNumber LIMIT ?";
  text.parameters.emplace_back(query.limit);

  Statement row = store.Reading().Prepare(text.sql);
  BindAll(row, text.parameters);
  std::vector<BaseDataRow> rows;
  while (row.Step()) {
    rows.push_back({.id = row.Int32(0),
                    .parentId = row.Int32(1),
                    .number = row.Text(2),
                    .shortNumber = row.Text(3),
                    .name = row.Text(4),
                    .model = row.Text(5),
                    .detail = row.Boolean(6),
                    .deleted = row.Boolean(7)});
  }
  return rows;
}

platform::Ref<platform::Recordset> ItemList(Store& store, std::int32_t dataType, std::string_view filter,
                                            std::int32_t userId) {
  SqlText text{.sql =
                   "SELECT t1.FItemID, t1.FParentID, t1.FNumber, t1.FShortNumber, t1.FName, t1.FDetail,"
                   " t1.FDeleted FROM t_Item t1 WHERE t1.FItemClassID = ?",
               .parameters = {dataType}};
  Append(text, BaseDataFilter(filter));
  Append(text, VisibleTo(store, userId, dataType, "t1.FItemID"));
  // A number begins with its parent's, so parents come first.
  text.sql += " ORDER BY t1.FNumber";
  return store.Fetch(text, kItemListFields);
}

platform::Ref<platform::Recordset> Batches(Store& store, const BatchQuery& query) {
  const reader::ConditionAlias aliases[] = {{"t1", reader::BatchStockTable(), true},
                                            {"t3", reader::BaseDataTable()}};
  SqlText text{.sql = std::string(kBatches), .parameters = {Containing(query.keyWord)}};
  Append(text, reader::ReadConditionText(query.filterItem, aliases));
  Append(text, reader::ReadConditionText(query.filter, aliases));
  SqlText visible = VisibleTo(store, query.userId, kWarehouse, "t1.FStockID");
  if (!visible.sql.empty()) visible.sql = "(t1.FStockID = 0 OR " + visible.sql + ")";
  Append(text, visible);
  text.sql += " ORDER BY t3.FNumber, t1.FBatchNo, t1.FStockID, t1.FAuxPropID LIMIT ?";
  text.parameters.emplace_back(query.limit);
  return store.Fetch(text, kBatchFields);
}

}  // namespace books::services
