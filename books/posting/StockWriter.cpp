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
      deleteStock_(connection.Prepare("DELETE FROM stock WHERE item_id = ?")),
      movements_(connection, "movement",
                 "item_id, date, day_order, bill_id, direction, line, period, bill_class, warehouse_id, "
                 "batch_id, aux_id, quantity, aux_quantity, amount"),
      balances_(connection, "balance",
                "item_id, period, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount"),
      stock_(connection, "stock", "item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount") {
}

void StockWriter::Value(std::span<const Id> items) {
  Load(items);
  ValueMovements(group_.movements, group_.openings, group_.methods, reader_.Rules());
  WriteAmounts();
  for (const Id item : items) Clear(item);
  WriteItems(items);
}

void StockWriter::ValueNew(std::span<const Id> items, std::vector<Movement> movements) {
  reader_.LoadWithoutMovements(items, group_);
  group_.movements = std::move(movements);
  ValueMovements(group_.movements, group_.openings, group_.methods, reader_.Rules());
  for (const Movement& each : group_.movements) {
    movements_.Add({each.itemId, each.date, static_cast<int>(each.dayOrder), each.billId, each.direction,
                    each.line, each.period, static_cast<int>(each.billClass), each.warehouseId, each.batchId,
                    each.auxId, each.quantity.Units(), each.auxQuantity.Units(), each.amount.Units()});
  }
  WriteItems(items);
}

void StockWriter::WriteFigures(std::span<const Id> items) {
  for (const Id item : items) {
    Load({&item, 1});
    Clear(item);
    WriteItem(item, group_.movements, group_.openings);
  }
}

void StockWriter::Finish() {
  movements_.Flush();
  balances_.Flush();
  stock_.Flush();
}

void StockWriter::Clear(Id item) {
  deleteBalances_.Run(item);
  deleteStock_.Run(item);
}

void StockWriter::WriteItems(std::span<const Id> items) {
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
      balances_.Add({item, period, warehouse, batch, aux, figures.quantity.Units(),
                     figures.auxQuantity.Units(), figures.amount.Units()});
      if (period != until_ || figures == Figures()) continue;
      stock_.Add({item, warehouse, batch, aux, figures.quantity.Units(), figures.auxQuantity.Units(),
                  figures.amount.Units()});
    }
  }
}

}  // namespace books::posting
