// The headings and facts of the movement summaries and details. The reports for batches are told by what
// differs from the reports for all goods.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/movement/Rpt10412.h"
#include "component/movement/Rpt10413.h"
#include "component/movement/Rpt10416.h"
#include "component/movement/Rpt10417.h"
#include "tests/component/FetchTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Object;
using platform::Ref;
using platform::Variant;
using platform::Vector;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class MovementHeadings : public FetchTest {
 protected:
  MovementHeadings() {
    desk.Answer("TOVMStockRpt.Data", "GetRpt10412Data", nullptr);
    desk.Answer("TOVMStockRpt.Data", "GetRpt10416Data", nullptr);
    desk.Answer("TOVMStockRpt.Data10413", "GetRpt10413Data", nullptr);
    desk.Answer("TOVMStockRpt.Data10417", "GetRpt10417Data", nullptr);
  }
  // The columns that start hidden.
  static std::vector<std::string> Closed(Object& report) {
    std::vector<std::string> names;
    for (const Variant& item : report.Get("Header").AsRef<Vector>()->Items()) {
      const Ref<Dictionary> column = item.AsRef<Dictionary>();
      if (platform::ToInt32(column->Value("FVisible")) == 0)
        names.push_back(platform::ToText(column->Value("FColName")));
    }
    return names;
  }
  static std::vector<std::string> Front(std::vector<std::string> names, std::size_t count) {
    names.resize(count);
    return names;
  }
};

TEST_F(MovementHeadings, OperationsStandInSlotOrder) {
  const std::vector<std::string> plain = {
      "ExtFirter let", "GetReportData", "Refresh",   "ShowFilter", "Filter get", "Filter let", "Header get",
      "Property get",  "Result get",    "RptID get", "RptID let",  "rs get",     "Title get"};
  std::vector<std::string> withDetail = plain;
  withDetail.insert(withDetail.begin() + 1, "GetDetailReport");
  EXPECT_EQ(Slots(Rpt10412::Info()), withDetail);
  EXPECT_EQ(Slots(Rpt10413::Info()), plain);
  EXPECT_EQ(Slots(Rpt10416::Info()), withDetail);
  EXPECT_EQ(Slots(Rpt10417::Info()), plain);
}

TEST_F(MovementHeadings, ShowFilterTakesAnArgumentWhereTheControlHasButtons) {
  struct Row {
    Ref<Object> report;
    bool takesArgument;
  };
  for (const Row& row : {Row{MakeReport<Rpt10412>(), true}, Row{MakeReport<Rpt10413>(), true},
                         Row{MakeReport<Rpt10416>(), false}, Row{MakeReport<Rpt10417>(), false}}) {
    SCOPED_TRACE(row.report->ClassName());
    row.report->Call("ShowFilter");
    Variant show = true;
    if (row.takesArgument) {
      EXPECT_TRUE(row.report->Call("ShowFilter", show).IsEmpty());
    } else {
      EXPECT_EQ(RaisedNumber([&] { row.report->Call("ShowFilter", show); }),
                platform::ErrorNumber::kArgumentCount);
    }
  }
}

