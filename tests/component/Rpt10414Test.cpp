// The over and short stock report, whole: as a browser sees it, by name.
#include "component/filter/Rpt10414.h"
#include "platform/rows/Picture.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"

namespace component {
namespace {

using platform::CallKind;
using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using platform::Vector;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Rpt10414Test : public ComponentTest {
 protected:
  Rpt10414Test() {
    ServeFilterControls(desk);
    desk.Answer("TOVMStockRpt.Data10414", "GetRpt10414Data", TextRows({"FItemNumber"}, {{"01"}}));
  }

  void ShowWith(FakeScreen::Script script) {
    desk.screen.scripts.push_back(std::move(script));
    EXPECT_TRUE(report->Call("ShowFilter").IsEmpty());
  }
  std::string Result() { return Spell(report->Get("Result")); }
  void SetResult(bool ok, const char* error) {
    report->Get("Result").AsRef<Dictionary>()->Set("OK", ok);
    report->Get("Result").AsRef<Dictionary>()->Set("Error", error);
  }
  static void Ok(Form&, UserInput& user) { user.Click("cmdOK"); }
  static void Cancel(Form&, UserInput& user) { user.Click("cmdCacel"); }

  Ref<Object> report = MakeReport<Rpt10414>();
};

TEST_F(Rpt10414Test, OperationsStandInSlotOrder) {
  std::vector<std::string> slots;
  for (const platform::Operation& operation : Rpt10414::Info().operations) {
    const char* kind = operation.kind == CallKind::kMethod ? ""
                       : operation.kind == CallKind::kGet  ? " get"
                                                           : " let";
    slots.push_back(std::string(operation.name) + kind);
  }
  EXPECT_THAT(slots, ElementsAre("ExtFirter let", "GetReportData", "Refresh", "ShowFilter", "Filter get",
                                 "Filter let", "Header get", "Property get", "Result get", "RptID get",
                                 "RptID let", "rs get", "Title get", "NoFilter let"));
  EXPECT_EQ(report->ClassName(), "TOVStockRpt.Rpt10414");
}

TEST_F(Rpt10414Test, MembersCanBeReadAndWrittenAsTheySay) {
  report->Put("RptID", 7);
  EXPECT_EQ(Spell(report->Get("RptID")), "7");
  report->Put("ExtFirter", "10414");
  report->Put("NoFilter", true);
  EXPECT_EQ(Spell(report->Get("rs")), "nothing");
  EXPECT_EQ(Spell(report->Get("Header")), "nothing");
  EXPECT_EQ(Spell(report->Get("Title")), "nothing");
  EXPECT_EQ(Spell(report->Get("Filter")), "nothing");
  for (const char* member : {"ExtFirter", "NoFilter"}) {
    EXPECT_EQ(RaisedNumber([&] { report->Get(member); }), platform::ErrorNumber::kUnknownMember) << member;
  }
  for (const char* member : {"Header", "Property", "Result", "rs", "Title"}) {
    EXPECT_EQ(RaisedNumber([&] { report->Put(member, nullptr); }), platform::ErrorNumber::kUnknownMember)
        << member;
  }
  for (const char* member : {"AddDataRight", "GetDetailReport"}) {
    EXPECT_EQ(RaisedNumber([&] { report->Call(member); }), platform::ErrorNumber::kUnknownMember) << member;
  }
  EXPECT_EQ(RaisedNumber([&] { report->Call("ShowFilter", true); }), platform::ErrorNumber::kArgumentCount);
  EXPECT_EQ(RaisedNumber([&] { report->Put("Filter", Variant(platform::MakeRef<Vector>())); }),
            platform::ErrorNumber::kTypeMismatch);
}

TEST_F(Rpt10414Test, PropertyHoldsItsFacts) {
  EXPECT_EQ(Spell(report->Get("Property")), "{Name: '商品超储短缺表', RptProperty: 6}");
  report->Get("Property").AsRef<Dictionary>()->Set("ShowFilter", 1);
  report->Put("ExtFirter", "10414");
  EXPECT_EQ(Spell(report->Get("Property")), "{Name: '商品超储短缺表', RptProperty: 6}")
      << "what the browser added is lost with a new number";
}

TEST_F(Rpt10414Test, TheHeadingHasElevenColumns) {
  struct Row {
    const char* caption;
    const char* type;
    const char* field;
    bool needsAuxiliaryUnits;
  };
  const Row rows[] = {{"商品代码$", "1", "FItemNumber", false},  {"商品名称$", "1", "FItemName", false},
                      {"规格型号$", "1", "FModel", false},       {"单位$", "1", "FUnitName", false},
                      {"最低库存$", "2", "FLowerQty", false},    {"最高库存$", "2", "FMostQty", false},
                      {"结存数量$", "2", "FQty", false},         {"状态$", "1", "FStatus", false},
                      {"超储短缺数量$", "2", "FOverQty", false}, {"辅助单位$", "1", "FSecUnitName", true},
                      {"辅助数量$", "2", "FSecQty", true}};
  for (const int appType : {1, 2, 4}) {
    SCOPED_TRACE(appType);
    store->Set("AppType", appType);
    report->Put("Filter", Keys({}));
    report->Call("GetReportData");
    const Ref<Vector> header = report->Get("Header").AsRef<Vector>();
    ASSERT_EQ(header->Items().size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
      const Row& row = rows[i];
      const bool hidden = row.needsAuxiliaryUnits && appType == 1;
      EXPECT_EQ(Spell(header->Items()[i]),
                std::string("{FColCaption: '") + row.caption + "', FHeadSecond: '', FColType: '" + row.type +
                    "', FColName: '" + row.field +
                    "', FVisible: 1s, FForceHide: " + (hidden ? "True" : "False") + "}");
    }
  }
}

TEST_F(Rpt10414Test, AConfirmedDialogGivesTheFilter) {
  SetResult(false, "earlier");
  Ref<Dictionary> fromDialog;
  ShowWith([&](Form& form, UserInput& user) {
    EXPECT_EQ(form.Name(), "frmFirter10414");
    Ok(form, user);
    fromDialog = form.Get("Result").AsRef<Dictionary>();
  });
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_EQ(report->Get("Filter").AsRef<Dictionary>(), fromDialog) << "by reference";
  EXPECT_EQ(Spell(fromDialog->Value("OrderBy")), "'FItemNumber ASC '");
}

TEST_F(Rpt10414Test, TheBrowserMayLetGoWhileTheDialogIsUp) {
  ShowWith([&](Form& form, UserInput& user) {
    report = nullptr;
    Ok(form, user);
  });
  EXPECT_EQ(Report::LiveCount(), 0);
  EXPECT_EQ(desk.living, 0);
}

TEST_F(Rpt10414Test, TheDialogIsOpenedWithTheNumberOfTheText) {
  struct Row {
    const char* text;
    const char* number;
  };
  for (const Row& row : {Row{"10414", "10414"}, Row{"88 special", "88"}, Row{"x1", "0"}, Row{"", "0"}}) {
    SCOPED_TRACE(row.text);
    report->Put("ExtFirter", row.text);
    report->Put("RptID", 5);
    desk.journal.clear();
    ShowWith(Cancel);
    EXPECT_EQ(desk.Lines("InitFilter").at(0),
              std::string("control InitFilter('商品超储短缺表', ") + row.number + ")");
  }
}

TEST_F(Rpt10414Test, OutcomesOfADialogWithoutAFilter) {
  struct Row {
    const char* name;
    FakeScreen::Script script;
    const char* result;
  };
  const Row rows[] = {
      {"cancelled", Cancel, "{OK: False, Error: 'earlier'}"},
      {"closed by its window button", [](Form& form, UserInput&) { form.CloseByUser(); },
       "{OK: False, Error: 'earlier'}"},
      {"no dictionary",
       [](Form& form, UserInput& user) {
         FilterControl::In<SchemeControl>(form).filterResult = Variant(nullptr);
         user.Click("cmdOK");
       },
       "{OK: False, Error: '过滤条件有误，请重新过滤！'}"},
      {"an error while it is open", [](Form&, UserInput& user) { user.Set("cboSort", 99); },
       "{OK: True, Error: 'earlier'}"},
      {"an error of the control",
       [](Form& form, UserInput& user) {
         FilterControl::In<SchemeControl>(form).failing = "FilterResult";
         user.Click("cmdOK");
       },
       "{OK: True, Error: 'earlier'}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    SetResult(true, "earlier");
    ShowWith(row.script);
    EXPECT_EQ(Result(), row.result);
    EXPECT_EQ(Spell(report->Get("Filter")), "nothing");
    EXPECT_EQ(desk.living, 0) << "the dialog and its control are gone";
  }
  desk.Withdraw("TOVRptFilterCtl.TOVRptFilter");
  SetResult(true, "earlier");
  report->Call("ShowFilter");
  EXPECT_EQ(Result(), "{OK: True, Error: 'earlier'}") << "no control";
}

TEST_F(Rpt10414Test, ACancelAfterAnEarlierFilterKeepsThatFilter) {
  ShowWith(Ok);
  const Variant filter = report->Get("Filter");
  ShowWith(Cancel);
  EXPECT_TRUE(report->Get("Filter") == filter);
  EXPECT_EQ(Result(), "{OK: False, Error: ''}");
}

TEST_F(Rpt10414Test, NoFilterIsSpentByOneShowing) {
  report->Put("Filter", Keys({}));
  SetResult(false, "earlier");
  report->Put("NoFilter", true);
  report->Call("ShowFilter");
  EXPECT_THAT(desk.Lines("show "), IsEmpty()) << "no dialog is shown";
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_EQ(Spell(report->Get("Filter")), "nothing");

  report->Call("GetReportData");
  EXPECT_EQ(desk.Count("GetRpt10414Data('UserID=12;', nothing)"), 1) << "the data component gets no filter";
  EXPECT_THAT(SpellTitle(report->Get("Title").AsRef<Vector>()),
              ElementsAre("0 商品代码[全部]", "1 仓库代码[全部]"));

  ShowWith(Cancel);
  EXPECT_EQ(desk.Count("show frmFirter10414"), 1) << "the flag is spent";
}

TEST_F(Rpt10414Test, TheWholeRoadFromDialogToRows) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "5");
  ShowWith([](Form&, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Set("txtItem(1)", "09");
    user.Click("cmdOK");
  });
  desk.journal.clear();
  EXPECT_TRUE(report->Call("GetReportData").IsEmpty());
  EXPECT_THAT(SpellTitle(report->Get("Title").AsRef<Vector>()),
              ElementsAre("0 商品代码从[01]到[09]", "1 仓库代码[全部]"));
  EXPECT_EQ(Spell(report->Get("Filter").AsRef<Dictionary>()->Value("DataRightWhere")),
            "' (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) '");
  EXPECT_EQ(Picture(*report->Get("rs").AsRef<platform::Recordset>()),
            Picture(*TextRows({"FItemNumber"}, {{"01"}})));
  EXPECT_EQ(Result(), "{OK: True, Error: '', RptTitleObject: {}}");
  EXPECT_EQ(Spell(report->Get("Property")), "{Name: '商品超储短缺表', RptProperty: 6, ShowInPreview: 1}");
  EXPECT_THAT(desk.Lines("bar "), ElementsAre("bar SetMsg('正在连接服务器')", "bar HideProgBar",
                                              "bar SetMsg('正在从服务器读取数据，请稍候...')", "bar Unload"));
}

TEST_F(Rpt10414Test, FetchesThatFailSayWhyAndReleaseTheData) {
  struct Row {
    const char* name;
    std::function<void(Desk&)> arrange;
    const char* result;
  };
  const Row rows[] = {
      {"the data component is missing", [](Desk& other) { other.Withdraw("TOVMStockRpt.Data10414"); },
       "{OK: False, Error: 'class not registered: TOVMStockRpt.Data10414', RptTitleObject: {}}"},
      {"the method raises",
       [](Desk& other) { other.Fail("TOVMStockRpt.Data10414", "GetRpt10414Data", "数据库超时"); },
       "{OK: False, Error: '数据库超时', RptTitleObject: {}}"},
      {"the access check raises",
       [](Desk& other) { other.Fail("TOVEBCGLView.GLData", "AccessCheck", "no right"); },
       "{OK: False, Error: '', RptTitleObject: {}}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ProcessState::Get() = {};
    Desk other;
    other.Answer("TOVMStockRpt.Data10414", "GetRpt10414Data", nullptr);
    row.arrange(other);
    report = MakeReport<Rpt10414>();
    report->Put("Filter", Keys({}));
    EXPECT_EQ(Raised([&] { report->Call("GetReportData"); }), "nothing raised");
    EXPECT_EQ(Result(), row.result);
    EXPECT_EQ(Spell(report->Get("rs")), "nothing");
    EXPECT_EQ(other.Count("new TOVMStockRpt.Data10414"), other.Count("end TOVMStockRpt.Data10414"));
    ProcessState::Get() = {};
    EXPECT_EQ(other.living, 0);
    report->Put("Filter", Keys({}));
    EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), "True") << "a filter mends it";
  }
}

