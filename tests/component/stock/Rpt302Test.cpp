// The instant stock table: a heading that grows with the display mode, the category levels and the answer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/Rpt302.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Ref;
using platform::Variant;
using platform::Vector;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Rpt302Test : public StockTest {
 protected:
  Rpt302Test() {
    ServeCount(59);
    Answer("", "", "");
  }

  void ServeCount(int count) {
    desk.Answer("TOVMClass.ClassInfo", "GetData",
                Variant(TextRows({"FStockCount"}, {{std::to_string(count)}})));
  }
  // What the data component tells of the warehouses.
  void Answer(const std::string& fields, const std::string& names, const std::string& types) {
    desk.On("TOVMStockRpt.Data302", "GetRptData", [=](std::span<Variant> arguments) {
      arguments[2] = fields;
      arguments[3] = names;
      arguments[4] = types;
      return Variant(platform::MakeRef<Vector>());
    });
  }

  Ref<platform::Object> report = MakeReport<Rpt302>();
};

TEST_F(Rpt302Test, OperationsStandInSlotOrder) {
  EXPECT_THAT(Slots(Rpt302::Info()),
              ElementsAre("ExtFirter let", "GetReportData", "Refresh", "ShowFilter", "AddDataRight",
                          "Filter get", "Filter let", "Header get", "Property get", "Result get", "RptID get",
                          "RptID let", "rs get", "Title get"));
}

TEST_F(Rpt302Test, PropertyKeepsItsNumberWhateverTheReportIsCalledBy) {
  for (const char* number : {"10422", "7", ""}) {
    report->Put("ExtFirter", number);
    EXPECT_EQ(Spell(report->Get("Property")),
              "{Name: '即时库存表', RptProperty: 10422, UserDefinedGoods: {hasVect: True, prefixValue: "
              "'FModel', classType: '', DisplayFields: ''}}")
        << number;
  }
}

TEST_F(Rpt302Test, DisplayModesAddKeysAndFreezeThem) {
  struct Row {
    const char* name;
    Variant mode;
    int frozen;
    std::vector<std::string> added;
  };
  const Row rows[] = {
      {"items alone stop before the hidden auxiliary unit", 0, 5, {}},
      {"by property", "1", 6, {"FAuxPropName"}},
      {"by batch", 2, 6, {"FBatchNo"}},
      {"two keys freeze no more than one", "3", 6, {"FAuxPropName", "FBatchNo"}},
      {"a mode that nobody knows", 4, 6, {}},
      {"no mode at all is the first", Variant(), 5, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fetch(*report, Keys({{"ShowType", row.mode}}));
    std::vector<std::string> expected = {"FItemNumber", "FItemName", "FModel",
                                         "FBarCode",    "FUnitName", "FSecUnitName"};
    expected.insert(expected.end(), row.added.begin(), row.added.end());
    EXPECT_EQ(Names(*report), expected);
    EXPECT_EQ(FrozenColumn(*report), row.frozen);
  }
}

TEST_F(Rpt302Test, CategoryLevelsStandInFront) {
  Fetch(*report,
        Keys({{"ShowType", 3}, {"MultiLevel", 1}, {"MultiLevelBegin", "2"}, {"MultiLevelEnd", "4"}}));
  EXPECT_EQ(FrozenColumn(*report), 9);
  const std::vector<std::string> names = Names(*report);
  ASSERT_GT(names.size(), 3U);
  EXPECT_EQ(names[0], "FItemLevel02Name");
  EXPECT_EQ(names[2], "FItemLevel04Name");
  EXPECT_EQ(names[3], "FItemNumber");
  Fetch(*report, Keys({{"ShowType", 9}, {"MultiLevel", 1}, {"MultiLevelBegin", 10}, {"MultiLevelEnd", 10}}));
  EXPECT_EQ(Names(*report)[0], "FItemLevel010Name");
  EXPECT_EQ(FrozenColumn(*report), 7);
  // Levels are counted, not looked up: there is a column for one that nothing has, and none for no levels.
  Fetch(*report, Keys({{"MultiLevel", 1}, {"MultiLevelBegin", 0}, {"MultiLevelEnd", 0}}));
  EXPECT_EQ(Names(*report)[0], "FItemLevel00Name");
  EXPECT_EQ(FrozenColumn(*report), 6);
  Fetch(*report, Keys({{"MultiLevel", 1}, {"MultiLevelBegin", "10"}, {"MultiLevelEnd", "9"}}));
  EXPECT_EQ(Names(*report)[0], "FItemNumber");
  EXPECT_EQ(FrozenColumn(*report), 5);
}

TEST_F(Rpt302Test, WarehousesFollowTheAnswer) {
  struct Row {
    const char* name;
    const char* fields;
    const char* names;
    const char* types;
    std::vector<std::string> bands;
    bool ok = true;
  };
  const Row rows[] = {
      {"no fields", "", "主仓", "500", {}},
      {"no names", "K7", "", "500", {}},
      {"one warehouse has no band of all", "K7", "主仓", "500", {"主仓+|+|+|+|"}},
      {"a type with decimals", "K7", "主仓", "500.0", {"主仓+|+|+|+|"}},
      {"a warehouse without cost", "K7", "赠品仓", "501", {"赠品仓+|+|"}},
      {"two", "K7,K9", "主仓,赠品仓", "500,501", {"全部仓库+|+|+|+|", "主仓+|+|+|+|", "赠品仓+|+|"}},
      {"a type that is no number",
       "K7,K9",
       "主仓,次仓",
       "500,x",
       {"全部仓库+|+|+|+|", "主仓+|+|+|+|"},
       false},
      {"fewer names than fields", "K7,K9", "主仓", "500,500", {"全部仓库+|+|+|+|", "主仓+|+|+|+|"}, false},
      {"fewer types than fields", "K7", "主仓", "", {}, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Answer(row.fields, row.names, row.types);
    Fetch(*report, Keys({{"ShowType", 0}}));
    EXPECT_EQ(Captions(*report, 6), row.bands);
    EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), row.ok ? "True" : "False");
  }
}

