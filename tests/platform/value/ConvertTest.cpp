// Every conversion between the kinds of a Variant: a table a target, what it takes first, what it refuses
// after.
#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const Date kDay = Date::Of(2024, 3, 2);

struct NumberCase {
  std::string name;
  std::string text;
  double number = 0;
};

TEST(ConvertTest, LeadingNumber) {
  const NumberCase cases[] = {
      {"plain", "10414", 10414},
      {"negative", "-12", -12},
      {"plus", "+7", 7},
      {"decimals", "3.25", 3.25},
      {"no digit before the point", ".5", 0.5},
      {"no digit before the point, negative", "-.5", -0.5},
      {"exponent", "1e3", 1000},
      {"exponent without digits", "1e", 1},
      {"text behind", "12 abc", 12},
      {"second point", "1.2.3", 1.2},
      {"blanks inside", "1 0414", 10414},
      {"blanks before", "   8", 8},
      {"tab and line end", "\t9\n1", 91},
      {"blank after the sign", "- 5", -5},
      {"zeros in front", "007", 7},
      {"empty", "", 0},
      {"blanks only", "   ", 0},
      {"text", "abc", 0},
      {"text before", "a12", 0},
      {"sign only", "-", 0},
      {"point only", ".", 0},
      {"two signs", "--5", 0},
      {"two different signs", "+-5", 0},
      {"infinity is no number", "inf", 0},
      {"nor is nan", "nan", 0},
      {"chinese", "库存", 0},
  };
  for (const NumberCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LeadingNumber(row.text), row.number);
  }
}

TEST(ConvertTest, NumberToText) {
  struct Case {
    std::string name;
    double number = 0;
    std::string text;
  };
  const Case cases[] = {
      {"zero", 0, "0"},
      {"negative zero", -0.0, "0"},
      {"whole", 42, "42"},
      {"negative", -42, "-42"},
      {"decimals as short as they read back", 0.1, "0.1"},
      {"a sum that is not exact", 0.1 + 0.2, "0.30000000000000004"},
      {"a third", 1.0 / 3, "0.3333333333333333"},
      {"largest without exponent", 999999999999999, "999999999999999"},
      {"exponent", 1e15, "1E+15"},
      {"exponent with decimals", 1.5e300, "1.5E+300"},
      {"smallest without exponent", 1e-5, "0.00001"},
      {"small exponent", 2.5e-7, "2.5E-07"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(NumberToText(row.number), row.text);
    EXPECT_EQ(ToDouble(NumberToText(row.number)), row.number);
  }
}

TEST(ConvertTest, Text) {
  struct Case {
    std::string name;
    Variant value;
    std::string text;
  };
  const Case cases[] = {
      {"empty", Variant(), ""},
      {"true", true, "True"},
      {"false", false, "False"},
      {"16 bits", std::int16_t{-7}, "-7"},
      {"32 bits", std::int32_t{2000000000}, "2000000000"},
      {"64 bits", std::int64_t{-9000000000}, "-9000000000"},
      {"double", 2.5, "2.5"},
      {"currency", Currency::FromUnits(-123400), "-12.34"},
      {"whole currency", Currency::FromInteger(7), "7"},
      {"date", kDay, "2024-03-02"},
      {"date with a time", Date::Of(2024, 3, 2, 13, 30, 5), "2024-03-02 13:30:05"},
      {"text", "商品", "商品"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToText(row.value), row.text);
  }
}

TEST(ConvertTest, Double) {
  struct Case {
    std::string name;
    Variant value;
    double number = 0;
  };
  const Case cases[] = {
      {"empty", Variant(), 0},
      {"true", true, -1},
      {"false", false, 0},
      {"16 bits", std::int16_t{-7}, -7},
      {"32 bits", std::int32_t{12}, 12},
      {"64 bits", std::int64_t{9000000000}, 9e9},
      {"double", 2.5, 2.5},
      {"currency", Currency::FromUnits(25000), 2.5},
      {"date", kDay, 45353},
      {"date with a time", Date::Of(2024, 3, 2, 12), 45353.5},
      {"text", "12", 12},
      {"text in blanks", "  -1.5 ", -1.5},
      {"text with a plus", "+3", 3},
      {"text with an exponent", "1E3", 1000},
      {"text with an open point", "4.", 4},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToDouble(row.value), row.number);
  }
}

