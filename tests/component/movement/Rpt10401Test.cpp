// The business summary: its layouts, the columns of each bill class, and what a failure leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/movement/Rpt10401.h"
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

class Rpt10401Test : public FetchTest {
 protected:
  Rpt10401Test() {
    for (const char* id :
         {"TOVMStockRpt.Data1040101", "TOVMStockRpt.Data1040102", "TOVMStockRpt.Data1040104"}) {
      desk.Answer(id, "GetRptData", TextRows({"FItemNumber"}, {{"01"}}));
    }
  }
  static Ref<Dictionary> Filter(const Variant& sumItem, bool levels = false, int begin = 0, int end = 0) {
    return Keys({{"SumItem", sumItem},
                 {"MultiLevel", levels},
                 {"MultiLevelBegin", begin},
                 {"MultiLevelEnd", end},
                 {"BDate", "2024-03-01"},
                 {"EDate", "2024-03-31"}});
  }
  std::string Result() { return Spell(report->Get("Result")); }
  // Group headings and single columns behind the item.
  std::vector<std::string> Groups() {
    std::vector<std::string> groups = Captions(*report, 6);
    std::erase(groups, " ");
    for (std::string& group : groups) group = group.substr(0, group.find_first_of("+$"));
    return groups;
  }

  Ref<Object> report = MakeReport<Rpt10401>();
};

TEST_F(Rpt10401Test, OperationsStandInSlotOrder) {
  EXPECT_THAT(Slots(Rpt10401::Info()),
              ElementsAre("ExtFirter let", "GetReportData", "Refresh", "ShowFilter", "Filter get",
                          "Filter let", "Header get", "Property get", "Result get", "RptID get", "RptID let",
                          "rs get", "Title get"));
  EXPECT_EQ(report->ClassName(), "TOVStockRpt.Rpt10401");
}

TEST_F(Rpt10401Test, ItStartsWithItsFacts) {
  EXPECT_EQ(Spell(report->Get("Property")),
            "{Name: '收发业务汇总表', RptProperty: 10, HasDefaultFilterOption: True}");
  EXPECT_EQ(Result(), "{OK: False, Error: ''}");
}

TEST_F(Rpt10401Test, TheLayoutFollowsTheSummary) {
  struct Row {
    const char* name;
    Ref<Dictionary> filter;
    const char* component;
    std::vector<std::string> leading;
    int frozen;
    std::size_t columns;
  };
  const Row rows[] = {
      {"by item",
       Filter(0),
       "Data1040101",
       {"FItemNumber", "FItemName", "FModel", "FBarCode", "FUnitName"},
       4,
       61},
      {"by item, as a text", Filter("0"), "Data1040101", {"FItemNumber"}, 4, 61},
      {"no summary told", Keys({}), "Data1040101", {"FItemNumber"}, 4, 61},
      {"by warehouse", Filter(1), "Data1040102", {"FStockName", "FItemNumber", "FItemName"}, 5, 62},
      {"by batch",
       Filter("2"),
       "Data1040104",
       {"FItemNumber", "FItemName", "FModel", "FBarCode", "FBatchNo", "FUnitName", "FSecUnitName"},
       5,
       62},
      {"two levels",
       Filter(0, true, 2, 3),
       "Data1040101",
       {"FItemLevel02Name", "FItemLevel03Name", "FItemNumber"},
       6,
       63},
      {"the tenth level", Filter(1, true, 10, 10), "Data1040102", {"FItemLevel010Name", "FStockName"}, 6, 63},
      {"levels that end before they begin", Filter(0, true, 3, 1), "Data1040101", {"FItemNumber"}, 3, 61},
      {"levels that are off", Filter(2, false, 1, 3), "Data1040104", {"FItemNumber"}, 5, 62},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.journal.clear();
    Fetch(*report, row.filter);
    EXPECT_EQ(desk.Count("new TOVMStockRpt."), 1);
    EXPECT_EQ(desk.Count(std::string("new TOVMStockRpt.") + row.component), 1);
    EXPECT_EQ(FrozenColumn(*report), row.frozen);
    std::vector<std::string> names = Names(*report);
    EXPECT_EQ(names.size(), row.columns);
    names.resize(row.leading.size());
    EXPECT_EQ(names, row.leading);
    EXPECT_THAT(desk.Lines("bar "),
                ElementsAre("bar SetMsg('正在连接服务器')", "bar HideProgBar",
                            "bar SetMsg('正在从服务器读取数据，请稍候...')", "bar Unload"));
  }
}

