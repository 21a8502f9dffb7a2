#include "tests/player/Played.h"

#include <sstream>

#include "player/Player.h"
#include "tests/player/TestForms.h"

namespace player_tests {

std::vector<std::string> Played(const std::string& steps) {
  const RegisteredForms forms;
  std::istringstream in("[" + steps + "]");
  std::ostringstream out;
  std::ostringstream err;
  const int status = player::Play(in, out, err, {});
  std::vector<std::string> lines;
  if (status != 0) lines.push_back("exit status " + std::to_string(status) + ": " + err.str());
  std::istringstream text(out.str());
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> PlayedFrom(std::size_t step, const std::string& steps) {
  std::vector<std::string> lines = Played(steps);
  if (step == 0) return lines;
  const std::string last = "{\"step\":" + std::to_string(step - 1);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i] != last + "}" && !lines[i].starts_with(last + ",")) continue;
    return {lines.begin() + static_cast<std::ptrdiff_t>(i) + 1, lines.end()};
  }
  return lines;
}

std::string Refusal(const std::string& script, int& status) {
  std::istringstream in(script);
  std::ostringstream out;
  std::ostringstream err;
  status = player::Play(in, out, err, {});
  return err.str();
}

}  // namespace player_tests
