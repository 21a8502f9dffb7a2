#include "tests/books/TinyBook.h"

#include <vector>

#include "books/posting/Periods.h"
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
using schema::Direction;
using namespace tiny;

void WriteRow(Connection& connection, Id id, int classId, std::string_view number, std::string_view name,
              Id parent = 0, bool group = false) {
  const std::string_view last = number.substr(number.rfind('.') + 1);
  connection.Execute(
      "INSERT INTO base_data (id, class_id, parent_id, number, short_number, name, detail) "
      "VALUES (?, ?, NULLIF(?, 0), ?, ?, ?, ?)",
      id, classId, parent, number, last, name, !group);
}

struct ItemRow {
  Id id;
  std::string_view number;
  std::string_view name;
  Id parent;
  schema::Valuation valuation;
  Id unit;
  bool batches = false;
  bool serials = false;
};

void WriteItems(Connection& connection) {
  using enum schema::Valuation;
  WriteRow(connection, kFood, 4, "01", "食品", 0, true);
  WriteRow(connection, kDrinks, 4, "01.01", "饮料", kFood, true);
  WriteRow(connection, kHardware, 4, "02", "五金", 0, true);
  const std::vector<ItemRow> items = {
      {kJuice, "01.01.001", "苹果汁", kDrinks, kMovingAverage, kBottle},
      {.id = kYogurt,
       .number = "01.01.002",
       .name = "酸奶",
       .parent = kDrinks,
       .valuation = kBatchCost,
       .unit = kBottle,
       .batches = true},
      {kCandy, "01.02", "水果糖", kFood, kMovingAverage, kPiece},
      {kGiftBox, "01.03", "糖果礼盒", kFood, kMonthlyAverage, kPiece},
      {kScrewdriver, "02.001", "螺丝刀", kHardware, kFirstInFirstOut, kPiece},
      {.id = kScanner,
       .number = "02.002",
       .name = "扫描枪",
       .parent = kHardware,
       .valuation = kMovingAverage,
       .unit = kPiece,
       .serials = true},
      {kTape, "02.003", "宽胶带", kHardware, kMovingAverage, kPiece},
  };
  for (const ItemRow& row : items) {
    WriteRow(connection, row.id, 4, row.number, row.name, row.parent);
    connection.Execute(
        "INSERT INTO item (id, model, barcode, unit_id, default_supplier_id, valuation, batch_managed, "
        "serial_managed, shelf_life_days, min_quantity, max_quantity) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
        "?)",
        row.id, "M-" + std::string(row.number), "690" + std::to_string(row.id), row.unit, kSupplier,
        row.valuation, row.batches, row.serials, row.batches ? 21 : 0, Quantity::FromInteger(20),
        Quantity::FromInteger(60));
  }
  for (const Id item : {kJuice, kScrewdriver}) {
    connection.Execute("INSERT INTO item_unit (item_id, unit_id, factor, package) VALUES (?, ?, ?, 1)", item,
                       kBox, Quantity::FromInteger(12));
  }
  connection.Execute(
      "INSERT INTO batch (id, item_id, number, production_date, shelf_life_days, expiry_date) VALUES "
      "(?, ?, 'A', ?, 21, ?), (?, ?, 'B', ?, 21, ?)",
      kBatchA, kYogurt, Date::Of(2025, 1, 2), Date::Of(2025, 1, 23), kBatchB, kYogurt, Date::Of(2025, 1, 5),
      Date::Of(2025, 1, 26));
  connection.Execute("INSERT INTO serial (id, item_id, number) VALUES (?, ?, 'SN-1'), (?, ?, 'SN-2')",
                     kSerial1, kScanner, kSerial2, kScanner);
}

struct Line {
  Id item;
  Id warehouse;
  int pieces = 0;
  std::string_view amount;  // empty: none
  Id to = 0;
  Id batch = 0;
  std::vector<Id> serials;
  Direction direction = Direction::kIn;
};

