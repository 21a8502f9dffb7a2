#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/value/SameText.h"
#include "platform/value/Variant.h"

namespace platform {

// Conversions between the kinds of a Variant. All of them raise kTypeMismatch for a value that has no such
// meaning (a database null and an object have none) and kOverflow for a number that does not fit. Empty
// reads as "", 0 or false.

// Numbers as short as they read back to the same value, "True"/"False", dates as Date::ToText.
std::string ToText(const Variant& value);
// The same of a value that is not needed any more, which gives its text away.
std::string ToText(Variant&& value);
std::string NumberToText(double value);
// A text must be a number as a whole, blanks around it skipped; true is -1; a date is its day count.
double ToDouble(const Variant& value);
// Rounds half to even, then checks the width.
std::int16_t ToInt16(const Variant& value);
std::int32_t ToInt32(const Variant& value);
std::int64_t ToInt64(const Variant& value);
Currency ToCurrency(const Variant& value);
// A number is true unless it is 0; a text is "True" or "False" in any case, or a number.
bool ToBoolean(const Variant& value);
// A text must be a date as Date::FromText reads it; a number is a day count.
Date ToDate(const Variant& value);

bool IsDate(const Variant& value);
bool IsNumeric(const Variant& value);

// The number that a text begins with, blanks ignored, 0 when it begins with none: "10414", "12 abc" → 12.
double LeadingNumber(std::string_view text);

std::string_view TrimBlanks(std::string_view text);
namespace detail {
bool EqualsInAnyCase(std::string_view left, std::string_view right);  // of the same length
}  // namespace detail
// ASCII letters alike, everything else byte by byte: the comparison of names, keys and numbers of reports.
inline bool EqualsIgnoreCase(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  if (SameText(left, right)) return true;  // nearly always written in one way
  return MayDifferInCaseAlone(left, right) && detail::EqualsInAnyCase(left, right);
}
std::string ToUpperAscii(std::string_view text);
std::string ToLowerAscii(std::string_view text);

}  // namespace platform
