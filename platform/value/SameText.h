#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace platform {

// Equal texts; quicker than the library for the short ones that rows and names are.
inline bool SameText(std::string_view left, std::string_view right) {
  const std::size_t size = left.size();
  if (size != right.size()) return false;
  if (size > 16) return std::memcmp(left.data(), right.data(), size) == 0;
  if (size >= 8) {  // two words that overlap
    std::uint64_t words[4];
    std::memcpy(&words[0], left.data(), 8);
    std::memcpy(&words[1], right.data(), 8);
    std::memcpy(&words[2], left.data() + size - 8, 8);
    std::memcpy(&words[3], right.data() + size - 8, 8);
    return words[0] == words[1] && words[2] == words[3];
  }
  for (std::size_t i = 0; i < size; ++i) {
    if (left[i] != right[i]) return false;
  }
  return true;
}

// Whether texts of one length may differ in the case of letters alone: a quick look that tells most others
// apart. The two cases of a letter differ in one bit.
inline bool MayDifferInCaseAlone(std::string_view left, std::string_view right) {
  constexpr std::uint64_t kAllButCase = 0xDFDFDFDFDFDFDFDFU;
  if (left.size() < 8) return true;
  std::uint64_t words[2];
  std::memcpy(&words[0], left.data(), 8);
  std::memcpy(&words[1], right.data(), 8);
  return ((words[0] ^ words[1]) & kAllButCase) == 0;
}

}  // namespace platform
