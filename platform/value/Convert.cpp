// One overload a kind for each target, so that a reader finds every rule of a conversion in one place. What
// no overload takes ends in the mismatch.
#include "platform/value/Convert.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace platform {
namespace {

[[noreturn]] void Mismatch(const Variant& value, std::string_view wanted) {
  std::string what(ToString(value.GetKind()));
  if (const auto* text = value.As<std::string>()) what += " '" + *text + "'";
  throw Error(ErrorNumber::kTypeMismatch, "Convert",
              "type mismatch: " + what + " is no " + std::string(wanted));
}

template <class... Handlers>
struct Cases : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Cases(Handlers...) -> Cases<Handlers...>;  // clang 14 does not deduce aggregates by itself

std::optional<double> ParseNumber(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) return std::nullopt;
  }
  if (text.empty()) return std::nullopt;
  const char first = text.front() == '-' && text.size() > 1 ? text[1] : text.front();
  if (first != '.' && (first < '0' || first > '9')) return std::nullopt;  // no "inf", no "nan"
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The whole number that a text is, exactly: beyond 2^53 a double would not hold it.
std::optional<std::int64_t> ParseInteger(std::string_view text) {
  text = TrimBlanks(text);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::int64_t RoundToWhole(Currency amount) {
  return MultiplyDivide(amount, 1, Currency::kScale).Units();  // the units of the quotient are whole ones
}

template <class Integer>
Integer Narrow(const Variant& value, std::string_view wanted) {
  auto checked = [](auto number) -> Integer {
    if (!std::in_range<Integer>(number)) {
      throw Error(ErrorNumber::kOverflow, "Convert",
                  "overflow: " + std::to_string(number) + " does not fit in " +
                      std::to_string(sizeof(Integer) * 8) + " bits");
    }
    return static_cast<Integer>(number);
  };
  if (const auto* number = value.As<std::int16_t>()) return checked(*number);
  if (const auto* number = value.As<std::int32_t>()) return checked(*number);
  if (const auto* number = value.As<std::int64_t>()) return checked(*number);
  if (const auto* amount = value.As<Currency>()) return checked(RoundToWhole(*amount));
  if (const auto* text = value.As<std::string>()) {
    if (const std::optional<std::int64_t> number = ParseInteger(*text)) return checked(*number);
  }
  if (value.IsNull() || value.IsObject() || value.IsMissing()) Mismatch(value, wanted);

  const double number = std::nearbyint(ToDouble(value));
  constexpr double kLimit = 9223372036854775808.0;
  if (!(number >= -kLimit && number < kLimit)) {
    throw Error(ErrorNumber::kOverflow, "Convert", "overflow: the number does not fit");
  }
  return checked(static_cast<std::int64_t>(number));
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool detail::EqualsInAnyCase(std::string_view left, std::string_view right) {
  auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

std::string ToUpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  }
  return upper;
}

std::string ToLowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return lower;
}

std::string NumberToText(double value) {
  if (value == 0) return "0";  // a negative zero too
  std::array<char, 64> buffer{};
  const double magnitude = std::fabs(value);
  const auto format =
      magnitude >= 1e-5 && magnitude < 1e15 ? std::chars_format::fixed : std::chars_format::scientific;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
  std::string text(buffer.data(), result.ptr);
  std::ranges::replace(text, 'e', 'E');
  return text;
}

std::string ToText(const Variant& value) {
  return value.Visit(Cases{
      [](Empty) { return std::string(); },
      [](bool flag) { return std::string(flag ? "True" : "False"); },
      [](std::int16_t number) { return std::to_string(number); },
      [](std::int32_t number) { return std::to_string(number); },
      [](std::int64_t number) { return std::to_string(number); },
      [](double number) { return NumberToText(number); },
      [](Currency amount) { return amount.ToText(); },
      [](Date date) { return date.ToText(); },
      [](const std::string& text) { return text; },
      [&](const auto&) -> std::string { Mismatch(value, "text"); },
  });
}