Entry MakeEntry(const Line& line) {
  Entry entry;
  entry.direction = line.direction;
  entry.itemId = line.item;
  entry.warehouseId = line.warehouse;
  if (line.to != 0) entry.toWarehouseId = line.to;
  if (line.batch != 0) entry.batchId = line.batch;
  entry.unitId = line.item == kJuice || line.item == kYogurt ? kBottle : kPiece;
  entry.quantity = Quantity::FromInteger(line.pieces);
  entry.unitQuantity = entry.quantity;
  if (!line.amount.empty()) entry.amount = Currency::FromText(line.amount);
  if (entry.amount && line.pieces != 0) entry.price = entry.amount->ToDouble() / line.pieces;
  entry.serialIds = line.serials;
  return entry;
}

void Bill(Connection& connection, BillClass billClass, std::string number, Date date,
          const std::vector<Line>& lines, bool audited = true) {
  Document document;
  document.billClass = billClass;
  document.number = std::move(number);
  document.date = date;
  document.audited = audited;
  document.departmentId = kDepartment;
  document.employeeId = kEmployee;
  if (billClass == BillClass::kPurchaseReceipt) document.supplierId = kSupplier;
  if (billClass == BillClass::kSalesIssue) document.customerId = kCustomer;
  for (const Line& line : lines) document.entries.push_back(MakeEntry(line));
  if (document.number == "CG-1") {
    document.entries[0].orderId = 1;
    document.entries[0].orderLine = 1;
  }
  posting::Post(connection, document);
}

void WriteOrders(Connection& connection) {
  connection.Execute(
      "INSERT INTO order_bill (id, bill_class, number, date, supplier_id, customer_id) VALUES "
      "(1, 1020001, 'CD-1', ?, ?, NULL), (2, 1030001, 'XD-1', ?, NULL, ?)",
      Date::Of(2025, 1, 3), kSupplier, Date::Of(2025, 2, 1), kCustomer);
  connection.Execute(
      "INSERT INTO order_entry (order_id, line, item_id, unit_id, unit_quantity, quantity, price, amount) "
      "VALUES "
      "(1, 1, ?, ?, ?, ?, 2.6, ?), (2, 1, ?, ?, ?, ?, 5, ?)",
      kJuice, kBottle, Quantity::FromInteger(80), Quantity::FromInteger(80), Currency::FromText("208"),
      kJuice, kBottle, Quantity::FromInteger(15), Quantity::FromInteger(15), Currency::FromText("75"));
}

