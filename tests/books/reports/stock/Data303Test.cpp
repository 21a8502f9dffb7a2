#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

// 库存结构分析表 on the tiny book, whose bills and costs stand in TinyBook.cpp: 818.009 lie in stock, of
// which 355 in 食品 and 463.009 in 五金.
namespace {

using books::test::BookFile;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::RightsOf;
using books::test::With;
using testing::ElementsAre;
using Lines = std::vector<std::string>;

const Lines kShares = {"FQty", "FBal", "FPercent", "FPercentTT", "FPercentST", "FSumSort"};

platform::Ref<platform::Recordset> FetchStructure(const books::Book& book, const FilterEntries& filter) {
  return books::test::Fetch(book, "tovmstockrpt.data303", "GetRpt303Data", filter);
}

FilterEntries By(std::string_view summary, const FilterEntries& others = {}) {
  return With({{"cmbtype", summary},
               {"chkonlysum", "0"},
               {"BItemClass", ""},
               {"InvoiceStyle", 0},
               {"OrderBy", "FItemNumber ASC "},
               {"SumBy", "商品"},
               {"DataRightWhere", ""}},
              others);
}

Lines Join(Lines fields, const Lines& more) {
  fields.insert(fields.end(), more.begin(), more.end());
  return fields;
}

TEST(Data303, ByFirstCategory) {
  const BookFile tiny(books::test::WriteTinyBook);
  // 355 ÷ 818.009 = 43.3980 %; 五金 is the larger part, so it is cumulated first.
  EXPECT_THAT(
      LinesOf(*FetchStructure(tiny.Open(), By("0")), Join({"FNumber1", "FName1"}, kShares)),
      ElementsAre("01 食品 184 355 43.398056 43.398056 100 0",
                  "02 五金 13 463.009 56.601944 56.601944 56.601944 0", "合计 - 197 818.009 100 100 - 101"));
}

TEST(Data303, BySecondCategory) {
  const BookFile tiny(books::test::WriteTinyBook);
  // Candy and gift boxes stand in 食品 itself: 70 + 64 = 134, 37.746479 % of its 355; 饮料 has 152 + 69 =
  // 221.
  EXPECT_THAT(
      LinesOf(*FetchStructure(tiny.Open(), By("1")), Join({"FNumber2", "FName1", "FName2"}, kShares)),
      ElementsAre("01 食品 '' 86 134 37.746479 16.381238 100 0",
                  "01.01 食品 饮料 98 221 62.253521 27.016818 83.618762 0",
                  "小计 食品 - 184 355 100 43.398056 - 1", "02 五金 '' 13 463.009 100 56.601944 56.601944 0",
                  "小计 五金 - 13 463.009 100 56.601944 - 1", "合计 - - 197 818.009 100 100 - 101"));
}

TEST(Data303, ByItem) {
  const BookFile tiny(books::test::WriteTinyBook);
  // The scanner's 400 are the largest part, 48.899 %; juice's 152 come second.
  const Lines lines = LinesOf(*FetchStructure(tiny.Open(), By("2")), Join({"FItemNumber"}, kShares));
  EXPECT_THAT(
      lines,
      ElementsAre("01.02 70 70 19.71831 8.557363 76.038283 0", "01.03 16 64 18.028169 7.823875 92.297273 0",
                  "01.01.001 77 152 42.816901 18.581703 67.48092 0",
                  "01.01.002 21 69 19.43662 8.435115 84.473398 0", "小计 184 355 100 43.398056 - 1",
                  "02.001 9 54.009 11.664784 6.602495 98.899768 0",
                  "02.002 1 400 86.391409 48.899217 48.899217 0", "02.003 3 9 1.943807 1.100232 100 0",
                  "小计 13 463.009 100 56.601944 - 1", "合计 197 818.009 100 100 - 101"));
  EXPECT_EQ(LinesOf(*FetchStructure(tiny.Open(), By("2")),
                    {"FName1", "FName2", "FItemName", "FModel", "FUnitName"})[2],
            "食品 饮料 苹果汁 M-01.01.001 瓶");
}

struct Case {
  std::string name;
  FilterEntries filter;
  Lines rows;
};

TEST(Data303, Filters) {
  const BookFile tiny(books::test::WriteTinyBook);
  const std::vector<Case> cases = {
      {"batches",
       By("3", {{"BItemNumber", "01.01.002"}, {"EItemNumber", "01.02"}}),
       {"01.02 '' 70 70 0", "01.01.002 A 15 45 0", "01.01.002 B 6 24 0", "小计 - 91 139 1",
        "合计 - 91 139 101"}},
      {"the sums alone",
       By("2", {{"chkonlysum", "1"}}),
       {"小计 - 184 355 1", "小计 - 13 463.009 1", "合计 - 197 818.009 101"}},
      {"one warehouse",
       By("2", {{"BStockNumber", "02"}, {"EStockNumber", "02"}}),
       {"01.01.001 '' 17 40.9425 0", "小计 - 17 40.9425 1", "合计 - 17 40.9425 101"}},
      {"by name: 宽胶带 扫描枪 螺丝刀",
       By("2", {{"BItemNumber", "02"}, {"OrderBy", "FItemName ASC"}}),
       {"02.003 '' 3 9 0", "02.002 '' 1 400 0", "02.001 '' 9 54.009 0", "小计 - 13 463.009 1",
        "合计 - 13 463.009 101"}},
      {"rights to no warehouse", By("2", {{"DataRightWhere", RightsOf("9")}}), {}},
      {"no such item", By("0", {{"BItemNumber", "9"}}), {}},
  };
  tiny.Write().Execute("UPDATE base_data SET right_users = '7' WHERE class_id = 5");
  const books::Book book = tiny.Open();
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(
        LinesOf(*FetchStructure(book, each.filter), {"FItemNumber", "FBatchNo", "FQty", "FBal", "FSumSort"}),
        each.rows);
  }
}

// Disabled goods tie up money like any other, and the report has no box that would leave them out.
TEST(Data303, DisabledItemsCount) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().Execute("UPDATE base_data SET disabled = 1 WHERE class_id = 4 AND number = '02.003'");
  EXPECT_EQ(LinesOf(*FetchStructure(tiny.Open(), By("0")), {"FNumber1", "FBal"}).back(), "合计 818.009");
}

TEST(Data303, Refuses) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  EXPECT_THAT(books::test::RefusalOf([&] { FetchStructure(book, By("4")); }),
              testing::HasSubstr("过滤条件 cmbtype"));
  EXPECT_THAT(books::test::RefusalOf([&] {
                FetchStructure(book, By("1", {{"OrderBy", "FBal ASC"}}));
              }),
              testing::HasSubstr("OrderBy"));
}

}  // namespace
