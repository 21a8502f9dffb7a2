#include "books/import/Known.h"

#include <utility>

#include "platform/value/Convert.h"

namespace books::importer {
namespace {

std::string FaultyKey(std::string_view table, std::int64_t owner, std::string_view code) {
  std::string key(table);
  key += '\n';
  key += std::to_string(owner);
  key += '\n';
  key += code;
  return key;
}

}  // namespace

std::size_t CodeHash::operator()(std::string_view code) const {
  std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (const char c : code) {
    const auto byte = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    hash = (hash ^ byte) * 1099511628211ULL;
  }
  return hash;
}

bool CodeEqual::operator()(std::string_view left, std::string_view right) const {
  return platform::EqualsIgnoreCase(left, right);
}

Known::Known(database::Connection& connection) {
  LoadBaseData(connection);
  LoadItems(connection);
  database::Statement classes = connection.Query("SELECT id, name, kind FROM bill_class");
  while (classes.Step()) {
    const BillClassFacts facts{.id = static_cast<schema::BillClass>(classes.Int32(0)),
                               .kind = static_cast<schema::BillKind>(classes.Int32(2))};
    billClasses_.emplace(std::to_string(classes.Integer(0)), facts);
    billClasses_.emplace(classes.Text(1), facts);
  }
}

void Known::LoadBaseData(database::Connection& connection) {
  database::Statement rows = connection.Query("SELECT id, class_id, number, detail FROM base_data");
  while (rows.Step()) {
    const Node node{.id = rows.Integer(0), .detail = rows.Boolean(3), .old = true};
    base_[rows.Int32(1)].insert_or_assign(rows.Text(2), node);
    lastBaseId_ = std::max(lastBaseId_, node.id);
  }
  database::Statement units = connection.Query("SELECT id, name FROM unit");
  while (units.Step()) AddUnit(units.TextView(1), {.id = units.Integer(0), .old = true});
  database::Statement gifts = connection.Query("SELECT id FROM warehouse WHERE type_code = ?",
                                               static_cast<std::int32_t>(schema::WarehouseType::kGift));
  while (gifts.Step()) AddGift(gifts.Integer(0));
}

void Known::LoadItems(database::Connection& connection) {
  database::Statement items =
      connection.Query("SELECT id, unit_id, aux_unit_id, batch_managed, serial_managed FROM item");
  while (items.Step()) {
    AddItem(items.Integer(0), {.unitId = items.Integer(1),
                               .hasAuxUnit = !items.IsNull(2),
                               .batchManaged = items.Boolean(3),
                               .serialManaged = items.Boolean(4)});
  }
  database::Statement factors = connection.Query("SELECT item_id, unit_id, factor FROM item_unit");
  while (factors.Step()) AddFactor(factors.Integer(0), factors.Integer(1), factors.GetQuantity(2));
}

const Node* Known::FindBase(schema::BaseClass baseClass, std::string_view number) const {
  const auto tree = base_.find(static_cast<std::int32_t>(baseClass));
  if (tree == base_.end()) return nullptr;
  const auto found = tree->second.find(number);
  return found == tree->second.end() ? nullptr : &found->second;
}

void Known::AddBase(schema::BaseClass baseClass, std::string_view number, const Node& node) {
  base_[static_cast<std::int32_t>(baseClass)].insert_or_assign(std::string(number), node);
}

const Node* Known::FindUnit(std::string_view name) const {
  const auto found = units_.find(name);
  return found == units_.end() ? nullptr : &found->second;
}

const ItemFacts* Known::FindItem(std::int64_t id) const {
  const auto found = items_.find(id);
  return found == items_.end() ? nullptr : &found->second;
}

std::optional<database::Quantity> Known::Factor(std::int64_t itemId, std::int64_t unitId) const {
  const ItemFacts* item = FindItem(itemId);
  if (item != nullptr && item->unitId == unitId) return database::Quantity::FromInteger(1);
  const auto found = factors_.find(itemId);
  if (found == factors_.end()) return std::nullopt;
  for (const auto& [unit, factor] : found->second) {
    if (unit == unitId) return factor;
  }
  return std::nullopt;
}

void Known::AddFactor(std::int64_t itemId, std::int64_t unitId, database::Quantity factor) {
  factors_[itemId].emplace_back(unitId, factor);
}

const BillClassFacts* Known::FindBillClass(std::string_view text) const {
  const auto found = billClasses_.find(text);
  return found == billClasses_.end() ? nullptr : &found->second;
}

void Known::AddFaultyFile(std::string_view file, bool unread) {
  faultyFiles_.emplace(file);
  if (unread) unreadFiles_.emplace(file);
}

void Known::AddFaulty(std::string_view table, std::int64_t owner, std::string_view code) {
  faulty_.insert(FaultyKey(table, owner, code));
}

bool Known::IsFaulty(std::string_view table, std::int64_t owner, std::string_view code) const {
  return !faulty_.empty() && faulty_.contains(FaultyKey(table, owner, code));
}

}  // namespace books::importer
