#include "books/demo/Random.h"

namespace books::demo {

Random::Random(std::uint64_t seed, std::string_view purpose) : state_(seed * 0x9E3779B97F4A7C15U) {
  for (const char letter : purpose) {
    state_ = (state_ ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
  }
}

std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31U);
}

std::int64_t Random::Between(std::int64_t low, std::int64_t high) {
  const auto width = static_cast<std::uint64_t>(high - low) + 1;
  return low + static_cast<std::int64_t>(((Next() >> 32U) * width) >> 32U);
}

std::int64_t Random::Around(std::int64_t mean, int spreadPermille) {
  const std::int64_t draw = Between(-1000, 1000) + Between(-1000, 1000) + Between(-1000, 1000);
  return mean + (mean * draw / 3000 * spreadPermille / 1000);
}

}  // namespace books::demo
