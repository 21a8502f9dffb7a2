#include "tests/books/reports/stock/RandomStock.h"

#include <iterator>
#include <random>

#include "books/posting/Posting.h"
#include "platform/value/Convert.h"
#include "platform/value/Currency.h"
#include "tests/books/TinyBook.h"

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
using namespace tiny;

constexpr Id kItems[] = {kJuice, kYogurt, kCandy, kTape};
constexpr Id kWarehouses[] = {kMain, kBranch, kGift};
constexpr BillClass kClasses[] = {BillClass::kPurchaseReceipt, BillClass::kPurchaseReceipt,
                                  BillClass::kEstimatedReceipt, BillClass::kSalesIssue, BillClass::kTransfer};
constexpr int kOrders = 10;

class Writer {
 public:
  Writer(Connection& connection, unsigned seed) : connection_(connection), random_(seed) {}

  void WriteOpening() {
    std::vector<posting::OpeningStock> rows;
    for (const Id item : {kJuice, kCandy}) {
      rows.push_back({.itemId = item,
                      .warehouseId = kMain,
                      .quantity = Quantity::FromInteger(Below(100) + 1),
                      .amount = Currency::FromUnits((Below(1000) + 1) * 10'000)});
    }
    posting::SetOpeningStock(connection_, rows);
  }

  void WriteOrders() {
    for (int id = 1; id <= kOrders; ++id) {
      const bool buys = Below(2) == 0;
      connection_.Execute(
          "INSERT INTO order_bill (id, bill_class, number, date, audited, closed) VALUES (?, ?, ?, ?, ?, ?)",
          id, buys ? BillClass::kPurchaseOrder : BillClass::kSalesOrder, "D-" + std::to_string(id),
          RandomDay(), Below(4) > 0, Below(5) == 0);
      connection_.Execute(
          "INSERT INTO order_entry (order_id, line, item_id, unit_id, unit_quantity, quantity, closed) "
          "SELECT ?, "
          "1, id, unit_id, ?, ?, ? FROM item WHERE id = ?",
          id, Quantity::FromInteger(30), Quantity::FromInteger(30), Below(5) == 0, OrderItem(id));
    }
  }

  void WriteBill(int number) {
    Document bill;
    bill.billClass = Pick(kClasses);
    bill.number = "B-" + std::to_string(number);
    bill.date = RandomDay();
    bill.audited = Below(5) > 0;
    const bool buys =
        bill.billClass == BillClass::kPurchaseReceipt || bill.billClass == BillClass::kEstimatedReceipt;
    if (buys) bill.supplierId = Below(2) == 0 ? kSupplier : kSecondSupplier;
    for (int line = Below(3) + 1; line > 0; --line) bill.entries.push_back(RandomEntry(bill, buys));
    posting::Post(connection_, bill);
  }

 private:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  template <class T, std::size_t size>
  T Pick(const T (&choices)[size]) {
    return choices[Below(static_cast<int>(size))];
  }
  Date RandomDay() { return Date::Of(2025, 1, 1).AddDays(Below(85)); }
  static Id OrderItem(int order) { return kItems[order % std::ssize(kItems)]; }

  Entry RandomEntry(const Document& bill, bool buys) {
    Entry entry;
    entry.itemId = Pick(kItems);
    entry.warehouseId = Pick(kWarehouses);
    if (bill.billClass == BillClass::kTransfer) {
      entry.warehouseId = kMain;
      entry.toWarehouseId = Below(2) == 0 ? kBranch : kGift;
    }
    if (entry.itemId == kYogurt) entry.batchId = Below(2) == 0 ? kBatchA : kBatchB;
    entry.unitId = entry.itemId == kJuice || entry.itemId == kYogurt ? kBottle : kPiece;
    entry.quantity = Quantity::FromInteger(Below(20) + 1);
    entry.unitQuantity = entry.quantity;
    if (buys) entry.amount = Currency::FromUnits(Below(900'000) + 1);
    const int order = Below(kOrders) + 1;
    if (bill.billClass != BillClass::kTransfer && OrderItem(order) == entry.itemId) {
      entry.orderId = order;
      entry.orderLine = 1;
    }
    return entry;
  }

  Connection& connection_;
  std::mt19937 random_;
};

std::string TextOf(Connection& connection, std::string_view column, std::int64_t id) {
  return Rows(connection,
              "SELECT " + std::string(column) + " FROM base_data WHERE id = " + std::to_string(id));
}

}  // namespace

std::function<void(Connection&)> RandomStock(unsigned seed) {
  return [seed](Connection& connection) {
    constexpr int kBills = 60;
    WriteTinyBaseData(connection);
    Writer writer(connection, seed);
    writer.WriteOpening();
    writer.WriteOrders();
    for (int number = 1; number <= kBills; ++number) writer.WriteBill(number);
  };
}

std::vector<Move> AllMoves(Connection& connection) {
  database::Statement row = connection.Query(
      "SELECT item_id, warehouse_id, batch_id, 0, quantity, amount FROM opening_stock UNION ALL SELECT "
      "item_id, "
      "warehouse_id, batch_id, date, direction * quantity, direction * amount FROM movement");
  std::vector<Move> moves;
  while (row.Step()) {
    moves.push_back({.item = row.Integer(0),
                     .warehouse = row.Integer(1),
                     .batch = row.Integer(2),
                     .day = row.Int32(3),
                     .quantity = row.Integer(4),
                     .amount = row.Integer(5)});
  }
  return moves;
}

std::string QuantityText(std::int64_t millionths) {
  return platform::NumberToText(Quantity::FromUnits(millionths).ToDouble());
}

std::string AmountText(std::int64_t tenThousandths) {
  return platform::ToText(platform::Variant(Currency::FromUnits(tenThousandths)));
}

std::string NumberOf(Connection& connection, std::int64_t baseData) {
  return TextOf(connection, "number", baseData);
}

std::string NameOf(Connection& connection, std::int64_t baseData) {
  return TextOf(connection, "name", baseData);
}

}  // namespace books::test
