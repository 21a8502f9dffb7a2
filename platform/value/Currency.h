#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace platform {

// An amount of money: a 64-bit count of ten-thousandths. Sums and differences are exact; a result that does
// not fit raises ErrorNumber::kOverflow and changes nothing.
class Currency {
 public:
  static constexpr std::int64_t kScale = 10000;

  constexpr Currency() = default;

  static constexpr Currency FromUnits(std::int64_t tenThousandths) {
    Currency value;
    value.units_ = tenThousandths;
    return value;
  }
  static Currency FromInteger(std::int64_t whole);
  // Rounds half to even at the fourth decimal; NaN, infinities and values that do not fit raise.
  static Currency FromDouble(double value);
  // Reads an optional sign, digits and at most one point. Further decimals round half to even.
  // Text that is no number raises kTypeMismatch.
  static Currency FromText(std::string_view text);

  constexpr std::int64_t Units() const { return units_; }
  double ToDouble() const { return static_cast<double>(units_) / static_cast<double>(kScale); }
  // Always four decimals: "-12.3400".
  std::string ToFixedText() const;
  // As few decimals as the value needs: "-12.34", "7".
  std::string ToText() const;

  Currency operator-() const { return Currency() -= *this; }
  Currency& operator+=(Currency other) {
    const std::int64_t b = other.units_;
    if (b > 0 ? units_ > std::numeric_limits<std::int64_t>::max() - b
              : units_ < std::numeric_limits<std::int64_t>::min() - b) {
      RaiseOverflow();
    }
    units_ += b;
    return *this;
  }
  Currency& operator-=(Currency other) {
    const std::int64_t b = other.units_;
    if (b < 0 ? units_ > std::numeric_limits<std::int64_t>::max() + b
              : units_ < std::numeric_limits<std::int64_t>::min() + b) {
      RaiseOverflow();
    }
    units_ -= b;
    return *this;
  }
  friend Currency operator+(Currency left, Currency right) { return left += right; }
  friend Currency operator-(Currency left, Currency right) { return left -= right; }
  friend constexpr auto operator<=>(Currency, Currency) = default;

 private:
  [[noreturn]] static void RaiseOverflow();

  std::int64_t units_ = 0;
};

// `amount` × `numerator` ÷ `denominator`, rounded half to even, exact in between. A zero denominator raises
// kDivisionByZero. This is how an amount is shared out: the caller keeps what is left over.
Currency MultiplyDivide(Currency amount, std::int64_t numerator, std::int64_t denominator);

}  // namespace platform
