#include "books/reports/movement/DetailFacts.h"

#include "books/database/Quantity.h"

namespace books::reports {
namespace {

using database::Statement;

constexpr std::string_view kBillSql =
    "SELECT number, explanation, COALESCE(supplier_id, customer_id, 0) FROM bill WHERE id = ?";

}  // namespace

DetailFacts::DetailFacts(services::Store& store)
    : bill_(store.Reading().Prepare(kBillSql)),
      baseData_(store.Reading().Prepare(store.UsesShortNumbers()
                                            ? "SELECT short_number, name FROM base_data WHERE id = ?"
                                            : "SELECT number, name FROM base_data WHERE id = ?")),
      batch_(store.Reading().Prepare("SELECT number FROM batch WHERE id = ?")),
      unit_(store.Reading().Prepare("SELECT name FROM unit WHERE id = ?")),
      billClass_(store.Reading().Prepare("SELECT name FROM bill_class WHERE id = ?")),
      factor_(store.Reading().Prepare("SELECT factor FROM item_unit WHERE item_id = ? AND unit_id = ?")) {}

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

std::int64_t DetailFacts::FactorOf(std::int64_t itemId, std::int64_t unitId) {
  if (unitId == 0) return database::Quantity::kScale;
  if (itemId != factorItemId_) {
    factors_.clear();
    factorItemId_ = itemId;
  }
  const auto [known, isNew] = factors_.try_emplace(unitId, database::Quantity::kScale);
  if (isNew) {
    factor_.Bind(itemId, unitId);
    if (factor_.Step()) known->second = factor_.Integer(0);
  }
  return known->second;
}

}  // namespace books::reports