TEST_F(MovementHeadings, TheyStartWithTheirFacts) {
  struct Row {
    Ref<Object> report;
    const char* property;
  };
  const Row rows[] = {
      {MakeReport<Rpt10412>(),
       "{Name: '商品收发汇总表', RptProperty: 2, DetailRptID: 10413, FrozenColumn: 4, "
       "HasDefaultFilterOption: True}"},
      {MakeReport<Rpt10413>(),
       "{Name: '商品收发明细表', RptProperty: 4, FrozenColumn: 5, UserDefinedGoods: {hasVect: True, "
       "prefixValue: 'FModel', classType: '', DisplayFields: ''}, UserDefinedBillEntry: {hasVect: True, "
       "prefixValue: 'FBillNo', classType: '', DisplayFields: ''}, HasDefaultFilterOption: True}"},
      {MakeReport<Rpt10416>(),
       "{Name: '批号管理商品收发汇总表', RptProperty: 2, DetailRptID: 10417, FrozenColumn: 4}"},
      {MakeReport<Rpt10417>(),
       "{Name: '批号管理商品收发明细表', RptProperty: 4, FrozenColumn: 5, UserDefinedGoods: {hasVect: True, "
       "prefixValue: 'FModel', classType: '', DisplayFields: ''}}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.report->ClassName());
    EXPECT_EQ(Spell(row.report->Get("Property")), row.property);
    row.report->Get("Property").AsRef<Dictionary>()->Set("FrozenColumn", 9);
    row.report->Put("ExtFirter", "1");
    EXPECT_EQ(Spell(row.report->Get("Property")), row.property) << "a number sets it up anew";
  }
}

TEST_F(MovementHeadings, TheSummaryFollowsItsGroup) {
  struct Row {
    const char* name;
    Variant group;
    std::vector<std::string> goods;
    std::vector<std::string> batches;
  };
  const Row rows[] = {
      {"by item",
       0,
       {"FItemNumber", "FItemName", "FModel", "FSource", "FBarCode", "FUnitName", "FSecUnitName", "FBegQty"},
       {"FItemNumber", "FItemName", "FModel", "FBarCode", "FUnitName", "FSecUnitName", "FBegQty"}},
      {"by warehouse",
       "1",
       {"FCommonName", "FItemNumber", "FItemName", "FModel", "FSource"},
       {"FCommonName", "FItemNumber", "FItemName", "FModel", "FBarCode"}},
      {"by batch",
       2,
       {"FItemNumber", "FItemName", "FModel", "FBatchNo", "FSource"},
       {"FItemNumber", "FItemName", "FBatchNo", "FModel", "FBarCode"}},
      {"by nothing known", 5, {"FItemNumber", "FItemName", "FModel", "FSource"}, {"FItemNumber"}},
  };
  const Ref<Object> goods = MakeReport<Rpt10412>();
  const Ref<Object> batches = MakeReport<Rpt10416>();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fetch(*goods, Keys({{"cmbGroup", row.group}}));
    EXPECT_EQ(Front(Names(*goods), row.goods.size()), row.goods);
    Fetch(*batches, Keys({{"cmbGroup", row.group}}));
    EXPECT_EQ(Front(Names(*batches), row.batches.size()), row.batches);
  }
}

