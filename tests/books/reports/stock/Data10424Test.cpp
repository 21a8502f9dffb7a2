#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

// 可用库存查询表 on the tiny book, whose bills stand in TinyBook.cpp. Every item has a lowest level of 20.
// CD-1 of January 3 asks for 80 bottles of juice, of which CG-1 brought 50; XD-1 of February 1 sells 15 to
// come.
namespace {

using books::test::BookFile;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::RightsOf;
using books::test::With;
using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

const Lines kFigures = {"FItemNumber",  "FSuggestQty",  "FInvQty",
                        "FMovingCgQty", "FMovingXsQty", "FLowLimitQty"};

platform::Ref<platform::Recordset> FetchAvailable(const books::Book& book, const FilterEntries& filter) {
  return books::test::Fetch(book, "tovmstockrpt.data10424", "GetRptData", filter);
}

FilterEntries Now(const FilterEntries& others = {}) {
  return With({{"EDate", "2025-02-28"},
               {"txtStock", ""},
               {"OnTime", "1"},
               {"ShowDeletedItem", "0"},
               {"IncludeExpireGoodQty", "0"},
               {"CheckItem", "0"},
               {"chkInv", "1"},
               {"chkCGBook", "1"},
               {"chkXSBook", "1"},
               {"chkLmtQ", "1"},
               {"ASC", "True"},
               {"DESC", "False"},
               {"Sort", "0"},
               {"ContainBills", "0"},
               {"MultiLevel", 0},
               {"RptID", 10424},
               {"DataRightWhere", ""}},
              others);
}

FilterEntries Juice(const FilterEntries& others = {}) {
  return With(Now({{"BItemNumber", "01.01.001"}, {"EItemNumber", "01.01.001"}}), others);
}

TEST(Data10424, EveryTermCounts) {
  const BookFile tiny(books::test::WriteTinyBook);
  const auto rows = FetchAvailable(tiny.Open(), Now());
  // Juice: 77 in stock + 30 to come − 15 promised − 20 kept back = 72. Both batches of yogurt have expired.
  EXPECT_THAT(LinesOf(*rows, kFigures),
              ElementsAre("01.01.001 72 77 30 15 20", "01.01.002 -20 0 0 0 20", "01.02 50 70 0 0 20",
                          "01.03 -4 16 0 0 20", "02.001 -11 9 0 0 20", "02.002 -19 1 0 0 20",
                          "02.003 -17 3 0 0 20", "合计 51 176 30 15 140"));
  EXPECT_EQ(LinesOf(*rows, {"FItemName", "FModel", "FAuxPropName", "FUnitName", "FSumSort"})[0],
            "苹果汁 M-01.01.001 '' 瓶 0");
  EXPECT_EQ(LinesOf(*rows, {"FSumSort"}).back(), "101");
}

struct Case {
  std::string name;
  FilterEntries filter;
  std::string first;  // row
};

TEST(Data10424, Filters) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  const std::vector<Case> cases = {
      {"the stock alone", Juice({{"chkCGBook", "0"}, {"chkXSBook", "0"}, {"chkLmtQ", "0"}}),
       "77 77 30 15 20"},
      {"on order from suppliers alone", Juice({{"chkInv", "0"}, {"chkXSBook", "0"}, {"chkLmtQ", "0"}}),
       "30 77 30 15 20"},
      {"on order for customers alone", Juice({{"chkInv", "0"}, {"chkCGBook", "0"}, {"chkLmtQ", "0"}}),
       "-15 77 30 15 20"},
      {"the lowest level alone", Juice({{"chkInv", "0"}, {"chkCGBook", "0"}, {"chkXSBook", "0"}}),
       "-20 77 30 15 20"},
      {"no term", Juice({{"chkInv", "0"}, {"chkCGBook", "0"}, {"chkXSBook", "0"}, {"chkLmtQ", "0"}}),
       "0 77 30 15 20"},
      // On January 4 nothing of CD-1 had come and XD-1 was not yet there.
      {"at a date before the delivery", Juice({{"OnTime", "0"}, {"EDate", "2025-01-04"}}), "160 100 80 0 20"},
      // After CG-1: 150 in stock.
      {"at the date of the delivery", Juice({{"OnTime", "0"}, {"EDate", "2025-01-05"}}), "160 150 30 0 20"},
      {"before the order", Juice({{"OnTime", "0"}, {"EDate", "2025-01-02"}}), "80 100 0 0 20"},
      // XS-9 takes 5 bottles.
      {"with unaudited bills", Juice({{"ContainBills", "1"}}), "67 72 30 15 20"},
      {"unaudited bills count only now", Juice({{"ContainBills", "1"}, {"OnTime", "0"}}), "72 77 30 15 20"},
      {"warehouses", Juice({{"txtStock", "(502,503)|02-分仓库,03-赠品仓库"}}), "22 27 30 15 20"},
      {"a group in the set of warehouses", Juice({{"txtStock", "(999,502)|x"}}), "12 17 30 15 20"},
      {"expired goods", Now({{"BItemNumber", "01.01.002"}, {"IncludeExpireGoodQty", "1"}}), "1 21 0 0 20"},
      // Batch B is good to January 26, batch A to the 23rd. On the 24th 6 of B lie there.
      {"goods that expire later",
       Now({{"BItemNumber", "01.01.002"}, {"OnTime", "0"}, {"EDate", "2025-01-24"}}), "-14 6 0 0 20"},
      {"goods on their last day",
       Now({{"BItemNumber", "01.01.002"}, {"OnTime", "0"}, {"EDate", "2025-01-23"}}), "1 21 0 0 20"},
      {"a part of the name", Now({{"ItemName", "胶"}}), "-17 3 0 0 20"},
      {"a part of the model", Now({{"Model", "02.003"}}), "-17 3 0 0 20"},
      // 酸奶 is the last by its bytes.
      {"sorted by name, descending", Now({{"Sort", "2"}, {"DESC", "True"}}), "-20 0 0 0 20"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const Lines figures(kFigures.begin() + 1, kFigures.end());
    const Lines lines = LinesOf(*FetchAvailable(book, each.filter), figures);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0], each.first);
  }
}

