#include "component/frame/SysObjects.h"

#include "component/frame/MMTS.h"
#include "component/frame/ProcessState.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::CreateObject;
using platform::Date;
using platform::Error;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

Object& Kept(Ref<Object>& object, std::string_view programmaticId) {
  if (!object) object = CreateObject(programmaticId);
  return *object;
}

// A date field as "YYYY-MM-DD", whether the database answers a date or its text.
std::string FieldDay(const Recordset& rows, std::string_view field) {
  return platform::ToDate(rows.Value(field)).DayOnly().ToText();
}

bool HasRow(const Ref<Recordset>& rows) { return rows && !rows->AtEnd(); }

std::int16_t ReadYearPeriod(std::string_view yearKey, std::string_view periodKey, std::int32_t& year,
                            std::int32_t& period) {
  year = platform::ToInt32(GetSystemProfile("IC", yearKey, 0));
  period = platform::ToInt32(GetSystemProfile("IC", periodKey, 0));
  return 0;
}

void AskAndCalculate(const Ref<Object>& owner, bool prompt) {
  if (!HasRow(ExecuteSqlOrRaise("Select 1 From ICCalFlag"))) return;
  const Ref<Object> costing = CreateObject("TOVCalCostByStock.InterFace");
  if (prompt) {
    if (GetCanQuickCalculate() != -1) return;
    const platform::Answer answer =
        platform::Screen::Current().Ask({.text = ResString("有新业务发生，即将进行成本核算，是否继续？"),
                                         .title = ResString("信息提示"),
                                         .buttons = platform::MessageButtons::kYesNo,
                                         .icon = platform::MessageIcon::kQuestion,
                                         .standard = platform::Answer::kNo});
    if (answer != platform::Answer::kYes) return;
  }
  costing->Call("QuickCalculate", owner, false);
}

}  // namespace

Object& GetGLData() { return Kept(ProcessState::Get().glData, "TOVEBCGLView.GLData"); }

Object& GetGLView() { return Kept(ProcessState::Get().glView, "TOVEBCGLView.GLView"); }

Object& GetSystemProfileObject() {
  Ref<Object>& profile = ProcessState::Get().systemProfile;
  if (!profile) profile = Ref<Object>(&GetGLData().Get("SystemProfile").AsObject());
  return *profile;
}

Variant GetSystemProfile(std::string_view category, std::string_view key, const Variant& fallback) {
  return GetSystemProfileObject().Call("GetSystemProfile", category, key, fallback);
}

void GetStockPeriodDates(std::string& begin, std::string& end) {
  platform::SkipErrors([&] {
    const Ref<Recordset> rows = ExecuteSqlOrRaise(
        "Declare @Year int,@Period int \r\n"
        "SELECT @Year=CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND FKey='StartYear'\n"
        "SELECT @Period = CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND "
        "FKey='StartPeriod'\n"
        "SELECT CONVERT(DATETIME,FStartDate)as FStartDate,CONVERT(DATETIME,FEndDate)as FEndDate FROM "
        "t_PeriodDate \n"
        "WHERE FYear=@Year AND FPeriod=@Period ");
    if (!HasRow(rows)) return;
    const std::string first = FieldDay(*rows, "FStartDate");
    end = FieldDay(*rows, "FEndDate");
    begin = first;  // both or neither: a day that cannot be read leaves the caller's defaults
  });
}

Date GetStockStartDate() {
  Date start;
  platform::SkipErrors([&] {
    const Ref<Recordset> rows = ExecuteSqlOrRaise(
        " SELECT FStartDate FROM t_PeriodDate WHERE \r\n"
        " FYear =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
        "'StartYear' ) "
        "AND \r\n"
        " FPeriod =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
        "'StartPeriod') ");
    if (HasRow(rows)) start = platform::ToDate(FieldDay(*rows, "FStartDate"));
  });
  return start;
}

std::int16_t GetStartYearPeriod(std::int32_t& year, std::int32_t& period) {
  return ReadYearPeriod("StartYear", "StartPeriod", year, period);
}

std::int16_t GetCurrentYearPeriod(std::int32_t& year, std::int32_t& period) {
  return ReadYearPeriod("CurrentYear", "CurrentPeriod", year, period);
}

std::string GetCurrentPeriodFirstDay() {
  std::int32_t year = 0;
  std::int32_t period = 0;
  GetCurrentYearPeriod(year, period);
  return std::to_string(year) + (period >= 10 ? "-" : "-0") + std::to_string(period) + "-01";
}

std::int16_t PeriodSpan(std::int16_t beginYear, std::int16_t beginPeriod, std::int16_t endYear,
                        std::int16_t endPeriod) {
  // Each step is 16 bits wide, so that a span that does not fit is refused wherever it overflows.
  const std::int16_t years = platform::ToInt16(std::int32_t{endYear} - beginYear);
  const std::int16_t months = platform::ToInt16(std::int32_t{years} * 12);
  const std::int16_t toEnd = platform::ToInt16(std::int32_t{months} + endPeriod);
  const std::int16_t between = platform::ToInt16(std::int32_t{toEnd} - beginPeriod);
  return platform::ToInt16(std::int32_t{between} + 1);
}

std::int16_t GetCanQuickCalculate() {
  const Ref<Recordset> rows = ExecuteSqlOrRaise(
      "SELECT FValue FROM t_SystemProfile WHERE FCategory='General' AND FKey='CanQuickCalculate'");
  if (!HasRow(rows)) return -1;
  const Variant value = rows->Value("FValue");
  return !value.IsNull() && platform::ToDouble(value) == 0 ? std::int16_t{0} : std::int16_t{-1};
}

std::int16_t CheckQuickCost(const Ref<Object>& owner, bool prompt) {
  try {
    AskAndCalculate(owner, prompt);
  } catch (const Error& error) {
    platform::Screen::Current().Ask(
        {.text = ResString("即时成本核算出错,原因:") + error.Description(), .title = ResString("信息提示")});
  }
  return 0;
}

}  // namespace component
