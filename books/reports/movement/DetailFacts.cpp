#include "books/reports/movement/DetailFacts.h"

#include <algorithm>

#include "books/database/Quantity.h"
#include "books/reports/ReportSql.h"

namespace books::reports {
namespace {

using database::Statement;

// Bills come one after the other, each with its entries by line.
constexpr std::string_view kBillSql = R"sql(
SELECT v.id, v.number, v.explanation, COALESCE(v.supplier_id, v.customer_id, 0),
       e.line, e.unit_id, e.unit_quantity, e.note
FROM bill v
CROSS JOIN bill_entry e
WHERE {which} AND e.bill_id = v.id
ORDER BY v.date, v.id, e.line
)sql";

std::string BillSql(const char* which) {
  const Slot slots[] = {{"which", std::string(which)}};
  return Compose(kBillSql, slots).sql;
}

}  // namespace

DetailFacts::DetailFacts(services::Store& store)
    : store_(store),
      bill_(store.Reading().Prepare(BillSql("v.id = ?"))),
      baseData_(store.Reading().Prepare(store.UsesShortNumbers()
                                            ? "SELECT short_number, name FROM base_data WHERE id = ?"
                                            : "SELECT number, name FROM base_data WHERE id = ?")),
      batch_(store.Reading().Prepare("SELECT number FROM batch WHERE id = ?")),
      unit_(store.Reading().Prepare("SELECT name FROM unit WHERE id = ?")),
      billClass_(store.Reading().Prepare("SELECT name FROM bill_class WHERE id = ?")),
      factor_(store.Reading().Prepare("SELECT factor FROM item_unit WHERE item_id = ? AND unit_id = ?")) {}

void DetailFacts::ReadBills(platform::Date from, platform::Date to) {
  Statement rows = store_.Reading().Query(BillSql("v.date BETWEEN ? AND ?"), from, to);
  KeepBills(rows);
}

void DetailFacts::KeepBills(Statement& rows) {
  std::int64_t id = 0;
  Bill* bill = nullptr;
  while (rows.Step()) {
    if (bill == nullptr || rows.Integer(0) != id) {
      id = rows.Integer(0);
      bill = &bills_[id];
      *bill = {.number = rows.Text(1),
               .explanation = rows.Text(2),
               .partnerId = rows.Integer(3),
               .firstEntry = entries_.size()};
    }
    ++bill->entryCount;
    Entry& entry = entries_.emplace_back();
    entry.line = rows.Int32(4);
    entry.unitId = rows.Integer(5);
    entry.unitQuantity = rows.Integer(6);
    const std::string_view note = rows.TextView(7);
    if (note.empty()) continue;
    entry.note = static_cast<std::uint32_t>(notes_.size());
    notes_.emplace_back(note);
  }
}

const DetailFacts::Bill& DetailFacts::BillOf(std::int64_t id) {
  if (const auto known = bills_.find(id); known != bills_.end()) return known->second;
  bill_.Bind(id);
  KeepBills(bill_);
  return bills_[id];
}

DetailFacts::Entry DetailFacts::EntryOf(const Bill& bill, std::int32_t line) const {
  const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(bill.firstEntry);
  const auto last = first + static_cast<std::ptrdiff_t>(bill.entryCount);
  const auto entry = std::lower_bound(
      first, last, line, [](const Entry& each, std::int32_t wanted) { return each.line < wanted; });
  return entry == last || entry->line != line ? Entry() : *entry;
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
