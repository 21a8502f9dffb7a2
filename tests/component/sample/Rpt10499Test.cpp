// The example report of docs/adding-a-report.md, driven as a browser drives a report: every step told there
// has a test here, and what the document shows is what runs.
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/server/Classes.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"
#include "tests/component/sample/Rpt10499.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using ::testing::ElementsAre;

// The row that a report of the product has in component/server/Classes.cpp.
constexpr ServedClass kServed = {
    .description = {.programmaticId = "TOVStockRpt.Rpt10499",
                    .classId = {{0x3e, 0x0c, 0x5a, 0x71, 0x94, 0xd2, 0x4b, 0x66, 0xa1, 0x08, 0x7f, 0x2d, 0x6b,
                                 0xc9, 0x15, 0xe4}},
                    .number = "10499",
                    .title = "商品条码清单"},
    .make = MakeReport<Rpt10499>,
};

class SampleReport10499 : public ComponentTest {
 protected:
  SampleReport10499() {
    ServeFilterControls(desk);
    desk.Answer("TOVMStockRpt.Data10499", "GetRpt10499Data",
                TextRows({"FItemNumber", "FItemName", "FBarCode", "FSupplyName", "FLowerQty", "FSecUnitName"},
                         {{"01.02", "水果糖", "690413", "鲜果供应商", "20", ""}}));
  }

  // The filter that the dialog delivers; nothing when it was cancelled.
  Ref<Dictionary> ShowWith(Object& report, const FakeScreen::Script& script) {
    desk.screen.scripts.push_back(script);
    report.Call("ShowFilter");
    return report.Get("Filter").AsRef<Dictionary>();
  }
  static std::vector<std::string> Columns(Object& report, const char* key) {
    std::vector<std::string> texts;
    for (const Variant& item : report.Get("Header").AsRef<platform::Vector>()->Items()) {
      texts.push_back(platform::ToText(item.AsRef<Dictionary>()->Value(key)));
    }
    return texts;
  }
};

TEST_F(SampleReport10499, IsCreatedFromItsRowOfTheClassTable) {
  const Ref<Object> report = CreateServed(kServed);
  EXPECT_EQ(report->ClassName(), kServed.description.programmaticId);
  EXPECT_EQ(Spell(report->Get("Property")), "{Name: '商品条码清单', RptProperty: 6, FrozenColumn: 2}");
  EXPECT_EQ(Spell(report->Get("Result")), "{OK: False, Error: ''}");
}

