#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/form/Form.h"

namespace component {

// 1 for reports that cannot reach behind the start of stock accounting, 0 for others and for numbers that are
// not known. "-1" counts as 1.
std::int32_t GetDateKindOfReport(std::string_view reportNumber);

// Watches the from and to date of a dialog. Whenever one of them loses the focus the pair is checked, the
// user told what was wrong, and the date put right at once: no date before the earliest one that the report
// can serve, and no range that ends before it begins.
class ClsDtpickerRange {
 public:
  ClsDtpickerRange() = default;
  ClsDtpickerRange(const ClsDtpickerRange&) = delete;
  ClsDtpickerRange& operator=(const ClsDtpickerRange&) = delete;
  ClsDtpickerRange(ClsDtpickerRange&&) = delete;
  ClsDtpickerRange& operator=(ClsDtpickerRange&&) = delete;
  ~ClsDtpickerRange() { Detach(); }

  // Takes this pair instead of the one before, and puts dates left over from a scheme right without a word.
  // Both may be the same picker.
  void attach(platform::DatePicker& begin, platform::DatePicker& end, const std::string& reportNumber,
              bool useSystemMinimum);
  // Always true. Does nothing before a pair is attached.
  bool DTPickerValidateAfterLostFocus(bool showMessage);

 private:
  void Detach();
  void Watch(platform::DatePicker& picker);
  void ChooseFloor(const std::string& reportNumber, bool useSystemMinimum);
  // What is wrong with the pair, empty when nothing is, and the dates that put it right.
  struct Finding {
    std::string wrong;
    platform::Date from;
    platform::Date to;
  };
  Finding Judge() const;

  platform::Ref<platform::DatePicker> begin_;
  platform::Ref<platform::DatePicker> end_;
  platform::Date minimum_;
  std::string minimumLabel_;
  bool enabled_ = false;
  platform::DatePicker* lastFocused_ = nullptr;  // one of the two
};

// Hands a dialog's pickers to the one guard of the process. All dialogs are modal, so only the last one's
// pickers need watching.
void AttachDateRange(platform::DatePicker& begin, platform::DatePicker& end, const std::string& reportNumber);

// Whether a range of days does not end before it begins. If it does, the user is told in a box with this
// title, and it begins on its last day.
bool CheckDayOrder(platform::DatePicker& begin, const platform::DatePicker& end, std::string_view title);

}  // namespace component
