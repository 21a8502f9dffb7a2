#include "books/posting/StockReader.h"

namespace books::posting {
namespace {

CostingRules ReadRules(database::Connection& connection) {
  CostingRules rules;
  database::Statement profile =
      connection.Query("SELECT value FROM system_profile WHERE category = 'IC' AND key = 'CalculateType'");
  if (profile.Step()) {
    const std::string value = profile.Text(0);
    rules.costPerWarehouse = value == "1" || value == "-1" || value == "True" || value == "true";
  }
  database::Statement gifts =
      connection.Query("SELECT id FROM warehouse WHERE type_code = ?", schema::WarehouseType::kGift);
  while (gifts.Step()) rules.giftWarehouses.insert(gifts.Integer(0));
  return rules;
}

}  // namespace

StockReader::StockReader(database::Connection& connection)
    : rules_(ReadRules(connection)),
      method_(connection.Prepare("SELECT valuation FROM item WHERE id = ?")),
      openings_(connection.Prepare(
          "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM opening_stock "
          "WHERE item_id = ? ORDER BY warehouse_id, batch_id, aux_id")),
      // What a customer pays for an issue is no cost, so entries of issues need not be looked up.
      movements_(connection.Prepare(
          "SELECT m.date, m.day_order, m.bill_id, m.direction, m.line, m.period, m.bill_class, "
          "m.warehouse_id, m.batch_id, m.aux_id, m.quantity, m.aux_quantity, m.amount, e.amount "
          "FROM movement m LEFT JOIN bill_entry e "
          "ON m.day_order <> 4 AND e.bill_id = m.bill_id AND e.line = m.line "
          "WHERE m.item_id = ? ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line")) {}

void StockReader::Load(std::span<const Id> items, ItemGroup& group) {
  LoadWithoutMovements(items, group);
  for (const Id item : items) LoadMovements(item, group);
}

void StockReader::LoadWithoutMovements(std::span<const Id> items, ItemGroup& group) {
  group.movements.clear();
  group.openings.clear();
  group.methods.clear();
  for (const Id item : items) LoadFacts(item, group);
}

void StockReader::LoadFacts(Id item, ItemGroup& group) {
  method_.Bind(item);
  group.methods[item] =
      method_.Step() ? static_cast<schema::Valuation>(method_.Int32(0)) : schema::Valuation::kMovingAverage;
  method_.Reset();
  openings_.Bind(item);
  while (openings_.Step()) {
    group.openings.push_back({.itemId = item,
                              .warehouseId = openings_.Integer(0),
                              .batchId = openings_.Integer(1),
                              .auxId = openings_.Integer(2),
                              .quantity = openings_.GetQuantity(3),
                              .auxQuantity = openings_.GetQuantity(4),
                              .amount = openings_.Amount(5)});
  }
}

void StockReader::LoadMovements(Id item, ItemGroup& group) {
  movements_.Bind(item);
  while (movements_.Step()) {
    group.movements.push_back({.itemId = item,
                               .date = movements_.Int32(0),
                               .dayOrder = static_cast<schema::DayOrder>(movements_.Int32(1)),
                               .billId = movements_.Integer(2),
                               .direction = movements_.Int32(3),
                               .line = movements_.Int32(4),
                               .period = movements_.Int32(5),
                               .billClass = static_cast<schema::BillClass>(movements_.Int32(6)),
                               .warehouseId = movements_.Integer(7),
                               .batchId = movements_.Integer(8),
                               .auxId = movements_.Integer(9),
                               .quantity = movements_.GetQuantity(10),
                               .auxQuantity = movements_.GetQuantity(11),
                               .given = movements_.OptionalAmount(13),
                               .amount = movements_.Amount(12)});
  }
}

}  // namespace books::posting
