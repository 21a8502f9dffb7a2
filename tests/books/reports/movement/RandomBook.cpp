#include "tests/books/reports/movement/RandomBook.h"

#include <array>

#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/schema/Codes.h"
#include "books/schema/Schema.h"

namespace books::test {
namespace {

using database::Connection;
using database::Quantity;
using platform::Currency;
using platform::Date;
using posting::Document;
using posting::Entry;
using posting::Id;
using schema::BillClass;

constexpr int kItems = 6;
constexpr int kFirstBatchItem = 5;

void WriteBaseRow(Connection& connection, Id id, int classId, Id parent, bool group) {
  const std::string number = (parent != 0 ? std::to_string(parent) + "." : "") + std::to_string(id);
  connection.Execute(
      "INSERT INTO base_data (id, class_id, parent_id, number, short_number, name, detail, right_users) "
      "VALUES (?, ?, NULLIF(?, 0), ?, ?, ?, ?, ?)",
      id, classId, parent, number, std::to_string(id), "N" + std::to_string(id), !group,
      id == 12 ? "1" : "1,7");
}

void WriteBaseData(Connection& connection) {
  connection.Execute("INSERT INTO unit (id, name) VALUES (1, '个'), (2, '箱')");
  for (const Id group : {51, 52}) WriteBaseRow(connection, group, 4, 0, true);
  for (const Id group : {61, 62}) WriteBaseRow(connection, group, 5, 0, true);
  for (Id item = 1; item <= kItems; ++item) {
    constexpr std::array kMethods = {78, 77, 79, 78, 80, 80};
    const bool batches = item >= kFirstBatchItem;
    WriteBaseRow(connection, item, 4, item <= 3 ? 51 : 52, false);
    connection.Execute(
        "INSERT INTO item (id, unit_id, aux_unit_id, valuation, batch_managed) VALUES (?, 1, NULLIF(?, 0), "
        "?, ?)",
        item, batches ? 2 : 0, kMethods.at(static_cast<std::size_t>(item - 1)), batches);
    if (!batches) continue;
    connection.Execute("INSERT INTO batch (id, item_id, number) VALUES (?, ?, 'A'), (?, ?, 'B')", item * 10,
                       item, (item * 10) + 1, item);
  }
  connection.Execute("INSERT INTO item_unit (item_id, unit_id, factor, package) VALUES (1, 2, ?, 1)",
                     Quantity::FromInteger(12));
  for (const Id warehouse : {11, 12, 13}) {
    WriteBaseRow(connection, warehouse, 5, warehouse == 11 ? 61 : 62, false);
    connection.Execute("INSERT INTO warehouse (id, type_code) VALUES (?, ?)", warehouse,
                       warehouse == 13 ? 501 : 500);
  }
  for (const Id department : {21, 22}) WriteBaseRow(connection, department, 2, 0, false);
  for (const Id employee : {31, 32}) WriteBaseRow(connection, employee, 3, 0, false);
  for (const Id property : {41, 42}) WriteBaseRow(connection, property, 10, 0, false);
  schema::RebuildTrees(connection);
  posting::BeginAccounting(connection, 2025, 1, 2025);
}

Entry RandomEntry(Random& random) {
  Entry entry;
  entry.itemId = 1 + Below(random, kItems);
  entry.warehouseId = 11 + Below(random, 3);
  entry.unitId = 1;
  entry.quantity = Quantity::FromUnits((1 + Below(random, 80)) * (Quantity::kScale / 10));
  if (entry.itemId >= kFirstBatchItem) {
    entry.batchId = (entry.itemId * 10) + Below(random, 2);
    entry.auxQuantity = Quantity::FromUnits(entry.quantity.Units() / 10);
  }
  if (Below(random, 3) == 0) entry.auxId = 41 + Below(random, 2);
  return entry;
}

void FitEntry(Entry& entry, BillClass billClass, bool out, Random& random) {
  const Currency amount = Currency::FromUnits(Below(random, 300000));
  const bool isReturn = Below(random, 8) == 0;
  if (billClass == BillClass::kPurchaseReceipt || billClass == BillClass::kEstimatedReceipt)
    entry.amount = amount;
  if (isReturn && (billClass == BillClass::kPurchaseReceipt || billClass == BillClass::kSalesIssue)) {
    entry.quantity = -entry.quantity;
    entry.auxQuantity = -entry.auxQuantity;
  }
  if (billClass == BillClass::kTransfer) {
    entry.toWarehouseId = 11 + ((entry.warehouseId - 11 + 1 + Below(random, 2)) % 3);
    if (isReturn) entry.amount = amount;
  }
  if (billClass == BillClass::kAssembly || billClass == BillClass::kDisassembly) {
    entry.direction = out ? schema::Direction::kOut : schema::Direction::kIn;
  }
  if (billClass == BillClass::kPriceAdjustment || billClass == BillClass::kPurchaseRebateMoney) {
    entry.quantity = Quantity();
    entry.auxQuantity = Quantity();
    entry.amount = Currency::FromUnits(Below(random, 100000) - 50000);
  }
  entry.unitQuantity = entry.quantity;
}

}  // namespace

int Below(Random& random, int limit) {
  return static_cast<int>(std::uniform_int_distribution<int>(0, limit - 1)(random));
}

void WriteRandomBook(Connection& connection, Random& random, int bills) {
  database::Transaction transaction(connection);
  WriteBaseData(connection);
  const std::vector<posting::OpeningStock> openings = {{.itemId = 1,
                                                        .warehouseId = 11,
                                                        .quantity = Quantity::FromInteger(50),
                                                        .amount = Currency::FromText("75")},
                                                       {.itemId = 4,
                                                        .warehouseId = 12,
                                                        .quantity = Quantity::FromInteger(9),
                                                        .amount = Currency::FromText("9.99")}};
  posting::SetOpeningStock(connection, openings);
  constexpr std::array kClasses = {BillClass::kPurchaseReceipt,
                                   BillClass::kPurchaseReceipt,
                                   BillClass::kEstimatedReceipt,
                                   BillClass::kOtherReceipt,
                                   BillClass::kPurchaseRebateGoods,
                                   BillClass::kPurchaseRebateMoney,
                                   BillClass::kCountGain,
                                   BillClass::kSalesIssue,
                                   BillClass::kSalesIssue,
                                   BillClass::kConsignment,
                                   BillClass::kSalesRebateGoods,
                                   BillClass::kOtherIssue,
                                   BillClass::kCountLoss,
                                   BillClass::kAssembly,
                                   BillClass::kDisassembly,
                                   BillClass::kTransfer,
                                   BillClass::kTransfer,
                                   BillClass::kPriceAdjustment};
  for (int number = 1; number <= bills; ++number) {
    Document document;
    document.billClass =
        kClasses.at(static_cast<std::size_t>(Below(random, static_cast<int>(kClasses.size()))));
    document.number = "B" + std::to_string(number);
    document.date = Date::Of(2025, 1, 1).AddDays(Below(random, 90));
    document.audited = Below(random, 10) != 0;
    document.departmentId = 21 + Below(random, 2);
    document.employeeId = 31 + Below(random, 2);
    const int lines = 2 + Below(random, 3);
    for (int line = 1; line <= lines; ++line) {
      Entry entry = RandomEntry(random);
      entry.line = line;
      FitEntry(entry, document.billClass, line == 1, random);
      document.entries.push_back(entry);
    }
    posting::Post(connection, document);
  }
  transaction.Commit();
}

std::vector<PlainRow> ReadPlainRows(Connection& connection) {
  std::vector<PlainRow> plain;
  database::Statement rows = connection.Prepare(
      "SELECT 0, item_id, warehouse_id, batch_id, aux_id, 0, 1, quantity, aux_quantity, amount FROM "
      "opening_stock "
      "UNION ALL "
      "SELECT m.date, m.item_id, m.warehouse_id, m.batch_id, m.aux_id, b.department_id, m.direction, "
      "m.quantity, "
      "m.aux_quantity, m.amount FROM movement m JOIN bill b ON b.id = m.bill_id");
  while (rows.Step()) {
    plain.push_back({.day = rows.Int32(0),
                     .item = rows.Integer(1),
                     .warehouse = rows.Integer(2),
                     .batch = rows.Integer(3),
                     .aux = rows.Integer(4),
                     .department = rows.Integer(5),
                     .direction = rows.Int32(6),
                     .quantity = rows.Integer(7),
                     .auxQuantity = rows.Integer(8),
                     .amount = rows.Integer(9)});
  }
  return plain;
}

}  // namespace books::test
