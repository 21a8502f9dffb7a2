// Exact money. Intermediate products run through 128 bits, built from two 64-bit halves so that the code
// stays within the language; every way out checks the range before it answers.
#include "platform/value/Currency.h"

#include <cmath>

#include "platform/value/Error.h"

namespace platform {
namespace {

[[noreturn]] void Overflow() {
  throw Error(ErrorNumber::kOverflow, "Currency", "overflow: the amount does not fit");
}

[[noreturn]] void NoNumber(std::string_view text) {
  throw Error(ErrorNumber::kTypeMismatch, "Currency",
              "type mismatch: '" + std::string(text) + "' is no amount");
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::uint64_t Magnitude(std::int64_t value) {
  return value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
}

std::uint64_t Increment(std::uint64_t value) {
  if (value == std::numeric_limits<std::uint64_t>::max()) Overflow();
  return value + 1;
}

std::int64_t WithSign(std::uint64_t magnitude, bool negative) {
  constexpr auto kTop = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (magnitude > kTop + (negative ? 1U : 0U)) Overflow();
  if (!negative) return static_cast<std::int64_t>(magnitude);
  return magnitude == kTop + 1 ? std::numeric_limits<std::int64_t>::min()
                               : -static_cast<std::int64_t>(magnitude);
}

struct Wide {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
};

Wide Multiply(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t kLow = 0xFFFFFFFFU;
  const std::uint64_t ll = (a & kLow) * (b & kLow);
  const std::uint64_t lh = (a & kLow) * (b >> 32U);
  const std::uint64_t hl = (a >> 32U) * (b & kLow);
  const std::uint64_t hh = (a >> 32U) * (b >> 32U);
  const std::uint64_t middle = (ll >> 32U) + (lh & kLow) + (hl & kLow);
  return {.high = hh + (lh >> 32U) + (hl >> 32U) + (middle >> 32U), .low = (middle << 32U) | (ll & kLow)};
}

struct Quotient {
  std::uint64_t value = 0;
  std::uint64_t remainder = 0;
};

Quotient Divide(Wide dividend, std::uint64_t divisor) {
  if (dividend.high >= divisor) Overflow();
  std::uint64_t remainder = dividend.high;
  std::uint64_t quotient = 0;
  for (int bit = 63; bit >= 0; --bit) {
    const bool carry = (remainder >> 63U) != 0;
    remainder = (remainder << 1U) | ((dividend.low >> static_cast<unsigned>(bit)) & 1U);
    quotient <<= 1U;
    if (carry || remainder >= divisor) {
      remainder -= divisor;
      quotient |= 1U;
    }
  }
  return {.value = quotient, .remainder = remainder};
}

}  // namespace

Currency Currency::FromInteger(std::int64_t whole) {
  if (whole > std::numeric_limits<std::int64_t>::max() / kScale ||
      whole < std::numeric_limits<std::int64_t>::min() / kScale) {
    Overflow();
  }
  return FromUnits(whole * kScale);
}

Currency Currency::FromDouble(double value) {
  const double scaled = value * static_cast<double>(kScale);
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (!(scaled >= -kLimit && scaled < kLimit)) Overflow();
  double rounded = std::floor(scaled);
  const double rest = scaled - rounded;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(rounded, 2.0) != 0.0)) rounded += 1.0;
  if (rounded >= kLimit) Overflow();
  return FromUnits(static_cast<std::int64_t>(rounded));
}

Currency Currency::FromText(std::string_view text) {
  std::string_view rest = text;
  const bool negative = !rest.empty() && rest.front() == '-';
  if (negative || (!rest.empty() && rest.front() == '+')) rest.remove_prefix(1);

  std::uint64_t units = 0;
  auto append = [&](unsigned digit) {
    if (units > (std::numeric_limits<std::uint64_t>::max() - digit) / 10U) Overflow();
    units = units * 10U + digit;
  };
  bool anyDigit = false;
  while (!rest.empty() && IsDigit(rest.front())) {
    append(static_cast<unsigned>(rest.front() - '0'));
    rest.remove_prefix(1);
    anyDigit = true;
  }
  std::string_view decimals;
  if (!rest.empty() && rest.front() == '.') {
    decimals = rest.substr(1);
    rest = {};
  }
  if (!rest.empty() || (!anyDigit && decimals.empty())) NoNumber(text);
  for (const char c : decimals) {
    if (!IsDigit(c)) NoNumber(text);
  }
  for (std::size_t i = 0; i < 4; ++i)
    append(i < decimals.size() ? static_cast<unsigned>(decimals[i] - '0') : 0U);
  if (decimals.size() > 4) {
    const bool beyondHalf = decimals.find_first_not_of('0', 5) != std::string_view::npos;
    const bool odd = units % 2 != 0;
    if (decimals[4] > '5' || (decimals[4] == '5' && (beyondHalf || odd))) units = Increment(units);
  }
  return FromUnits(WithSign(units, negative));
}

std::string Currency::ToFixedText() const {
  const std::uint64_t magnitude = Magnitude(units_);
  const auto scale = static_cast<std::uint64_t>(kScale);
  std::string decimals = std::to_string(magnitude % scale);
  decimals.insert(0, 4 - decimals.size(), '0');
  return (units_ < 0 ? "-" : "") + std::to_string(magnitude / scale) + "." + decimals;
}

std::string Currency::ToText() const {
  std::string text = ToFixedText();
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

void Currency::RaiseOverflow() { Overflow(); }

Currency MultiplyDivide(Currency amount, std::int64_t numerator, std::int64_t denominator) {
  if (denominator == 0) throw Error(ErrorNumber::kDivisionByZero, "Currency", "division by zero");
  const bool negative = ((amount.Units() < 0) != (numerator < 0)) != (denominator < 0);
  const std::uint64_t divisor = Magnitude(denominator);
  Quotient result = Divide(Multiply(Magnitude(amount.Units()), Magnitude(numerator)), divisor);
  const std::uint64_t toNext = divisor - result.remainder;
  if (result.remainder > toNext || (result.remainder == toNext && result.value % 2 != 0)) {
    result.value = Increment(result.value);
  }
  return Currency::FromUnits(WithSign(result.value, negative && result.value != 0));
}

}  // namespace platform