TEST_F(Rpt10414Test, TheDataComponentMayReplaceTheFilter) {
  const Ref<Dictionary> given = Keys({{"a", 1}});
  const Ref<Dictionary> other = Keys({{"b", 2}});
  struct Row {
    const char* name;
    Variant left;
    Ref<Dictionary> kept;
    bool ok;
  };
  for (const Row& row : {Row{"another dictionary", other, other, true}, Row{"nothing", nullptr, {}, true},
                         Row{"empty", Variant(), {}, true}, Row{"a text", "x", given, false}}) {
    SCOPED_TRACE(row.name);
    desk.On("TOVMStockRpt.Data10414", "GetRpt10414Data", [&](std::span<Variant> arguments) {
      arguments[1] = row.left;
      return Variant(nullptr);
    });
    report->Put("Filter", given);
    report->Call("GetReportData");
    EXPECT_EQ(report->Get("Filter").AsRef<Dictionary>(), row.kept);
    EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), row.ok ? "True" : "False");
  }
  desk.Answer("TOVMStockRpt.Data10414", "GetRpt10414Data", {});
}

TEST_F(Rpt10414Test, ASecondRefreshShowsAFreshBoxAndARebuiltHeading) {
  report->Put("Filter", Keys({}));
  report->Call("Refresh");
  const Variant header = report->Get("Header");
  EXPECT_EQ(Spell(report->Get("Title")), "nothing") << "a refresh builds no title";
  report->Call("Refresh");
  EXPECT_FALSE(header == report->Get("Header"));
  EXPECT_EQ(desk.Count("bar Unload"), 2);
  EXPECT_EQ(desk.Count("new TOVMStockRpt.Data10414"), 2);
  EXPECT_EQ(desk.Count("end TOVMStockRpt.Data10414"), 2);
  EXPECT_EQ(desk.Count("new TOVEBCGLView.GLData"), 1) << "the ledger service is the process's";
}

}  // namespace
}  // namespace component
