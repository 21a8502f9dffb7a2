#include "books/posting/Movements.h"

namespace books::posting {

void InsertMovements(database::Connection& connection, Id firstBill, Id lastBill) {
  // Sorted as the table is, so that its pages are filled one after the other.
  connection.Execute(
      "INSERT INTO movement (item_id, date, day_order, bill_id, direction, line, period, bill_class, "
      "warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) "
      "SELECT v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line, v.period, v.bill_class, "
      "v.warehouse_id, v.batch_id, v.aux_id, v.quantity, v.aux_quantity, "
      "CASE WHEN v.day_order < 3 AND w.type_code = ? THEN COALESCE(e.amount, 0) ELSE 0 END "
      "FROM bill_movement v JOIN bill_entry e ON e.bill_id = v.bill_id AND e.line = v.line "
      "JOIN warehouse w ON w.id = v.warehouse_id "
      "WHERE v.bill_id BETWEEN ? AND ? AND v.audited = 1 "
      "ORDER BY v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line",
      schema::WarehouseType::kOrdinary, firstBill, lastBill);
}

void DeleteMovements(database::Connection& connection, Id bill, Id item) {
  connection.Execute(
      "DELETE FROM movement WHERE item_id = ? AND date = (SELECT date FROM bill WHERE id = ?) AND bill_id = "
      "?",
      item, bill, bill);
}

}  // namespace books::posting
