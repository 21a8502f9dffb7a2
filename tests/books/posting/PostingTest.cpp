#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/check/Check.h"
#include "books/posting/BulkPosting.h"
#include "books/posting/Periods.h"
#include "books/posting/Posting.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"
#include "tests/books/TinyBook.h"

namespace {

using books::database::Connection;
using books::database::Quantity;
using books::posting::Costing;
using books::posting::Document;
using books::posting::Entry;
using books::posting::Id;
using books::schema::BillClass;
using books::schema::Direction;
using books::test::BillOf;
using books::test::MakeTinyBook;
using books::test::Rows;
using platform::Currency;
using platform::Date;
using namespace books::test::tiny;

// Everything that posting writes, as text.
std::string Everything(Connection& book) {
  return Rows(book, "SELECT * FROM bill") + "\n" + Rows(book, "SELECT * FROM bill_entry") + "\n" +
         Rows(book, "SELECT * FROM bill_serial") + "\n" + Rows(book, "SELECT * FROM movement") + "\n" +
         Rows(book, "SELECT * FROM balance") + "\n" + Rows(book, "SELECT * FROM stock") + "\n" +
         Rows(book, "SELECT * FROM serial") + "\n" + Rows(book, "SELECT * FROM waiting_item") + "\n" +
         Rows(book, "SELECT * FROM order_entry") + "\n" + Rows(book, "SELECT * FROM system_profile");
}

Document Sale(Id item = kTape, int pieces = 1) {
  Document document;
  document.billClass = BillClass::kSalesIssue;
  document.number = "NEW-1";
  document.date = Date::Of(2025, 2, 15);
  Entry entry;
  entry.itemId = item;
  entry.warehouseId = kMain;
  entry.unitId = kPiece;
  entry.quantity = Quantity::FromInteger(pieces);
  entry.unitQuantity = entry.quantity;
  document.entries = {entry};
  return document;
}

struct RefusalCase {
  std::string name;
  std::function<void(Document&)> spoil;
  std::string failure;
};

TEST(Posting, RefusedDocumentsLeaveNoTrace) {
  const auto transfer = [](Document& document) {
    document.billClass = BillClass::kTransfer;
    document.entries[0].toWarehouseId = kBranch;
  };
  const std::vector<RefusalCase> cases = {
      {"no lines", [](Document& document) { document.entries.clear(); }, "bill NEW-1: has no lines"},
      {"an order", [](Document& document) { document.billClass = BillClass::kSalesOrder; },
       "bill NEW-1: an order moves no stock, it is not posted"},
      {"a closed period", [](Document& document) { document.date = Date::Of(2025, 1, 31); },
       "bill NEW-1: lies on 2025-01-31, in a closed period; open the period again first"},
      {"a day without a period", [](Document& document) { document.date = Date::Of(2031, 1, 1); },
       "no accounting period holds 2031-01-01; add its year first"},
      {"a sale that names a second warehouse",
       [](Document& document) { document.entries[0].toWarehouseId = kBranch; },
       "bill NEW-1: line 0: a transfer, and only a transfer, names the warehouse that the goods go to"},
      {"a transfer to nowhere", [](Document& document) { document.billClass = BillClass::kTransfer; },
       "bill NEW-1: line 0: a transfer, and only a transfer, names the warehouse that the goods go to"},
      {"a transfer to the same warehouse",
       [&](Document& document) {
         transfer(document);
         document.entries[0].toWarehouseId = kMain;
       },
       "bill NEW-1: line 0: goods cannot be transferred into the warehouse where they are"},
      {"a transfer backwards",
       [&](Document& document) {
         transfer(document);
         document.entries[0].quantity = Quantity::FromInteger(-1);
       },
       "bill NEW-1: line 0: the quantity of a transfer or an assembly must be above 0"},
      {"an assembly that only takes",
       [](Document& document) {
         document.billClass = BillClass::kAssembly;
         document.entries[0].direction = Direction::kOut;
       },
       "bill NEW-1: an assembly needs lines that go out and lines that come in"},
      {"an adjustment of quantities",
       [](Document& document) { document.billClass = BillClass::kPriceAdjustment; },
       "bill NEW-1: line 0: a change of amounts has an amount and the quantity 0"},
      {"a batch left out", [](Document& document) { document.entries[0].itemId = kYogurt; },
       "bill NEW-1: line 0: the item is kept by batch, name the batch"},
      {"a batch too much", [](Document& document) { document.entries[0].batchId = kBatchA; },
       "bill NEW-1: line 0: the item has no batches"},
      {"serial numbers left out", [](Document& document) { document.entries[0].itemId = kScanner; },
       "bill NEW-1: line 0: needs 1 serial numbers, has 0"},
      {"a number that is taken", [](Document& document) { document.number = "XS-2"; },
       "the book in memory: UNIQUE constraint failed: bill.bill_class, bill.number"},
      {"an item that is not there", [](Document& document) { document.entries[0].itemId = 999; },
       "the book in memory: FOREIGN KEY constraint failed"},
  };
  Connection book = MakeTinyBook();
  const std::string before = Everything(book);
  for (const RefusalCase& each : cases) {
    SCOPED_TRACE(each.name);
    Document document = Sale();
    each.spoil(document);
    try {
      books::posting::Post(book, document);
      ADD_FAILURE() << "was posted";
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.Description(), each.failure);
    }
    EXPECT_EQ(Everything(book), before);
  }
}

