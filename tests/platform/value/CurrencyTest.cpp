#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "platform/value/Currency.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(CurrencyTest, FromTextAndBack) {
  struct Case {
    std::string text;
    std::int64_t units = 0;
    std::string shortest;
    std::string fixed;
  };
  const Case cases[] = {
      {"0", 0, "0", "0.0000"},
      {"7", 70000, "7", "7.0000"},
      {"+7", 70000, "7", "7.0000"},
      {"-12.34", -123400, "-12.34", "-12.3400"},
      {".5", 5000, "0.5", "0.5000"},
      {"-.0001", -1, "-0.0001", "-0.0001"},
      {"5.", 50000, "5", "5.0000"},
      {"100", 1000000, "100", "100.0000"},
      {"0.00005", 0, "0", "0.0000"},
      {"0.00015", 2, "0.0002", "0.0002"},
      {"0.000050001", 1, "0.0001", "0.0001"},
      {"0.00006", 1, "0.0001", "0.0001"},
      {"-0.00015", -2, "-0.0002", "-0.0002"},
      {"922337203685477.5807", kMax, "922337203685477.5807", "922337203685477.5807"},
      {"-922337203685477.5808", kMin, "-922337203685477.5808", "-922337203685477.5808"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.text);
    const Currency amount = Currency::FromText(row.text);
    EXPECT_EQ(amount.Units(), row.units);
    EXPECT_EQ(amount.ToText(), row.shortest);
    EXPECT_EQ(amount.ToFixedText(), row.fixed);
    EXPECT_EQ(Currency::FromText(amount.ToText()), amount);
  }
}

TEST(CurrencyTest, TextsThatAreNoAmount) {
  for (const std::string text :
       {"", "-", ".", "+.", "1 2", " 1", "1e3", "1,5", "--1", "+-1", "1.2.3", "abc", "1.5x"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Raised([&] { Currency::FromText(text); }).Number(), ErrorNumber::kTypeMismatch);
  }
  for (const std::string text :
       {"922337203685477.5808", "-922337203685477.5809", "922337203685477.58075", "1844674407370955.1616",
        "1844674407370955.16155", "99999999999999999999999999"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Raised([&] { Currency::FromText(text); }).Number(), ErrorNumber::kOverflow);
  }
}

TEST(CurrencyTest, FromDouble) {
  struct Case {
    double value = 0;
    std::int64_t units = 0;
  };
  const Case cases[] = {{0, 0},
                        {1.5, 15000},
                        {-1.5, -15000},
                        {0.00003, 0},
                        {0.00007, 1},
                        {0.00012, 1},
                        {2.5e-5, 0},
                        {0.00025, 2},
                        {0.00035, 4},
                        {-0.00025, -2},
                        {1e14, 1000000000000000000}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.value);
    EXPECT_EQ(Currency::FromDouble(row.value).Units(), row.units);
  }
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double value : {1e15, -1e15, 922337203685477.6, infinity, -infinity, std::nan("")}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Raised([&] { Currency::FromDouble(value); }).Number(), ErrorNumber::kOverflow);
  }
}

TEST(CurrencyTest, FromInteger) {
  EXPECT_EQ(Currency::FromInteger(922337203685477).Units(), 9223372036854770000);
  EXPECT_EQ(Currency::FromInteger(-922337203685477).Units(), -9223372036854770000);
  for (const std::int64_t whole :
       {std::int64_t{922337203685478}, std::int64_t{-922337203685478}, kMax, kMin}) {
    SCOPED_TRACE(whole);
    EXPECT_EQ(Raised([&] { Currency::FromInteger(whole); }).Number(), ErrorNumber::kOverflow);
  }
}

TEST(CurrencyTest, SumsAreExact) {
  Currency sum;
  for (int i = 0; i < 10000; ++i) sum += Currency::FromText("0.1");
  EXPECT_EQ(sum, Currency::FromInteger(1000));
  for (int i = 0; i < 10000; ++i) sum -= Currency::FromText("0.1");
  EXPECT_EQ(sum, Currency());
  EXPECT_EQ((Currency::FromUnits(kMax) + Currency::FromUnits(kMin)).Units(), -1);
  EXPECT_EQ((Currency::FromUnits(-1) - Currency::FromUnits(kMin)).Units(), kMax);
  EXPECT_LT(Currency::FromUnits(-1), Currency());
}

