#pragma once

#include <string>
#include <vector>

namespace player_tests {

// What a script writes, line by line, played without a component but with the forms of TestForms.h.
std::vector<std::string> Played(const std::string& steps);
// The same without the lines of the steps before number `step`.
std::vector<std::string> PlayedFrom(std::size_t step, const std::string& steps);
// What a script that cannot be read says; empty when it was played. `status` gets the exit status.
std::string Refusal(const std::string& script, int& status);

}  // namespace player_tests