TEST(Posting, WhatIsTakenBackWasNeverThere) {
  Connection book = MakeTinyBook();
  const std::string before = Everything(book);
  const Id bill = books::posting::Post(book, Sale());
  EXPECT_NE(Everything(book), before);
  books::posting::Delete(book, bill);
  EXPECT_EQ(Everything(book), before);
}

TEST(Posting, TurnedBackAndAuditedAgain) {
  Connection book = MakeTinyBook();
  const std::string before = Everything(book);
  for (const char* number : {"CG-2", "XS-4", "CG-4", "XS-2", "PY-1", "TJ-1"}) {
    SCOPED_TRACE(number);
    const Id bill = BillOf(book, number);
    books::posting::Unaudit(book, bill);
    EXPECT_NE(Everything(book), before);
    books::posting::Audit(book, bill);
    EXPECT_EQ(Everything(book), before);
  }
}

TEST(Posting, ABackDatedReceiptChangesWhatFollows) {
  Connection book = MakeTinyBook();
  Document receipt = Sale(kJuice, 13);
  receipt.billClass = BillClass::kPurchaseReceipt;
  receipt.date = Date::Of(2025, 2, 1);
  receipt.entries[0].unitId = kBottle;
  receipt.entries[0].amount = Currency::FromText("44");
  books::posting::Post(book, receipt);
  // 80 for 176.00, +13 for 44.00, +7 for 20.00: 100 for 240.00, so 20 cost 48.00.
  EXPECT_EQ(Rows(book, "SELECT amount FROM movement WHERE item_id = 411 AND bill_id = " +
                           std::to_string(BillOf(book, "XS-2"))),
            "480000");
  EXPECT_TRUE(books::check::Check(book).empty());
}

TEST(Posting, LaterValuationMovesQuantitiesAtOnce) {
  Connection book = MakeTinyBook();
  books::posting::Post(book, Sale(kTape, 2), Costing::kLater);
  EXPECT_EQ(Rows(book, "SELECT quantity / 1000000, amount FROM stock WHERE item_id = 423"), "1 90000");
  EXPECT_EQ(Rows(book, "SELECT FItemID FROM ICCalFlag"), "423");
  EXPECT_TRUE(books::check::Check(book).empty());
  EXPECT_EQ(books::posting::ValueWaitingBusiness(book), 1U);
  EXPECT_EQ(Rows(book, "SELECT quantity / 1000000, amount FROM stock WHERE item_id = 423"), "1 30000");
  EXPECT_EQ(Rows(book, "SELECT FItemID FROM ICCalFlag"), "");
  EXPECT_EQ(books::posting::ValueWaitingBusiness(book), 0U);
}

