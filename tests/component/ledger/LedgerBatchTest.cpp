// The two builders for all items at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/component/ledger/LedgerDesk.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using ::testing::ElementsAre;

class LedgerBatchTest : public LedgerTest {
 protected:
  Ref<Dictionary> Filter(std::int16_t beginPeriod, std::int16_t endPeriod, std::int32_t startYear,
                         std::int32_t showNoHappen = 0) {
    const Ref<Dictionary> filter = Months(2024, beginPeriod, 2024, endPeriod, showNoHappen);
    filter->Set("Mode", 0);
    filter->Set("StartYear", startYear);
    return filter;
  }
  void Build(std::int32_t items, const Ref<Dictionary>& filter, bool byItem) {
    Open(items, filter);
    fetches.clear();
    if (byItem) {
      report->BuildBatchByItem();
    } else {
      report->BuildBatchByPeriod();
    }
  }
  std::vector<std::string> Kinds() const {
    std::vector<std::string> kinds;
    const Recordset& page = *report->MutilPageRs();
    for (std::size_t row = 0; row < page.ViewCount(); ++row) {
      kinds.push_back(std::string(page.TextAt(page.FieldIndex("FTitle3"), row)).substr(12) + " " +
                      std::string(page.TextAt(page.FieldIndex("FPeriodName"), row)) + " " +
                      std::string(page.TextAt(page.FieldIndex("FTranTypeName"), row)));
    }
    return kinds;
  }
};

TEST_F(LedgerBatchTest, BalancesWithoutMovementsShowNoYear) {
  book[{1, 202403}] = {.opening = {{.quantity = 2, .amount = 4, .diff = 1}},
                       .closing = {{.quantity = 2, .amount = 4}, {}}};
  for (const bool byItem : {true, false}) {
    Build(1, Filter(3, 3, 2024), byItem);
    EXPECT_EQ(Result(), "{OK: True, Error: ''}");
    EXPECT_THAT(Lines(*report->MutilPageRs()), ElementsAre("2024.3 期初结存 in 0@0=0 out 0@0=0 bal 2@2=4",
                                                           "2024.3 期末结存 in 0@0=0 out 0@0=0 bal 2@2=4",
                                                           "2024.3 期末结存 in 0@0=0 out 0@0=0 bal 0@0=0"));
    EXPECT_THAT(fetches, ElementsAre("0 2024 3"));
  }
}

TEST_F(LedgerBatchTest, TheYearIsThePeriodPlusWhatTheServerHas) {
  struct Row {
    const char* name;
    std::int32_t startYear;
    std::vector<YearSpec> year;
    std::vector<YearSpec> yearStart;
    const char* figures;
  };
  const YearSpec base = {.inQuantity = 10, .inAmount = 20, .outQuantity = 1, .outAmount = 2};
  const YearSpec start = {.inQuantity = 100, .inAmount = 200, .outQuantity = 0, .outAmount = 0};
  for (const Row& row :
       {Row{"a normal year with a base", 2023, {base}, {start}, "in 11@2=22 out 1@2=2"},
        Row{"a normal year without", 2023, {}, {start}, "in 1@2=2 out 0@0=0"},
        Row{"the start year with both", 2024, {base}, {start}, "in 111@2=222 out 1@2=2"},
        Row{"the start year with the earlier periods", 2024, {base}, {}, "in 11@2=22 out 1@2=2"},
        Row{"the start year with what was before", 2024, {}, {start}, "in 101@2=202 out 0@0=0"},
        Row{"the start year with neither", 2024, {}, {}, "in 1@2=2 out 0@0=0"}}) {
    for (const bool byItem : {true, false}) {
      SCOPED_TRACE(row.name);
      book[{1, 202403}] = {
          .happened = {{.inQuantity = 1, .inAmount = 2}}, .year = row.year, .yearStart = row.yearStart};
      Build(1, Filter(3, 3, row.startYear, 1), byItem);
      const std::vector<std::string> lines = Lines(*report->MutilPageRs());
      ASSERT_EQ(lines.size(), 3U);
      EXPECT_EQ(lines[1], "2024.3 本期合计 in 1@2=2 out 0@0=0 bal 1@2=2") << "the total shows the balance";
      EXPECT_EQ(lines[2], std::string("2024.3 本年累计 ") + row.figures + " bal 0@0=0");
      report->MutilPageRs()->MoveLast();
      EXPECT_EQ(Spell(report->MutilPageRs()->Value("FID")), "-4");
      // Only the start year's row goes through the titled road.
      EXPECT_EQ(Spell(report->MutilPageRs()->Value("FTitle4")),
                row.startYear == 2024 ? "'计量单位：个'" : "null");
    }
  }
}

