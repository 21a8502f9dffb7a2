// The guard over a dialog's from and to date.
#include "component/filter/ClsDtpickerRange.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Date;
using platform::DatePicker;
using platform::Form;
using platform::MakeRef;
using platform::Ref;
using platform::UserInput;
using ::testing::IsEmpty;

class TwoDates final : public Form {
 public:
  TwoDates() : Form("frmTwoDates") {}

  DatePicker& from = Add<DatePicker>("DtpBDate");
  DatePicker& to = Add<DatePicker>("DtpEDate");
  platform::TextBox& other = Add<platform::TextBox>("txtItem", 0);
};

Date Day(std::string_view text) { return *Date::FromText(text); }

std::vector<std::string> Told(const std::string& text) {
  return text.empty() ? std::vector<std::string>()
                      : std::vector{"ask '" + text + "' '' ok information ok -> ok"};
}

class DateRangeTest : public ComponentTest {
 protected:
  DateRangeTest() {
    desk.AnswerSql("t_PeriodDate", TextRows({"FStartDate", "FEndDate"}, {{"2023-07-01", "2023-07-31"}}));
  }

  // Dates as a scheme left them, before the guard looks at them.
  void SetDates(const char* from, const char* to) {
    form->from.SetDate(Day(from));
    form->to.SetDate(Day(to));
  }
  std::string Dates() const { return form->from.GetDate().ToText() + " " + form->to.GetDate().ToText(); }

  Ref<TwoDates> form = MakeRef<TwoDates>();
  ClsDtpickerRange guard;
};

TEST_F(DateRangeTest, AReportsNumberTellsItsKind) {
  for (const char* number :
       {"10501", "10507", "10508", "10521", "10522",  "10523", "10524", "10530",   "10211", "10212",
        "10219", "10220", "10229", "10230", "10301",  "10302", "10307", "10308",   "10309", "10325",
        "10332", "10311", "10312", "10313", "10314",  "10331", "10334", "103013",  "10335", "127",
        "128",   "135",   "137",   "138",   "10401",  "10402", "10403", "10411",   "10412", "10413",
        "10414", "10415", "10416", "10417", "10418",  "101",   "10422", "10423",   "105",   "106",
        "111",   "114",   "181",   "182",   "100303", "10424", "-1",    "  10414 "}) {
    SCOPED_TRACE(number);
    EXPECT_EQ(GetDateKindOfReport(number), 1);
  }
  for (const char* number : {"10502", "10503", "10504", "10505", "10506",  "10525", "10526", "10215",
                             "10216", "10227", "10317", "10318", "10333",  "303",   "10432", "302",
                             "332",   "",      "0",     "1",     "010414", "10414x"}) {
    SCOPED_TRACE(number);
    EXPECT_EQ(GetDateKindOfReport(number), 0);
  }
}

