// Dates count days; the calendar is worked out from std::chrono's civil calendar, which knows leap years.
#include "platform/value/Date.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "platform/value/Error.h"

namespace platform {
namespace {

constexpr std::int32_t kSecondsPerDay = 86400;
constexpr std::int32_t kUnixEpoch = 25569;  // 1970-01-01 counted from 1899-12-30

// Takes an unsigned number of at most `maxDigits` digits off the front of `rest`.
std::optional<int> TakeNumber(std::string_view& rest, std::size_t minDigits, std::size_t maxDigits) {
  std::size_t count = 0;
  while (count < rest.size() && count < maxDigits && rest[count] >= '0' && rest[count] <= '9') ++count;
  if (count < minDigits) return std::nullopt;
  int value = 0;
  std::from_chars(rest.data(), rest.data() + count, value);
  rest.remove_prefix(count);
  return value;
}

bool TakeChar(std::string_view& rest, char wanted) {
  if (rest.empty() || rest.front() != wanted) return false;
  rest.remove_prefix(1);
  return true;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

Date Date::Of(int year, int month, int day, int hour, int minute, int second) {
  const std::optional<Date> date = FromCalendar(year, month, day, hour, minute, second);
  if (!date) throw Error(ErrorNumber::kInvalidCall, "Date", "the calendar has no such day or time");
  return *date;
}

std::optional<Date> Date::FromCalendar(int year, int month, int day, int hour, int minute, int second) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  const std::chrono::year_month_day civil{std::chrono::year(year),
                                          std::chrono::month(static_cast<unsigned>(month)),
                                          std::chrono::day(static_cast<unsigned>(day))};
  if (!civil.ok()) return std::nullopt;
  const auto sinceEpoch = std::chrono::sys_days(civil).time_since_epoch().count();
  return FromDays(static_cast<std::int32_t>(sinceEpoch) + kUnixEpoch, hour * 3600 + minute * 60 + second);
}

Date Date::FromSerial(double serial) {
  constexpr std::int32_t kFirst = -657434;  // 0100-01-01
  constexpr std::int32_t kLast = 2958465;   // 9999-12-31
  auto overflow = [] {
    return Error(ErrorNumber::kOverflow, "Date", "overflow: the number is outside the calendar");
  };
  if (!(serial >= kFirst && serial < kLast + 1.0)) throw overflow();
  const double whole = std::floor(serial);
  auto days = static_cast<std::int32_t>(whole);
  auto seconds = static_cast<std::int32_t>(std::lround((serial - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    if (days == kLast) throw overflow();
    ++days;
    seconds = 0;
  }
  return FromDays(days, seconds);
}

std::optional<Date> Date::FromText(std::string_view text) {
  std::string_view rest = Trimmed(text);
  const auto year = TakeNumber(rest, 4, 4);
  if (!year || rest.empty()) return std::nullopt;
  const char separator = rest.front();
  if (separator != '-' && separator != '/') return std::nullopt;
  const std::size_t minDigits = separator == '-' ? 2 : 1;
  rest.remove_prefix(1);
  const auto month = TakeNumber(rest, minDigits, 2);
  if (!month || !TakeChar(rest, separator)) return std::nullopt;
  const auto day = TakeNumber(rest, minDigits, 2);
  if (!day) return std::nullopt;
  if (rest.empty()) return FromCalendar(*year, *month, *day);

  if (!TakeChar(rest, ' ')) return std::nullopt;
  const auto hour = TakeNumber(rest, 1, 2);
  if (!hour || !TakeChar(rest, ':')) return std::nullopt;
  const auto minute = TakeNumber(rest, 2, 2);
  if (!minute || !TakeChar(rest, ':')) return std::nullopt;
  const auto second = TakeNumber(rest, 2, 2);
  if (!second || !rest.empty()) return std::nullopt;
  return FromCalendar(*year, *month, *day, *hour, *minute, *second);
}

double Date::Serial() const { return days_ + static_cast<double>(seconds_) / kSecondsPerDay; }

CalendarDay Date::Calendar() const {
  const std::chrono::year_month_day civil{std::chrono::sys_days(std::chrono::days(days_ - kUnixEpoch))};
  return {.year = static_cast<int>(civil.year()),
          .month = static_cast<int>(static_cast<unsigned>(civil.month())),
          .day = static_cast<int>(static_cast<unsigned>(civil.day()))};
}

std::string Date::ToText() const {
  const CalendarDay day = Calendar();
  std::array<char, 40> buffer{};
  int length = 0;
  if (seconds_ == 0) {
    length = std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", day.year, day.month, day.day);
  } else {
    length = std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d %02d:%02d:%02d", day.year, day.month,
                           day.day, seconds_ / 3600, seconds_ / 60 % 60, seconds_ % 60);
  }
  return {buffer.data(), static_cast<std::size_t>(length)};
}

}  // namespace platform
