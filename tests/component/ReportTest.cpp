// What all report classes share: members, outcomes, and the fetch inside the progress box.
#include "component/frame/MMTS.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/SampleReport.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReportTest : public ComponentTest {
 protected:
  ReportTest() { desk.Answer("Test.Data", "GetSample", TextRows({"FItemNumber"}, {{"01"}})); }

  Ref<SampleReport> Made(const ReportFacts& facts = kSampleFacts) {
    Ref<SampleReport> report = MakeRef<SampleReport>(facts);
    report->Initialize();
    return report;
  }
  static std::string Result(const SampleReport& report) { return Spell(report.Result()); }
};

TEST_F(ReportTest, CreationReadsTheProfileAndSetsUpTheMembers) {
  desk.Answer("TOVEBSBase.SystemProfile", "GetProfile", 0);
  const Ref<SampleReport> report = Made();
  EXPECT_FALSE(ProcessState::Get().isLongNumber);
  EXPECT_EQ(Result(*report), "{OK: False, Error: ''}");
  EXPECT_EQ(Spell(report->Property()), "{Name: '样表', RptProperty: 2, FrozenColumn: 4}");
  EXPECT_EQ(report->RptID(), 0);
  EXPECT_FALSE(report->Filter());
  EXPECT_FALSE(report->Header());
  EXPECT_FALSE(report->Title());
  EXPECT_EQ(Spell(report->Rows()), "nothing");
  EXPECT_EQ(Report::LiveCount(), 1);
  desk.Answer("TOVEBSBase.SystemProfile", "GetProfile", 1);
  Made();
  EXPECT_TRUE(ProcessState::Get().isLongNumber) << "every new report refreshes the flag";
}

TEST_F(ReportTest, SettingTheNumberReplacesTheProperty) {
  const Ref<SampleReport> report = Made();
  const Ref<Dictionary> before = report->Property();
  before->Set("ShowFilter", 1);
  report->SetExtFirter("10499");
  EXPECT_NE(report->Property(), before);
  EXPECT_EQ(Spell(report->Property()), "{Name: '样表', RptProperty: 2, FrozenColumn: 4}");
}

TEST_F(ReportTest, AFilterIsTakenByReferenceAndOnlyItsAbsenceIsBad) {
  const Ref<SampleReport> report = Made();
  const Ref<Dictionary> filter = Keys({});
  report->Result()->Set("Error", "earlier");
  report->SetFilter(filter);
  EXPECT_EQ(report->Filter(), filter);
  EXPECT_EQ(Result(*report), "{OK: True, Error: ''}");
  report->SetFilter({});
  EXPECT_FALSE(report->Filter());
  EXPECT_EQ(Result(*report), "{OK: False, Error: '请选择过滤条件！'}");
}

TEST_F(ReportTest, WithoutAnAcceptedFilterNothingIsFetched) {
  const Ref<SampleReport> report = Made();
  desk.journal.clear();
  EXPECT_TRUE(report->GetReportData().IsEmpty());
  EXPECT_THAT(desk.journal, IsEmpty()) << "straight after creation";
  report->SetFilter({});
  report->GetReportData();
  EXPECT_THAT(desk.journal, IsEmpty());
  EXPECT_EQ(Result(*report), "{OK: False, Error: '请选择过滤条件！'}");
}

TEST_F(ReportTest, AFetchRunsInItsOrder) {
  const Ref<SampleReport> report = Made();
  report->SetFilter(Keys({{"BItemNumber", "01"}}));
  report->onColumns = [&] { desk.Note("columns"); };
  desk.journal.clear();
  report->GetReportData();
  std::vector<std::string> steps;
  for (const std::string& line : desk.journal) {
    for (const char* step : {"bar ", "AccessCheck", "columns", "NeedAutorized", "Test.Data"}) {
      if (line.find(step) != std::string::npos) steps.push_back(line);
    }
  }
  EXPECT_THAT(steps,
              ElementsAre("bar SetMsg('正在连接服务器')", "call TOVEBCGLView.GLData.AccessCheck(1006, 2, 4)",
                          "columns", "call TOVEBSBase.SecurityInfo.NeedAutorized('UserID=12;')",
                          "new Test.Data", "bar HideProgBar", "bar SetMsg('正在从服务器读取数据，请稍候...')",
                          "call Test.Data.GetSample('UserID=12;', {BItemNumber: '01', DataRightWhere: ''})",
                          "bar Unload", "end Test.Data"));
  EXPECT_EQ(Result(*report), "{OK: True, Error: '', RptTitleObject: {}}");
  EXPECT_EQ(Spell(report->Rows()), "<" + std::string(platform::Recordset::kClassName) + ">");
  EXPECT_EQ(report->Header()->Count(), 1);
  EXPECT_FALSE(ProcessState::Get().sharedHeading) << "the shared heading is cleared";
}