TEST(CurrencyTest, WhatDoesNotFitRaisesAndChangesNothing) {
  struct Case {
    std::string name;
    std::int64_t left = 0;
    std::int64_t right = 0;
    bool add = true;
  };
  const Case cases[] = {{"past the largest", kMax, 1, true},
                        {"past the smallest", kMin, -1, true},
                        {"less than the smallest", kMin, 1, false},
                        {"more than the largest", kMax, -1, false},
                        {"the smallest taken off", 0, kMin, false}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    Currency left = Currency::FromUnits(row.left);
    const Currency right = Currency::FromUnits(row.right);
    EXPECT_EQ(Raised([&] { row.add ? left += right : left -= right; }).Number(), ErrorNumber::kOverflow);
    EXPECT_EQ(left.Units(), row.left);
  }
  EXPECT_EQ((-Currency::FromUnits(kMax)).Units(), -kMax);
  EXPECT_EQ(Raised([] { -Currency::FromUnits(kMin); }).Number(), ErrorNumber::kOverflow);
}

TEST(CurrencyTest, MultiplyDivide) {
  struct Case {
    std::string name;
    std::int64_t units = 0;
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
    std::int64_t result = 0;
  };
  const Case cases[] = {
      {"a third", 1000000, 1, 3, 333333},
      {"two thirds", 1000000, 2, 3, 666667},
      {"half to even, down", 5, 1, 2, 2},
      {"half to even, up", 7, 1, 2, 4},
      {"negative half", -5, 1, 2, -2},
      {"negative numerator", 7, -1, 2, -4},
      {"negative denominator", 7, 1, -2, -4},
      {"both negative", 7, -1, -2, 4},
      {"rounds to zero without a sign", -1, 1, 3, 0},
      {"nothing", 0, kMax, 1, 0},
      {"nothing of it", kMax, 0, 5, 0},
      {"largest by largest", kMax, kMax, kMax, kMax},
      {"smallest by smallest", kMin, kMin, kMin, kMin},
      {"largest by smallest", kMax, kMin, kMin, kMax},
      {"a product of 126 bits", kMin, kMin - kMin - 2, 4, kMax / 2 + 1},
      {"just short of the whole", kMax, kMax - 1, kMax, kMax - 1},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(MultiplyDivide(Currency::FromUnits(row.units), row.numerator, row.denominator).Units(),
              row.result);
  }
  const Case refused[] = {
      {"twice the largest", kMax, 2, 1},
      {"the smallest turned round", kMin, -1, 1},
      {"a quotient of more than 64 bits", kMax, kMax, 1},
      {"a quotient that rounds past 64 bits", 253921, 145295143558111, 2},
  };
  for (const Case& row : refused) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Raised([&] {
                MultiplyDivide(Currency::FromUnits(row.units), row.numerator, row.denominator);
              }).Number(),
              ErrorNumber::kOverflow);
  }
  EXPECT_EQ(Raised([] { MultiplyDivide(Currency::FromUnits(1), 1, 0); }).Number(),
            ErrorNumber::kDivisionByZero);
}

// Against the plain rule, with numbers that need no more than 64 bits.
TEST(CurrencyTest, MultiplyDivideAgreesWithTheRule) {
  std::mt19937_64 random(20240302);
  std::uniform_int_distribution<std::int64_t> pick(-2000000, 2000000);
  for (int i = 0; i < 20000; ++i) {
    const std::int64_t a = pick(random);
    const std::int64_t b = pick(random);
    const std::int64_t c = pick(random);
    if (c == 0) continue;
    SCOPED_TRACE(std::to_string(a) + " x " + std::to_string(b) + " / " + std::to_string(c));
    const std::int64_t product = a * b;
    std::int64_t expected = product / c;
    const std::int64_t twice = std::abs(product % c) * 2;
    if (twice > std::abs(c) || (twice == std::abs(c) && expected % 2 != 0)) {
      expected += (product < 0) == (c < 0) ? 1 : -1;
    }
    ASSERT_EQ(MultiplyDivide(Currency::FromUnits(a), b, c).Units(), expected);
  }
}

}  // namespace
}  // namespace platform
