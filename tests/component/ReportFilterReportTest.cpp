// How a report takes the outcome of a dialog whose control brings the buttons: made anew, or kept.
#include "tests/component/ComponentTest.h"
#include "tests/component/SampleReport.h"

namespace component {
namespace {

using platform::Form;
using platform::MakeRef;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using ::testing::ElementsAre;

class ReportFilterReportTest : public ComponentTest {
 protected:
  ReportFilterReportTest() {
    ServeFilterControls(desk);
    desk.AnswerSql("ICCalFlag", TextRows({"F"}, {}));
    report->Initialize();
    report->onDialog = [this](SampleDialog& dialog) {
      dialog.clearsFirst = true;
      shown.emplace_back(&dialog);
    };
  }

  void ShowWith(FakeScreen::Script script) {
    desk.screen.scripts.push_back(std::move(script));
    EXPECT_TRUE(report->Call("ShowFilter").IsEmpty());
  }
  static void Ok(Form& form, UserInput&) { FilterControl::In<ReportControl>(form).Ok(); }
  static void Cancel(Form& form, UserInput&) { FilterControl::In<ReportControl>(form).Cancel(); }
  static void DropResult(Form& form, UserInput&) {
    dynamic_cast<SampleDialog&>(form).SetResult({});
    form.Hide();
  }
  static void Raise(Form&, UserInput&) {
    throw platform::Error(platform::ErrorNumber::kUserDefined, "x", "broken");
  }
  void SetBefore(bool ok, const char* error) {
    report->Result()->Set("OK", ok);
    report->Result()->Set("Error", error);
  }
  std::string Result() const { return Spell(report->Result()); }

