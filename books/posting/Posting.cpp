// A bill's movements are taken out of or put into the table as its entries say; everything else about the
// items that it touches is then worked out from their movements anew. That way a bill on any day, in any
// order, leaves the same book as if all bills had been written in the order of their days.
#include "books/posting/Posting.h"

#include <algorithm>
#include <string>
#include <vector>

#include "books/posting/BillWriter.h"
#include "books/posting/Groups.h"
#include "books/posting/Movements.h"
#include "books/posting/Periods.h"
#include "books/posting/Serials.h"
#include "books/posting/StockWriter.h"
#include "platform/value/Error.h"

namespace books::posting {
namespace {

using database::Connection;
using database::Statement;
using database::Transaction;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Posting", description);
}

struct BillFacts {
  std::string number;
  std::int32_t period = 0;
  bool audited = false;
};

BillFacts ReadBill(Connection& connection, Id bill) {
  Statement row = connection.Query("SELECT number, period, audited FROM bill WHERE id = ?", bill);
  if (!row.Step()) Refuse("there is no bill with the id " + std::to_string(bill));
  return {.number = row.Text(0), .period = row.Int32(1), .audited = row.Boolean(2)};
}

void ExpectOpen(Connection& connection, const BillFacts& bill) {
  if (bill.period < ReadCalendar(connection).current) {
    Refuse("bill " + bill.number + " lies in a closed period; open the period again first");
  }
}

std::vector<Id> ItemsOf(Connection& connection, Id bill) {
  Statement rows = connection.Query("SELECT DISTINCT item_id FROM bill_entry WHERE bill_id = ?", bill);
  std::vector<Id> items;
  while (rows.Step()) items.push_back(rows.Integer(0));
  return items;
}

void Revalue(Connection& connection, const std::vector<std::vector<Id>>& groups) {
  StockWriter writer(connection);
  Statement done = connection.Prepare("DELETE FROM waiting_item WHERE item_id = ?");
  for (const std::vector<Id>& group : groups) {
    writer.Value(group);
    for (const Id item : group) done.Run(item);
  }
  writer.Finish();
}

void Rework(Connection& connection, const std::vector<std::vector<Id>>& groups, std::span<const Id> touched,
            Costing costing) {
  if (costing == Costing::kNow) {
    Revalue(connection, groups);
    return;
  }
  StockWriter writer(connection);
  writer.WriteFigures(touched);
  writer.Finish();
  for (const Id item : touched) {
    connection.Execute("INSERT INTO waiting_item (item_id) VALUES (?) ON CONFLICT (item_id) DO NOTHING",
                       item);
  }
}

std::vector<std::vector<Id>> FindGroups(Connection& connection, std::span<const Id> items) {
  std::vector<std::vector<Id>> groups;
  for (const Id item : items) {
    std::vector<Id> group = GroupOf(connection, item);
    if (std::ranges::find(groups, group) == groups.end()) groups.push_back(std::move(group));
  }
  return groups;
}

// What an entry delivers of an order line; a return takes it back.
void CountDeliveries(Connection& connection, Id bill, int sign) {
  connection.Execute(
      "UPDATE order_entry SET delivered_quantity = delivered_quantity + ? * ("
      "SELECT SUM(e.quantity) FROM bill_entry e WHERE e.bill_id = ? AND e.order_id = order_entry.order_id "
      "AND e.order_line = order_entry.line) "
      "WHERE (order_id, line) IN (SELECT order_id, order_line FROM bill_entry WHERE bill_id = ?)",
      sign, bill, bill);
}

void PutIn(Connection& connection, Id bill, Costing costing) {
  const std::vector<Id> items = ItemsOf(connection, bill);
  ExtendBalances(connection, ReadBill(connection, bill).period);
  InsertMovements(connection, bill, bill);
  CountDeliveries(connection, bill, 1);
  Rework(connection, FindGroups(connection, items), items, costing);
  RefreshSerials(connection, bill);
}

void TakeOut(Connection& connection, Id bill, Costing costing) {
  const std::vector<Id> items = ItemsOf(connection, bill);
  // Found before the bill's movements are gone: it may be what ties a group together.
  const std::vector<std::vector<Id>> groups = FindGroups(connection, items);
  for (const Id item : items) DeleteMovements(connection, bill, item);
  CountDeliveries(connection, bill, -1);
  Rework(connection, groups, items, costing);
}

}  // namespace