TEST_F(MovementHeadings, TheSummaryFreezesByLevels) {
  struct Row {
    const char* name;
    Ref<Dictionary> filter;
    int goods;
    int batches;
    std::size_t levels;
  };
  const Row rows[] = {
      {"no levels told", Keys({}), 5, 4, 0},
      {"levels off", Keys({{"MultiLevel", 0}, {"MultiLevelBegin", 1}, {"MultiLevelEnd", 3}}), 5, 4, 0},
      {"one level", Keys({{"MultiLevel", 1}, {"MultiLevelBegin", "2"}, {"MultiLevelEnd", "2"}}), 6, 5, 1},
      {"three levels", Keys({{"MultiLevel", "1"}, {"MultiLevelBegin", 1}, {"MultiLevelEnd", 3}}), 8, 7, 3},
      {"from a level that there is not",
       Keys({{"MultiLevel", 1}, {"MultiLevelBegin", 0}, {"MultiLevelEnd", 1}}), 7, 6, 2},
      {"reversed", Keys({{"MultiLevel", true}, {"MultiLevelBegin", 3}, {"MultiLevelEnd", 1}}), 4, 3, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Object> goods = MakeReport<Rpt10412>();
    Fetch(*goods, row.filter);
    EXPECT_EQ(FrozenColumn(*goods), row.goods);
    EXPECT_EQ(Names(*goods).size(), 27U + row.levels);
    EXPECT_EQ(Names(*goods)[row.levels], "FItemNumber");
    const Ref<Object> batches = MakeReport<Rpt10416>();
    Fetch(*batches, row.filter);
    EXPECT_EQ(FrozenColumn(*batches), row.batches);
    EXPECT_EQ(Names(*batches).size(), 22U + row.levels);
  }
}

TEST_F(MovementHeadings, ASummaryOfGoodsShowsAllFigures) {
  const Ref<Object> report = MakeReport<Rpt10412>();
  Fetch(*report, Keys({}));
  EXPECT_THAT(Captions(*report, 7),
              ElementsAre("期初结存+|+|+|+|", "本期收入+|+|+|+|", "本期发出+|+|+|+|", "期末结存+|+|+|+|"));
  EXPECT_THAT(Front(Seconds(*report, 7), 5), ElementsAre("数量", "整件散包", "辅助数量", "单价", "金额"));
  EXPECT_THAT(Front(Texts(*report, "FColType", 7), 5), ElementsAre("2", "5", "2", "4", "6"));
  EXPECT_THAT(Closed(*report), ElementsAre("FSource"));
  EXPECT_THAT(Hidden(*report), IsEmpty());
  store->Set("AppType", 1);
  Fetch(*report, Keys({}));
  EXPECT_THAT(Hidden(*report),
              ElementsAre("FSecUnitName", "FBegSecQty", "FInSecQty", "FOutSecQty", "FEndSecQty"));
}

TEST_F(MovementHeadings, ASummaryOfBatchesNeverShowsMoney) {
  const Ref<Object> report = MakeReport<Rpt10416>();
  const std::vector<std::string> money = {"FBegPrice", "FBegBal",    "FInPrice",  "FInAmount",
                                          "FOutPrice", "FOutAmount", "FEndPrice", "FEndBal"};
  for (const int appType : {2, 4}) {
    store->Set("AppType", appType);
    Fetch(*report, Keys({}));
    EXPECT_THAT(Captions(*report, 6),
                ElementsAre("期初结存+|+|+|", "本期收入+|+|+|", "本期发出+|+|+|", "期末结存+|+|+|"));
    EXPECT_THAT(Front(Seconds(*report, 6), 4), ElementsAre("数量", "辅助数量", "单价", "金额"));
    EXPECT_EQ(Closed(*report), money);
    EXPECT_EQ(Hidden(*report), money);
  }
  store->Set("AppType", 1);
  Fetch(*report, Keys({}));
  for (const std::string& field : money) EXPECT_THAT(Hidden(*report), Contains(field));
  EXPECT_THAT(Hidden(*report), Contains("FOutSecQty"));
  EXPECT_THAT(Hidden(*report), Not(Contains("FOutQty")));
}

TEST_F(MovementHeadings, ADetailShowsBalancesItemByItemOnly) {
  struct Row {
    const char* name;
    Ref<Dictionary> filter;
    bool balances;
  };
  const Row rows[] = {
      {"a number", Keys({{"chkGroupByGood", 1}}), true},
      {"a text", Keys({{"chkGroupByGood", "1"}}), true},
      {"off", Keys({{"chkGroupByGood", 0}}), false},
      {"off as a text", Keys({{"chkGroupByGood", "0"}}), false},
      {"another number", Keys({{"chkGroupByGood", 2}}), false},
      {"not told", Keys({}), false},
  };
  const Ref<Object> goods = MakeReport<Rpt10413>();
  const Ref<Object> batches = MakeReport<Rpt10417>();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fetch(*goods, row.filter);
    const std::vector<std::string> names = Names(*goods);
    EXPECT_EQ(names.size(), row.balances ? 37U : 30U);
    EXPECT_EQ(names[28], "FOutAmount");
    EXPECT_EQ(names[29], row.balances ? "FStockQty" : "FNote");
    EXPECT_EQ(names.back(), "FNote");
    EXPECT_EQ(FrozenColumn(*goods), 5);
    Fetch(*batches, row.filter);
    EXPECT_EQ(Names(*batches).size(), row.balances ? 30U : 24U);
    EXPECT_EQ(Names(*batches).back(), row.balances ? "FStockAmount" : "FOutAmount");
  }
}

TEST_F(MovementHeadings, ADetailOfGoodsHasItsColumns) {
  const Ref<Object> report = MakeReport<Rpt10413>();
  Fetch(*report, Keys({}));
  const std::vector<std::string> leading = {
      "FDate",     "FBillType", "FBillNo",        "FExplanation",     "FItemNumber",
      "FItemName", "FModel",    "FBussinessName", "FBussinessNumber", "FAuxProp",
      "FBatchNo1", "FBarCode",  "FUnitName",      "FShowUnitName",    "FAuxUnitName"};
  EXPECT_EQ(Front(Names(*report), 15), leading);
  EXPECT_THAT(Captions(*report, 15), ElementsAre("收入+|+|+|+|+|+|", "发出+|+|+|+|+|+|", "备注$"));
  EXPECT_THAT(Front(Seconds(*report, 15), 7),
              ElementsAre("基本单位数量", "基本单位单价", "数量", "整件散包", "单价", "辅助数量", "金额"));
  EXPECT_THAT(Front(Texts(*report, "FColType", 15), 7), ElementsAre("2", "4", "2", "5", "4", "2", "6"));
  EXPECT_THAT(Closed(*report), ElementsAre("FBussinessNumber", "FAuxProp", "FBatchNo1", "FBarCode",
                                           "FUnitName", "FAuxUnitName", "FInQty", "FInPrice", "FAuxInQty",
                                           "FOutQty", "FOutPrice", "FAuxOutQty"));
  EXPECT_THAT(Hidden(*report), IsEmpty());
  store->Set("AppType", 1);
  Fetch(*report, Keys({}));
  EXPECT_THAT(Names(*report), Not(Contains("FBatchNo1"))) << "left out, not hidden";
  EXPECT_THAT(Hidden(*report), ElementsAre("FAuxProp", "FAuxUnitName", "FAuxInQty", "FAuxOutQty"));
}

