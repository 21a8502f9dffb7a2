#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/check/Check.h"
#include "books/schema/Schema.h"
#include "tests/books/TinyBook.h"

namespace {

using books::check::Violation;
using books::database::Connection;
using books::test::MakeTinyBook;

std::string Shown(const Violation& violation) {
  std::string text = violation.rule + ": " + violation.description;
  for (const std::string& document : violation.documents) text += " [" + document + "]";
  return text;
}

std::vector<std::string> ShownAll(Connection& book) {
  std::vector<std::string> lines;
  for (const Violation& violation : books::check::Check(book)) lines.push_back(Shown(violation));
  return lines;
}

// One fault done to the tiny book behind the back of posting, and one of the violations that must be told.
struct FaultCase {
  std::string name;
  std::string fault;
  std::string expected;
};

TEST(Check, TellsTheFaultAndItsDocuments) {
  const std::vector<FaultCase> cases = {
      {"a closing quantity",
       "UPDATE balance SET quantity = quantity + 1000000 WHERE item_id = 411 AND "
       "period = 24300 AND warehouse_id = 502",
       "balance: item 01.01.001 in warehouse 02: period 2025-1 closes with 31 pieces (auxiliary 0) worth 66, "
       "opening and movements give 30 pieces (auxiliary 0) worth 66 [调拨 DB-1]"},
      {"a closing amount",
       "UPDATE balance SET amount = 1 WHERE item_id = 412 AND period = 24301 AND batch_id = 2",
       "balance: item 01.01.002 in warehouse 01, batch B: period 2025-2 closes with 6 pieces (auxiliary 0) "
       "worth "
       "0.0001, opening and movements give 6 pieces (auxiliary 0) worth 24"},
      {"a balance that is gone", "DELETE FROM balance WHERE item_id = 423",
       "balance: item 02.003 in warehouse 01: period 2025-2 closes with 0 pieces (auxiliary 0) worth 0, "
       "opening "
       "and movements give 3 pieces (auxiliary 0) worth 9 [采购收货 CG-4] [销售发货 XS-4]"},
      {"a balance from nowhere", "INSERT INTO balance VALUES (423, 24301, 502, 0, 0, 5000000, 0, 0)",
       "balance: item 02.003 in warehouse 02: period 2025-2 closes with 5 pieces (auxiliary 0) worth 0, "
       "opening "
       "and movements give 0 pieces (auxiliary 0) worth 0"},
      {"opening stock changed", "UPDATE opening_stock SET amount = 990000 WHERE item_id = 413",
       "balance: item 01.02 in warehouse 01: period 2024-12 closes with 100 pieces (auxiliary 0) worth 100, "
       "opening and movements give 100 pieces (auxiliary 0) worth 99"},
      {"instant stock", "UPDATE stock SET quantity = 0 WHERE item_id = 423",
       "stock: item 02.003 in warehouse 01 shows 0 pieces (auxiliary 0) worth 9, its last balance is 3 "
       "pieces "
       "(auxiliary 0) worth 9"},
      {"instant stock that is gone", "DELETE FROM stock WHERE item_id = 423",
       "stock: item 02.003 in warehouse 01 shows 0 pieces (auxiliary 0) worth 0, its last balance is 3 "
       "pieces "
       "(auxiliary 0) worth 9"},
      {"a movement that is gone", "DELETE FROM movement WHERE item_id = 411 AND day_order = 2",
       "movement: item 01.01.001 has no movement for line 1 [调价 TJ-1]"},
      {"a movement elsewhere", "UPDATE movement SET warehouse_id = 502 WHERE item_id = 413",
       "movement: item 01.02 does not move as the bill says in line 1 [组装 ZZ-1]"},
      {"an item's only movement is gone", "DELETE FROM movement WHERE item_id = 413",
       "movement: item 01.02 has no movement for line 1 [组装 ZZ-1]"},
      {"a movement of no bill",
       "INSERT INTO movement SELECT item_id, date, day_order, 999, direction, line, period, bill_class, "
       "warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM movement WHERE item_id = 413",
       "movement: item 01.02 has a movement that no audited bill makes, of line 1 [#999]"},
      {"an audited bill turned back by hand", "UPDATE bill SET audited = 0 WHERE number = 'TJ-1'",
       "movement: item 01.01.001 has a movement that no audited bill makes, of line 1 [调价 TJ-1]"},
      {"a cost", "UPDATE movement SET amount = 1600001 WHERE item_id = 412 AND amount = 160000",
       "cost: item 01.01.002 line 2 moves with the amount 160.0001, costing gives 16 [销售发货 XS-1]"},
      {"an assembly that makes money",
       "UPDATE movement SET amount = 310000 WHERE item_id = 414 AND amount = 300000",
       "assembly: what comes in carries another cost than what goes out [组装 ZZ-1]"},
      {"a bill's day", "UPDATE bill SET date = date + 40 WHERE number = 'QC-1'",
       "period: the day of the bill is not in its period [其他出库 QC-1]"},
      {"a bill before the start", "UPDATE system_profile SET value = '2' WHERE key = 'StartPeriod'",
       "period: the bill lies before the start of accounting or after the last balances [采购收货 CG-1] "
       "[销售发货 XS-1] [组装 ZZ-1] [调拨 DB-1] [销售发货 XS-3] [其他出库 QC-1] [调拨 DB-2] [采购收货 CG-3]"},
      {"periods apart", "UPDATE accounting_period SET last_day = last_day - 1 WHERE period = 24310",
       "period: period 2025-12 does not begin on the day after the one before ends"},
      {"a batch of another item", "UPDATE batch SET item_id = 411 WHERE id = 2",
       "batch: item 01.01.002 moves with a batch of another item, B [采购收货 CG-1] [销售发货 XS-1]"},
      {"batches given up", "UPDATE item SET batch_managed = 0 WHERE id = 412",
       "batch: item 01.01.002 has no batches and moves with one [采购收货 CG-1] [采购收货 CG-1] [销售发货 "
       "XS-1] "
       "[其他出库 QC-1]"},
      {"batches taken up", "UPDATE item SET batch_managed = 1 WHERE id = 423",
       "batch: item 02.003 is kept by batch and moves without one [销售发货 XS-4] [采购收货 CG-4]"},
      {"a serial number left out", "DELETE FROM bill_serial WHERE bill_id = 1 AND serial_id = 2",
       "serial: line 5 of item 02.002 does not list one serial number a piece [采购收货 CG-1]"},
      {"a serial number sold before it came",
       "UPDATE bill_serial SET serial_id = 1 WHERE bill_id = 1 AND serial_id = 1;"
       "UPDATE bill SET date = date - 9 WHERE number = 'XS-1'",
       "serial: serial number SN-1 goes out while it is not in stock [销售发货 XS-1]"},
      {"a serial number's state", "UPDATE serial SET state = 1 WHERE id = 1",
       "serial: serial number SN-1 of item 02.002 has another state or warehouse than its last movement left "
       "it "
       "in"},
      {"a serial number's warehouse", "UPDATE serial SET warehouse_id = 502 WHERE id = 2",
       "serial: serial number SN-2 of item 02.002 has another state or warehouse than its last movement left "
       "it "
       "in"},
      {"deliveries of an order", "UPDATE order_entry SET delivered_quantity = 0 WHERE order_id = 1",
       "order: order CD-1 line 1 counts other deliveries than its bills made [采购订单 CD-1]"},
      {"a parent that is no group", "UPDATE base_data SET detail = 1 WHERE id = 402",
       "tree: base data 01.01.001 has a parent that is no group"},
      {"a parent of another class", "UPDATE base_data SET parent_id = 501 WHERE id = 403",
       "tree: base data 02 has a parent of another class"},
      {"a number apart from its parent's", "UPDATE base_data SET number = '03.001' WHERE id = 421",
       "tree: base data 03.001 does not begin with the number of its parent, 02"},
      {"a level", "UPDATE base_data SET level = 7 WHERE id = 411",
       "tree: base data 01.01.001 has a level or ancestors that do not fit its parent"},
      {"ancestors", "DELETE FROM base_ancestor WHERE id = 411 AND level = 2",
       "tree: base data 01.01.001 has a level or ancestors that do not fit its parent"},
      {"a warehouse without its facts",
       "INSERT INTO base_data (id, class_id, number, short_number, name) "
       "VALUES (599, 5, '09', '09', '空')",
       "tree: base data 09 lacks the facts of an item or a warehouse"},
      {"an item that became a group", "UPDATE base_data SET detail = 0 WHERE id = 423",
       "tree: base data 02.003 is a group and has the facts of an item or a warehouse"},
      {"an amount in the gift warehouse", "UPDATE stock SET amount = 5 WHERE warehouse_id = 503",
       "gift: item 01.01.001 has an amount in gift warehouse 03"},
      {"a reference that leads nowhere", "PRAGMA foreign_keys = OFF; DELETE FROM unit WHERE id = 1",
       "storage: a row of item refers to a row of unit that does not exist"},
  };
  for (const FaultCase& each : cases) {
    SCOPED_TRACE(each.name);
    Connection book = MakeTinyBook();
    book.RunScript(each.fault);
    EXPECT_THAT(ShownAll(book), testing::Contains(each.expected));
  }
}

TEST(Check, AnEmptyBookIsSound) {
  Connection book = books::schema::CreateBookInMemory();
  EXPECT_THAT(ShownAll(book), testing::IsEmpty());
}

TEST(Check, StopsAtTheLimitOfARule) {
  Connection book = MakeTinyBook();
  book.Execute("UPDATE base_data SET level = 9");
  const std::vector<Violation> violations = books::check::Check(book, 3);
  EXPECT_EQ(std::ranges::count(violations, "tree", &Violation::rule), 3);
}

}  // namespace
