#include "tests/books/reports/tracking/TrackingBook.h"

#include <string>
#include <utility>
#include <vector>

#include "books/posting/Posting.h"
#include "tests/books/TinyBook.h"

namespace books::test {
namespace {

using database::Connection;
using database::Quantity;
using platform::Currency;
using platform::Date;
using posting::Document;
using posting::Entry;
using schema::BillClass;
using namespace tiny;
using namespace tracking;

void WriteBase(Connection& connection) {
  const std::string insert =
      "INSERT INTO base_data (id, class_id, number, short_number, name) VALUES (?, ?, ?, ?, ?)";
  connection.Execute(insert, kMatchedCustomer, 1, "02", "02", "鲜果门市");
  connection.Execute(insert, kSecondDepartment, 2, "02", "02", "仓储部");
  connection.Execute(insert, kSecondEmployee, 3, "02", "02", "李强");
  connection.Execute(insert, kRed, 10, "01", "01", "红色");
  connection.Execute("INSERT INTO partner_match (customer_id, supplier_id) VALUES (?, ?)", kMatchedCustomer,
                     kSupplier);
  connection.Execute("INSERT INTO serial (id, item_id, number) VALUES (3, ?, 'SN-3')", kScanner);
  connection.Execute("UPDATE serial SET note = '样机' WHERE id = ?", kSerial2);
  // Who may see whom: user 12 the customers and the supplier 02, user 7 the supplier 01.
  connection.Execute("UPDATE base_data SET right_users = '12' WHERE id IN (?, ?, ?)", kCustomer,
                     kMatchedCustomer, kSecondSupplier);
  connection.Execute("UPDATE base_data SET right_users = '7' WHERE id = ?", kSupplier);
  connection.Execute("UPDATE base_data SET right_users = '7' WHERE id = ?", kMain);
  connection.Execute("UPDATE base_data SET right_users = '12' WHERE id = ?", kBranch);
}

Entry Line(posting::Id item, int pieces, posting::Id unit) {
  Entry entry;
  entry.itemId = item;
  entry.warehouseId = kMain;
  entry.unitId = unit;
  entry.unitQuantity = entry.quantity = Quantity::FromInteger(pieces);
  return entry;
}

Document Bill(BillClass billClass, std::string number, int day) {
  Document bill;
  bill.billClass = billClass;
  bill.number = std::move(number);
  bill.date = Date::Of(2025, 2, day);
  bill.departmentId = kDepartment;
  bill.employeeId = kEmployee;
  return bill;
}

// QR-1, the supplier 02 leaves 10 rolls of tape as samples.
void WriteSamples(Connection& connection) {
  Document bill = Bill(BillClass::kOtherReceipt, "QR-1", 11);
  bill.supplierId = kSecondSupplier;
  bill.departmentId = kSecondDepartment;
  bill.employeeId = kSecondEmployee;
  Entry tape = Line(kTape, 10, kPiece);
  tape.amount = Currency::FromText("35");
  tape.note = "样品";
  bill.entries = {tape};
  posting::Post(connection, bill);
}

// QC-2, the corner shop gets 7 candies and a box of 12 bottles of juice.
void WriteGifts(Connection& connection) {
  Document bill = Bill(BillClass::kOtherIssue, "QC-2", 12);
  bill.customerId = kCustomer;
  Entry juice = Line(kJuice, 12, kBox);
  juice.unitQuantity = Quantity::FromInteger(1);
  bill.entries = {Line(kCandy, 7, kPiece), juice};
  posting::Post(connection, bill);
}

void WriteMatched(Connection& connection) {
  Document issue = Bill(BillClass::kOtherIssue, "QC-3", 13);
  issue.customerId = kMatchedCustomer;
  issue.entries = {Line(kScrewdriver, 2, kPiece)};
  posting::Post(connection, issue);

  Document receipt = Bill(BillClass::kOtherReceipt, "QR-2", 14);
  receipt.supplierId = kSupplier;
  Entry candy = Line(kCandy, 5, kPiece);
  candy.amount = Currency::FromText("4");
  candy.auxId = kRed;
  receipt.entries = {candy};
  posting::Post(connection, receipt);
}

void WriteSerials(Connection& connection) {
  Document transfer = Bill(BillClass::kTransfer, "DB-3", 3);
  Entry scanner = Line(kScanner, 1, kPiece);
  scanner.toWarehouseId = kBranch;
  scanner.serialIds = {kSerial2};
  transfer.entries = {scanner};
  posting::Post(connection, transfer);

  Document sale = Bill(BillClass::kSalesIssue, "XS-8", 26);
  sale.customerId = kCustomer;
  sale.audited = false;
  Entry sold = Line(kScanner, 1, kPiece);
  sold.warehouseId = kBranch;
  sold.serialIds = {kSerial2};
  sale.entries = {sold};
  posting::Post(connection, sale);
}

}  // namespace

// After the tiny book, whose only other bill is QC-1 (01-15): 5 yogurts of batch A for 15.00, no partner.
//
//   QR-1  02-11  supplier 02, department and employee 02: 10 tape for 35.00, "样品"
//   QC-2  02-12  customer 01: 7 candies of 70 for 70.00 = 7.00; a box of 12 bottles of juice, 67 for
//   150.9425:
//                150.9425 × 12 ÷ 67 = 27.03447… = 27.0345
//   QC-3  02-13  customer 02, a matched one: 2 screwdrivers of 9 for 54.009 = 12.002
//   QR-2  02-14  supplier 01, the same firm: 5 red candies for 4.00, 68 for 67.00
//   QC-4  02-15  customer 01, not audited: a candy
//   QC-5  02-16  customer 01: 3 candies = 67.00 × 3 ÷ 68 = 2.95588… = 2.9559
//
// Scanners: SN-1 came with CG-1 (01-05) for 400.00 and was sold with XS-1 (01-10) for 650.00; SN-2 came with
// CG-1, too, and went to the branch with DB-3 (02-03); XS-8, not audited, has not sold it. SN-3 never came.
void WriteTrackingBook(Connection& connection) {
  WriteTinyBook(connection);
  WriteBase(connection);
  WriteSamples(connection);
  WriteGifts(connection);
  WriteMatched(connection);
  for (const bool audited : {false, true}) {
    Document bill = Bill(BillClass::kOtherIssue, audited ? "QC-5" : "QC-4", audited ? 16 : 15);
    bill.customerId = kCustomer;
    bill.audited = audited;
    bill.entries = {Line(kCandy, audited ? 3 : 1, kPiece)};
    posting::Post(connection, bill);
  }
  WriteSerials(connection);
}

}  // namespace books::test