TEST_F(Rpt302Test, UnauditedBillsHideAmountsAndNothingElse) {
  Answer("K7,K9", "主仓,次仓", "500,500");
  Fetch(*report, Keys({{"ContainBills", 1}}));
  // Packages hide in a warehouse's band, while the band of all warehouses keeps them.
  EXPECT_THAT(Hidden(*report),
              ElementsAre("FBalSum", "K7FComplexQtyDis", "K7FBal", "K9FComplexQtyDis", "K9FBal"));
  Fetch(*report, Keys({{"ContainBills", "0"}}));
  EXPECT_THAT(Hidden(*report), IsEmpty());
  store->Set("AppType", 1);
  Fetch(*report, Keys({{"ShowType", 1}}));
  EXPECT_THAT(Hidden(*report),
              ElementsAre("FSecUnitName", "FAuxPropName", "FSecQtySum", "K7FSecQty", "K9FSecQty"));
}

TEST_F(Rpt302Test, AWeighingIndustrySpeaksOfTheoryInWarehousesOnly) {
  Answer("K7,K9", "主仓,赠品仓", "500,501");
  store->Set("IndustryType", 1);
  Fetch(*report, Keys({}));
  EXPECT_THAT(Seconds(*report, 6),
              ElementsAre("数量", "整件散包", "辅助数量", "平均单价", "金额", "理论数量", "整件散包",
                          "实际重量", "平均理论单价", "金额", "数量", "整件散包", "实际重量"));
}

TEST_F(Rpt302Test, TheLimitOfSixtyWarehousesLimitsNothing) {
  for (const int count : {0, 59, 60, 61}) {
    SCOPED_TRACE(count);
    ServeCount(count);
    Fetch(*report, Keys({}));
    EXPECT_EQ(Spell(report->Get("Result")), "{OK: True, Error: ''}");
  }
  EXPECT_EQ(desk.Count("ClassInfo.GetData('UserID=12;', 'select count(*) as FStockCount from t_Stock')"), 4);
}

TEST_F(Rpt302Test, AddDataRightWritesWhereThereIsADictionary) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "5");
  const char* clause = "{DataRightWhere: ' (CharIndex('12',d.FRightUserID)>0 OR ISNULL(d.FItemID,0)=0) '}";
  const Ref<Dictionary> given = Keys({});
  report->Call("AddDataRight", given);
  EXPECT_EQ(Spell(Variant(given)), clause) << "without a filter";
  EXPECT_EQ(Spell(report->Get("Filter")), "nothing");
  report->Put("Filter", Keys({}));
  report->Call("AddDataRight");
  EXPECT_EQ(Spell(report->Get("Filter")), clause);
}

TEST_F(Rpt302Test, FailuresSayWhyAndKeepTheColumns) {
  struct Row {
    const char* name;
    const char* id;
    const char* method;
  };
  for (const Row& row : {Row{"the data", "TOVMStockRpt.Data302", "GetRptData"},
                         Row{"the count of warehouses", "TOVMClass.ClassInfo", "GetData"}}) {
    SCOPED_TRACE(row.name);
    desk.Fail(row.id, row.method, "数据库超时");
    Fetch(*report, Keys({{"ShowType", 0}}));
    EXPECT_EQ(Spell(report->Get("Result")), "{OK: False, Error: '数据库超时'}");
    EXPECT_EQ(Names(*report).size(), 6U);
  }
}

TEST_F(Rpt302Test, WithoutAFilterNothingIsFetched) {
  EXPECT_NE(Raised([&] { report->Call("Refresh"); }), "nothing raised");
  EXPECT_EQ(desk.Count("new TOVMStockRpt.Data302"), 0);
}

}  // namespace
}  // namespace component
