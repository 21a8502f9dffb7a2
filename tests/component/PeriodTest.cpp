// Facts of the account: when stock accounting began, which period is current, how far apart periods lie.
#include "component/frame/SysObjects.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Date;
using platform::ErrorNumber;
using platform::Variant;
using ::testing::ElementsAre;

const char* const kPeriodDates =
    "Declare @Year int,@Period int \r\n"
    "SELECT @Year=CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND FKey='StartYear'\n"
    "SELECT @Period = CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND FKey='StartPeriod'\n"
    "SELECT CONVERT(DATETIME,FStartDate)as FStartDate,CONVERT(DATETIME,FEndDate)as FEndDate FROM "
    "t_PeriodDate \n"
    "WHERE FYear=@Year AND FPeriod=@Period ";
const char* const kStartDate =
    " SELECT FStartDate FROM t_PeriodDate WHERE \r\n"
    " FYear =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = 'StartYear' "
    ") AND \r\n"
    " FPeriod =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
    "'StartPeriod') ";

class PeriodTest : public ComponentTest {
 protected:
  void AnswerPeriods(const std::vector<std::vector<Variant>>& rows) {
    desk.AnswerSql("t_PeriodDate", TextRows({"FStartDate", "FEndDate"}, rows));
  }
};

TEST_F(PeriodTest, TheStartPeriodIsReadByOneBatch) {
  AnswerPeriods({{"2023-07-01 08:30:00", "2023/7/31"}, {"2024-01-01", "2024-01-31"}});
  std::string begin = "b";
  std::string end = "e";
  GetStockPeriodDates(begin, end);
  EXPECT_EQ(begin, "2023-07-01") << "without the time of day";
  EXPECT_EQ(end, "2023-07-31");
  EXPECT_THAT(desk.sqlTexts, ElementsAre(kPeriodDates));
}

TEST_F(PeriodTest, TheStartDateIsReadByOneStatement) {
  AnswerPeriods({{"2023-07-01 08:30:00", ""}});
  EXPECT_EQ(GetStockStartDate(), Date::Of(2023, 7, 1));
  EXPECT_THAT(desk.sqlTexts, ElementsAre(kStartDate));
}

TEST_F(PeriodTest, ADateFieldReadsAsWellAsItsText) {
  const platform::Ref<platform::Recordset> rows = platform::MakeRef<platform::Recordset>();
  rows->AppendField("FStartDate", platform::FieldType::kDate);
  rows->AppendField("FEndDate", platform::FieldType::kDate);
  rows->Open();
  rows->AddNew();
  rows->SetValue("FStartDate", Date::Of(2023, 7, 1));
  rows->SetValue("FEndDate", Date::Of(2023, 7, 31));
  rows->Update();
  desk.AnswerSql("t_PeriodDate", rows);
  std::string begin;
  std::string end;
  GetStockPeriodDates(begin, end);
  EXPECT_EQ(begin + " " + end, "2023-07-01 2023-07-31");
  EXPECT_EQ(GetStockStartDate(), Date::Of(2023, 7, 1));
}

TEST_F(PeriodTest, WhatCannotBeReadLeavesTheCallersDefaults) {
  struct Row {
    const char* name;
    std::vector<std::vector<Variant>> rows;
    bool answers;
  };
  for (const Row& row :
       {Row{"no row", {}, true}, Row{"no connection", {}, false}, Row{"no date", {{"soon", "later"}}, true},
        Row{"a start without an end", {{"2023-07-01", platform::Null()}}, true},
        Row{"an end without a start", {{platform::Null(), "2023-07-31"}}, true}}) {
    SCOPED_TRACE(row.name);
    Desk other;
    if (row.answers) other.AnswerSql("t_PeriodDate", TextRows({"FStartDate", "FEndDate"}, row.rows));
    std::string begin = "b";
    std::string end = "e";
    GetStockPeriodDates(begin, end);
    EXPECT_EQ(begin, "b");
    EXPECT_EQ(end, "e");
  }
  EXPECT_EQ(GetStockStartDate(), Date());
}

TEST_F(PeriodTest, TheFirstDayTakesThePeriodForAMonth) {
  struct Row {
    const char* name;
    Variant year;
    Variant period;
    const char* day;
  };
  for (const Row& row : {Row{"padded", 2024, 9, "2024-09-01"}, Row{"ten", 2024, 10, "2024-10-01"},
                         Row{"twelve", 2024, 12, "2024-12-01"}, Row{"texts", "2023", "1", "2023-01-01"},
                         Row{"no month", 2024, 13, "2024-13-01"}}) {
    SCOPED_TRACE(row.name);
    desk.profile->Set("IC/CurrentYear", row.year);
    desk.profile->Set("IC/CurrentPeriod", row.period);
    EXPECT_EQ(GetCurrentPeriodFirstDay(), row.day);
  }
}

