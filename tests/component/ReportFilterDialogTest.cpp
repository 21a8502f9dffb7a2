// The dialog family whose filter control brings the buttons.
#include "tests/component/ComponentTest.h"
#include "tests/component/SampleReport.h"

namespace component {
namespace {

using platform::Date;
using platform::Form;
using platform::MakeRef;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReportFilterDialogTest : public ComponentTest {
 protected:
  ReportFilterDialogTest() {
    ServeFilterControls(desk);
    desk.profile = Keys({{"IC/CurrentYear", 2024}, {"IC/CurrentPeriod", 3}});
    desk.AnswerSql("ICCalFlag", TextRows({"F"}, {}));
    dialog->SetRptID(10412);
  }

  void ShowWith(FakeScreen::Script script) {
    desk.screen.scripts.push_back(std::move(script));
    dialog->Show();
  }
  static ReportControl& ControlOf(Form& form) { return FilterControl::In<ReportControl>(form); }
  std::string Values() const {
    std::string values;
    for (const char* id : {"txtItem(0)", "txtItem(2)", "DtpBDate", "DtpEDate", "DtpKept", "chkTotal",
                           "OptSortD", "OptSortA"}) {
      values += Spell(dialog->Find(id)->Value()) + " ";
    }
    return values + std::to_string(dynamic_cast<platform::ComboBox&>(*dialog->Find("cboSort")).ListIndex());
  }

  Ref<SampleDialog> dialog = MakeRef<SampleDialog>();
};

TEST_F(ReportFilterDialogTest, LoadingPreparesTheControl) {
  dialog->SetAutoFilter(1);
  ShowWith([&](Form& form, UserInput&) {
    EXPECT_THAT(desk.Lines("control "), ElementsAre("control ReportID(10412)", "control AutoFilter(1)"));
    EXPECT_EQ(Spell(dialog->Result()), "{OK: False}");
    EXPECT_EQ(form.Caption(), "过滤");
    EXPECT_EQ(form.FirstEmbedded()->Id(), "TOVRptFilter");
    EXPECT_EQ(form.Find("cmdOK"), nullptr) << "the control has the buttons";
    form.Activate();
    EXPECT_EQ(desk.Lines("control ").size(), 2U) << "activation does nothing further";
    EXPECT_THAT(dialog->steps, ElementsAre("SetUp"));
  });
}

TEST_F(ReportFilterDialogTest, AFilterFromOutsideIsHandedToTheControl) {
  const Ref<platform::Dictionary> given = Keys({{"BItemNumber", "01"}});
  dialog->SetResult(given);
  ShowWith([&](Form&, UserInput&) {
    EXPECT_THAT(desk.Lines("control "),
                ElementsAre("control ReportID(10412)", "control LoadFilter({BItemNumber: '01'})",
                            "control AutoFilter(-1)"));
    EXPECT_EQ(dialog->Result(), given);
    EXPECT_EQ(Spell(given), "{BItemNumber: '01'}") << "nothing is added to it";
  });
}

TEST_F(ReportFilterDialogTest, TheDesignersSettingsStandWithTheControl) {
  dialog->EnsureLoaded();
  EXPECT_EQ(
      Spell(dialog->FirstEmbedded()->Settings()),
      "{reportid: '', paytypeid: 0, versiontype: 1, moduletype: 0, limitmindate: True, autosave: True, "
      "filteritems: {}, filtervisible0: True, filtervisible1: False, filtervisible2: False, filtervisible3: "
      "False, "
      "filtervisible4: False, filtervisible5: False, date:control: True, date:controlname: 'fraPeriod', "
      "period:control: False, period:controlname: '', ccode:control: True, ccode:controlname: 'fraItem', "
      "summary:control: False, summary:controlname: '', acode:control: False, acode:controlname: '', "
      "query:control: False, query:controlname: ''}");
}

TEST_F(ReportFilterDialogTest, SavingWritesValuesOfTheirOwnKinds) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "  01 ");
    user.Set("txtNote", "no key");
    user.Set("DtpBDate", Date::Of(2024, 1, 2));
    user.Set("cboSort", 1);
    user.Click("OptSortA");
    const Ref<platform::Dictionary> fields = Keys({{"OK", false}});
    ControlOf(form).events.RaiseWith("SaveFields", fields);
    EXPECT_EQ(Spell(fields),
              "{OK: False, BItemNumber: '01', EItemNumber: '', BBatchNo: '', BDate: 2024-01-02, EDate: "
              "2024-03-31, Kept: 2024-03-31, chkTotal: 1, cboSort: 1, OptSortD: False, OptSortA: True, "
              "OrderBy: 'FQty DESC '}");
  });
}