  Ref<SampleReport> report = MakeRef<SampleReport>();
  std::vector<Ref<SampleDialog>> shown;
};

TEST_F(ReportFilterReportTest, TheDialogGetsItsNumberAndHowToOpen) {
  struct Row {
    const char* name;
    const char* number;
    Variant showFilter;
    const char* id;
    const char* open;
  };
  for (const Row& row : {Row{"as created", "10412", platform::Missing(), "10412", "-1"},
                         Row{"the browser's number and wish", "10499abc", 1, "10499", "1"},
                         Row{"a wish as text", "x", "0", "0", "0"}}) {
    SCOPED_TRACE(row.name);
    report->SetExtFirter(row.number);
    if (!row.showFilter.IsMissing()) report->Property()->Set("ShowFilter", row.showFilter);
    report->SetRptID(7);
    desk.journal.clear();
    ShowWith(Cancel);
    EXPECT_THAT(desk.Lines("control "), ElementsAre(std::string("control ReportID(") + row.id + ")",
                                                    std::string("control AutoFilter(") + row.open + ")"));
  }
}

TEST_F(ReportFilterReportTest, AConfirmedFilterIsTakenByReference) {
  SetBefore(false, "earlier");
  ShowWith(Ok);
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_EQ(report->Filter(), shown.back()->Result());
}

TEST_F(ReportFilterReportTest, ACancelKeepsTheEarlierText) {
  SetBefore(true, "earlier");
  ShowWith(Cancel);
  EXPECT_EQ(Result(), "{OK: False, Error: 'earlier'}");
  EXPECT_FALSE(report->Filter());
}

TEST_F(ReportFilterReportTest, TheArgumentIsAcceptedAndIgnored) {
  desk.screen.scripts.emplace_back(Cancel);
  Variant wish(true);
  EXPECT_TRUE(report->Call("ShowFilter", wish).IsEmpty());
  EXPECT_EQ(Spell(wish), "True");
  EXPECT_EQ(report->dialogsMade, 1);
  EXPECT_EQ(RaisedNumber([&] { report->Call("ShowFilter", true, 1); }),
            platform::ErrorNumber::kArgumentCount);
}

TEST_F(ReportFilterReportTest, TheBrowserMayLetGoWhileTheDialogIsUp) {
  for (const bool keeps : {false, true}) {
    SCOPED_TRACE(keeps ? "kept" : "made anew");
    report = MakeRef<SampleReport>();
    report->Initialize();
    report->keepsDialog = keeps;
    ShowWith([&](Form& form, UserInput& user) {
      report = nullptr;
      Ok(form, user);
    });
    EXPECT_EQ(Report::LiveCount(), 0);
    EXPECT_EQ(desk.living, 0);
  }
}

TEST_F(ReportFilterReportTest, ADialogIsMadeAnewEachTime) {
  ShowWith(Ok);
  ShowWith(Cancel);
  EXPECT_EQ(report->dialogsMade, 2);
  EXPECT_THAT(shown[0]->steps, ElementsAre("SetUp", "Unload"));
  EXPECT_EQ(shown[0]->Holders(), 1U) << "only the test holds it";
  EXPECT_EQ(Spell(report->Filter()->Value("OK")), "True") << "the second dialog has a filter of its own";
}

TEST_F(ReportFilterReportTest, AnewWithoutAResultHasNoText) {
  SetBefore(true, "earlier");
  ShowWith(DropResult);
  EXPECT_EQ(Result(), "{OK: False, Error: 'earlier'}");
}

TEST_F(ReportFilterReportTest, AnErrorInANewDialogLeavesTheResult) {
  SetBefore(true, "earlier");
  ShowWith(Raise);
  EXPECT_EQ(Result(), "{OK: True, Error: 'earlier'}");
  EXPECT_THAT(shown[0]->steps, ElementsAre("SetUp", "Unload"));
  EXPECT_EQ(shown[0]->Holders(), 1U);
  desk.Withdraw("VEZ_GRFC.ReportFilter");
  ShowWith(Ok);
  EXPECT_EQ(Result(), "{OK: True, Error: 'earlier'}") << "not even a control";
  desk.screen.scripts.clear();
}

TEST_F(ReportFilterReportTest, AKeptDialogIsShownAgainAsItWasLeft) {
  report->keepsDialog = true;
  ShowWith([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    Ok(form, user);
  });
  const Ref<platform::Dictionary> filter = report->Filter();
  report->SetExtFirter("55");
  ShowWith([&](Form& form, UserInput& user) {
    EXPECT_EQ(Spell(form.Find("txtItem(0)")->Value()), "'01'");
    EXPECT_EQ(shown[0]->RptID(), 55);
    Cancel(form, user);
  });
  EXPECT_EQ(report->dialogsMade, 1);
  EXPECT_EQ(Result(), "{OK: False, Error: ''}");
  EXPECT_EQ(report->Filter(), filter);
  EXPECT_EQ(Spell(filter->Value("OK")), "False") << "in the very dictionary that the report holds";
  desk.journal.clear();
  report->Call("GetReportData");
  EXPECT_THAT(desk.journal, ::testing::IsEmpty()) << "and so it refuses to fetch";
  EXPECT_THAT(shown[0]->steps, ElementsAre("SetUp"));
}

TEST_F(ReportFilterReportTest, AKeptDialogIsUnloadedWithItsReport) {
  report->keepsDialog = true;
  ShowWith(Ok);
  report = nullptr;
  EXPECT_THAT(shown[0]->steps, ElementsAre("SetUp", "Unload"));
  EXPECT_EQ(shown[0]->Holders(), 1U);
}

TEST_F(ReportFilterReportTest, AKeptDialogWithoutAResultIsToldAndDropped) {
  report->keepsDialog = true;
  SetBefore(true, "earlier");
  ShowWith(DropResult);
  EXPECT_EQ(Result(), "{OK: False, Error: '过滤条件有误，请重新过滤！'}");
  ShowWith(Cancel);
  EXPECT_EQ(report->dialogsMade, 2);
}

TEST_F(ReportFilterReportTest, AnErrorInAKeptDialogUnloadsIt) {
  report->keepsDialog = true;
  SetBefore(true, "earlier");
  ShowWith(Raise);
  EXPECT_EQ(Result(), "{OK: True, Error: 'earlier'}");
  EXPECT_THAT(shown[0]->steps, ElementsAre("SetUp", "Unload"));
  ShowWith(Ok);
  EXPECT_EQ(report->dialogsMade, 1) << "it is loaded anew, not made anew";
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_TRUE(report->Filter());
}

}  // namespace
}  // namespace component