TEST(ConvertTest, Integers) {
  struct Case {
    std::string name;
    Variant value;
    std::int64_t number = 0;
    int bits = 16;  // the narrowest width that takes it
  };
  const Case cases[] = {
      {"empty", Variant(), 0, 16},
      {"true", true, -1, 16},
      {"half rounds to even, down", 2.5, 2, 16},
      {"half rounds to even, up", 3.5, 4, 16},
      {"negative half", -2.5, -2, 16},
      {"text", " 17 ", 17, 16},
      {"text with decimals", "17.5", 18, 16},
      {"currency half to even", Currency::FromUnits(25000), 2, 16},
      {"currency above half", Currency::FromUnits(25001), 3, 16},
      {"negative currency half to even", Currency::FromUnits(-35000), -4, 16},
      {"date", kDay, 45353, 32},
      {"largest 16", std::int32_t{32767}, 32767, 16},
      {"smallest 16", std::int32_t{-32768}, -32768, 16},
      {"rounds to the largest 16", 32767.4, 32767, 16},
      {"past the largest 16", std::int32_t{32768}, 32768, 32},
      {"past the smallest 16", std::int32_t{-32769}, -32769, 32},
      {"rounds past the largest 16", 32767.5, 32768, 32},
      {"largest 32", std::int64_t{2147483647}, 2147483647, 32},
      {"smallest 32", "-2147483648", -2147483648, 32},
      {"past the largest 32", std::int64_t{2147483648}, 2147483648, 64},
      {"past the smallest 32", -2147483649.0, -2147483649, 64},
      {"largest 64", std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max(), 64},
      {"smallest 64", -9223372036854775808.0, std::numeric_limits<std::int64_t>::min(), 64},
      {"a text that no double holds", "9007199254740993", 9007199254740993, 64},
      {"largest 64 as text", "9223372036854775807", std::numeric_limits<std::int64_t>::max(), 64},
      {"an amount whose rounding no double holds", Currency::FromUnits(9000000000000014999), 900000000000001,
       64},
      {"past the largest 64", 9223372036854775808.0, 0, 65},
      {"past the largest 64 as text", "9223372036854775808", 0, 65},
      {"infinity", kInfinity, 0, 65},
      {"no number", std::nan(""), 0, 65},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    auto check = [&](int bits, const auto& convert) {
      SCOPED_TRACE(bits);
      if (bits >= row.bits) {
        EXPECT_EQ(convert(row.value), row.number);
      } else {
        EXPECT_EQ(Raised([&] { convert(row.value); }).Number(), ErrorNumber::kOverflow);
      }
    };
    check(16, [](const Variant& value) { return std::int64_t{ToInt16(value)}; });
    check(32, [](const Variant& value) { return std::int64_t{ToInt32(value)}; });
    check(64, [](const Variant& value) { return ToInt64(value); });
  }
}

TEST(ConvertTest, Amounts) {
  struct Case {
    std::string name;
    Variant value;
    std::int64_t units = 0;
  };
  const Case cases[] = {
      {"empty", Variant(), 0},
      {"true", true, -10000},
      {"16 bits", std::int16_t{3}, 30000},
      {"32 bits", std::int32_t{-3}, -30000},
      {"64 bits", std::int64_t{922337203685477}, 9223372036854770000},
      {"double half to even", 0.00025, 2},
      {"currency", Currency::FromUnits(7), 7},
      {"date", kDay, 453530000},
      {"text", "12.34", 123400},
      {"text in blanks", " 5 ", 50000},
      {"text beyond double", "922337203685477.5807", 9223372036854775807},
      {"text with an exponent", "1.5e2", 1500000},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToCurrency(row.value).Units(), row.units);
  }
  const Variant tooMuch[] = {std::int64_t{922337203685478}, 1e15, "922337203685477.5808", kInfinity};
  for (const Variant& value : tooMuch) {
    SCOPED_TRACE(ToText(value));
    EXPECT_EQ(Raised([&] { ToCurrency(value); }).Number(), ErrorNumber::kOverflow);
  }
}

TEST(ConvertTest, Booleans) {
  struct Case {
    std::string name;
    Variant value;
    bool flag = false;
  };
  const Case cases[] = {
      {"true", true, true},
      {"false", false, false},
      {"empty", Variant(), false},
      {"zero", std::int16_t{0}, false},
      {"one", std::int32_t{1}, true},
      {"minus one", -1.0, true},
      {"a fraction", 0.25, true},
      {"no money", Currency(), false},
      {"money", Currency::FromUnits(1), true},
      {"text True", "True", true},
      {"text in any case", "fALSE", false},
      {"text in blanks", " true ", true},
      {"text 0", "0", false},
      {"text 1", "1", true},
      {"text -1", "-1", true},
      {"a date", kDay, true},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToBoolean(row.value), row.flag);
  }
}