TEST(Posting, AComponentsCostReachesWhatIsMadeOfIt) {
  Connection book = MakeTinyBook();
  books::posting::ReopenPeriod(book);
  Document receipt = Sale(kCandy, 100);
  receipt.billClass = BillClass::kPurchaseReceipt;
  receipt.date = Date::Of(2025, 1, 2);
  receipt.entries[0].amount = Currency::FromText("300");
  books::posting::Post(book, receipt);
  // Candy is 200 for 400.00, so 30 cost 60.00; boxes: (60.00 + 50.00) ÷ 20 = 5.50 each.
  EXPECT_EQ(Rows(book, "SELECT amount FROM movement WHERE item_id = 414"), "600000\n220000\n500000");
}

TEST(Posting, SerialNumbersFollowTheirBills) {
  Connection book = MakeTinyBook();
  const std::string state = "SELECT state, warehouse_id FROM serial WHERE id = 1";
  EXPECT_EQ(Rows(book, state), "2 -");
  Document back = Sale(kScanner, -1);
  back.entries[0].serialIds = {kSerial1};
  const Id bill = books::posting::Post(book, back);
  EXPECT_EQ(Rows(book, state), "1 501");
  Document transfer = Sale(kScanner, 1);
  transfer.billClass = BillClass::kTransfer;
  transfer.number = "NEW-2";
  transfer.date = Date::Of(2025, 2, 16);
  transfer.entries[0].toWarehouseId = kBranch;
  transfer.entries[0].serialIds = {kSerial1};
  const Id moved = books::posting::Post(book, transfer);
  EXPECT_EQ(Rows(book, state), "1 502");
  EXPECT_TRUE(books::check::Check(book).empty());
  books::posting::Delete(book, moved);
  books::posting::Delete(book, bill);
  EXPECT_EQ(Rows(book, state), "2 -");
}

TEST(Posting, AnEntryTellsItsOrderWhatItDelivers) {
  Connection book = MakeTinyBook();
  const std::string delivered = "SELECT delivered_quantity / 1000000 FROM order_entry WHERE order_id = 2";
  Document sale = Sale(kJuice, 6);
  sale.entries[0].unitId = kBottle;
  sale.entries[0].orderId = 2;
  sale.entries[0].orderLine = 1;
  const Id bill = books::posting::Post(book, sale);
  EXPECT_EQ(Rows(book, delivered), "6");
  books::posting::Unaudit(book, bill);
  EXPECT_EQ(Rows(book, delivered), "0");
}

TEST(Posting, AnotherTurnOfTheSameKindIsRefused) {
  Connection book = MakeTinyBook();
  EXPECT_THROW(books::posting::Audit(book, BillOf(book, "XS-2")), platform::Error);
  EXPECT_THROW(books::posting::Unaudit(book, BillOf(book, "XS-9")), platform::Error);
  EXPECT_THROW(books::posting::Delete(book, 999), platform::Error);
  EXPECT_THROW(books::posting::Unaudit(book, BillOf(book, "CG-1")), platform::Error);
  EXPECT_THROW(books::posting::Delete(book, BillOf(book, "CG-1")), platform::Error);
}

TEST(OpeningStock, OnlyInTheStartPeriod) {
  Connection book = MakeTinyBook();
  const std::vector<books::posting::OpeningStock> row = {
      {.itemId = kTape, .warehouseId = kMain, .quantity = Quantity::FromInteger(1), .amount = {}}};
  EXPECT_THROW(books::posting::SetOpeningStock(book, row), platform::Error);
  books::posting::ReopenPeriod(book);
  books::posting::SetOpeningStock(book, row);
  EXPECT_EQ(Rows(book, "SELECT quantity / 1000000 FROM balance WHERE item_id = 423 AND period = 24299"), "1");
}

TEST(OpeningStock, GiftsHaveNoAmount) {
  Connection book = MakeTinyBook();
  books::posting::ReopenPeriod(book);
  const std::vector<books::posting::OpeningStock> row = {{.itemId = kTape,
                                                          .warehouseId = kGift,
                                                          .quantity = Quantity::FromInteger(1),
                                                          .amount = Currency::FromUnits(1)}};
  EXPECT_THROW(books::posting::SetOpeningStock(book, row), platform::Error);
  EXPECT_EQ(Rows(book, "SELECT COUNT(*) FROM opening_stock"), "2");
}

