#pragma once

#include <string>
#include <string_view>

#include "browser/protocol/Json.h"
#include "desk/filter/FilterControl.h"
#include "platform/form/Form.h"

namespace browser {

// A value as a protocol cell: money as exact text, dates as text, objects and nothing as null.
Json CellOf(const platform::Variant& value);

// The name of a scheme that keeps what a user confirmed last, and of the one that remembers which scheme a
// dialog opens with. Neither is shown in a list of schemes.
inline constexpr std::string_view kLastScheme = "*last";
inline constexpr std::string_view kStandardScheme = "*standard";
bool IsHiddenScheme(std::string_view name);
// The scheme that a dialog opens with; empty for none.
std::string StandardScheme(const desk::SchemeStore& schemes, std::string_view dialog);

// All controls as the protocol's Control, in tab order.
Json DescribeControls(const platform::Form& form);
// What of `after` differs from `before`, both by DescribeControls of one form: a ControlChange for each
// control that differs.
Json ControlChanges(const Json& before, const Json& after);
// The control that has the focus, or the first field that can take it; "" when none can.
std::string FocusOf(const platform::Form& form);
// The form's filter control as the protocol's FilterControl, null without one. `current` is the scheme loaded
// last.
Json DescribeFilter(const platform::Form& form, const desk::SchemeStore& schemes, const std::string& current);

}  // namespace browser