TEST_F(DateRangeTest, TheFirstCaseThatFitsIsToldAndPutRight) {
  struct Row {
    const char* name;
    const char* from;
    const char* to;
    const char* message;
    const char* dates;
  };
  const Row rows[] = {
      {"a good range", "2023-08-01", "2023-08-31", "", "2023-08-01 2023-08-31"},
      {"one day", "2023-08-01", "2023-08-01", "", "2023-08-01 2023-08-01"},
      {"the floor itself", "2023-07-01", "2023-07-01", "", "2023-07-01 2023-07-01"},
      {"both before the floor, equal", "2023-06-30", "2023-06-30", "[截至日期]不能小于账套启用日期。",
       "2023-07-01 2023-07-01"},
      {"both before the floor, different", "2023-05-01", "2023-06-30",
       "[起始日期]和[截至日期]都不能小于账套启用日期。", "2023-07-01 2023-07-01"},
      {"both before the floor, the wrong way round", "2023-06-30", "2023-05-01",
       "[起始日期]和[截至日期]都不能小于账套启用日期。", "2023-07-01 2023-07-01"},
      {"only the from date", "2023-06-30", "2023-07-01", "[起始日期]不能小于账套启用日期。",
       "2023-07-01 2023-07-01"},
      {"the from date with a late to date", "2023-06-30", "2024-01-01", "[起始日期]不能小于账套启用日期。",
       "2023-07-01 2024-01-01"},
      {"the wrong way round", "2023-09-02", "2023-09-01", "[起始日期]不能大于[截至日期]。",
       "2023-09-02 2023-09-02"},
      {"a to date below the floor names no floor", "2023-09-02", "2023-01-01",
       "[起始日期]不能大于[截至日期]。", "2023-09-02 2023-09-02"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    guard.attach(form->from, form->to, "10414", false);
    SetDates(row.from, row.to);
    desk.journal.clear();
    EXPECT_TRUE(guard.DTPickerValidateAfterLostFocus(true));
    EXPECT_EQ(desk.journal, Told(row.message));
    EXPECT_EQ(Dates(), row.dates);

    SetDates(row.from, row.to);
    desk.journal.clear();
    EXPECT_TRUE(guard.DTPickerValidateAfterLostFocus(false));
    EXPECT_THAT(desk.journal, IsEmpty());
    EXPECT_EQ(Dates(), row.dates) << "put right without a word";
  }
}

TEST_F(DateRangeTest, TheFloorFollowsTheKindOfTheReport) {
  struct Row {
    const char* name;
    const char* number;
    bool useSystemMinimum;
    const char* floor;
    const char* label;
  };
  form->from.SetMinDate(Day("2001-02-03"));
  form->to.SetMinDate(Day("2005-01-01"));
  for (const Row& row : {Row{"stock start", "10414", false, "2023-07-01", "账套启用日期"},
                         Row{"stock start before all", "10414", true, "2023-07-01", "账套启用日期"},
                         Row{"system minimum", "303", true, "2000-01-01", "系统最小时间"},
                         Row{"the from picker's own minimum", "303", false, "2001-02-03", "控件最小时间"}}) {
    SCOPED_TRACE(row.name);
    guard.attach(form->from, form->to, row.number, row.useSystemMinimum);
    SetDates("1999-01-01", "1999-01-02");
    desk.journal.clear();
    guard.DTPickerValidateAfterLostFocus(true);
    EXPECT_EQ(desk.journal, Told(std::string("[起始日期]和[截至日期]都不能小于") + row.label + "。"));
    EXPECT_EQ(Dates(), std::string(row.floor) + " " + row.floor);
  }
}

TEST_F(DateRangeTest, AnAccountWithoutAStartReachesBackToTheYear2000) {
  Desk other;  // whose database refuses
  guard.attach(form->from, form->to, "10414", false);
  SetDates("1999-12-31", "2024-01-01");
  guard.DTPickerValidateAfterLostFocus(true);
  EXPECT_EQ(other.Lines("ask "), Told("[起始日期]不能小于账套启用日期。"));
  EXPECT_EQ(Dates(), "2000-01-01 2024-01-01");
}

TEST_F(DateRangeTest, AttachingPutsOldDatesRightWithoutAWord) {
  SetDates("2020-01-01", "2020-01-02");
  guard.attach(form->from, form->to, "10414", false);
  EXPECT_EQ(Dates(), "2023-07-01 2023-07-01");
  EXPECT_THAT(desk.Lines("ask "), IsEmpty());
  EXPECT_EQ(form->Focus(), nullptr);
}

TEST_F(DateRangeTest, BeforeAPairIsAttachedNothingHappens) {
  EXPECT_TRUE(guard.DTPickerValidateAfterLostFocus(true));
  EXPECT_THAT(desk.journal, IsEmpty());
}

TEST_F(DateRangeTest, LeavingAPickerChecksAndTheFocusReturns) {
  guard.attach(form->from, form->to, "10414", false);
  UserInput user(*form);
  user.Enter("DtpEDate");
  user.Set("DtpEDate", Day("2023-01-01"));
  SetDates("2023-09-02", "2023-01-01");
  EXPECT_THAT(desk.Lines("ask "), IsEmpty()) << "not before the picker is left";
  user.Enter("txtItem(0)");
  EXPECT_EQ(desk.Lines("ask "), Told("[起始日期]不能大于[截至日期]。"));
  EXPECT_EQ(Dates(), "2023-09-02 2023-09-02");
  EXPECT_EQ(form->Focus(), &form->to);

  user.Leave("DtpEDate");
  EXPECT_EQ(form->Focus(), nullptr) << "nothing was wrong any more";
  user.Enter("DtpBDate");
  SetDates("2023-09-03", "2023-09-02");
  user.Leave("DtpBDate");
  EXPECT_EQ(Dates(), "2023-09-03 2023-09-03") << "the to date is corrected, whichever picker was left";
  EXPECT_EQ(form->Focus(), &form->from);
}

TEST_F(DateRangeTest, ThePickerThatCannotTakeTheFocusIsPassedOver) {
  guard.attach(form->from, form->to, "10414", false);
  UserInput user(*form);
  user.Enter("DtpEDate");
  SetDates("2023-09-02", "2023-01-01");
  form->to.SetEnabled(false);
  user.Enter("txtItem(0)");
  EXPECT_EQ(Dates(), "2023-09-02 2023-09-02");
  EXPECT_EQ(form->Focus(), &form->other);
}

TEST_F(DateRangeTest, TheUserReadsTheMessageBeforeTheDateChanges) {
  guard.attach(form->from, form->to, "10414", false);
  SetDates("2023-09-02", "2023-09-01");
  form->to.onChange = [&] { desk.Note("changed"); };
  guard.DTPickerValidateAfterLostFocus(true);
  const std::string message = Told("[起始日期]不能大于[截至日期]。").front();
  ASSERT_GE(desk.journal.size(), 2U);
  EXPECT_EQ(desk.journal[desk.journal.size() - 2], message);
  EXPECT_EQ(desk.journal.back(), "changed");
}

TEST_F(DateRangeTest, ASecondAttachReplacesTheFirstPair) {
  const Ref<TwoDates> second = MakeRef<TwoDates>();
  guard.attach(form->from, form->to, "10414", false);
  guard.attach(second->from, second->to, "10414", false);
  SetDates("2023-09-02", "2023-09-01");
  UserInput(*form).Leave("DtpEDate");
  EXPECT_THAT(desk.Lines("ask "), IsEmpty());
  EXPECT_EQ(Dates(), "2023-09-02 2023-09-01") << "no longer watched";
  second->to.SetDate(Day("2023-01-01"));
  UserInput(*second).Leave("DtpEDate");
  EXPECT_EQ(desk.Count("ask "), 1);
}

TEST_F(DateRangeTest, OnePickerMayBeBothEnds) {
  guard.attach(form->from, form->from, "10424", false);
  form->from.SetDate(Day("2023-01-01"));
  UserInput(*form).Leave("DtpBDate");
  EXPECT_EQ(desk.Lines("ask "), Told("[截至日期]不能小于账套启用日期。"));
  EXPECT_EQ(form->from.GetDate(), Day("2023-07-01"));
}

TEST_F(DateRangeTest, TheProcessHasOneGuardForAllDialogs) {
  const Ref<TwoDates> second = MakeRef<TwoDates>();
  AttachDateRange(form->from, form->to, "10414");
  AttachDateRange(second->from, second->to, "303");
  SetDates("2023-01-01", "2023-01-01");
  UserInput(*form).Leave("DtpBDate");
  EXPECT_EQ(Dates(), "2023-01-01 2023-01-01");
  second->from.SetMinDate(Day("2001-01-01"));
  AttachDateRange(second->from, second->to, "303");
  second->from.SetDate(Day("1999-01-01"));
  UserInput(*second).Leave("DtpBDate");
  EXPECT_EQ(desk.Lines("ask "), Told("[起始日期]不能小于控件最小时间。"))
      << "without the system's own minimum";
}

TEST_F(DateRangeTest, AGuardOutlivesTheDialogThatItWatched) {
  guard.attach(form->from, form->to, "10414", false);
  UserInput(*form).Enter("DtpBDate");
  form = nullptr;
  EXPECT_TRUE(guard.DTPickerValidateAfterLostFocus(true));
}

}  // namespace
}  // namespace component
