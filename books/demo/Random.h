#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace books::demo {

// Chance that repeats itself: the same seed and purpose give the same draws with every compiler and standard
// library. Each purpose has a stream of its own, so that a further draw in one does not shift the others.
class Random {
 public:
  Random(std::uint64_t seed, std::string_view purpose);

  std::uint64_t Next();
  // Both ends included; the width of the range must be below 2^32.
  std::int64_t Between(std::int64_t low, std::int64_t high);
  std::size_t Below(std::size_t count) {
    return static_cast<std::size_t>(Between(0, static_cast<std::int64_t>(count) - 1));
  }
  bool Chance(int permille) { return Between(1, 1000) <= permille; }
  // From mean × (1000 − spread) / 1000 to mean × (1000 + spread) / 1000, mostly near the middle.
  std::int64_t Around(std::int64_t mean, int spreadPermille);
  template <class List>
  const auto& Pick(const List& list) {
    return list[Below(std::size(list))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace books::demo