TEST_F(ReportTest, TheTitleIsBuiltBeforeOrInsideTheBox) {
  for (const bool inside : {false, true}) {
    SCOPED_TRACE(inside ? "inside" : "before");
    ReportFacts facts = kSampleFacts;
    facts.titleInsideBox = inside;
    const Ref<SampleReport> report = Made(facts);
    report->SetFilter(Keys({{"BBatchNo", ""}, {"EBatchNo", ""}}));
    bool titleAtAccess = false;
    desk.On("TOVEBCGLView.GLData", "AccessCheck", [&](std::span<Variant>) {
      titleAtAccess = static_cast<bool>(report->Title());
      return Variant(true);
    });
    bool titleAtFirstMessage = false;
    desk.screen.onPending = [&] {
      if (desk.Count("bar ") == 0 && report->Title()) titleAtFirstMessage = true;
    };
    desk.journal.clear();
    report->GetReportData();
    desk.screen.onPending = {};
    EXPECT_TRUE(titleAtAccess);
    EXPECT_EQ(titleAtFirstMessage, !inside) << "events run after the title step that stands before the box";
    EXPECT_THAT(SpellTitle(report->Title()), ElementsAre("0 批号[全部]"));
    EXPECT_EQ(Spell(report->Property()->Value("ShowInPreview")), "1");
  }
}

TEST_F(ReportTest, OnlySomeClassesHaveATitleObject) {
  ReportFacts facts = kSampleFacts;
  facts.hasTitleObject = false;
  const Ref<SampleReport> report = Made(facts);
  report->SetFilter(Keys({}));
  report->GetReportData();
  EXPECT_EQ(Result(*report), "{OK: True, Error: ''}");

  const Ref<SampleReport> other = Made();
  other->SetFilter(Keys({}));
  other->GetReportData();
  const Variant first = other->Result()->Value("RptTitleObject");
  other->GetReportData();
  EXPECT_FALSE(first == other->Result()->Value("RptTitleObject")) << "a new one each time";
}

TEST_F(ReportTest, RowsOfTheWrongKindAreRefused) {
  struct Row {
    const char* name;
    RowsKind kind;
    Variant rows;
    const char* result;
  };
  const Row rows[] = {
      {"a recordset", RowsKind::kRecordset, TextRows({"F"}, {}), "{OK: True, Error: ''}"},
      {"a list", RowsKind::kVector, MakeRef<platform::Vector>(), "{OK: True, Error: ''}"},
      {"any object", RowsKind::kObject, Keys({}), "{OK: True, Error: ''}"},
      {"nothing", RowsKind::kRecordset, nullptr, "{OK: True, Error: ''}"},
      {"a list for a recordset", RowsKind::kRecordset, MakeRef<platform::Vector>(),
       "{OK: False, Error: 'type mismatch: the data component answers an object of class RNX.Vector'}"},
      {"a dictionary for a list", RowsKind::kVector, Keys({}),
       "{OK: False, Error: 'type mismatch: the data component answers an object of class RNX.Dictionary'}"},
      {"empty", RowsKind::kObject, Variant(),
       "{OK: False, Error: 'object required: the value is of kind empty'}"},
      {"a text", RowsKind::kObject, "rows",
       "{OK: False, Error: 'object required: the value is of kind text'}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ReportFacts facts = kSampleFacts;
    facts.rows = row.kind;
    facts.hasTitleObject = false;
    desk.Answer("Test.Data", "GetSample", row.rows);
    const Ref<SampleReport> report = Made(facts);
    report->SetFilter(Keys({}));
    report->GetReportData();
    EXPECT_EQ(Result(*report), row.result);
    EXPECT_EQ(Spell(report->Property()->Value("RsType")), row.kind == RowsKind::kVector ? "1" : "empty");
  }
  desk.Answer("Test.Data", "GetSample", {});
}

TEST_F(ReportTest, TheDataRightOfAReportGoesIntoItsFilter) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "5");
  const Ref<SampleReport> report = Made();
  report->SetFilter(Keys({}));
  report->GetReportData();
  EXPECT_EQ(Spell(report->Filter()),
            "{DataRightWhere: ' (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) '}");
}