std::string ToText(Variant&& value) {
  if (auto* text = value.As<std::string>()) return std::move(*text);
  return ToText(std::as_const(value));
}

double ToDouble(const Variant& value) {
  return value.Visit(Cases{
      [](Empty) { return 0.0; },
      [](bool flag) { return flag ? -1.0 : 0.0; },
      [](std::int16_t number) { return static_cast<double>(number); },
      [](std::int32_t number) { return static_cast<double>(number); },
      [](std::int64_t number) { return static_cast<double>(number); },
      [](double number) { return number; },
      [](Currency amount) { return amount.ToDouble(); },
      [](Date date) { return date.Serial(); },
      [&](const std::string& text) {
        const std::optional<double> number = ParseNumber(text);
        if (!number) Mismatch(value, "number");
        return *number;
      },
      [&](const auto&) -> double { Mismatch(value, "number"); },
  });
}

std::int16_t ToInt16(const Variant& value) { return Narrow<std::int16_t>(value, "integer"); }
std::int32_t ToInt32(const Variant& value) { return Narrow<std::int32_t>(value, "integer"); }
std::int64_t ToInt64(const Variant& value) { return Narrow<std::int64_t>(value, "integer"); }

Currency ToCurrency(const Variant& value) {
  return value.Visit(Cases{
      [](Empty) { return Currency(); },
      [](std::int16_t number) { return Currency::FromInteger(number); },
      [](std::int32_t number) { return Currency::FromInteger(number); },
      [](std::int64_t number) { return Currency::FromInteger(number); },
      [](Currency amount) { return amount; },
      [&](const std::string& text) {
        const std::string_view digits = TrimBlanks(text);
        const bool plain = digits.find_first_not_of("+-.0123456789") == std::string_view::npos;
        return plain ? Currency::FromText(digits) : Currency::FromDouble(ToDouble(value));
      },
      [&](const auto&) { return Currency::FromDouble(ToDouble(value)); },
  });
}

bool ToBoolean(const Variant& value) {
  if (const auto* flag = value.As<bool>()) return *flag;
  if (const auto* text = value.As<std::string>()) {
    const std::string_view word = TrimBlanks(*text);
    if (EqualsIgnoreCase(word, "True")) return true;
    if (EqualsIgnoreCase(word, "False")) return false;
    const std::optional<double> number = ParseNumber(word);
    if (!number) Mismatch(value, "boolean");
    return *number != 0;
  }
  return ToDouble(value) != 0;
}

Date ToDate(const Variant& value) {
  if (const auto* date = value.As<Date>()) return *date;
  if (const auto* text = value.As<std::string>()) {
    const std::optional<Date> date = Date::FromText(*text);
    if (!date) Mismatch(value, "date");
    return *date;
  }
  return Date::FromSerial(ToDouble(value));
}

bool IsDate(const Variant& value) {
  const auto* text = value.As<std::string>();
  return value.As<Date>() != nullptr || (text != nullptr && Date::FromText(*text));
}

bool IsNumeric(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::kNull:
    case Variant::Kind::kMissing:
    case Variant::Kind::kDate:
    case Variant::Kind::kObject:
      return false;
    case Variant::Kind::kText:
      return ParseNumber(*value.As<std::string>()).has_value();
    default:
      return true;
  }
}

double LeadingNumber(std::string_view text) {
  std::string digits;  // the text without its blanks, which this reading passes over
  std::ranges::copy_if(text, std::back_inserter(digits),
                       [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
  std::string_view rest = digits;
  const bool plus = !rest.empty() && rest.front() == '+';
  if (plus) rest.remove_prefix(1);
  const std::size_t first = !plus && !rest.empty() && rest.front() == '-' ? 1 : 0;
  if (first >= rest.size() || (rest[first] != '.' && (rest[first] < '0' || rest[first] > '9'))) return 0;
  double number = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  return result.ec == std::errc() ? number : 0;
}

}  // namespace platform
