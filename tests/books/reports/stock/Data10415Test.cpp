#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

// 采购价格分析表 on the tiny book, whose bills stand in TinyBook.cpp; all purchases are from 鲜果供应商.
namespace {

using books::database::Connection;
using books::test::BookFile;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::RightsOf;
using books::test::With;
using platform::Date;
using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

const Lines kBought = {"FItemNumber", "FQty", "FAmount", "FAvgPrice", "FMaxPrice", "FMinPrice", "FSumSort"};
const Lines kShort = {"FItemNumber", "FQty", "FAmount"};

platform::Ref<platform::Recordset> FetchPrices(const books::Book& book, const FilterEntries& filter) {
  return books::test::Fetch(book, "tovmstockrpt.data10415", "GetRpt10415Data", filter);
}

FilterEntries In(const FilterEntries& others = {}) {
  return With({{"BDate", "2025-01-01"},
               {"EDate", "2025-02-28"},
               {"cmbGroup", "-1"},
               {"chkOnlyTotal", "0"},
               {"chkNoAmt", "0"},
               {"chkNoBal", "0"},
               {"chkNoDB", "1"},
               {"cboSort", "-1"},
               {"OptSortD", "True"},
               {"OptSortA", "False"},
               {"cboType", "0"},
               {"InvoiceStyle", -1},
               {"ShowTypeValue", ""},
               {"OrderBy", ""},
               {"DataRightWhere", ""}},
              others);
}

// The two clauses as the report joins them.
std::string BothRights(std::string_view user) {
  return RightsOf(user, "t7") + " AND " + RightsOf(user, "t4");
}

TEST(Data10415, Prices) {
  const BookFile tiny(books::test::WriteTinyBook);
  const auto rows = FetchPrices(tiny.Open(), In());
  // Juice: 50 for 130.00 (2.60) and 7 for 20.00 (2.857143), 150 ÷ 57 = 2.631579 on average. Nobody bought
  // candy.
  EXPECT_THAT(LinesOf(*rows, kBought),
              ElementsAre("01.01.001 57 150 2.631579 2.857143 2.6 0", "01.01.002 30 100 3.333333 4 3 0",
                          "01.02 0 0 - - - 0", "01.03 10 50 5 5 5 0", "02.001 20 110.01 5.5005 6.001 5 0",
                          "02.002 2 800 400 400 400 0", "02.003 8 24 3 3 3 0", "合计 127 1234.01 - - - 101"));
  EXPECT_EQ(LinesOf(*rows, {"FID", "FItemName", "FModel", "Fbarcode", "FUnitName", "FPrice1", "FPrice2",
                            "FPrice3", "FSupplyName", "Fdate"})[0],
            "1 苹果汁 M-01.01.001 690411 瓶 2.857143 2.6 - 鲜果供应商 2025-01-05");
  EXPECT_EQ(LinesOf(*rows, {"FID", "FPrice1", "FPrice7", "FSupplyName", "Fdate"})[2], "3 - - - -");
  EXPECT_EQ(LinesOf(*rows, {"FID", "FPrice1"}).back(), "- -");
}

// Tape for 1.00 to 8.00, a day apart from February 10, and two rolls back for 6.00; the second supplier asks
// for 1.00 once more and is the last to be that cheap.
void AddTape(Connection& connection) {
  const auto add = [&](int id, int day, int supplier, std::int64_t pieces, std::int64_t amount) {
    connection.Execute(
        "INSERT INTO bill (id, bill_class, number, date, period, supplier_id, audited) SELECT ?, bill_class, "
        "?, "
        "?, period, ?, 1 FROM bill WHERE number = 'CG-4'",
        id, "T-" + std::to_string(id), Date::Of(2025, 2, day), supplier);
    connection.Execute(
        "INSERT INTO bill_entry (bill_id, line, direction, item_id, warehouse_id, unit_id, unit_quantity, "
        "quantity, amount) SELECT ?, 1, 1, i.id, 502, i.unit_id, ?, ?, ? FROM item i WHERE i.id = 423",
        id, pieces * 1'000'000, pieces * 1'000'000, amount * 10'000);
  };
  for (int i = 1; i <= 8; ++i) add(9000 + i, 9 + i, books::test::tiny::kSupplier, 1, i);
  add(9010, 20, books::test::tiny::kSupplier, -2, -6);
  add(9011, 21, books::test::tiny::kSecondSupplier, 1, 1);
}

TEST(Data10415, LastSevenAndReturns) {
  const BookFile tiny(books::test::WriteTinyBook);
  Connection connection = tiny.Write();
  AddTape(connection);
  const auto rows = FetchPrices(tiny.Open(), In({{"BItemNumber", "02.003"}}));
  // 8 for 24 + 8 for 36 − 2 for 6 + 1 for 1 = 15 for 55.
  EXPECT_EQ(LinesOf(*rows, kBought)[0], "02.003 15 55 3.666667 8 1 0");
  EXPECT_EQ(LinesOf(*rows, {"FPrice1", "FPrice2", "FPrice3", "FPrice4", "FPrice5", "FPrice6", "FPrice7"})[0],
            "1 8 7 6 5 4 3");
  EXPECT_EQ(LinesOf(*rows, {"FSupplyName", "Fdate"})[0], "五金供应商 2025-02-21");
  const auto fromSecond = FetchPrices(tiny.Open(), In({{"BSupplyNumber", "02"}, {"ESupplyNumber", "02"}}));
  EXPECT_THAT(LinesOf(*fromSecond, kShort), ElementsAre("02.003 1 1", "合计 1 1"));
}

TEST(Data10415, ByGroup) {
  const BookFile tiny(books::test::WriteTinyBook);
  const Lines fields = {"FID", "FCommonName", "FItemNumber", "FQty", "FAmount", "FSumSort"};
  const FilterEntries filter = In({{"cmbGroup", "3"}, {"EItemNumber", "01.01.002"}});
  EXPECT_THAT(
      LinesOf(*FetchPrices(tiny.Open(), filter), fields),
      ElementsAre("1 主仓库 01.01.001 50 130 0", "2 主仓库 01.01.002 30 100 0", "- 主仓库 小计 80 230 1",
                  "3 分仓库 01.01.001 7 20 0", "- 分仓库 小计 7 20 1", "- - 合计 87 250 101"));
  for (const auto& [group, name] : {std::pair("1", "王芳"), std::pair("2", "业务部")}) {
    EXPECT_THAT(
        LinesOf(*FetchPrices(tiny.Open(), With(filter, {{"cmbGroup", group}})), {"FCommonName", "FQty"}),
        ElementsAre(std::string(name) + " 57", std::string(name) + " 30", std::string(name) + " 87", "- 87"));
  }
  EXPECT_THAT(LinesOf(*FetchPrices(tiny.Open(), With(filter, {{"chkOnlyTotal", "1"}})), fields),
              ElementsAre("- 主仓库 小计 80 230 1", "- 分仓库 小计 7 20 1", "- - 合计 87 250 101"));
}

struct Case {
  std::string name;
  FilterEntries filter;
  Lines rows;
};

TEST(Data10415, Filters) {
  const BookFile file(books::test::WriteTinyBook);
  file.Write().RunScript(
      "UPDATE bill SET bill_class = 1020003 WHERE number = 'CG-2';"
      "UPDATE bill SET employee_id = NULL WHERE number = 'CG-4';"
      "UPDATE base_data SET right_users = '7' WHERE id = 501 OR class_id = 8;"
      "DELETE FROM stock WHERE item_id = 413");
  const books::Book book = file.Open();
  const std::vector<Case> cases = {
      {"from a day", In({{"BDate", "2025-02-04"}, {"chkNoAmt", "1"}}), {"02.003 8 24", "合计 8 24"}},
      {"to a day",
       In({{"EDate", "2025-01-05"}, {"chkNoAmt", "1"}, {"EItemNumber", "01.03"}}),
       {"01.01.001 50 130", "01.01.002 30 100", "合计 80 230"}},
      {"a range turned round", In({{"BDate", "2025-02-04"}, {"EDate", "2025-02-03"}, {"chkNoAmt", "1"}}), {}},
      {"items without purchases",
       In({{"BDate", "2025-02-04"}, {"BItemNumber", "02.002"}}),
       {"02.002 0 0", "02.003 8 24", "合计 8 24"}},
      {"items without stock left out",
       In({{"BItemNumber", "01.02"}, {"EItemNumber", "01.03"}, {"chkNoBal", "1"}}),
       {"01.03 10 50", "合计 10 50"}},
      {"the total alone", In({{"chkOnlyTotal", "1"}}), {"合计 127 1234.01"}},
      {"estimated receipts", In({{"cboType", "1"}, {"chkNoAmt", "1"}}), {"01.01.001 7 20", "合计 7 20"}},
      {"purchase receipts",
       In({{"cboType", "2"}, {"EItemNumber", "01.01.001"}}),
       {"01.01.001 50 130", "合计 50 130"}},
      {"a warehouse", In({{"BStockNumber", "02"}, {"EStockNumber", "02"}}), {"01.01.001 7 20", "合计 7 20"}},
      {"a department", In({{"BDeptNumber", "02"}}), {}},
      {"an employee", In({{"BEmpNumber", "01"}, {"BItemNumber", "02.002"}}), {"02.002 2 800", "合计 2 800"}},
      {"a supplier", In({{"ESupplyNumber", "00"}}), {}},
      {"by item number, descending",
       In({{"OrderBy", "FItemNumber DESC"}, {"BItemNumber", "02.002"}}),
       {"02.003 8 24", "02.002 2 800", "合计 10 824"}},
      {"rights to one warehouse",
       In({{"DataRightWhere", BothRights("7")}, {"EItemNumber", "01.01.001"}}),
       {"01.01.001 50 130", "合计 50 130"}},
      {"rights to nothing", In({{"DataRightWhere", BothRights("9")}}), {}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*FetchPrices(book, each.filter), kShort), each.rows);
  }
}

TEST(Data10415, LeavesOutUnauditedBillsAndIdleDisabledItems) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "UPDATE bill SET audited = 0 WHERE number = 'CG-2'; UPDATE base_data SET disabled = 1 WHERE class_id = "
      "4");
  EXPECT_THAT(LinesOf(*FetchPrices(tiny.Open(), In({{"EItemNumber", "01.02"}})), kShort),
              ElementsAre("01.01.001 50 130", "01.01.002 30 100", "合计 80 230"));
}

TEST(Data10415, Refuses) {
  const BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  const std::vector<std::pair<FilterEntries, std::string>> cases = {
      {{{"BDate", "2025-02-30"}}, "BDate"},
      {{{"cmbGroup", "4"}}, "cmbGroup"},
      {{{"cboType", "3"}}, "cboType"},
      {{{"OrderBy", "FQty ASC"}}, "OrderBy"},
      {{{"DataRightWhere", RightsOf("7", "d")}}, "DataRightWhere"},
  };
  for (const auto& [filter, key] : cases) {
    SCOPED_TRACE(key);
    EXPECT_THAT(books::test::RefusalOf([&, &entries = filter] { FetchPrices(book, In(entries)); }),
                HasSubstr("过滤条件 " + key));
  }
}

}  // namespace
