// The headings and facts of the structure, availability, shelf life and purchase price reports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/Rpt10411.h"
#include "component/stock/Rpt10415.h"
#include "component/stock/Rpt10424.h"
#include "component/stock/Rpt303.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using platform::Object;
using platform::Ref;
using ::testing::ElementsAre;

using StockHeadings = StockTest;

TEST_F(StockHeadings, StructureFollowsTheSummary) {
  struct Row {
    const char* summary;
    int appType;
    std::vector<std::string> leading;
  };
  const std::vector<std::string> items = {"FItemNumber", "FName1", "FName2",
                                          "FItemName",   "FModel", "FUnitName"};
  std::vector<std::string> itemsAndBatch = items;
  itemsAndBatch.emplace_back("FBatchNo");
  const Row rows[] = {
      {"0", 2, {"FNumber1", "FName1"}},
      {"1", 2, {"FNumber2", "FName1", "FName2"}},
      {"2", 2, items},
      {"3", 2, itemsAndBatch},
      {"3", 1, items},  // left out, not hidden
  };
  desk.Answer("TOVMStockRpt.Data303", "GetRpt303Data", nullptr);
  const Ref<Object> report = MakeReport<Rpt303>();
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.summary) + " of application " + std::to_string(row.appType));
    store->Set("AppType", row.appType);
    Fetch(*report, Keys({{"cmbtype", row.summary}}));
    std::vector<std::string> expected = row.leading;
    for (const char* figure : {"FQty", "FBal", "FPercent", "FPercentTT", "FPercentST"})
      expected.emplace_back(figure);
    EXPECT_EQ(Names(*report), expected);
    EXPECT_EQ(Texts(*report, "FVisible", 0).back(), "0") << "the cumulated share starts hidden";
  }
  Fetch(*report, Keys({{"cmbtype", "4"}}));
  EXPECT_TRUE(Names(*report).empty()) << "a summary that nobody knows";
}

TEST_F(StockHeadings, AvailableStockFreezesFour) {
  desk.Answer("TOVMStockRpt.Data10424", "GetRptData", nullptr);
  const Ref<Object> report = MakeReport<Rpt10424>();
  store->Set("AppType", 1);
  Fetch(*report, Keys({}));
  EXPECT_THAT(Names(*report),
              ElementsAre("FItemNumber", "FItemName", "FModel", "FAuxPropName", "FUnitName", "FSuggestQty",
                          "FInvQty", "FMovingCgQty", "FMovingXsQty", "FLowLimitQty"));
  EXPECT_TRUE(Hidden(*report).empty()) << "every application type sees the property here";
  EXPECT_EQ(FrozenColumn(*report), 4);
}

TEST_F(StockHeadings, ShelfLifeHidesAuxiliaryColumnsByApplication) {
  desk.Answer("TOVMStockRpt.Data", "GetRpt10411Data", nullptr);
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "5");
  const Ref<Object> report = MakeReport<Rpt10411>();
  store->Set("AppType", 1);
  Fetch(*report, Keys({}));
  EXPECT_THAT(Hidden(*report), ElementsAre("FAuxPropName", "FSecUnitName", "FSecQty"));
  EXPECT_EQ(Names(*report).front(), "FStockNumber");
  EXPECT_EQ(Texts(*report, "FVisible", 0).front(), "0") << "the warehouse's number starts hidden";
  EXPECT_EQ(Spell(report->Get("Filter")),
            "{DataRightWhere: ' (CharIndex('12',t3.FRightUserID)>0 OR ISNULL(t3.FItemID,0)=0) '}");
}

TEST_F(StockHeadings, ShelfLifeWithoutAFilterShowsNoDialog) {
  const Ref<Object> report = MakeReport<Rpt10411>();
  report->Put("NoFilter", true);
  report->Call("ShowFilter");
  EXPECT_EQ(desk.Count("show "), 0);
  EXPECT_EQ(Spell(report->Get("Result")), "{OK: True, Error: ''}");
  EXPECT_EQ(Spell(report->Get("Filter")), "nothing");
}

TEST_F(StockHeadings, PurchasePricesFreezeByIndustry) {
  desk.Answer("TOVMStockRpt.Data10415", "GetRpt10415Data", nullptr);
  for (const auto& [industry, frozen] : {std::pair{0, 5}, std::pair{1, 8}}) {
    store->Set("IndustryType", industry);
    const Ref<Object> report = MakeReport<Rpt10415>();
    EXPECT_EQ(FrozenColumn(*report), frozen);
    Fetch(*report, Keys({{"BDate", "2024-03-01"}, {"EDate", "2024-03-31"}}));
    EXPECT_EQ(Names(*report).size(), 20U);
    EXPECT_EQ(Names(*report).back(), "Fdate");
    EXPECT_EQ(Spell(report->Get("Result")),
              "{OK: True, Error: '', RptTitleObject: {ShowDateDiff: 'BDate,2024-03-01|EDate,2024-03-31'}}");
  }
}

}  // namespace
}  // namespace component
