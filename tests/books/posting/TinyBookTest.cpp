#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/check/Check.h"
#include "tests/books/TinyBook.h"

// The figures that TinyBook.cpp reckons through.
namespace {

using books::test::MakeTinyBook;
using books::test::Rows;

struct GoldenCase {
  std::string name;
  std::string sql;
  std::string expected;
};

// Quantities in pieces, amounts in ten-thousandths.
constexpr const char* kMovements =
    "SELECT b.number, m.direction, w.number, m.quantity / 1000000, m.amount FROM movement m "
    "JOIN bill b ON b.id = m.bill_id JOIN base_data w ON w.id = m.warehouse_id WHERE m.item_id = ";
constexpr const char* kBalances =
    "SELECT p.number, w.number, m.batch_id, m.quantity / 1000000, m.amount FROM balance m "
    "LEFT JOIN accounting_period p ON p.period = m.period JOIN base_data w ON w.id = m.warehouse_id "
    "WHERE m.item_id = ";

TEST(TinyBook, Figures) {
  const std::vector<GoldenCase> cases = {
      {"juice moves", kMovements + std::to_string(books::test::tiny::kJuice),
       "CG-1 1 01 50 1300000\n"
       "XS-1 -1 01 60 1320000\n"
       "DB-1 -1 01 30 660000\n"
       "DB-1 1 02 30 660000\n"
       "DB-2 -1 01 10 220000\n"
       "DB-2 1 03 10 0\n"
       "CG-2 1 02 7 200000\n"
       "XS-2 -1 02 20 450575\n"
       "TJ-1 1 01 0 10575"},
      {"juice closes", kBalances + std::to_string(books::test::tiny::kJuice),
       "- 01 0 100 2000000\n"
       "1 01 0 50 1100000\n"
       "1 02 0 30 660000\n"
       "1 03 0 10 0\n"
       "2 01 0 50 1110575\n"
       "2 02 0 17 409425\n"
       "2 03 0 10 0"},
      {"yogurt moves", kMovements + std::to_string(books::test::tiny::kYogurt),
       "CG-1 1 01 20 600000\n"
       "CG-1 1 01 10 400000\n"
       "XS-1 -1 01 4 160000\n"
       "QC-1 -1 01 5 150000"},
      {"yogurt closes by batch", kBalances + std::to_string(books::test::tiny::kYogurt),
       "1 01 1 15 450000\n"
       "1 01 2 6 240000\n"
       "2 01 1 15 450000\n"
       "2 01 2 6 240000"},
      {"candy goes into boxes", kMovements + std::to_string(books::test::tiny::kCandy),
       "ZZ-1 -1 01 30 300000"},
      {"boxes cost the month's average", kMovements + std::to_string(books::test::tiny::kGiftBox),
       "ZZ-1 1 01 10 300000\n"
       "XS-3 -1 01 4 160000\n"
       "CG-3 1 01 10 500000"},
      {"screwdrivers leave in the order they came",
       kMovements + std::to_string(books::test::tiny::kScrewdriver),
       "CG-1 1 01 10 500000\n"
       "CG-3 1 01 10 600100\n"
       "XS-4 -1 01 12 620020\n"
       "PY-1 1 01 1 60010"},
      {"tape below zero takes the cost of what covers it",
       kMovements + std::to_string(books::test::tiny::kTape),
       "XS-4 -1 01 5 150000\n"
       "CG-4 1 01 8 240000"},
      {"instant stock",
       "SELECT d.number, w.number, s.batch_id, s.quantity / 1000000, s.amount FROM stock s "
       "JOIN base_data d ON d.id = s.item_id JOIN base_data w ON w.id = s.warehouse_id ORDER BY 1, 2, 3",
       "01.01.001 01 0 50 1110575\n"
       "01.01.001 02 0 17 409425\n"
       "01.01.001 03 0 10 0\n"
       "01.01.002 01 1 15 450000\n"
       "01.01.002 01 2 6 240000\n"
       "01.02 01 0 70 700000\n"
       "01.03 01 0 16 640000\n"
       "02.001 01 0 9 540090\n"
       "02.002 01 0 1 4000000\n"
       "02.003 01 0 3 90000"},
      {"serial numbers", "SELECT number, state, warehouse_id FROM serial ORDER BY id",
       "SN-1 2 -\nSN-2 1 501"},
      {"delivered of the order", "SELECT order_id, delivered_quantity / 1000000 FROM order_entry ORDER BY 1",
       "1 50\n2 0"},
      {"what is not audited", "SELECT warehouse_id, direction, quantity / 1000000 FROM unaudited_movement",
       "501 -1 5"},
      {"periods", "SELECT key, value FROM system_profile WHERE category = 'IC' ORDER BY key",
       "CurrentPeriod 2\nCurrentYear 2025\nStartPeriod 1\nStartYear 2025"},
      {"levels",
       "SELECT FNumber, FLevel, FDetail, FParentID FROM t_Item WHERE FItemClassID = 4 ORDER BY FNumber",
       "01 1 0 0\n01.01 2 0 401\n01.01.001 3 1 402\n01.01.002 3 1 402\n01.02 2 1 401\n01.03 2 1 401\n"
       "02 1 0 0\n02.001 2 1 403\n02.002 2 1 403\n02.003 2 1 403"},
  };
  books::database::Connection book = MakeTinyBook();
  for (const GoldenCase& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(Rows(book, each.sql), each.expected);
  }
}

TEST(TinyBook, IsSound) {
  books::database::Connection book = MakeTinyBook();
  for (const books::check::Violation& violation : books::check::Check(book)) {
    ADD_FAILURE() << violation.rule << ": " << violation.description;
  }
}

}  // namespace
