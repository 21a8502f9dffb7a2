#include "books/posting/BulkPosting.h"

#include <vector>

#include "books/posting/Groups.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/posting/Serials.h"
#include "books/posting/StockWriter.h"

namespace books::posting {

using database::Connection;
using database::Statement;

BulkPosting::BulkPosting(Connection& connection)
    : transaction_(connection), connection_(connection), writer_(connection) {
  Statement newest = connection.Query("SELECT COALESCE(MAX(id), 0) + 1 FROM bill");
  if (newest.Step()) firstId_ = newest.Integer(0);
}

void BulkPosting::AddOpeningStock(std::span<const OpeningStock> rows) {
  WriteOpeningStock(connection_, rows);
  Statement wait =
      connection_.Prepare("INSERT INTO waiting_item (item_id) VALUES (?) ON CONFLICT (item_id) DO NOTHING");
  for (const OpeningStock& row : rows) wait.Run(row.itemId);
}

Id BulkPosting::Add(const Document& document) {
  ++bills_;
  return writer_.Write(document);
}

void BulkPosting::Finish() {
  Statement latest =
      connection_.Query("SELECT COALESCE(MAX(period), 0) FROM bill WHERE id >= ? AND audited = 1", firstId_);
  if (latest.Step()) ExtendBalances(connection_, latest.Int32(0));
  // Sorted as the table is, so that its pages are filled one after the other.
  connection_.Execute(
      "INSERT INTO movement (item_id, date, day_order, bill_id, direction, line, period, bill_class, "
      "warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) "
      "SELECT v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line, v.period, v.bill_class, "
      "v.warehouse_id, v.batch_id, v.aux_id, v.quantity, v.aux_quantity, "
      "CASE WHEN v.day_order < 3 THEN COALESCE(e.amount, 0) ELSE 0 END "
      "FROM bill_movement v JOIN bill_entry e ON e.bill_id = v.bill_id AND e.line = v.line "
      "WHERE v.bill_id >= ? AND v.audited = 1 "
      "ORDER BY v.item_id, v.date, v.day_order, v.bill_id, v.direction, v.line",
      firstId_);
  connection_.Execute(
      "INSERT INTO waiting_item (item_id) SELECT DISTINCT e.item_id FROM bill b "
      "JOIN bill_entry e ON e.bill_id = b.id WHERE b.id >= ? AND b.audited = 1 "
      "ON CONFLICT (item_id) DO NOTHING",
      firstId_);
  connection_.Execute(
      "UPDATE order_entry SET delivered_quantity = delivered_quantity + d.quantity FROM ("
      "SELECT e.order_id AS order_id, e.order_line AS order_line, SUM(e.quantity) AS quantity "
      "FROM bill b JOIN bill_entry e ON e.bill_id = b.id "
      "WHERE b.id >= ? AND b.audited = 1 AND e.order_id IS NOT NULL GROUP BY e.order_id, e.order_line) d "
      "WHERE order_entry.order_id = d.order_id AND order_entry.line = d.order_line",
      firstId_);
  ValueWaitingBusiness(connection_);
  RefreshAllSerials(connection_);
  transaction_.Commit();
}

}  // namespace books::posting
