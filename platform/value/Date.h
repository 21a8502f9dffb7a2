#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct CalendarDay {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31

  friend constexpr bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

// A calendar date of the proleptic Gregorian calendar, years 100 to 9999, with a time of day in whole
// seconds. Counts days from 1899-12-30, so that Serial() is the number a spreadsheet shows for the date.
class Date {
 public:
  constexpr Date() = default;

  // A day that the calendar does not have raises kInvalidCall; FromCalendar answers it with nothing.
  static Date Of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  static std::optional<Date> FromCalendar(int year, int month, int day, int hour = 0, int minute = 0,
                                          int second = 0);
  static constexpr Date FromDays(std::int32_t days, std::int32_t seconds = 0) {
    Date date;
    date.days_ = days;
    date.seconds_ = seconds;
    return date;
  }
  // The nearest whole second of a fractional day count.
  static Date FromSerial(double serial);
  // Reads YYYY-MM-DD or YYYY/M/D, optionally followed by " HH:MM:SS"; blanks around it are skipped.
  // Anything else, or a day that does not exist, is no date.
  static std::optional<Date> FromText(std::string_view text);

  constexpr std::int32_t Days() const { return days_; }
  constexpr std::int32_t SecondsOfDay() const { return seconds_; }
  double Serial() const;
  CalendarDay Calendar() const;
  constexpr Date DayOnly() const { return FromDays(days_); }
  constexpr Date AddDays(std::int32_t days) const { return FromDays(days_ + days, seconds_); }

  // YYYY-MM-DD, with " HH:MM:SS" only when there is a time of day.
  std::string ToText() const;

  friend constexpr auto operator<=>(const Date&, const Date&) = default;

 private:
  std::int32_t days_ = 0;
  std::int32_t seconds_ = 0;
};

}  // namespace platform