Id Post(Connection& connection, const Document& document, Costing costing) {
  Transaction transaction(connection);
  const Id bill = BillWriter(connection).Write(document);
  if (document.audited) PutIn(connection, bill, costing);
  transaction.Commit();
  return bill;
}

void Audit(Connection& connection, Id bill, Costing costing) {
  Transaction transaction(connection);
  const BillFacts facts = ReadBill(connection, bill);
  if (facts.audited) Refuse("bill " + facts.number + " is audited already");
  ExpectOpen(connection, facts);
  connection.Execute("UPDATE bill SET audited = 1 WHERE id = ?", bill);
  PutIn(connection, bill, costing);
  transaction.Commit();
}

void Unaudit(Connection& connection, Id bill, Costing costing) {
  Transaction transaction(connection);
  const BillFacts facts = ReadBill(connection, bill);
  if (!facts.audited) Refuse("bill " + facts.number + " is not audited");
  ExpectOpen(connection, facts);
  TakeOut(connection, bill, costing);
  connection.Execute("UPDATE bill SET audited = 0 WHERE id = ?", bill);
  RefreshSerials(connection, bill);
  transaction.Commit();
}

void Delete(Connection& connection, Id bill, Costing costing) {
  Transaction transaction(connection);
  const BillFacts facts = ReadBill(connection, bill);
  ExpectOpen(connection, facts);
  if (facts.audited) Unaudit(connection, bill, costing);
  connection.Execute("DELETE FROM bill_serial WHERE bill_id = ?", bill);
  connection.Execute("DELETE FROM bill_entry WHERE bill_id = ?", bill);
  connection.Execute("DELETE FROM bill WHERE id = ?", bill);
  transaction.Commit();
}

void SetOpeningStock(Connection& connection, std::span<const OpeningStock> rows) {
  Transaction transaction(connection);
  WriteOpeningStock(connection, rows);
  std::vector<Id> items;
  for (const OpeningStock& row : rows) items.push_back(row.itemId);
  RecalculateItems(connection, items);
  transaction.Commit();
}

void WriteOpeningStock(Connection& connection, std::span<const OpeningStock> rows) {
  const Calendar calendar = ReadCalendar(connection);
  if (calendar.current != calendar.start) {
    Refuse("opening stock can be entered while the start period is current; open it again first");
  }
  Statement write = connection.Prepare(
      "INSERT INTO opening_stock (item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount) "
      "VALUES (?, ?, ?, ?, ?, ?, ?) ON CONFLICT (item_id, warehouse_id, batch_id, aux_id) DO UPDATE SET "
      "quantity = excluded.quantity, aux_quantity = excluded.aux_quantity, amount = excluded.amount");
  for (const OpeningStock& row : rows) {
    write.Run(row.itemId, row.warehouseId, row.batchId, row.auxId, row.quantity, row.auxQuantity, row.amount);
  }
  Statement gift = connection.Query(
      "SELECT b.number FROM opening_stock o JOIN warehouse w ON w.id = o.warehouse_id "
      "JOIN base_data b ON b.id = o.item_id WHERE w.type_code = ? AND o.amount <> 0 LIMIT 1",
      schema::WarehouseType::kGift);
  if (gift.Step()) Refuse("item " + gift.Text(0) + " lies in a gift warehouse: its opening amount must be 0");
}

std::size_t ValueWaitingBusiness(Connection& connection) {
  Transaction transaction(connection);
  std::vector<Id> items;
  {
    Statement rows = connection.Query("SELECT item_id FROM waiting_item ORDER BY item_id");
    while (rows.Step()) items.push_back(rows.Integer(0));
  }
  if (!items.empty()) RecalculateItems(connection, items);
  transaction.Commit();
  return items.size();
}

void RecalculateItems(Connection& connection, std::span<const Id> items) {
  Transaction transaction(connection);
  Revalue(connection, GroupsOf(connection, items));
  transaction.Commit();
}

}  // namespace books::posting