TEST_F(SampleReport10499, ItsDialogFillsTheFilter) {
  const Ref<Object> report = CreateServed(kServed);
  const Ref<Dictionary> filter = ShowWith(*report, [](Form&, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Set("txtItem(1)", "02");
    user.Click("chkNoCode");
    user.Set("cboSort", 1);
    user.Click("OptSortA");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  struct Row {
    const char* key;
    const char* value;
  };
  const Row rows[] = {
      {"BItemNumber", "'01'"},         {"EItemNumber", "'02'"}, {"chkNoCode", "'1'"}, {"cboSort", "'1'"},
      {"OrderBy", "'FBarCode DESC '"}, {"UserID", "12"},        {"OK", "True"},       {"RptID", "10499s"},
  };
  for (const Row& row : rows) EXPECT_EQ(Spell(filter->Value(row.key)), row.value) << row.key;
}

TEST_F(SampleReport10499, ItsDialogRestoresASchemeAndResets) {
  const Ref<Object> report = CreateServed(kServed);
  const Ref<Dictionary> filter = ShowWith(*report, [](Form& form, UserInput& user) {
    auto& control = FilterControl::In<SchemeControl>(form);
    control.scheme->Set("BItemNumber", "01.01");
    control.scheme->Set("chkNoCode", "1");
    control.events.RaiseWith("LoadScheme", "default");
    EXPECT_EQ(Spell(form.Find("txtItem(0)")->Value()), "'01.01'");
    EXPECT_EQ(Spell(form.Find("chkNoCode")->Value()), "1");
    control.events.RaiseWith("ResetFields");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("BItemNumber")), "''");
  EXPECT_EQ(Spell(filter->Value("chkNoCode")), "'0'");
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "'FItemNumber ASC '");
}

TEST_F(SampleReport10499, ARangeThatEndsBeforeItBeginsIsRefused) {
  struct Row {
    const char* name;
    const char* from;
    const char* to;
    bool accepted;
  };
  const Row rows[] = {{"both open", "", "", true},
                      {"no end", "02", "", true},
                      {"no beginning", "", "02", true},
                      {"one item", "01", "01", true},
                      {"the wrong way", "02", "01", false}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Object> report = CreateServed(kServed);
    ShowWith(*report, [&](Form& form, UserInput& user) {
      user.Set("txtItem(0)", row.from);
      user.Set("txtItem(1)", row.to);
      user.Click("cmdOK");
      EXPECT_EQ(form.IsVisible(), !row.accepted);
    });
  }
  EXPECT_EQ(desk.Count("ask '起始商品代码不能大于截止商品代码!' '信息提示'"), 1);
}

TEST_F(SampleReport10499, FetchesItsRowsUnderItsHeading) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "8");
  const Ref<Object> report = CreateServed(kServed);
  ShowWith(*report, [](Form&, UserInput& user) { user.Click("cmdOK"); });
  report->Call("GetReportData");
  EXPECT_EQ(Spell(report->Get("Result")), "{OK: True, Error: '', RptTitleObject: {}}");
  EXPECT_THAT(Columns(*report, "FColName"), ElementsAre("FItemNumber", "FItemName", "FBarCode", "FSupplyName",
                                                        "FLowerQty", "FSecUnitName"));
  const Ref<platform::Recordset> rows = report->Get("rs").AsRef<platform::Recordset>();
  ASSERT_TRUE(rows);
  for (const std::string& name : Columns(*report, "FColName"))
    EXPECT_NO_THROW(rows->FieldIndex(name)) << name;
  EXPECT_EQ(Spell(report->Get("Filter").AsRef<Dictionary>()->Value("DataRightWhere")),
            "' (CharIndex('12',t7.FRightUserID)>0 OR ISNULL(t7.FItemID,0)=0) '");
  EXPECT_GT(report->Get("Title").AsRef<platform::Vector>()->Count(), 0);
}

TEST_F(SampleReport10499, HidesAuxiliaryUnitsFromAnApplicationWithoutThem) {
  for (const int appType : {1, 2, 4}) {
    SCOPED_TRACE(appType);
    store->Set("AppType", appType);
    const Ref<Object> report = CreateServed(kServed);
    report->Put("Filter", Variant(Keys({})));
    report->Call("GetReportData");
    EXPECT_EQ(Columns(*report, "FForceHide").back(), appType == 1 ? "True" : "False");
  }
}

TEST_F(SampleReport10499, TellsOfAFailureInItsResult) {
  desk.Fail("TOVMStockRpt.Data10499", "GetRpt10499Data", "the book is closed");
  const Ref<Object> report = CreateServed(kServed);
  report->Put("Filter", Variant(Keys({})));
  EXPECT_EQ(Raised([&] { report->Call("GetReportData"); }), "nothing raised");
  const Ref<Dictionary> result = report->Get("Result").AsRef<Dictionary>();
  EXPECT_EQ(Spell(result->Value("OK")), "False");
  EXPECT_EQ(Spell(result->Value("Error")), "'the book is closed'");
}

std::string FileText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Each block of C++ in the document begins with "// FILE"; its lines stand in that file as they are.
TEST(SampleDocument, ShowsWhatRuns) {
  const std::string root = TEST_SOURCE_DIR "/../../";
  const std::string document = FileText(root + "docs/adding-a-report.md");
  const std::string begin = "```cpp\n// ";
  int blocks = 0;
  for (std::size_t at = document.find(begin); at != std::string::npos; at = document.find(begin, at)) {
    at += begin.size();
    const std::size_t line = document.find('\n', at);
    const std::size_t end = document.find("```", line);
    ASSERT_NE(end, std::string::npos);
    const std::string file = document.substr(at, line - at);
    SCOPED_TRACE(file);
    const std::string text = FileText(root + file);
    EXPECT_FALSE(text.empty());
    const std::string block = document.substr(line + 1, end - line - 1);
    EXPECT_NE(text.find(block), std::string::npos) << block;
    ++blocks;
  }
  EXPECT_GE(blocks, 6);
}

}  // namespace
}  // namespace component
