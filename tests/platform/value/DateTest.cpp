#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "platform/value/Clock.h"
#include "platform/value/Date.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

TEST(DateTest, Calendar) {
  struct Case {
    std::string name;
    int year = 0;
    int month = 0;
    int day = 0;
    std::int32_t days = 0;
    std::string text;
  };
  const Case cases[] = {
      {"day 0", 1899, 12, 30, 0, "1899-12-30"},
      {"day 1", 1899, 12, 31, 1, "1899-12-31"},
      {"before day 0", 1899, 12, 29, -1, "1899-12-29"},
      {"leap day", 2024, 2, 29, 45351, "2024-02-29"},
      {"leap day of a century that has one", 2000, 2, 29, 36585, "2000-02-29"},
      {"end of february of a century without one", 1900, 2, 28, 60, "1900-02-28"},
      {"the day after it", 1900, 3, 1, 61, "1900-03-01"},
      {"first of all", 100, 1, 1, -657434, "0100-01-01"},
      {"last of all", 9999, 12, 31, 2958465, "9999-12-31"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const Date date = Date::Of(row.year, row.month, row.day);
    EXPECT_EQ(date.Days(), row.days);
    EXPECT_EQ(date.Serial(), row.days);
    EXPECT_EQ(date.ToText(), row.text);
    EXPECT_EQ(date.Calendar(), (CalendarDay{row.year, row.month, row.day}));
    EXPECT_EQ(Date::FromText(row.text), date);
    EXPECT_EQ(Date::FromSerial(row.days), date);
  }
}

TEST(DateTest, DaysThatDoNotExist) {
  struct Case {
    std::string name;
    std::array<int, 6> parts;
  };
  const Case cases[] = {
      {"29 February of a common year", {2023, 2, 29, 0, 0, 0}},
      {"of 1900", {1900, 2, 29, 0, 0, 0}},
      {"31 April", {2024, 4, 31, 0, 0, 0}},
      {"month 0", {2024, 0, 1, 0, 0, 0}},
      {"month 13", {2024, 13, 1, 0, 0, 0}},
      {"day 0", {2024, 1, 0, 0, 0, 0}},
      {"day 32", {2024, 1, 32, 0, 0, 0}},
      {"year 99", {99, 12, 31, 0, 0, 0}},
      {"year 10000", {10000, 1, 1, 0, 0, 0}},
      {"hour 24", {2024, 1, 1, 24, 0, 0}},
      {"minute 60", {2024, 1, 1, 0, 60, 0}},
      {"second 60", {2024, 1, 1, 0, 0, 60}},
      {"negative hour", {2024, 1, 1, -1, 0, 0}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const auto& [year, month, day, hour, minute, second] = row.parts;
    EXPECT_FALSE(Date::FromCalendar(year, month, day, hour, minute, second));
    EXPECT_EQ(Raised([&] {
                Date::Of(row.parts[0], row.parts[1], row.parts[2], row.parts[3], row.parts[4], row.parts[5]);
              }).Number(),
              ErrorNumber::kInvalidCall);
  }
}

TEST(DateTest, Texts) {
  struct Case {
    std::string text;
    std::string reads;  // "" for no date
  };
  const Case cases[] = {
      {"2024-03-02", "2024-03-02"},
      {"2024/3/2", "2024-03-02"},
      {"2024/03/02", "2024-03-02"},
      {"  2024-03-02  ", "2024-03-02"},
      {"2024-03-02 13:30:05", "2024-03-02 13:30:05"},
      {"2024-03-02 1:05:00", "2024-03-02 01:05:00"},
      {"2024/3/2 0:00:01", "2024-03-02 00:00:01"},
      {"2024-03-02 00:00:00", "2024-03-02"},
      {"2024-02-29", "2024-02-29"},
      {"", ""},
      {"2023-02-29", ""},
      {"2024-3-2", ""},
      {"24-03-02", ""},
      {"2024-03/02", ""},
      {"2024.03.02", ""},
      {"20240302", ""},
      {"2024-03", ""},
      {"2024-03-02T13:30:05", ""},
      {"2024-03-02 13:30", ""},
      {"2024-03-02 24:00:00", ""},
      {"2024-03-02 13:30:05.5", ""},
      {"2024-03-021", ""},
      {"02-03-2024", ""},
      {"-2024-03-02", ""},
      {"today", ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE("'" + row.text + "'");
    const std::optional<Date> date = Date::FromText(row.text);
    EXPECT_EQ(date ? date->ToText() : "", row.reads);
  }
}

TEST(DateTest, DayCounts) {
  struct Case {
    double serial = 0;
    std::string text;
  };
  const Case cases[] = {{45353.75, "2024-03-02 18:00:00"},
                        {45353 + 1.0 / 86400, "2024-03-02 00:00:01"},
                        {45353 + 0.4 / 86400, "2024-03-02"},
                        {45353 + 86399.6 / 86400, "2024-03-03"},
                        {-0.25, "1899-12-29 18:00:00"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.serial);
    EXPECT_EQ(Date::FromSerial(row.serial).ToText(), row.text);
  }
  for (const double serial : {-657434.1, 2958466.0, 2958465.9999999, 1e300, std::nan("")}) {
    SCOPED_TRACE(serial);
    EXPECT_EQ(Raised([&] { Date::FromSerial(serial); }).Number(), ErrorNumber::kOverflow);
  }
}

TEST(DateTest, ArithmeticAndOrder) {
  const Date noon = Date::Of(2024, 2, 28, 12);
  EXPECT_EQ(noon.AddDays(2), Date::Of(2024, 3, 1, 12));
  EXPECT_EQ(noon.AddDays(-59), Date::Of(2023, 12, 31, 12));
  EXPECT_EQ(noon.DayOnly(), Date::Of(2024, 2, 28));
  EXPECT_LT(noon.DayOnly(), noon);
  EXPECT_LT(noon, noon.DayOnly().AddDays(1));
}

TEST(ClockTest, AHostFixesTheDay) {
  Clock::Fix(Date::Of(2024, 3, 31, 23, 59, 59));
  EXPECT_EQ(Clock::Now(), Date::Of(2024, 3, 31, 23, 59, 59));
  EXPECT_EQ(Clock::Today(), Date::Of(2024, 3, 31));
  Clock::Fix(std::nullopt);
  EXPECT_GT(Clock::Now(), Date::Of(2024, 3, 31));
  EXPECT_EQ(Clock::Today().SecondsOfDay(), 0);
}

}  // namespace
}  // namespace platform