TEST_F(PeriodTest, AnAccountWithoutPeriodsHasZeros) {
  EXPECT_EQ(GetCurrentPeriodFirstDay(), "0-00-01");
  EXPECT_THAT(desk.Lines("call TOVEBSBase.SystemProfile"),
              ElementsAre("call TOVEBSBase.SystemProfile.GetSystemProfile('IC', 'CurrentYear', 0)",
                          "call TOVEBSBase.SystemProfile.GetSystemProfile('IC', 'CurrentPeriod', 0)"));
}

TEST_F(PeriodTest, StartAndCurrentPeriodHaveKeysOfTheirOwn) {
  desk.profile = Keys(
      {{"IC/StartYear", 2021}, {"IC/StartPeriod", 7}, {"IC/CurrentYear", 2024}, {"IC/CurrentPeriod", 3}});
  std::int32_t year = -1;
  std::int32_t period = -1;
  GetStartYearPeriod(year, period);
  EXPECT_EQ(std::pair(year, period), std::pair(2021, 7));
  GetCurrentYearPeriod(year, period);
  EXPECT_EQ(std::pair(year, period), std::pair(2024, 3));
}

TEST_F(PeriodTest, ServicesOfTheProcessAreMadeOnFirstUse) {
  desk.Answer("TOVEBCGLView.GLView", "ItemLookUp", {});
  GetGLData();
  GetGLData();
  GetGLView();
  GetGLView();
  GetSystemProfileObject();
  GetSystemProfileObject();
  EXPECT_THAT(desk.journal,
              ElementsAre("new TOVEBCGLView.GLData", "new TOVEBCGLView.GLView",
                          "get TOVEBCGLView.GLData.SystemProfile()", "new TOVEBSBase.SystemProfile"));
}

TEST_F(PeriodTest, ASpanCountsBothEnds) {
  struct Row {
    std::int16_t beginYear, beginPeriod, endYear, endPeriod, span;
  };
  for (const Row& row : {Row{2024, 3, 2024, 3, 1}, Row{2024, 3, 2024, 12, 10}, Row{2023, 12, 2024, 1, 2},
                         Row{2020, 1, 2024, 12, 60}, Row{2024, 4, 2024, 3, 0}, Row{2024, 1, 2023, 1, -11},
                         Row{0, 1, 2730, 7, 32767}}) {
    EXPECT_EQ(PeriodSpan(row.beginYear, row.beginPeriod, row.endYear, row.endPeriod), row.span);
  }
  struct Refused {
    const char* name;
    std::int16_t beginYear, beginPeriod, endYear, endPeriod;
  };
  for (const Refused& row :
       {Refused{"the result", 0, 1, 2730, 8}, Refused{"the months", 0, 1, 2731, 1},
        Refused{"the years", -32768, 1, 32767, 1}, Refused{"downwards", 2731, 1, 0, 1}}) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(RaisedNumber([&] { PeriodSpan(row.beginYear, row.beginPeriod, row.endYear, row.endPeriod); }),
              ErrorNumber::kOverflow);
  }
}

TEST_F(PeriodTest, QuickCalculationIsAllowedUnlessTheProfileForbidsIt) {
  struct Row {
    const char* name;
    std::vector<std::vector<Variant>> rows;
    std::int16_t allowed;
  };
  for (const Row& row :
       {Row{"not in the table", {}, -1}, Row{"1", {{"1"}}, -1}, Row{"-1", {{"-1"}}, -1},
        Row{"null", {{platform::Null()}}, -1}, Row{"0", {{"0"}}, 0}, Row{"0.0", {{" 0.0 "}}, 0}}) {
    SCOPED_TRACE(row.name);
    Desk other;
    other.AnswerSql("CanQuickCalculate", TextRows({"FValue"}, row.rows));
    EXPECT_EQ(GetCanQuickCalculate(), row.allowed);
    EXPECT_THAT(other.sqlTexts,
                ElementsAre("SELECT FValue FROM t_SystemProfile WHERE FCategory='General' AND "
                            "FKey='CanQuickCalculate'"));
  }
  EXPECT_EQ(Raised([] { GetCanQuickCalculate(); }), "the database refuses");
}

}  // namespace
}  // namespace component
