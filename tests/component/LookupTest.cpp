// Base data lookups by kind, and the batch list.
#include "component/filter/BaseData.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kView = "call TOVEBCGLView.GLView.";
const std::string kNotAuthorised = "ask '基础资料可能没有授权！' '信息提示' ok information ok -> ok";

class LookupTest : public ComponentTest {
 protected:
  LookupTest() {
    for (const char* operation :
         {"ItemLookUp", "UnitLookup", "CurrencyLookup", "AccountLookup", "SettTypeLookup", "SubMesLookup"}) {
      desk.On("TOVEBCGLView.GLView", operation, [this](std::span<Variant>) { return answer; });
    }
  }

  // An answer of a lookup whose chosen row is of a detail account or not.
  Variant Chosen(bool detail) {
    desk.Answer("Test.Row", "Detail", detail);
    desk.Answer("Test.Lookup", "ReturnObject", desk.Make("Test.Row"));
    return desk.Make("Test.Lookup");
  }
  // The calls that a lookup makes on the ledger's services.
  std::vector<std::string> CallsOf(std::int32_t type, const std::string& filter, std::int16_t show = 1) {
    desk.journal.clear();
    LookupBaseData(type, "01", filter, show);
    std::vector<std::string> calls = desk.Lines(kView);
    for (const std::string& line : desk.Lines("GLData.Refresh")) calls.insert(calls.begin(), line);
    return calls;
  }

  Variant answer = nullptr;
};

TEST_F(LookupTest, AKindChoosesItsLookup) {
  const std::string refresh = "call TOVEBCGLView.GLData.Refresh()";
  auto item = [](int type) {
    return kView + "ItemLookUp(" + std::to_string(type) + ", '01', '', {GetDataType: 1s, Search: '01'})";
  };
  for (const int type : {1, 2, 3, 4, 5, 8, 10, 1121, 1122, 2014}) {
    SCOPED_TRACE(type);
    EXPECT_THAT(CallsOf(type, ""), ElementsAre(refresh, item(type)));
  }
  const std::pair<int, int> linked[] = {{104031, 1}, {104032, 2},  {104033, 3}, {104034, 4},
                                        {104038, 8}, {1040301, 1}, {1040308, 8}};
  for (const auto& [type, digit] : linked) {
    SCOPED_TRACE(type);
    EXPECT_THAT(CallsOf(type, ""), ElementsAre(refresh, item(digit)));
  }
  EXPECT_THAT(CallsOf(7, "12"), ElementsAre(kView + "UnitLookup(12, '01')"));
  EXPECT_THAT(CallsOf(7, ""), ElementsAre(kView + "UnitLookup(0, '01')"));
  EXPECT_THAT(CallsOf(12, "x"), ElementsAre(kView + "CurrencyLookup('01')"));
  EXPECT_THAT(CallsOf(13, "x"), ElementsAre(kView + "AccountLookup('01')"));
  EXPECT_THAT(CallsOf(130, "x"), ElementsAre(kView + "SettTypeLookup('01')"));
  for (const int type : {20, 21, 129, 131, 999}) {
    SCOPED_TRACE(type);
    EXPECT_THAT(CallsOf(type, "x"), ElementsAre(kView + "SubMesLookup(" + std::to_string(type) + ", '01')"));
  }
  for (const int type : {0, -1, 6, 9, 11, 14, 19, 1000, 1120, 104035, 1040302}) {
    SCOPED_TRACE(type);
    EXPECT_THAT(CallsOf(type, "x"), IsEmpty());
    EXPECT_THAT(desk.journal, IsEmpty()) << "not even a message";
  }
}

TEST_F(LookupTest, TheFilterIsJoinedWithTheConditionOnDisabledData) {
  struct Row {
    const char* name;
    Variant displayDeleted;
    const char* filter;
    const char* condition;
  };
  const Row rows[] = {
      {"shown, no filter", 1, "", ""},
      {"shown, a filter", 1, "t1.FType=1", "t1.FType=1 And  1=1 "},
      {"hidden, no filter", 0, "", " t1.FDeleted=0 "},
      {"hidden, a filter", 0, "t1.FType=1", "t1.FType=1 And  t1.FDeleted=0 "},
      {"hidden as text", "0", "", " t1.FDeleted=0 "},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.profile->Set("Base/DisplayDeleted", row.displayDeleted);
    EXPECT_EQ(CallsOf(4, row.filter).back(),
              kView + "ItemLookUp(4, '01', '" + row.condition + "', {GetDataType: 1s, Search: '01'})");
  }
  desk.profile->RemoveAll();
  EXPECT_EQ(CallsOf(4, "", 0).back(), kView + "ItemLookUp(4, '01', '', {GetDataType: 0s, Search: '01'})")
      << "a profile that says nothing shows disabled data";
  EXPECT_EQ(desk.Count("GetSystemProfile('Base', 'DisplayDeleted', 1)"), 1);
}

TEST_F(LookupTest, NewBaseDataIsSeenBeforeTheListOpens) {
  LookupBaseData(4, "", "", 1);
  const std::vector<std::string> lines = desk.Lines("call TOVEBCGLView");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines.front(), "call TOVEBCGLView.GLData.Refresh()");
}

