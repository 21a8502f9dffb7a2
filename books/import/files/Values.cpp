#include "books/import/files/Values.h"

#include <array>
#include <charconv>
#include <limits>

#include "platform/value/Convert.h"

namespace books::importer {
namespace {

// The largest figures that are believed: sums over millions of rows still fit into 64 bits.
constexpr std::int64_t kMostDigits = 12;

// A decimal number as a count of its last decimal.
std::optional<std::int64_t> ReadScaled(std::string_view text, int decimals) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  std::string_view fraction = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
  while (fraction.ends_with('0')) fraction.remove_suffix(1);
  if (whole.empty() && (point == std::string_view::npos || point + 1 == text.size())) return std::nullopt;
  if (whole.size() > kMostDigits || fraction.size() > static_cast<std::size_t>(decimals)) return std::nullopt;
  std::int64_t units = 0;
  auto take = [&units](char c) {
    if (c < '0' || c > '9') return false;
    units = (units * 10) + (c - '0');
    return true;
  };
  for (const char c : whole) {
    if (!take(c)) return std::nullopt;
  }
  for (const char c : fraction) {
    if (!take(c)) return std::nullopt;
  }
  for (auto missing = static_cast<std::size_t>(decimals) - fraction.size(); missing > 0; --missing)
    units *= 10;
  return negative ? -units : units;
}

}  // namespace

std::optional<database::Quantity> ReadQuantity(std::string_view text) {
  const auto units = ReadScaled(text, 6);
  return units ? std::optional(database::Quantity::FromUnits(*units)) : std::nullopt;
}

std::optional<platform::Currency> ReadAmount(std::string_view text) {
  const auto units = ReadScaled(text, 4);
  return units ? std::optional(platform::Currency::FromUnits(*units)) : std::nullopt;
}

std::optional<double> ReadPrice(std::string_view text) {
  double price = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, price, std::chars_format::fixed);
  const bool digit = !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
  if (!digit || error != std::errc() || stop != end || price > 1e12) return std::nullopt;
  return price;
}

std::optional<std::int32_t> ReadWhole(std::string_view text) {
  std::int32_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<platform::Date> ReadDate(std::string_view text) {
  const std::optional<platform::Date> date = platform::Date::FromText(text);
  if (!date || date->SecondsOfDay() != 0) return std::nullopt;
  static const platform::Date kFirst = platform::Date::Of(1990, 1, 1);
  static const platform::Date kLast = platform::Date::Of(2100, 12, 31);
  return *date < kFirst || *date > kLast ? std::nullopt : date;
}

std::optional<bool> ReadFlag(std::string_view text) {
  struct Word {
    std::string_view text;
    bool value;
  };
  static constexpr std::array kWords = {Word{"1", true},   Word{"0", false},   Word{"yes", true},
                                        Word{"no", false}, Word{"true", true}, Word{"false", false},
                                        Word{"是", true},  Word{"否", false}};
  for (const Word& word : kWords) {
    if (platform::EqualsIgnoreCase(text, word.text)) return word.value;
  }
  return std::nullopt;
}

std::optional<database::Quantity> Multiply(database::Quantity quantity, database::Quantity factor) {
  // An amount is a count of units too: the platform's exact division serves for quantities as well.
  try {
    const platform::Currency product = platform::MultiplyDivide(
        platform::Currency::FromUnits(quantity.Units()), factor.Units(), database::Quantity::kScale);
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / 1000;
    if (product.Units() > kMost || product.Units() < -kMost) return std::nullopt;
    return database::Quantity::FromUnits(product.Units());
  } catch (const platform::Error&) {
    return std::nullopt;
  }
}

}  // namespace books::importer
