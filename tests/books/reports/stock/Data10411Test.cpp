#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/value/Clock.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

// 保质期清单 on the tiny book: of batch A of yogurt (to January 23) lie 15 for 45.00, of B (to the 26th) 6
// for 24.00. Five candies of batch C for 1.00 lie in the branch; they were made on January 1 and keep 30
// days.
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

const Lines kLine = {"FStockName", "FItemNumber", "FBatchNo", "FQty", "FBal", "Overdays", "FSumSort"};

platform::Ref<platform::Recordset> FetchShelfLife(const books::Book& book, const FilterEntries& filter) {
  return books::test::Fetch(book, "tovmstockrpt.data", "GetRpt10411Data", filter);
}

void WriteBatches(Connection& connection) {
  books::test::WriteTinyBook(connection);
  connection.Execute(
      "INSERT INTO batch (id, item_id, number, production_date, shelf_life_days) VALUES (901, 413, 'C', ?, "
      "30), "
      "(902, 423, 'D', NULL, 0)",
      Date::Of(2025, 1, 1));
  // Tape has a batch too, but nobody knows when it expires.
  connection.RunScript(
      "INSERT INTO stock VALUES (413, 502, 901, 0, 5000000, 0, 10000);"
      "INSERT INTO stock VALUES (423, 502, 902, 0, 5000000, 0, 10000)");
}

FilterEntries Due(const FilterEntries& others = {}) {
  return With({{"EDate", "2025-01-25"},
               {"cmbGroup", "0"},
               {"cboSort", "0"},
               {"OptSortD", "True"},
               {"OptSortA", "False"},
               {"chkHideForbiddenGood", "0"},
               {"InvoiceStyle", 0},
               {"OrderBy", "FItemNumber ASC "},
               {"DataRightWhere", ""}},
              others);
}

TEST(Data10411, List) {
  const BookFile book(WriteBatches);
  const auto rows = FetchShelfLife(book.Open(), Due());
  // January 25 is two days past A, a day before B and six before C, which keeps to the 31st.
  EXPECT_THAT(LinesOf(*rows, kLine),
              ElementsAre("主仓库 01.01.002 A 15 45 2 0", "主仓库 01.01.002 B 6 24 -1 0",
                          "分仓库 01.02 C 5 1 -6 0", "合计 - - 26 70 - 101"));
  EXPECT_EQ(LinesOf(*rows, {"FStockNumber", "FItemName", "FModel", "FAuxPropName", "FUnitName",
                            "FSecUnitName", "FSecQty", "FKFDate", "FKFPeriod", "FExpDate"})[0],
            "01 酸奶 M-01.01.002 '' 瓶 '' - 2025-01-02 21 2025-01-23");
  EXPECT_EQ(LinesOf(*rows, {"FKFDate", "FKFPeriod", "FExpDate"})[2], "2025-01-01 30 2025-01-31");
}

struct Case {
  std::string name;
  FilterEntries filter;
  Lines rows;
};

const std::string kA = "主仓库 01.01.002 A 15 45 2 0";
const std::string kB = "主仓库 01.01.002 B 6 24 -1 0";
const std::string kC = "分仓库 01.02 C 5 1 -6 0";
const std::string kTotal = "合计 - - 26 70 - 101";
const std::string kYogurt = "合计 - - 21 69 - 101";

TEST(Data10411, Filters) {
  const BookFile file(WriteBatches);
  file.Write().RunScript(
      "UPDATE base_data SET disabled = 1 WHERE id = 413; UPDATE base_data SET right_users = '7' WHERE id = "
      "501");
  const books::Book book = file.Open();
  const std::vector<Case> cases = {
      {"by item",
       Due({{"cmbGroup", "1"}}),
       {kA, kB, "小计 01.01.002 - 21 69 - 1", kC, "小计 01.02 - 5 1 - 1", kTotal}},
      {"by warehouse",
       Due({{"cmbGroup", "2"}}),
       {kA, kB, "主仓库 小计 - 21 69 - 1", kC, "分仓库 小计 - 5 1 - 1", kTotal}},
      {"by quantity", Due({{"OrderBy", "FQty ASC "}}), {kC, kB, kA, kTotal}},
      {"by amount, descending", Due({{"OrderBy", "FBal DESC "}}), {kA, kB, kC, kTotal}},
      {"by days, ascending", Due({{"OrderBy", "Overdays ASC "}}), {kC, kB, kA, kTotal}},
      {"by item number, descending", Due({{"OrderBy", "FItemNumber DESC "}}), {kC, kA, kB, kTotal}},
      {"the order holds within the groups",
       Due({{"cmbGroup", "1"}, {"OrderBy", "FQty ASC "}}),
       {kB, kA, "小计 01.01.002 - 21 69 - 1", kC, "小计 01.02 - 5 1 - 1", kTotal}},
      {"on the last day",
       Due({{"EDate", "2025-01-23"}, {"EItemNumber", "01.01.002"}}),
       {"主仓库 01.01.002 A 15 45 0 0", "主仓库 01.01.002 B 6 24 -3 0", kYogurt}},
      {"items from", Due({{"BItemNumber", "01.02"}}), {kC, "合计 - - 5 1 - 101"}},
      {"a warehouse", Due({{"BStockNumber", "02"}}), {kC, "合计 - - 5 1 - 101"}},
      {"without disabled items", Due({{"chkHideForbiddenGood", "1"}}), {kA, kB, kYogurt}},
      {"rights", Due({{"DataRightWhere", RightsOf("7", "t3")}}), {kA, kB, kYogurt}},
      {"rights to no warehouse", Due({{"DataRightWhere", RightsOf("9", "t3")}}), {}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*FetchShelfLife(book, each.filter), kLine), each.rows);
  }
}

// The list that is opened without its dialog asks for no date.
TEST(Data10411, IsDueTodayWithoutADate) {
  const BookFile book(WriteBatches);
  platform::Clock::Fix(Date::Of(2025, 2, 2));
  const Lines days = LinesOf(*FetchShelfLife(book.Open(), {}), {"Overdays"});
  platform::Clock::Fix(std::nullopt);
  EXPECT_THAT(days, ElementsAre("10", "7", "2", "-"));
}

TEST(Data10411, Refuses) {
  const BookFile file(WriteBatches);
  const books::Book book = file.Open();
  const std::vector<std::pair<FilterEntries, std::string>> cases = {
      {{{"EDate", "morgen"}}, "EDate"},
      {{{"cmbGroup", "3"}}, "cmbGroup"},
      {{{"OrderBy", "FModel ASC"}}, "OrderBy"},
      {{{"DataRightWhere", RightsOf("7", "d")}}, "DataRightWhere"},
  };
  for (const auto& [filter, key] : cases) {
    SCOPED_TRACE(key);
    EXPECT_THAT(books::test::RefusalOf([&, &entries = filter] { FetchShelfLife(book, Due(entries)); }),
                HasSubstr("过滤条件 " + key));
  }
}

}  // namespace