// Opening stock: juice 100 for 200.00 (2.00 each) in the main warehouse, candy 100 for 100.00.
//
// Juice, moving average over all ordinary warehouses:
//   CG-1  01-05  +50 main for 130.00               150 for 330.00, 2.20 each
//   XS-1  01-10  −60 main at 2.20 = 132.00          90 for 198.00
//   DB-1  01-12   30 main to branch, 66.00          90 for 198.00: main 60 for 132.00, branch 30 for 66.00
//   DB-2  01-20   10 main to gift, leaves with 22.00, arrives with nothing
//                                                   80 for 176.00: main 50 for 110.00, gift 10 without amount
//   CG-2  02-03  +7 branch for 20.00                87 for 196.00, branch 37 for 86.00
//   XS-2  02-08  −20 branch: 196.00 × 20 ÷ 87 = 45.05747… = 45.0575
//                                                   67 for 150.9425, branch 17 for 40.9425
//   TJ-1  02-20  +1.0575 main                       67 for 152.00, main 50 for 111.0575
//   XS-9  02-25  −5 main, not audited: moves nothing
//
// Yogurt, a cost for each batch: CG-1 brings 20 of A for 60.00 (3.00) and 10 of B for 40.00 (4.00); XS-1
// takes 4 of B for 16.00, QC-1 (01-15) 5 of A for 15.00. Left: A 15 for 45.00, B 6 for 24.00.
//
// Gift boxes, monthly average, made of candy: ZZ-1 (01-10) takes 30 candies at 1.00 = 30.00 and makes 10
// boxes of them; XS-3 (01-12) sells 4 boxes; CG-3 (01-25) buys 10 for 50.00. The month's average is (30.00
// + 50.00) ÷ 20 = 4.00, so XS-3 costs 16.00. Left: 70 candies for 70.00, 16 boxes for 64.00.
//
// Screwdrivers, first in first out: CG-1 brings 10 for 50.00, CG-3 10 for 60.01. XS-4 (02-05) takes 12: the
// first 10 for 50.00 and 2 of the others for 60.01 × 2 ÷ 10 = 12.002, together 62.002. PY-1 (02-10) finds one
// more, which comes in at cost: 48.008 ÷ 8 = 6.001. Left: 9 for 54.009.
//
// Scanners: CG-1 brings SN-1 and SN-2 for 800.00, XS-1 sells SN-1 for 400.00 of cost.
//
// Tape goes below zero: XS-4 sells 5 rolls on 02-05 before any came; CG-4 brings 8 for 24.00 on 02-06 and
// covers them at 3.00, so XS-4 costs 15.00. Left: 3 for 9.00.
void WriteBills(Connection& connection) {
  using enum BillClass;
  const std::vector<posting::OpeningStock> openings = {
      {.itemId = kJuice,
       .warehouseId = kMain,
       .quantity = Quantity::FromInteger(100),
       .amount = Currency::FromText("200")},
      {.itemId = kCandy,
       .warehouseId = kMain,
       .quantity = Quantity::FromInteger(100),
       .amount = Currency::FromText("100")},
  };
  posting::SetOpeningStock(connection, openings);
  Bill(connection, kPurchaseReceipt, "CG-1", Date::Of(2025, 1, 5),
       {{.item = kJuice, .warehouse = kMain, .pieces = 50, .amount = "130"},
        {.item = kYogurt, .warehouse = kMain, .pieces = 20, .amount = "60", .batch = kBatchA},
        {.item = kYogurt, .warehouse = kMain, .pieces = 10, .amount = "40", .batch = kBatchB},
        {.item = kScrewdriver, .warehouse = kMain, .pieces = 10, .amount = "50"},
        {.item = kScanner,
         .warehouse = kMain,
         .pieces = 2,
         .amount = "800",
         .serials = {kSerial1, kSerial2}}});
  Bill(connection, kSalesIssue, "XS-1", Date::Of(2025, 1, 10),
       {{.item = kJuice, .warehouse = kMain, .pieces = 60, .amount = "300"},
        {.item = kYogurt, .warehouse = kMain, .pieces = 4, .amount = "24", .batch = kBatchB},
        {.item = kScanner, .warehouse = kMain, .pieces = 1, .amount = "650", .serials = {kSerial1}}});
  Bill(connection, kAssembly, "ZZ-1", Date::Of(2025, 1, 10),
       {{.item = kCandy, .warehouse = kMain, .pieces = 30, .direction = Direction::kOut},
        {.item = kGiftBox, .warehouse = kMain, .pieces = 10, .direction = Direction::kIn}});
  Bill(connection, kTransfer, "DB-1", Date::Of(2025, 1, 12),
       {{.item = kJuice, .warehouse = kMain, .pieces = 30, .to = kBranch}});
  Bill(connection, kSalesIssue, "XS-3", Date::Of(2025, 1, 12),
       {{.item = kGiftBox, .warehouse = kMain, .pieces = 4, .amount = "40"}});
  Bill(connection, kOtherIssue, "QC-1", Date::Of(2025, 1, 15),
       {{.item = kYogurt, .warehouse = kMain, .pieces = 5, .batch = kBatchA}});
  Bill(connection, kTransfer, "DB-2", Date::Of(2025, 1, 20),
       {{.item = kJuice, .warehouse = kMain, .pieces = 10, .to = kGift}});
  Bill(connection, kPurchaseReceipt, "CG-3", Date::Of(2025, 1, 25),
       {{.item = kGiftBox, .warehouse = kMain, .pieces = 10, .amount = "50"},
        {.item = kScrewdriver, .warehouse = kMain, .pieces = 10, .amount = "60.01"}});
  posting::ClosePeriod(connection);
  Bill(connection, kPurchaseReceipt, "CG-2", Date::Of(2025, 2, 3),
       {{.item = kJuice, .warehouse = kBranch, .pieces = 7, .amount = "20"}});
  Bill(connection, kSalesIssue, "XS-4", Date::Of(2025, 2, 5),
       {{.item = kScrewdriver, .warehouse = kMain, .pieces = 12, .amount = "144"},
        {.item = kTape, .warehouse = kMain, .pieces = 5, .amount = "30"}});
  Bill(connection, kPurchaseReceipt, "CG-4", Date::Of(2025, 2, 6),
       {{.item = kTape, .warehouse = kMain, .pieces = 8, .amount = "24"}});
  Bill(connection, kSalesIssue, "XS-2", Date::Of(2025, 2, 8),
       {{.item = kJuice, .warehouse = kBranch, .pieces = 20, .amount = "110"}});
  Bill(connection, kCountGain, "PY-1", Date::Of(2025, 2, 10),
       {{.item = kScrewdriver, .warehouse = kMain, .pieces = 1}});
  Bill(connection, kPriceAdjustment, "TJ-1", Date::Of(2025, 2, 20),
       {{.item = kJuice, .warehouse = kMain, .pieces = 0, .amount = "1.0575"}});
  Bill(connection, kSalesIssue, "XS-9", Date::Of(2025, 2, 25),
       {{.item = kJuice, .warehouse = kMain, .pieces = 5, .amount = "25"}}, false);
}

}  // namespace