TEST(ConvertTest, Dates) {
  struct Case {
    std::string name;
    Variant value;
    std::string text;
  };
  const Case cases[] = {
      {"date", kDay, "2024-03-02"},
      {"text", "2024/3/2", "2024-03-02"},
      {"day count", std::int32_t{45353}, "2024-03-02"},
      {"day count with a time", 45353.5, "2024-03-02 12:00:00"},
      {"empty is day 0", Variant(), "1899-12-30"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ToDate(row.value).ToText(), row.text);
  }
  EXPECT_EQ(Raised([] { ToDate(3e6); }).Number(), ErrorNumber::kOverflow);
}

TEST(ConvertTest, WhatHasNoMeaningIsRefused) {
  using Conversion = std::function<void(const Variant&)>;
  const std::pair<std::string, Conversion> conversions[] = {
      {"text", [](const Variant& value) { ToText(value); }},
      {"double", [](const Variant& value) { ToDouble(value); }},
      {"16 bits", [](const Variant& value) { ToInt16(value); }},
      {"32 bits", [](const Variant& value) { ToInt32(value); }},
      {"64 bits", [](const Variant& value) { ToInt64(value); }},
      {"currency", [](const Variant& value) { ToCurrency(value); }},
      {"boolean", [](const Variant& value) { ToBoolean(value); }},
      {"date", [](const Variant& value) { ToDate(value); }},
  };
  const std::pair<std::string, Variant> values[] = {{"database null", Null{}},
                                                    {"missing", Missing{}},
                                                    {"nothing", nullptr},
                                                    {"object", MakeRef<Vector>()},
                                                    {"text", "abc"},
                                                    {"empty text", ""},
                                                    {"blank text", " "},
                                                    {"two numbers", "1 2"},
                                                    {"two signs", "+-1"},
                                                    {"a point", "."},
                                                    {"infinity", "inf"},
                                                    {"hexadecimal", "0x10"},
                                                    {"a number and text", "5a"}};
  for (const auto& [target, convert] : conversions) {
    for (const auto& [name, value] : values) {
      if (target == "text" && value.IsText()) continue;
      SCOPED_TRACE(name + " to " + target);
      const Error error = Raised([&convert = convert, &value = value] { convert(value); });
      EXPECT_EQ(error.Number(), ErrorNumber::kTypeMismatch);
      EXPECT_THAT(error.Description(), testing::HasSubstr("type mismatch"));
    }
  }
}

TEST(ConvertTest, Questions) {
  struct Case {
    std::string name;
    Variant value;
    bool isDate = false;
    bool isNumeric = false;
  };
  const Case cases[] = {
      {"empty", Variant(), false, true},         {"boolean", true, false, true},
      {"integer", std::int32_t{1}, false, true}, {"double", 1.5, false, true},
      {"currency", Currency(), false, true},     {"date", kDay, true, false},
      {"date text", "2024-02-29", true, false},  {"no such day", "2023-02-29", false, false},
      {"number text", " 1.5 ", false, true},     {"text", "abc", false, false},
      {"database null", Null{}, false, false},   {"missing", Missing{}, false, false},
      {"nothing", nullptr, false, false},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IsDate(row.value), row.isDate);
    EXPECT_EQ(IsNumeric(row.value), row.isNumeric);
  }
}

TEST(ConvertTest, AValueThatIsNotNeededGivesItsTextAway) {
  Variant text("a text that is too long to lie in the value itself");
  const char* const place = text.As<std::string>()->data();
  const std::string taken = ToText(std::move(text));
  EXPECT_EQ(taken.data(), place);
  EXPECT_EQ(ToText(Variant(7)), "7");
  EXPECT_THROW(ToText(Variant(Null{})), Error);
}

TEST(ConvertTest, TextsWithoutCase) {
  struct Case {
    std::string left;
    std::string right;
    bool equal = false;
  };
  const Case cases[] = {{"", "", true},
                        {"FName", "fNAME", true},
                        {"a1_é", "A1_é", true},
                        {"TOVMtsCacheService.CacheFacade", "tovmtscacheservice.cachefacade", true},
                        {"FName", "FNam", false},
                        {"é", "É", false},
                        {"[", "{", false},
                        {"rsBegBal", "rsEndBal", false},
                        {"FItem[01]", "FItem{01}", false},
                        {"FItemName1", "FItemName2", false}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.left + " and " + row.right);
    EXPECT_EQ(EqualsIgnoreCase(row.left, row.right), row.equal);
    EXPECT_EQ(ToUpperAscii(row.left) == ToUpperAscii(row.right), row.equal);
    EXPECT_EQ(ToLowerAscii(row.left) == ToLowerAscii(row.right), row.equal);
  }
  EXPECT_EQ(ToUpperAscii("az{é库"), "AZ{é库");
  EXPECT_EQ(ToLowerAscii("AZ[É库"), "az[É库");
  EXPECT_EQ(TrimBlanks("  a b "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(TrimBlanks("\ta "), "\ta");
}

}  // namespace
}  // namespace platform
