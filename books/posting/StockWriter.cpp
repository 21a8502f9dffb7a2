// The rows that a group of items has in the stock tables follow from its movements alone, so they are deleted
// and written anew in key order; of the movements only those whose amount has changed are written.
#include "books/posting/StockWriter.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "books/posting/Periods.h"

namespace books::posting {
namespace {

using Cell = std::tuple<Id, Id, Id>;  // warehouse, batch, auxiliary property

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

StockWriter::StockWriter(database::Connection& connection)
    : rules_(ReadRules(connection)),
      start_(ReadCalendar(connection).start),
      until_(BalancesUntil(connection)),
      readMethod_(connection.Prepare("SELECT valuation FROM item WHERE id = ?")),
      readOpenings_(connection.Prepare(
          "SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM opening_stock "
          "WHERE item_id = ? ORDER BY warehouse_id, batch_id, aux_id")),
      // What a customer pays for an issue is no cost, so entries of issues need not be looked up.
      readMovements_(connection.Prepare(
          "SELECT m.date, m.day_order, m.bill_id, m.direction, m.line, m.period, m.bill_class, "
          "m.warehouse_id, m.batch_id, m.aux_id, m.quantity, m.aux_quantity, m.amount, e.amount "
          "FROM movement m LEFT JOIN bill_entry e "
          "ON m.day_order <> 4 AND e.bill_id = m.bill_id AND e.line = m.line "
          "WHERE m.item_id = ? ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line")),
      writeAmount_(connection.Prepare(
          "UPDATE movement SET amount = ? WHERE item_id = ? AND date = ? AND day_order = ? AND bill_id = ? "
          "AND direction = ? AND line = ?")),
      deleteBalances_(connection.Prepare("DELETE FROM balance WHERE item_id = ?")),
      writeBalance_(connection.Prepare(
          "INSERT INTO balance (item_id, period, warehouse_id, batch_id, aux_id, quantity, aux_quantity, "
          "amount) VALUES (?, ?, ?, ?, ?, ?, ?, ?)")),
      deleteStock_(connection.Prepare("DELETE FROM stock WHERE item_id = ?")),
      writeStock_(connection.Prepare(
          "INSERT INTO stock (item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) "
          "VALUES (?, ?, ?, ?, ?, ?, ?)")) {}

void StockWriter::Value(std::span<const Id> items) {
  Load(items);
  ValueMovements(movements_, openings_, methods_, rules_);
  WriteAmounts();
  auto movement = movements_.begin();
  auto opening = openings_.begin();
  for (const Id item : items) {
    const auto movementsEnd =
        std::find_if(movement, movements_.end(), [&](const Movement& each) { return each.itemId != item; });
    const auto openingsEnd =
        std::find_if(opening, openings_.end(), [&](const OpeningStock& each) { return each.itemId != item; });
    WriteItem(item, {movement, movementsEnd}, {opening, openingsEnd});
    movement = movementsEnd;
    opening = openingsEnd;
  }
}

void StockWriter::WriteFigures(std::span<const Id> items) {
  for (const Id item : items) {
    Load({&item, 1});
    WriteItem(item, movements_, openings_);
  }
}

void StockWriter::Load(std::span<const Id> items) {
  movements_.clear();
  openings_.clear();
  stored_.clear();
  methods_.clear();
  for (const Id item : items) LoadItem(item);
}

void StockWriter::LoadItem(Id item) {
  readMethod_.Bind(item);
  methods_[item] = readMethod_.Step() ? static_cast<schema::Valuation>(readMethod_.Int32(0))
                                      : schema::Valuation::kMovingAverage;
  readOpenings_.Bind(item);
  while (readOpenings_.Step()) {
    openings_.push_back({.itemId = item,
                         .warehouseId = readOpenings_.Integer(0),
                         .batchId = readOpenings_.Integer(1),
                         .auxId = readOpenings_.Integer(2),
                         .quantity = readOpenings_.GetQuantity(3),
                         .auxQuantity = readOpenings_.GetQuantity(4),
                         .amount = readOpenings_.Amount(5)});
  }
  readMovements_.Bind(item);
  while (readMovements_.Step()) {
    movements_.push_back({.itemId = item,
                          .date = readMovements_.Int32(0),
                          .dayOrder = static_cast<schema::DayOrder>(readMovements_.Int32(1)),
                          .billId = readMovements_.Integer(2),
                          .direction = readMovements_.Int32(3),
                          .line = readMovements_.Int32(4),
                          .period = readMovements_.Int32(5),
                          .billClass = static_cast<schema::BillClass>(readMovements_.Int32(6)),
                          .warehouseId = readMovements_.Integer(7),
                          .batchId = readMovements_.Integer(8),
                          .auxId = readMovements_.Integer(9),
                          .quantity = readMovements_.GetQuantity(10),
                          .auxQuantity = readMovements_.GetQuantity(11),
                          .given = readMovements_.OptionalAmount(13),
                          .amount = readMovements_.Amount(12)});
    stored_.push_back(movements_.back().amount);
  }
}

void StockWriter::WriteAmounts() {
  for (std::size_t index = 0; index < movements_.size(); ++index) {
    const Movement& movement = movements_[index];
    if (movement.amount == stored_[index]) continue;
    writeAmount_.Run(movement.amount, movement.itemId, movement.date, movement.dayOrder, movement.billId,
                     movement.direction, movement.line);
  }
}

void StockWriter::WriteItem(Id item, std::span<const Movement> movements,
                            std::span<const OpeningStock> openings) {
  deleteBalances_.Run(item);
  deleteStock_.Run(item);
  std::map<Cell, Figures> cells;
  for (const OpeningStock& opening : openings) {
    cells[{opening.warehouseId, opening.batchId, opening.auxId}] = {opening.quantity, opening.auxQuantity,
                                                                    opening.amount};
  }
  auto movement = movements.begin();
  for (std::int32_t period = start_ - 1; period <= until_; ++period) {
    // What was brought to zero in an earlier period has no more rows.
    std::erase_if(cells, [](const auto& cell) { return cell.second == Figures(); });
    for (; movement != movements.end() && movement->period <= period; ++movement) {
      Figures& figures = cells[{movement->warehouseId, movement->batchId, movement->auxId}];
      if (movement->direction > 0) {
        figures.quantity += movement->quantity;
        figures.auxQuantity += movement->auxQuantity;
        figures.amount += movement->amount;
      } else {
        figures.quantity -= movement->quantity;
        figures.auxQuantity -= movement->auxQuantity;
        figures.amount -= movement->amount;
      }
    }
    for (const auto& [cell, figures] : cells) {
      const auto& [warehouse, batch, aux] = cell;
      writeBalance_.Run(item, period, warehouse, batch, aux, figures.quantity, figures.auxQuantity,
                        figures.amount);
      if (period != until_ || figures == Figures()) continue;
      writeStock_.Run(item, warehouse, batch, aux, figures.quantity, figures.auxQuantity, figures.amount);
    }
  }
}

}  // namespace books::posting