TEST_F(ReportTest, AnErrorOutsideTheFetchsTrapHasNoText) {
  struct Row {
    const char* name;
    bool inside;
    std::function<void(Desk&)> arrange;
  };
  const Row rows[] = {
      {"the access check fails", true,
       [](Desk& other) { other.Fail("TOVEBCGLView.GLData", "AccessCheck", "no right"); }},
      {"the access check answers no boolean", false,
       [](Desk& other) { other.Answer("TOVEBCGLView.GLData", "AccessCheck", "perhaps"); }},
      {"there is no ledger service", true, [](Desk& other) { other.Withdraw("TOVEBCGLView.GLData"); }},
      {"events fail after the title", false,
       [](Desk& other) {
         other.screen.onPending = [] {
           throw platform::Error(platform::ErrorNumber::kUserDefined, "x", "y");
         };
       }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ProcessState::Get() = {};
    Desk other;
    row.arrange(other);
    ReportFacts facts = kSampleFacts;
    facts.titleInsideBox = row.inside;
    facts.hasTitleObject = false;
    const Ref<SampleReport> report = Made(facts);
    report->SetFilter(Keys({}));
    EXPECT_EQ(Raised([&] { report->GetReportData(); }), "nothing raised");
    EXPECT_EQ(Result(*report), "{OK: False, Error: ''}");
    ProcessState::Get() = {};
  }
}

TEST_F(ReportTest, ARefusedAccessIsTheServicesOwnBusiness) {
  desk.Answer("TOVEBCGLView.GLData", "AccessCheck", false);
  const Ref<SampleReport> report = Made();
  report->SetFilter(Keys({}));
  report->GetReportData();
  EXPECT_EQ(Spell(report->Result()->Value("OK")), "True");
}

TEST_F(ReportTest, RefreshAloneFetchesInAnyState) {
  const Ref<SampleReport> report = Made();
  EXPECT_TRUE(report->Refresh().IsEmpty());
  EXPECT_EQ(Spell(report->Result()->Value("OK")), "True") << "even without a filter";
  EXPECT_EQ(desk.Count("call Test.Data.GetSample('UserID=12;', nothing)"), 1);

  desk.Fail("Test.Data", "GetSample", "断线");
  report->Refresh();
  EXPECT_EQ(Spell(report->Result()->Value("Error")), "'断线'");
  report->GetReportData();
  EXPECT_EQ(desk.Count("call Test.Data.GetSample"), 2) << "a failed report fetches no more by itself";
  desk.Answer("Test.Data", "GetSample", nullptr);
  report->Refresh();
  EXPECT_EQ(desk.Count("call Test.Data.GetSample"), 3);
  EXPECT_EQ(Spell(report->Result()->Value("OK")), "True");
}

TEST_F(ReportTest, TheBrowserMayLetGoBeforeTheBoxIsUp) {
  ReportFacts facts = kSampleFacts;
  facts.titleInsideBox = false;
  Ref<SampleReport> report = Made(facts);
  report->SetFilter(Keys({}));
  desk.screen.onPending = [&] { report = nullptr; };
  report->GetReportData();
  desk.screen.onPending = {};
  EXPECT_EQ(Report::LiveCount(), 0);
  EXPECT_EQ(desk.Count("bar Unload"), 1) << "the fetch it was asked for is finished";
}

TEST_F(ReportTest, TheBrowserMayLetGoWhileTheBoxIsUp) {
  Ref<SampleReport> report = Made();
  report->SetFilter(Keys({}));
  desk.screen.onPending = [&] { report = nullptr; };
  report->Refresh();
  desk.screen.onPending = {};
  EXPECT_EQ(Report::LiveCount(), 0);
  EXPECT_EQ(desk.Count("bar Unload"), 1);
}

TEST_F(ReportTest, MembersGoWithTheReport) {
  desk.On("Test.Data", "GetSample", [](std::span<Variant>) { return Variant(TextRows({"F"}, {})); });
  Ref<SampleReport> report = Made();
  const Ref<Dictionary> filter = Keys({});
  report->SetFilter(filter);
  report->GetReportData();
  const Ref<Dictionary> result = report->Result();
  const Ref<Dictionary> property = report->Property();
  const Ref<platform::Vector> header = report->Header();
  const Ref<platform::Vector> title = report->Title();
  const Variant rows = report->Rows();
  report = nullptr;
  for (const std::size_t holders : {filter->Holders(), result->Holders(), property->Holders(),
                                    header->Holders(), title->Holders(), rows.AsObject().Holders()}) {
    EXPECT_EQ(holders, 1U);
  }
}

}  // namespace
}  // namespace component