// XS-9 delivers 5 of XD-1 without being audited, and CD-2 is not audited either.
TEST(Data10424, UnauditedOrdersAndDeliveries) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "UPDATE bill_entry SET order_id = 2, order_line = 1 WHERE bill_id = (SELECT id FROM bill WHERE number "
      "= "
      "'XS-9');"
      "INSERT INTO order_bill (id, bill_class, number, date, supplier_id, audited) SELECT 3, 1020001, "
      "'CD-2', "
      "date, supplier_id, 0 FROM order_bill WHERE id = 1;"
      "INSERT INTO order_entry (order_id, line, item_id, unit_id, unit_quantity, quantity) SELECT 3, 1, "
      "item_id, "
      "unit_id, 7000000, 7000000 FROM order_entry WHERE order_id = 1");
  const Lines orders = {"FMovingCgQty", "FMovingXsQty"};
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice()), orders)[0], "30 15");
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice({{"ContainBills", "1"}})), orders)[0], "37 10");
}

TEST(Data10424, ClosedAndOverdeliveredOrdersWaitForNothing) {
  const BookFile tiny(books::test::WriteTinyBook);
  const Lines orders = {"FMovingCgQty", "FMovingXsQty"};
  tiny.Write().RunScript(
      "UPDATE order_bill SET closed = 1 WHERE id = 2; UPDATE order_entry SET quantity = 40000000 WHERE "
      "order_id "
      "= 1");
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice()), orders)[0], "0 0");
  tiny.Write().RunScript(
      "UPDATE order_bill SET closed = 0 WHERE id = 2; UPDATE order_entry SET closed = 1 WHERE order_id = 2");
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice()), orders)[0], "0 0");
}

TEST(Data10424, LowestLevelsOfWarehouses) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "INSERT INTO item_limit (item_id, warehouse_id, min_quantity) SELECT id, 502, 3000000 "
      "FROM item");
  const Lines level = {"FLowLimitQty"};
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice()), level)[0], "20");
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice({{"txtStock", "(502)|x"}})), level)[0], "3");
  EXPECT_EQ(LinesOf(*FetchAvailable(tiny.Open(), Juice({{"txtStock", "(501)|x"}})), level)[0], "20");
}

// Rolls without colour stand first and carry the level; a colour that is only on order has its row too.
TEST(Data10424, ByAuxiliaryProperty) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "INSERT INTO base_data (id, class_id, number, short_number, name) VALUES "
      "(901, 10, '02', '02', '红'), (902, 10, '01', '01', '蓝');"
      "INSERT INTO stock VALUES (423, 501, 0, 901, 2000000, 0, 60000);"
      "INSERT INTO order_entry (order_id, line, item_id, aux_id, unit_id, unit_quantity, quantity) SELECT 1, "
      "2, "
      "423, 902, unit_id, 9000000, 9000000 FROM item WHERE id = 423");
  EXPECT_THAT(LinesOf(*FetchAvailable(tiny.Open(), Now({{"BItemNumber", "02.003"}})),
                      {"FAuxPropName", "FSuggestQty", "FInvQty", "FMovingCgQty", "FLowLimitQty"}),
              ElementsAre("'' -17 3 0 20", "蓝 9 0 9 0", "红 2 2 0 0", "- -6 5 9 20"));
}

TEST(Data10424, DriftDisabledItemsAndRights) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "UPDATE stock SET quantity = 4000000 WHERE item_id = 423;"
      "UPDATE base_data SET disabled = 1 WHERE id = 422");
  const FilterEntries tools = Now({{"BItemNumber", "02.002"}});
  const Lines fields = {"FItemNumber", "FInvQty"};
  EXPECT_THAT(LinesOf(*FetchAvailable(tiny.Open(), tools), fields), ElementsAre("02.003 4", "合计 4"));
  EXPECT_THAT(
      LinesOf(*FetchAvailable(tiny.Open(), With(tools, {{"CheckItem", "1"}, {"ShowDeletedItem", "1"}})),
              fields),
      ElementsAre("02.002 1", "02.003 3", "合计 4"));
  EXPECT_EQ(FetchAvailable(tiny.Open(), Now({{"DataRightWhere", RightsOf("9")}}))->RecordCount(), 0);
}

TEST(Data10424, Refuses) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  for (const std::string_view set : {"501,502|x", "(501", "()", "(501,)", "(501 OR 1=1)|x", "(a)"}) {
    SCOPED_TRACE(set);
    EXPECT_THAT(books::test::RefusalOf([&] {
                  FetchAvailable(book, Now({{"txtStock", set}}));
                }),
                HasSubstr("过滤条件 txtStock"));
  }
  EXPECT_THAT(books::test::RefusalOf([&] {
                FetchAvailable(book, {{"OnTime", "0"}});
              }),
              HasSubstr("过滤条件 EDate"));
}

}  // namespace
