#pragma once

#include <array>
#include <string_view>

namespace exports {

// How wide texts come out in one font: adding up what was measured once is quick enough for every cell.
struct Measures {
  std::array<double, 128> plain{};  // of the characters below 128
  double wide = 0;                  // of a Chinese character, and of whatever else there is

  double WidthOf(std::string_view text) const {
    double width = 0;
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte < 0x80U) {
        width += plain[byte];
      } else if ((byte & 0xC0U) != 0x80U) {
        width += wide;
      }
    }
    return width;
  }
};

}  // namespace exports