TEST_F(ReportFilterDialogTest, LoadingFallsBackOnDefaults) {
  struct Row {
    const char* name;
    Ref<platform::Dictionary> fields;
    const char* values;
  };
  const Row rows[] = {
      {"everything",
       Keys({{"BItemNumber", "01"},
             {"BBatchNo", "B"},
             {"BDate", Date::Of(2024, 1, 2)},
             {"EDate", "2024/1/3"},
             {"Kept", Date::Of(2024, 1, 4)},
             {"chkTotal", 1},
             {"cboSort", 1},
             {"OptSortD", true},
             {"OptSortA", false}}),
       "'01' 'B' 2024-01-02 2024-01-03 2024-01-04 1 True False 1"},
      {"texts as an older scheme has them",
       Keys({{"chkTotal", "True"}, {"cboSort", "1"}, {"OptSortA", "0"}, {"OptSortD", "-1"}}),
       "'' '' 2000-01-01 2000-01-01 2000-01-01 1 True False 1"},
      {"nothing", Keys({}), "'' '' 2000-01-01 2000-01-01 2000-01-01 0 False True 0"},
      {"dates that are none",
       Keys({{"BDate", "soon"}, {"EDate", "2023-02-30"}, {"Kept", 45000}, {"chkTotal", "x"}, {"cboSort", 9}}),
       "'' '' 2000-01-01 2000-01-01 2000-01-01 1 False True 0"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    dialog = MakeRef<SampleDialog>();
    ShowWith([&](Form& form, UserInput& user) {
      user.Set("txtItem(0)", "old");
      for (const char* id : {"DtpBDate", "DtpEDate", "DtpKept"}) user.Set(id, Date::Of(2000, 1, 1));
      ControlOf(form).events.RaiseWith("LoadFields", row.fields);
      EXPECT_EQ(Values(), row.values);
    });
  }
}

TEST_F(ReportFilterDialogTest, ResettingSetsTheDefaults) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "x");
    user.Set("txtNote", "stays");
    for (const char* id : {"DtpBDate", "DtpEDate", "DtpKept"}) user.Set(id, Date::Of(2000, 1, 1));
    user.Click("chkTotal");
    user.Set("cboSort", 1);
    user.Click("OptSortA");
    ControlOf(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Values(), "'' '' 2024-03-01 2024-03-31 2000-01-01 1 True False 0");
    EXPECT_EQ(Spell(form.Find("txtNote")->Value()), "'stays'")
        << "a field without a key is no field of the filter";
  });
}

TEST_F(ReportFilterDialogTest, TheQuickQueryPaneIsElsewhere) {
  ShowWith([&](Form& form, UserInput&) {
    const Ref<platform::Dictionary> query = Keys({{"BItemNumber", "01"}});
    ControlOf(form).events.RaiseWith("SaveQuery", query);
    ControlOf(form).events.RaiseWith("LoadQuery", query);
    EXPECT_EQ(Spell(query), "{BItemNumber: '01'}");
    EXPECT_EQ(Spell(form.Find("txtItem(0)")->Value()), "''");
  });
}

TEST_F(ReportFilterDialogTest, TheControlLearnsAFieldsKindFromItsIndex) {
  ShowWith([&](Form& form, UserInput&) {
    struct Row {
      const char* id;
      const char* type;
    };
    for (const Row& row :
         {Row{"txtItem(0)", "4"}, Row{"txtItem(1)", "4"}, Row{"txtItem(2)", "21"}, Row{"txtNote", "77"}}) {
      SCOPED_TRACE(row.id);
      std::array<Variant, 4> arguments{Variant(Ref<platform::Object>(form.Find(row.id))), 77, "", ""};
      ControlOf(form).events.Raise("GetDataType", arguments);
      EXPECT_EQ(Spell(arguments[1]), row.type);
    }
  });
}

