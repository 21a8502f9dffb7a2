#include "books/posting/Movements.h"

namespace books::posting {

void InsertMovements(database::Connection& connection, Id firstBill, Id lastBill) {
  // Sorted as the table is, so that its pages are filled one after the other.
  connection.Execute(
      "INSERT INTO movement (item_id, date, day_order, bill_id, direction, line, period, bill_class, "
      "warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) "
      "SELECT v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line, v.period, v.bill_class, "
      "v.warehouse_id, v.batch_id, v.aux_id, v.quantity, v.aux_quantity, "
      "CASE WHEN v.day_order < 3 AND w.type_code = ? THEN COALESCE(v.entry_amount, 0) ELSE 0 END "
      "FROM bill_movement v CROSS JOIN warehouse w "
      "WHERE w.id = v.warehouse_id AND v.bill_id BETWEEN ? AND ? AND v.audited = 1 "
      "ORDER BY v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line",
      schema::WarehouseType::kOrdinary, firstBill, lastBill);
}

void DeleteMovements(database::Connection& connection, Id bill, Id item) {
  connection.Execute(
      "DELETE FROM movement WHERE item_id = ? AND date = (SELECT date FROM bill WHERE id = ?) AND bill_id = "
      "?",
      item, bill, bill);
}

MovementStream MovementStream::OfBills(database::Connection& connection, Id firstBill) {
  // What a customer pays for an issue is no cost.
  return MovementStream(connection.Query(
      "SELECT item_id, date, day_order, bill_id, direction, line, period, bill_class, warehouse_id, "
      "batch_id, "
      "aux_id, quantity, aux_quantity, CASE WHEN day_order < 4 THEN entry_amount END, 0 FROM bill_movement "
      "WHERE bill_id >= ? AND audited = 1 ORDER BY item_id, date, day_order, bill_id, direction, line",
      firstBill));
}

MovementStream MovementStream::OfTable(database::Connection& connection) {
  return MovementStream(
      connection.Query("SELECT item_id, date, day_order, bill_id, direction, line, period, bill_class, "
                       "warehouse_id, batch_id, "
                       "aux_id, quantity, aux_quantity, NULL, amount FROM movement "
                       "ORDER BY item_id, date, day_order, bill_id, direction, line"));
}

std::vector<Movement> MovementStream::NextItem() {
  std::vector<Movement> movements;
  if (!ready_) return movements;
  const Id item = rows_.Integer(0);
  do {
    movements.push_back(Read());
    ready_ = rows_.Step();
  } while (ready_ && rows_.Integer(0) == item);
  return movements;
}

Movement MovementStream::Read() const {
  return {.itemId = rows_.Integer(0),
          .date = rows_.Int32(1),
          .dayOrder = static_cast<schema::DayOrder>(rows_.Int32(2)),
          .billId = rows_.Integer(3),
          .direction = rows_.Int32(4),
          .line = rows_.Int32(5),
          .period = rows_.Int32(6),
          .billClass = static_cast<schema::BillClass>(rows_.Int32(7)),
          .warehouseId = rows_.Integer(8),
          .batchId = rows_.Integer(9),
          .auxId = rows_.Integer(10),
          .quantity = rows_.GetQuantity(11),
          .auxQuantity = rows_.GetQuantity(12),
          .given = rows_.OptionalAmount(13),
          .amount = rows_.Amount(14)};
}

}  // namespace books::posting
