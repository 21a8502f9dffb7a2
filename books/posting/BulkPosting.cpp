#include "books/posting/BulkPosting.h"

#include <limits>

#include "books/posting/Movements.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/posting/Serials.h"

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
  InsertMovements(connection_, firstId_, std::numeric_limits<Id>::max());
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