TEST_F(MovementHeadings, ADetailOfBatchesShowsQuantities) {
  const Ref<Object> report = MakeReport<Rpt10417>();
  const std::vector<std::string> leading = {"FDate",     "FBillType", "FBillNo",       "FItemNumber",
                                            "FItemName", "FModel",    "FAuxProp",      "FBatchNo1",
                                            "FBarCode",  "FUnitName", "FShowUnitName", "FAuxUnitName"};
  for (const int appType : {1, 2, 4}) {
    SCOPED_TRACE(appType);
    store->Set("AppType", appType);
    Fetch(*report, Keys({{"chkGroupByGood", 1}}));
    EXPECT_EQ(Front(Names(*report), 12), leading) << "the batch is always there";
    EXPECT_THAT(Captions(*report, 12), ElementsAre("收入+|+|+|+|+|", "发出+|+|+|+|+|", "结存+|+|+|+|+|"));
    EXPECT_THAT(Front(Seconds(*report, 12), 6),
                ElementsAre("基本单位数量", "基本单位单价", "数量", "单价", "辅助数量", "金额"));
    EXPECT_THAT(Closed(*report), Not(Contains("FBatchNo1")));
    EXPECT_THAT(Closed(*report), Not(Contains("FUnitName")));
    EXPECT_THAT(Closed(*report), Contains("FInQty"));
    for (const char* field : {"FInPrice", "FShowInPrice", "FInAmount", "FOutPrice", "FShowOutPrice",
                              "FOutAmount", "FStockPrice", "FShowStockPrice", "FStockAmount"}) {
      EXPECT_THAT(Hidden(*report), Contains(field));
    }
    EXPECT_EQ(Hidden(*report).size(), appType == 1 ? 14U : 9U);
  }
}

TEST_F(MovementHeadings, TitlesAreBuiltWhereTheFamilyBuildsThem) {
  struct Row {
    Ref<Object> report;
    const char* number;
    bool insideBox;
  };
  for (const Row& row :
       {Row{MakeReport<Rpt10412>(), "10412", true}, Row{MakeReport<Rpt10413>(), "10413", true},
        Row{MakeReport<Rpt10416>(), "10416", false}, Row{MakeReport<Rpt10417>(), "10417", false}}) {
    SCOPED_TRACE(row.number);
    const Ref<Dictionary> filter = Keys({{"BDate", platform::Date::Of(2024, 3, 1)},
                                         {"EDate", "2024-03-31"},
                                         {"BStockNumber", "01"},
                                         {"EStockNumber", ""},
                                         {"SumBy", "商品批号"}});
    row.report->Put("Filter", Variant(filter));
    row.report->Call("Refresh");
    EXPECT_EQ(Spell(row.report->Get("Title")) != "nothing", row.insideBox) << "a refresh stays in the box";
    row.report->Call("GetReportData");
    EXPECT_THAT(SpellTitle(row.report->Get("Title").AsRef<Vector>()),
                ElementsAre("0 仓库代码从[01]到[]", "1 汇总依据[商品批号]"));
    EXPECT_EQ(Spell(row.report->Get("Result")),
              "{OK: True, Error: '', RptTitleObject: {ShowDateDiff: 'BDate,2024-03-01|EDate,2024-03-31'}}");
    EXPECT_EQ(desk.Count(std::string("GetRpt") + row.number + "Data("), 2);
    EXPECT_TRUE(filter->Exists("DataRightWhere"));
  }
}

}  // namespace
}  // namespace component
