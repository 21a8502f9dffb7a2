#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace exports {

// A size of paper that offices print on. Millimetres, upright.
struct Paper {
  std::string_view name;
  double width = 0;
  double height = 0;
};

// The first one is what is taken where nobody chooses. The B sizes are those that office programs and
// printers call so, a little larger than the B sizes of ISO; 8K and 16K are the national sizes of paper for
// documents.
inline constexpr std::array kPapers = {
    Paper{"A4", 210, 297},  Paper{"A3", 297, 420},         Paper{"A5", 148, 210},
    Paper{"B4", 257, 364},  Paper{"B5", 182, 257},         Paper{"8K", 260, 368},
    Paper{"16K", 184, 260}, Paper{"Letter", 215.9, 279.4}, Paper{"Legal", 215.9, 355.6},
};

// kAuto is upright where the columns fit, else lying.
enum class Orientation { kAuto, kPortrait, kLandscape };

struct OrientationName {
  std::string_view name;
  Orientation orientation;
};
inline constexpr std::array kOrientations = {
    OrientationName{"auto", Orientation::kAuto},
    OrientationName{"portrait", Orientation::kPortrait},
    OrientationName{"landscape", Orientation::kLandscape},
};

struct PageSetup {
  Paper paper = kPapers[0];
  Orientation orientation = Orientation::kAuto;
};

// By name, letters of any case; nothing for a name that is in no table.
std::optional<Paper> FindPaper(std::string_view name);
std::optional<Orientation> FindOrientation(std::string_view name);
// "A4, A3, …", for messages.
std::string PaperNames();

}  // namespace exports
