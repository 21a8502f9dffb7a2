#include "component/filter/ClsDtpickerRange.h"

#include <algorithm>
#include <array>

#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"

namespace component {
namespace {

using platform::Date;
using platform::DatePicker;
using platform::Ref;

// Reports that start with stock accounting. All reports that are not here reach as far back as they like.
constexpr std::array kFromStockStart = std::to_array<std::string_view>(
    {"-1",    "10501", "10507", "10508", "10521", "10522",  "10523", "10524", "10530",  "10211",
     "10212", "10219", "10220", "10229", "10230", "10301",  "10302", "10307", "10308",  "10309",
     "10325", "10332", "10311", "10312", "10313", "10314",  "10331", "10334", "103013", "10335",
     "127",   "128",   "135",   "137",   "138",   "10401",  "10402", "10403", "10411",  "10412",
     "10413", "10414", "10415", "10416", "10417", "10418",  "101",   "10422", "10423",  "105",
     "106",   "111",   "114",   "181",   "182",   "100303", "10424"});

const Date kSystemMinimum = Date::Of(2000, 1, 1);

Date ReadStockStart() {
  Date start = kSystemMinimum;
  platform::SkipErrors([&] {
    std::string begin = start.ToText();
    std::string end;
    GetStockPeriodDates(begin, end);
    start = platform::ToDate(begin);
  });
  return start;
}

}  // namespace

std::int32_t GetDateKindOfReport(std::string_view reportNumber) {
  return std::ranges::find(kFromStockStart, platform::TrimBlanks(reportNumber)) != kFromStockStart.end() ? 1
                                                                                                         : 0;
}

void ClsDtpickerRange::attach(DatePicker& begin, DatePicker& end, const std::string& reportNumber,
                              bool useSystemMinimum) {
  Detach();
  begin_ = Ref<DatePicker>(&begin);
  end_ = Ref<DatePicker>(&end);
  Watch(begin);
  Watch(end);
  ChooseFloor(reportNumber, useSystemMinimum);
  enabled_ = true;
  DTPickerValidateAfterLostFocus(false);
}

void ClsDtpickerRange::Detach() {
  for (const Ref<DatePicker>& picker : {begin_, end_}) {
    if (!picker) continue;
    picker->onGotFocus = {};
    picker->onLostFocus = {};
  }
  begin_ = nullptr;
  end_ = nullptr;
  lastFocused_ = nullptr;
  enabled_ = false;
}

void ClsDtpickerRange::Watch(DatePicker& picker) {
  picker.onGotFocus = [this, &picker] { lastFocused_ = &picker; };
  picker.onLostFocus = [this] { DTPickerValidateAfterLostFocus(true); };
}

void ClsDtpickerRange::ChooseFloor(const std::string& reportNumber, bool useSystemMinimum) {
  const Date stockStart = ReadStockStart();
  if (GetDateKindOfReport(reportNumber) == 1) {
    minimum_ = stockStart;
    minimumLabel_ = ResString("账套启用日期");
  } else if (useSystemMinimum) {
    minimum_ = kSystemMinimum;
    minimumLabel_ = ResString("系统最小时间");
  } else {
    minimum_ = begin_->MinDate();
    minimumLabel_ = ResString("控件最小时间");
  }
}

ClsDtpickerRange::Finding ClsDtpickerRange::Judge() const {
  const Date from = begin_->GetDate();
  const Date to = end_->GetDate();
  if (from < minimum_ && to < minimum_) {
    const std::string wrong =
        from == to ? "[" + ResString("截至日期") + ResString("]不能小于") + minimumLabel_ + ResString("。")
                   : "[" + ResString("起始日期") + ResString("]和[") + ResString("截至日期") +
                         ResString("]都不能小于") + minimumLabel_ + ResString("。");
    return {.wrong = wrong, .from = minimum_, .to = minimum_};
  }
  if (from < minimum_) {
    return {.wrong = "[" + ResString("起始日期") + ResString("]不能小于") + minimumLabel_ + ResString("。"),
            .from = minimum_,
            .to = to};
  }
  // A to date below the floor with a from date above it ends here too, and no message names the floor.
  if (to < from) {
    return {.wrong = "[" + ResString("起始日期") + ResString("]不能大于[") + ResString("截至日期") +
                     ResString("]。"),
            .from = from,
            .to = from};
  }
  return {};
}

bool ClsDtpickerRange::DTPickerValidateAfterLostFocus(bool showMessage) {
  if (!enabled_) return true;
  platform::SkipErrors([&] {
    const Finding finding = Judge();
    if (finding.wrong.empty()) return;
    if (showMessage) {
      platform::SkipErrors([&] {
        platform::Screen::Current().Ask(
            {.text = finding.wrong, .title = {}, .icon = platform::MessageIcon::kInformation});
      });
    }
    begin_->SetDate(finding.from);
    end_->SetDate(finding.to);
    if (lastFocused_ != nullptr && lastFocused_->Owner() != nullptr)
      lastFocused_->Owner()->SetFocus(lastFocused_);
  });
  return true;
}

void AttachDateRange(DatePicker& begin, DatePicker& end, const std::string& reportNumber) {
  static ClsDtpickerRange guard;
  guard.attach(begin, end, reportNumber, false);
}

bool CheckDayOrder(DatePicker& begin, const DatePicker& end, std::string_view title) {
  if (begin.GetDate().DayOnly().ToText() <= end.GetDate().DayOnly().ToText()) return true;
  platform::Screen::Current().Ask({.text = ResString("起始日期不能大于截止日期!"),
                                   .title = ResString(title),
                                   .icon = platform::MessageIcon::kInformation});
  begin.SetDate(end.GetDate());
  return false;
}

}  // namespace component
