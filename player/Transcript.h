#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "player/Json.h"

namespace player {

// What is written down, a line at a time and in order.
class Transcript {
 public:
  explicit Transcript(std::ostream& out) : out_(out) {}

  void Write(const Json& line);

  // Keeps the next line's place for one whose content is known only later; what is written meanwhile comes
  // after it. Each place must be filled.
  std::size_t KeepPlace();
  void Fill(std::size_t place, const Json& line);

  // From here on nothing is written.
  void End() { ended_ = true; }

 private:
  void Flush();

  std::ostream& out_;
  std::vector<std::string> waiting_;
  std::size_t open_ = 0;
  bool ended_ = false;
};

}  // namespace player