TEST_F(Rpt10401Test, BillClassesStandInOrder) {
  Fetch(*report, Filter(0));
  EXPECT_THAT(Groups(),
              ElementsAre("期初余额", "采购收货", "估价入库", "其他入库", "盘盈入库", "组装入库", "拆卸入库",
                          "调拨入库", "调价金额", "入库合计", "销售发货", "委托代销", "其他出库", "盘亏损毁",
                          "组装出库", "拆卸出库", "调拨出库", "出库合计", "期末余额"));
  const Ref<Vector> header = report->Get("Header").AsRef<Vector>();
  EXPECT_EQ(
      Spell(header->Items()[6]),
      "{FColCaption: '期初余额+|+|', FHeadSecond: '数量', FColType: '2', FColName: 'FBegQty', FVisible: "
      "1s, FForceHide: False}");
  EXPECT_EQ(Spell(header->Items()[7]),
            "{FColCaption: '', FHeadSecond: '辅助数量', FColType: '2', FColName: 'FBegSecQty', FVisible: 1s, "
            "FForceHide: False}");
  EXPECT_EQ(Spell(header->Items()[8]),
            "{FColCaption: ' ', FHeadSecond: '金额', FColType: '6', FColName: 'FBegAmount', FVisible: 1s, "
            "FForceHide: False}")
      << "the caption is a blank";
  EXPECT_THAT(Names(*report), Contains("FAmount1040008"));
}

TEST_F(Rpt10401Test, RebatesNeedTheirApplicationAndIndustry) {
  struct Row {
    int appType;
    int industry;
    bool rebates;
  };
  for (const Row& row :
       {Row{4, 0, true}, Row{4, 1, false}, Row{2, 0, false}, Row{1, 0, false}, Row{2, 1, false}}) {
    SCOPED_TRACE(std::to_string(row.appType) + " in industry " + std::to_string(row.industry));
    store->Set("AppType", row.appType);
    store->Set("IndustryType", row.industry);
    for (const auto& [sumItem, columns] : {std::pair{0, 61U}, std::pair{1, 62U}, std::pair{2, 62U}}) {
      Fetch(*report, Filter(sumItem));
      EXPECT_EQ(Names(*report).size(), columns + (row.rebates ? 7U : 0U));
      for (const char* field : {"FQty1020004", "FRebateAmount", "FSecQty1030004"}) {
        if (row.rebates) {
          EXPECT_THAT(Names(*report), Contains(field));
        } else {
          EXPECT_THAT(Names(*report), Not(Contains(field)));
        }
      }
    }
  }
}

TEST_F(Rpt10401Test, RowsByWarehouseSpellOneFieldInTheirOwnWay) {
  for (const auto& [sumItem, field, other] : {std::tuple{0, "FOutSecQty1040006", "FOutSevQty1040006"},
                                              std::tuple{1, "FOutSevQty1040006", "FOutSecQty1040006"},
                                              std::tuple{2, "FOutSecQty1040006", "FOutSevQty1040006"}}) {
    SCOPED_TRACE(sumItem);
    Fetch(*report, Filter(sumItem));
    EXPECT_THAT(Names(*report), Contains(field));
    EXPECT_THAT(Names(*report), Not(Contains(other)));
  }
}

TEST_F(Rpt10401Test, TheSmallestApplicationHidesWhatItDoesNotKnow) {
  store->Set("AppType", 1);
  Fetch(*report, Filter(0));
  EXPECT_EQ(Names(*report).size(), 61U) << "hidden columns stay";
  const std::vector<std::string> hidden = Hidden(*report);
  // Every secondary quantity, the secondary unit, and quantity and amount of six bill classes.
  EXPECT_EQ(hidden.size(), 18U + 1U + 12U);
  for (const char* field :
       {"FSecUnitName", "FBegSecQty", "FBalSecQty", "FQty1020003", "FAmount1020003", "FInQty1040005",
        "FInAmount1040006", "FQty1030003", "FOutAmount1040005", "FOutQty1040006"}) {
    EXPECT_THAT(hidden, Contains(field));
  }
  for (const char* field : {"FQty1020002", "FInQty1040007", "FAmount1040008", "FOutAmountTotal"}) {
    EXPECT_THAT(hidden, Not(Contains(field)));
  }
  for (const int appType : {2, 4}) {
    store->Set("AppType", appType);
    Fetch(*report, Filter(0));
    EXPECT_THAT(Hidden(*report), IsEmpty());
  }
}