TEST_F(ReportFilterDialogTest, ConfirmingTakesTheControlsDictionary) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    desk.journal.clear();
    ControlOf(form).Ok();
    EXPECT_FALSE(form.IsVisible());
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_THAT(desk.Lines("control "), ElementsAre("control FilterResult()"));
    EXPECT_EQ(desk.Count("Select 1 From ICCalFlag"), 1) << "new business is looked for";
  });
  EXPECT_EQ(Spell(dialog->Result()),
            "{BItemNumber: '01', EItemNumber: '', BBatchNo: '', BDate: 2024-03-31, EDate: "
            "2024-03-31, Kept: 2024-03-31, chkTotal: 1, cboSort: 0, OptSortD: True, OptSortA: "
            "False, OrderBy: 'FItemNumber ASC ', OK: True}");
}

TEST_F(ReportFilterDialogTest, TheUserMayHaveCostsCalculatedAfterConfirming) {
  Desk other;
  ServeFilterControls(other);
  other.AnswerSql("ICCalFlag", TextRows({"F"}, {{"1"}}));
  other.AnswerSql("CanQuickCalculate", TextRows({"FValue"}, {}));
  other.Answer("TOVCalCostByStock.InterFace", "QuickCalculate", {});
  other.screen.answers = {platform::Answer::kYes};
  other.screen.scripts.push_back([&](Form& form, UserInput&) {
    ControlOf(form).Ok();
    EXPECT_EQ(other.Count("QuickCalculate(<frmFirterSample>, False)"), 1);
  });
  dialog->Show();
  EXPECT_EQ(Spell(dialog->Result()->Value("OK")), "True");
  dialog = nullptr;
}

TEST_F(ReportFilterDialogTest, ACancelHidesAndKeepsTheFields) {
  for (const int code : {1, 2, -1}) {
    SCOPED_TRACE(code);
    ShowWith([&](Form& form, UserInput& user) {
      user.Set("txtItem(0)", "01");
      ControlOf(form).events.RaiseWith("FilterDone", static_cast<std::int16_t>(code));
      EXPECT_FALSE(form.IsVisible());
    });
    EXPECT_EQ(Spell(dialog->Result()), "{OK: False}");
    EXPECT_EQ(Spell(dialog->Find("txtItem(0)")->Value()), "'01'");
  }
  EXPECT_THAT(desk.Lines("FilterResult"), IsEmpty());
  EXPECT_THAT(desk.sqlTexts, IsEmpty());
}

TEST_F(ReportFilterDialogTest, ACancelAfterAConfirmedRunTurnsTheSameFilterOff) {
  dialog->clearsFirst = true;
  ShowWith([](Form& form, UserInput&) { ControlOf(form).Ok(); });
  const Ref<platform::Dictionary> filter = dialog->Result();
  EXPECT_EQ(Spell(filter->Value("OK")), "True");
  ShowWith([](Form& form, UserInput&) { ControlOf(form).Cancel(); });
  EXPECT_EQ(dialog->Result(), filter);
  EXPECT_EQ(Spell(filter->Value("OK")), "False");
}

TEST_F(ReportFilterDialogTest, AControlThatDoesNotDeliverLeavesTheDialogOpen) {
  struct Row {
    const char* name;
    std::optional<Variant> result;
    const char* failing;
  };
  for (const Row& row : {Row{"raises", {}, "FilterResult"}, Row{"nothing", Variant(nullptr), ""},
                         Row{"empty", Variant(), ""}, Row{"a text", Variant("filter"), ""},
                         Row{"another object", Variant(MakeRef<platform::Vector>()), ""}}) {
    SCOPED_TRACE(row.name);
    dialog = MakeRef<SampleDialog>();
    const Ref<platform::Dictionary> before = Keys({{"BItemNumber", "old"}, {"OK", true}});
    dialog->SetResult(before);
    ShowWith([&](Form& form, UserInput&) {
      ControlOf(form).filterResult = row.result;
      ControlOf(form).failing = row.failing;
      ControlOf(form).Ok();
      EXPECT_TRUE(form.IsVisible());
    });
    EXPECT_EQ(dialog->Result(), before);
    EXPECT_EQ(Spell(before), "{BItemNumber: 'old', OK: False}");
  }
}

TEST_F(ReportFilterDialogTest, AnEventWithoutItsDictionaryIsRefused) {
  ShowWith([](Form& form, UserInput&) {
    EXPECT_EQ(RaisedNumber([&] { ControlOf(form).events.RaiseWith("SaveFields"); }),
              platform::ErrorNumber::kObjectRequired);
    EXPECT_EQ(RaisedNumber([&] { ControlOf(form).events.RaiseWith("LoadFields", "text"); }),
              platform::ErrorNumber::kObjectRequired);
  });
}

}  // namespace
}  // namespace component