TEST(Periods, ClosingWaitsForAudits) {
  Connection book = MakeTinyBook();
  EXPECT_THROW(books::posting::ClosePeriod(book), platform::Error);
  books::posting::Delete(book, BillOf(book, "XS-9"));
  books::posting::ClosePeriod(book);
  EXPECT_EQ(Rows(book, "SELECT value FROM system_profile WHERE category = 'IC' AND key = 'CurrentPeriod'"),
            "3");
  // What was in stock is carried into March.
  EXPECT_EQ(
      Rows(book, "SELECT quantity / 1000000, amount FROM balance WHERE item_id = 413 AND period = 24302"),
      "70 700000");
  EXPECT_TRUE(books::check::Check(book).empty());
}

TEST(Periods, TheYearTurns) {
  Connection book = MakeTinyBook();
  books::posting::Delete(book, BillOf(book, "XS-9"));
  for (int month = 2; month <= 12; ++month) books::posting::ClosePeriod(book);
  EXPECT_EQ(Rows(book, "SELECT value FROM system_profile WHERE key LIKE 'Current%' ORDER BY key"), "1\n2026");
  EXPECT_EQ(Rows(book, "SELECT COUNT(*) FROM accounting_period WHERE year = 2026"), "12");
  EXPECT_TRUE(books::check::Check(book).empty());
}

TEST(Periods, OpenedAgainOnlyBackToTheStart) {
  Connection book = MakeTinyBook();
  books::posting::ReopenPeriod(book);
  EXPECT_THROW(books::posting::ReopenPeriod(book), platform::Error);
}

TEST(Periods, BusinessAheadCarriesTheBalancesAlong) {
  Connection book = MakeTinyBook();
  Document sale = Sale();
  sale.date = Date::Of(2025, 5, 3);
  books::posting::Post(book, sale);
  EXPECT_EQ(books::posting::BalancesUntil(book), books::schema::PeriodOf(2025, 5));
  EXPECT_EQ(Rows(book, "SELECT period - 24300, quantity / 1000000 FROM balance WHERE item_id = 423"),
            "1 3\n2 3\n3 3\n4 2");
  EXPECT_TRUE(books::check::Check(book).empty());
}

struct BaseCase {
  std::string name;
  Date day;
  std::int32_t period = 0;
  Date firstDay;
};

TEST(Periods, WhereTheFiguresOfADayBegin) {
  const Date january = Date::Of(2025, 1, 1);
  const Date march = Date::Of(2025, 3, 1);
  const std::vector<BaseCase> cases = {
      {"first day of a period", Date::Of(2025, 2, 1), 24300, Date::Of(2025, 2, 1)},
      {"in the middle", Date::Of(2025, 2, 20), 24300, Date::Of(2025, 2, 1)},
      {"in the start period", Date::Of(2025, 1, 31), 24299, january},
      {"before accounting began", Date::Of(2020, 1, 1), 24299, january},
      {"the day after the last balances", march, 24301, march},
      {"long after", Date::Of(2027, 7, 1), 24301, march},
  };
  Connection book = MakeTinyBook();
  for (const BaseCase& each : cases) {
    SCOPED_TRACE(each.name);
    const books::posting::BalanceBase base = books::posting::BalanceBefore(book, each.day);
    EXPECT_EQ(base.period, each.period);
    EXPECT_EQ(base.firstDay, each.firstDay);
  }
}

TEST(BulkPosting, WithoutFinishNothingIsWritten) {
  Connection book = MakeTinyBook();
  const std::string before = Everything(book);
  {
    books::posting::BulkPosting bulk(book);
    bulk.Add(Sale());
  }
  EXPECT_EQ(Everything(book), before);
}

TEST(BulkPosting, OpeningStockAloneHasFigures) {
  Connection book = books::schema::CreateBookInMemory();
  books::test::WriteTinyBaseData(book);
  const std::vector<books::posting::OpeningStock> rows = {{.itemId = kTape,
                                                           .warehouseId = kMain,
                                                           .quantity = Quantity::FromInteger(4),
                                                           .amount = Currency::FromText("8")}};
  books::posting::BulkPosting bulk(book);
  bulk.AddOpeningStock(rows);
  bulk.Finish();
  EXPECT_EQ(Rows(book, "SELECT item_id, quantity / 1000000, amount FROM stock"), "423 4 80000");
  EXPECT_TRUE(books::check::Check(book).empty());
}

}  // namespace
