#include "books/reports/movement/DetailFacts.h"

#include "books/database/Quantity.h"

namespace books::reports {
namespace {

using database::Statement;

constexpr std::string_view kBillSql =
    "SELECT number, explanation, COALESCE(supplier_id, customer_id, 0) FROM bill WHERE id = ?";

// The base unit stands for itself where it is not among the item's units.
constexpr std::string_view kEntrySql = R"sql(
SELECT e.unit_id, e.unit_quantity, e.note, COALESCE(u.factor, 0)
FROM bill_entry e
LEFT JOIN item_unit u ON u.item_id = ? AND u.unit_id = e.unit_id
WHERE e.bill_id = ? AND e.line = ?
)sql";

}  // namespace

DetailFacts::DetailFacts(services::Store& store)
    : bill_(store.Reading().Prepare(kBillSql)),
      baseData_(store.Reading().Prepare(store.UsesShortNumbers()
                                            ? "SELECT short_number, name FROM base_data WHERE id = ?"
                                            : "SELECT number, name FROM base_data WHERE id = ?")),
      batch_(store.Reading().Prepare("SELECT number FROM batch WHERE id = ?")),
      unit_(store.Reading().Prepare("SELECT name FROM unit WHERE id = ?")),
      billClass_(store.Reading().Prepare("SELECT name FROM bill_class WHERE id = ?")),
      entry_(store.Reading().Prepare(kEntrySql)) {}

const DetailFacts::Bill& DetailFacts::BillOf(std::int64_t id) {
  const auto [known, isNew] = bills_.try_emplace(id);
  if (isNew) {
    bill_.Bind(id);
    if (bill_.Step()) {
      known->second = {.number = bill_.Text(0), .explanation = bill_.Text(1), .partnerId = bill_.Integer(2)};
    }
  }
  return known->second;
}

const DetailFacts::Named& DetailFacts::BaseDataOf(std::int64_t id) {
  const auto [known, isNew] = named_.try_emplace(id);
  if (isNew && id != 0) {
    baseData_.Bind(id);
    if (baseData_.Step()) known->second = {.number = baseData_.Text(0), .name = baseData_.Text(1)};
  }
  return known->second;
}

const std::string& DetailFacts::Find(Texts& known, Statement& statement, std::int64_t id) {
  const auto [text, isNew] = known.try_emplace(id);
  if (isNew && id != 0) {
    statement.Bind(id);
    if (statement.Step()) text->second = statement.Text(0);
  }
  return text->second;
}

const std::string& DetailFacts::BatchNumber(std::int64_t id) { return Find(batches_, batch_, id); }

const std::string& DetailFacts::UnitName(std::int64_t id) { return Find(units_, unit_, id); }

const std::string& DetailFacts::ClassName(std::int32_t billClass) {
  return Find(classes_, billClass_, billClass);
}

DetailFacts::Entry DetailFacts::EntryOf(std::int64_t itemId, std::int64_t billId, std::int32_t line) {
  Entry entry{.factor = database::Quantity::kScale, .note = {}};
  entry_.Bind(itemId, billId, line);
  if (!entry_.Step()) return entry;
  entry.unitId = entry_.Integer(0);
  entry.unitQuantity = entry_.Integer(1);
  entry.note = entry_.Text(2);
  if (entry_.Integer(3) > 0) entry.factor = entry_.Integer(3);
  return entry;
}

}  // namespace books::reports