TEST_F(LedgerBatchTest, DifferencesRoll) {
  book[{1, 202403}] = {.opening = {{.quantity = 2, .amount = 4, .diff = 1}},
                       .happened = {{.inQuantity = 1, .inAmount = 2, .inDiff = 5},
                                    {.outQuantity = 1, .outAmount = 2, .outDiff = 2}}};
  Build(1, Filter(3, 3, 2023, 1), true);
  std::string diffs;
  const Recordset& page = *report->MutilPageRs();
  for (std::size_t row = 0; row < page.ViewCount(); ++row) {
    for (const char* field : {"FInDiff", "FOutDiff", "FBalDiff"}) {
      diffs += page.CurrencyAt(page.FieldIndex(field), row).ToText() + " ";
    }
    diffs += "| ";
  }
  EXPECT_EQ(diffs, "0 0 1 | 5 0 6 | 0 2 4 | 5 2 4 | 5 2 0 | ");
}

TEST_F(LedgerBatchTest, TheTwoOrders) {
  for (const std::int32_t item : {1, 3}) {
    for (const std::int32_t period : {202403, 202404})
      book[{item, period}] = {.opening = {{.quantity = 1, .amount = 1}}};
  }
  Build(3, Filter(3, 4, 2024, 1), true);
  EXPECT_THAT(Kinds(), ElementsAre("：商品1(01.1) 2024.3 期初结存", "：商品1(01.1) 2024.4 期初结存",
                                   "：商品3(01.3) 2024.3 期初结存", "：商品3(01.3) 2024.4 期初结存"));
  EXPECT_THAT(Breaks(), ElementsAre("2", "2", "4")) << "an item without rows repeats the last break";
  EXPECT_THAT(fetches, ElementsAre("0 2024 3", "0 2024 4"));
  Build(3, Filter(3, 4, 2024, 1), false);
  EXPECT_THAT(Kinds(), ElementsAre("：商品1(01.1) 2024.3 期初结存", "：商品3(01.3) 2024.3 期初结存",
                                   "：商品1(01.1) 2024.4 期初结存", "：商品3(01.3) 2024.4 期初结存"));
  EXPECT_THAT(Breaks(), ElementsAre("1", "1", "2", "3", "3", "4"));
}

TEST_F(LedgerBatchTest, APeriodWithoutRowsIsLeftOutWhateverTheOptionSays) {
  Build(1, Filter(3, 3, 2024, 0), true);
  EXPECT_EQ(report->MutilPageRs()->RecordCount(), 0);
  EXPECT_TRUE(Breaks().empty());
}

TEST_F(LedgerBatchTest, ElevenTitles) {
  book[{1, 202403}] = {.opening = {{.quantity = 1, .amount = 1}}};
  Build(1, Filter(3, 4, 2024, 1), true);
  std::vector<std::string> titles;
  const Recordset& page = *report->MutilPageRs();
  for (int i = 1; i <= 11; ++i)
    titles.emplace_back(page.TextAt(page.FieldIndex("FTitle" + std::to_string(i)), 0));
  EXPECT_THAT(titles, ElementsAre("起始期间：2024年 第3期", "截止期间：2024年 第4期", "存货名称：商品1(01.1)",
                                  "计量单位：个", "计价方法：移动加权平均", "存货类别：食品", "最高存量：60",
                                  "最低存量：20", "规格型号：M1", "存货属性：外购", "存货科目代码：1405"));
}

TEST_F(LedgerBatchTest, TheConditionNamesARangeOrAClass) {
  const Ref<Dictionary> filter = Filter(3, 3, 2024);
  filter->Set("BItemNumber", "01");
  filter->Set("EItemNumber", "02");
  filter->Set("ItemClassNumber", "05");
  Build(1, filter, true);
  EXPECT_EQ(
      desk.Count("GetPerioddata('UserID=12;', 0, 2024s, 3s, ' AND v3.FNumber>='01' AND v3.FNumber<='02'',"),
      1);
  filter->Set("Mode", 1);
  Build(1, filter, false);
  EXPECT_EQ(desk.Count("GetPerioddata('UserID=12;', 0, 2024s, 3s, ' AND v3.FNumber  Like '05.%''"), 1);
}

TEST_F(LedgerBatchTest, AFailureIsTold) {
  Open(1, Filter(3, 3, 2024));
  desk.Fail("TOVMStockRpt.Data10402", "GetPerioddata", "服务器连接中断");
  report->BuildBatchByItem();
  EXPECT_EQ(Result(), "{OK: False, Error: '服务器连接中断'}");
  report->BuildBatchByPeriod();
  EXPECT_EQ(Result(), "{OK: False, Error: '服务器连接中断'}");
}

}  // namespace
}  // namespace component
