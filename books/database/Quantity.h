#pragma once

#include <compare>
#include <cstdint>

namespace books::database {

// A quantity as a book keeps it: a 64-bit count of millionths of a unit. Sums and differences are exact, so
// that ten times 0.1 is 1 and a balance can be compared with `=`. Reports turn it into a double at their
// edge.
class Quantity {
 public:
  static constexpr std::int64_t kScale = 1'000'000;

  constexpr Quantity() = default;

  static constexpr Quantity FromUnits(std::int64_t millionths) {
    Quantity value;
    value.units_ = millionths;
    return value;
  }
  static constexpr Quantity FromInteger(std::int32_t whole) { return FromUnits(whole * kScale); }
  // The nearest millionth, half to even; NaN, infinities and values that do not fit raise kOverflow.
  static Quantity FromDouble(double value);

  constexpr std::int64_t Units() const { return units_; }
  double ToDouble() const { return static_cast<double>(units_) / static_cast<double>(kScale); }

  constexpr Quantity operator-() const { return FromUnits(-units_); }
  constexpr Quantity& operator+=(Quantity other) {
    units_ += other.units_;
    return *this;
  }
  constexpr Quantity& operator-=(Quantity other) {
    units_ -= other.units_;
    return *this;
  }
  friend constexpr Quantity operator+(Quantity left, Quantity right) { return left += right; }
  friend constexpr Quantity operator-(Quantity left, Quantity right) { return left -= right; }
  friend constexpr auto operator<=>(Quantity, Quantity) = default;

 private:
  std::int64_t units_ = 0;
};

}  // namespace books::database
