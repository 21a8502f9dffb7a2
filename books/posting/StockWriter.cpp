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

}  // namespace

StockWriter::StockWriter(database::Connection& connection)
    : reader_(connection),
      start_(ReadCalendar(connection).start),
      until_(BalancesUntil(connection)),
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
  ValueMovements(group_.movements, group_.openings, group_.methods, reader_.Rules());
  WriteAmounts();
  auto movement = group_.movements.begin();
  auto opening = group_.openings.begin();
  for (const Id item : items) {
    const auto movementsEnd = std::find_if(movement, group_.movements.end(),
                                           [&](const Movement& each) { return each.itemId != item; });
    const auto openingsEnd = std::find_if(opening, group_.openings.end(),
                                          [&](const OpeningStock& each) { return each.itemId != item; });
    WriteItem(item, {movement, movementsEnd}, {opening, openingsEnd});
    movement = movementsEnd;
    opening = openingsEnd;
  }
}

void StockWriter::WriteFigures(std::span<const Id> items) {
  for (const Id item : items) {
    Load({&item, 1});
    WriteItem(item, group_.movements, group_.openings);
  }
}

void StockWriter::Load(std::span<const Id> items) {
  reader_.Load(items, group_);
  stored_.clear();
  for (const Movement& movement : group_.movements) stored_.push_back(movement.amount);
}

void StockWriter::WriteAmounts() {
  for (std::size_t index = 0; index < group_.movements.size(); ++index) {
    const Movement& movement = group_.movements[index];
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
