#include "books/posting/BulkPosting.h"

#include <limits>
#include <unordered_map>
#include <utility>

#include "books/posting/Groups.h"
#include "books/posting/Movements.h"
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
  ExtendBalances(connection_, LastPeriod());
  if (HasMovements()) {
    InsertMovements(connection_, firstId_, std::numeric_limits<Id>::max());
    connection_.Execute(
        "INSERT INTO waiting_item (item_id) SELECT DISTINCT e.item_id FROM bill b "
        "JOIN bill_entry e ON e.bill_id = b.id WHERE b.id >= ? AND b.audited = 1 "
        "ON CONFLICT (item_id) DO NOTHING",
        firstId_);
    ValueWaitingBusiness(connection_);
  } else {
    FillStock();
  }
  CountDeliveries();
  RefreshAllSerials(connection_);
  transaction_.Commit();
  connection_.Optimize();
}

std::int32_t BulkPosting::LastPeriod() {
  Statement row =
      connection_.Query("SELECT COALESCE(MAX(period), 0) FROM bill WHERE id >= ? AND audited = 1", firstId_);
  return row.Step() ? row.Int32(0) : 0;
}

bool BulkPosting::HasMovements() { return connection_.Query("SELECT 1 FROM movement LIMIT 1").Step(); }

// Into an empty book the movements are written once, with their amounts: they come sorted by item, and an
// item is valued as soon as it is complete; the items of a group wait for its last one.
void BulkPosting::FillStock() {
  // Openings alone have figures too, and get them anew together with the movements.
  connection_.Execute("DELETE FROM balance");
  connection_.Execute("DELETE FROM stock");
  std::unordered_map<Id, std::vector<Id>> groups;
  for (std::vector<Id>& group : GroupsOf(connection_, ItemsWithStock())) {
    const Id last = group.back();
    groups.emplace(last, std::move(group));
  }
  StockWriter writer(connection_);
  std::unordered_map<Id, std::vector<Movement>> waiting;
  const auto complete = [&](const std::vector<Id>& group) {
    std::vector<Movement> movements;
    for (const Id item : group) {
      const auto found = waiting.find(item);
      if (found == waiting.end()) continue;
      movements.insert(movements.end(), found->second.begin(), found->second.end());
      waiting.erase(found);
    }
    writer.ValueNew(group, std::move(movements));
  };
  MovementStream stream = MovementStream::OfBills(connection_, firstId_);
  for (std::vector<Movement> movements = stream.NextItem(); !movements.empty();
       movements = stream.NextItem()) {
    const Id item = movements.front().itemId;
    waiting.emplace(item, std::move(movements));
    const auto group = groups.find(item);
    if (group == groups.end()) continue;
    complete(group->second);
    groups.erase(group);
  }
  // Groups whose last item has opening stock only.
  for (const auto& [last, group] : groups) complete(group);
  writer.Finish();
  connection_.Execute("DELETE FROM waiting_item");
}

std::vector<Id> BulkPosting::ItemsWithStock() {
  Statement rows = connection_.Query(
      "SELECT e.item_id FROM bill b JOIN bill_entry e ON e.bill_id = b.id WHERE b.id >= ? AND b.audited = 1 "
      "UNION SELECT item_id FROM opening_stock",
      firstId_);
  std::vector<Id> items;
  while (rows.Step()) items.push_back(rows.Integer(0));
  return items;
}

void BulkPosting::CountDeliveries() {
  connection_.Execute(
      "UPDATE order_entry SET delivered_quantity = delivered_quantity + d.quantity FROM ("
      "SELECT e.order_id AS order_id, e.order_line AS order_line, SUM(e.quantity) AS quantity "
      "FROM bill b JOIN bill_entry e ON e.bill_id = b.id "
      "WHERE b.id >= ? AND b.audited = 1 AND e.order_id IS NOT NULL GROUP BY e.order_id, e.order_line) d "
      "WHERE order_entry.order_id = d.order_id AND order_entry.line = d.order_line",
      firstId_);
}

}  // namespace books::posting