TEST_F(Rpt10401Test, TheTitleTellsRangesAndDates) {
  const Ref<Dictionary> filter = Filter(1, true, 1, 2);
  for (const char* key : {"BItemNumber", "EItemNumber", "BDeptNumber", "EDeptNumber", "BEmpNumber",
                          "EEmpNumber", "BStockNumber", "EStockNumber", "BBatchNo", "EBatchNo"}) {
    filter->Set(key, "");
  }
  filter->Set("SumBy", "仓库");
  Fetch(*report, filter);
  EXPECT_THAT(SpellTitle(report->Get("Title").AsRef<Vector>()),
              ElementsAre("0 商品代码[全部]", "1 部门代码[全部]", "2 业务员代码[全部]", "3 仓库代码[全部]",
                          "4 批号[全部]", "5 汇总依据[仓库(1-2级)]"));
  EXPECT_EQ(Result(),
            "{OK: True, Error: '', RptTitleObject: {ShowDateDiff: 'BDate,2024-03-01|EDate,2024-03-31'}}");
}

TEST_F(Rpt10401Test, TheRightOnWarehousesGoesToTheData) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "5");
  Fetch(*report, Filter(0));
  EXPECT_EQ(Spell(report->Get("Filter").AsRef<Dictionary>()->Value("DataRightWhere")),
            "' (CharIndex('12',ts.FRightUserID)>0 OR ISNULL(ts.FItemID,0)=0) '");
}

TEST_F(Rpt10401Test, ASummaryThatNobodyKnowsFetchesNothing) {
  struct Row {
    const char* name;
    Variant sumItem;
    bool levels;
    int frozen;
    std::size_t columns;
  };
  for (const Row& row : {Row{"too large", 3, false, 6, 0}, Row{"below", -1, false, 6, 0},
                         Row{"between", "1.5", false, 6, 0}, Row{"with levels", "9", true, 8, 2}}) {
    SCOPED_TRACE(row.name);
    report = MakeReport<Rpt10401>();
    desk.journal.clear();
    Fetch(*report, Filter(row.sumItem, row.levels, 2, 3));
    EXPECT_EQ(desk.Count("new TOVMStockRpt."), 0);
    EXPECT_EQ(desk.Lines("abandoned"), std::vector<std::string>{"abandoned frmProgBar"});
    EXPECT_EQ(FrozenColumn(*report), row.frozen);
    EXPECT_EQ(Names(*report).size(), row.columns);
    EXPECT_EQ(Spell(report->Get("rs")), "nothing");
    EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), "True") << "left as it was";
    EXPECT_FALSE(ProcessState::Get().sharedHeading);
  }
}

TEST_F(Rpt10401Test, FailuresSayWhyAndKeepTheColumns) {
  struct Row {
    const char* name;
    std::function<void(Desk&)> arrange;
    Ref<Dictionary> filter;
    const char* error;
    std::size_t columns;
    bool headingKept;
  };
  const Row rows[] = {
      {"none", [](Desk&) {}, Filter(0), "", 61, false},
      {"the data raise",
       [](Desk& other) { other.Fail("TOVMStockRpt.Data1040101", "GetRptData", "数据库超时"); }, Filter(0),
       "数据库超时", 61, true},
      {"no data component", [](Desk& other) { other.Withdraw("TOVMStockRpt.Data1040102"); }, Filter(1),
       "class not registered: TOVMStockRpt.Data1040102", 62, true},
      {"a summary that is null", [](Desk&) {}, Filter(platform::Null()),
       "type mismatch: database null is no text", 0, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ProcessState::Get() = {};
    Desk other;
    other.Answer("TOVMStockRpt.Data1040101", "GetRptData", nullptr);
    row.arrange(other);
    report = MakeReport<Rpt10401>();
    Fetch(*report, row.filter);
    const Ref<Dictionary> result = report->Get("Result").AsRef<Dictionary>();
    EXPECT_EQ(Spell(result->Value("OK")), *row.error == '\0' ? "True" : "False");
    EXPECT_THAT(platform::ToText(result->Value("Error")), ::testing::StartsWith(row.error));
    EXPECT_EQ(Names(*report).size(), row.columns);
    EXPECT_EQ(ProcessState::Get().sharedHeading == report->Get("Header").AsRef<Vector>(), row.headingKept);
    EXPECT_EQ(other.Count("new TOVMStockRpt.Data"), other.Count("end TOVMStockRpt.Data"));
    EXPECT_EQ(other.Lines("bar ").back(), "bar Unload");
    ProcessState::Get() = {};
  }
}

TEST_F(Rpt10401Test, LevelsThatAreNoNumbersEndItBeforeTheHeading) {
  Fetch(*report, Keys({{"SumItem", 0}, {"MultiLevel", true}, {"MultiLevelBegin", "x"}}));
  EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("Error")), "''");
  EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), "False");
  EXPECT_EQ(Spell(report->Get("Header")), "nothing");
  EXPECT_EQ(desk.Count("AccessCheck"), 0);
}

}  // namespace
}  // namespace component