void WriteTinyBaseData(Connection& connection) {
  database::Transaction transaction(connection);
  connection.Execute("INSERT INTO unit (id, name) VALUES (?, '瓶'), (?, '箱'), (?, '个')", kBottle, kBox,
                     kPiece);
  WriteRow(connection, kSupplier, 8, "01", "鲜果供应商");
  WriteRow(connection, kSecondSupplier, 8, "02", "五金供应商");
  WriteRow(connection, kCustomer, 1, "01", "街角商店");
  WriteRow(connection, kDepartment, 2, "01", "业务部");
  WriteRow(connection, kEmployee, 3, "01", "王芳");
  WriteRow(connection, kMain, 5, "01", "主仓库");
  WriteRow(connection, kBranch, 5, "02", "分仓库");
  WriteRow(connection, kGift, 5, "03", "赠品仓库");
  connection.Execute("INSERT INTO warehouse (id, type_code) VALUES (?, 500), (?, 500), (?, 501)", kMain,
                     kBranch, kGift);
  WriteItems(connection);
  schema::RebuildTrees(connection);
  posting::BeginAccounting(connection, 2025, 1, 2025);
  transaction.Commit();
}

void WriteTinyBook(Connection& connection) {
  WriteTinyBaseData(connection);
  WriteOrders(connection);
  WriteBills(connection);
}

Connection MakeTinyBook() {
  Connection connection = schema::CreateBookInMemory();
  WriteTinyBook(connection);
  return connection;
}

Id BillOf(Connection& connection, std::string_view number) {
  database::Statement row = connection.Query("SELECT id FROM bill WHERE number = ?", number);
  return row.Step() ? row.Integer(0) : 0;
}

std::string Rows(Connection& connection, std::string_view sql) {
  std::string text;
  database::Statement rows = connection.Query(sql);
  while (rows.Step()) {
    if (!text.empty()) text += '\n';
    for (int column = 0; column < rows.ColumnCount(); ++column) {
      if (column > 0) text += ' ';
      text += rows.IsNull(column) ? "-" : rows.Text(column);
    }
  }
  return text;
}

}  // namespace books::test