TEST_F(LookupTest, WhatWasChosenComesBack) {
  struct Row {
    const char* name;
    std::int32_t type;
    bool detail;
    bool comesBack;
  };
  for (const Row& row :
       {Row{"an item", 4, true, true}, Row{"an item group", 4, false, true},
        Row{"a detail account", 13, true, true}, Row{"a group of accounts", 13, false, false}}) {
    SCOPED_TRACE(row.name);
    answer = Chosen(row.detail);
    desk.journal.clear();
    const Ref<Object> lookup = LookupBaseData(row.type, "01", "", 1);
    EXPECT_EQ(static_cast<bool>(lookup), row.comesBack);
    if (row.comesBack) {
      EXPECT_THAT(desk.Lines("ask "), IsEmpty());
    } else {
      EXPECT_THAT(desk.Lines("ask "), ElementsAre("ask '不能选择非明细科目 ' '信息提示' ok none ok -> ok"));
    }
  }
  answer = nullptr;
  desk.Answer("Test.Lookup", "ReturnObject", nullptr);
}

TEST_F(LookupTest, ALookupWithoutAChosenRowComesBackToo) {
  desk.Answer("Test.Lookup", "ReturnObject", nullptr);
  answer = desk.Make("Test.Lookup");
  EXPECT_TRUE(LookupBaseData(13, "", "", 1));
  answer = nullptr;
}

TEST_F(LookupTest, ACancelledLookupAnswersNothing) {
  answer = nullptr;
  EXPECT_FALSE(LookupBaseData(4, "", "", 1));
  answer = Variant();
  EXPECT_FALSE(LookupBaseData(13, "", "", 1));
  EXPECT_THAT(desk.Lines("ask "), IsEmpty());
}

TEST_F(LookupTest, EveryErrorIsToldAsMissingAuthorisation) {
  struct Row {
    const char* name;
    std::function<void(Desk&)> arrange;
  };
  const Row rows[] = {
      {"the list fails", [](Desk& other) { other.Fail("TOVEBCGLView.GLView", "ItemLookUp", "no right"); }},
      {"the refresh fails",
       [](Desk& other) {
         other.Answer("TOVEBCGLView.GLView", "ItemLookUp", nullptr);
         other.Fail("TOVEBCGLView.GLData", "Refresh", "offline");
       }},
      {"there is no list", [](Desk&) {}},
      {"there is no ledger service", [](Desk& other) { other.Withdraw("TOVEBCGLView.GLData"); }},
      {"the answer has no row",
       [](Desk& other) { other.Answer("TOVEBCGLView.GLView", "ItemLookUp", Keys({})); }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ProcessState::Get() = {};
    Desk other;
    row.arrange(other);
    EXPECT_FALSE(LookupBaseData(4, "", "", 1));
    EXPECT_THAT(other.Lines("ask "), ElementsAre(kNotAuthorised));
    ProcessState::Get() = {};
  }
}

class BatchTest : public ComponentTest {
 protected:
  void List(const Variant& rows) { desk.Answer("TOVBaseList.BaseList", "Show", rows); }
};

TEST_F(BatchTest, TheListIsPreparedAndShown) {
  struct Row {
    const char* name;
    const char* filter;
    bool stockOnly;
    const char* condition;
  };
  for (const Row& row : {Row{"no filter", "", false, ""}, Row{"a filter", "FItemID=1", false, "FItemID=1"},
                         Row{"in stock, no filter", "", true, "( FQty<>0 )"},
                         Row{"in stock, a filter", "FItemID=1", true, "(FItemID=1 AND FQty<>0 )"}}) {
    SCOPED_TRACE(row.name);
    desk.journal.clear();
    List(nullptr);
    EXPECT_EQ(LookupBatch("B0", row.filter, row.stockOnly, "item"), "");
    EXPECT_THAT(desk.journal,
                ElementsAre("new TOVBaseList.BaseList", "put TOVBaseList.BaseList.FilterItem('item')",
                            std::string("put TOVBaseList.BaseList.Filter('") + row.condition + "')",
                            "put TOVBaseList.BaseList.KeyWord('B0')", "call TOVBaseList.BaseList.Show(1)",
                            "end TOVBaseList.BaseList"));
  }
}

TEST_F(BatchTest, TheChosenRowsNumberComesBack) {
  const Ref<Recordset> rows = TextRows({"FBatchNo", "FStockID"}, {{"B1", "1"}, {"B2", "2"}});
  rows->MoveLast();
  List(rows);
  EXPECT_EQ(LookupBatch("", "", false, ""), "B2");
  EXPECT_FALSE(rows->IsOpen()) << "the list's rows are closed";

  List(TextRows({"FBatchNo"}, {{platform::Null()}}));
  EXPECT_EQ(LookupBatch("", "", false, ""), "") << "a row without a number";
}

TEST_F(BatchTest, NothingChosenIsAnEmptyText) {
  const Ref<Recordset> none = TextRows({"FBatchNo"}, {});
  List(none);
  EXPECT_EQ(LookupBatch("", "", false, ""), "");
  EXPECT_TRUE(none->IsOpen());
  List(Variant());
  EXPECT_EQ(LookupBatch("", "", false, ""), "");
}

TEST_F(BatchTest, AnErrorReachesTheCaller) {
  desk.Fail("TOVBaseList.BaseList", "Show", "no list");
  EXPECT_EQ(Raised([] { LookupBatch("", "", false, ""); }), "no list");
  desk.Withdraw("TOVBaseList.BaseList");
  EXPECT_EQ(Raised([] { LookupBatch("", "", false, ""); }), "class not registered: TOVBaseList.BaseList");
}

}  // namespace
}  // namespace component
