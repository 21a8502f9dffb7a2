#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace component {

// Replaces the parsed props of the process. The text is pairs of a key, "=", a value and ";"; a value in
// braces may hold semicolons; blanks around keys and values fall away. A key that occurs twice raises
// kKeyExists, and the pairs before it stay. Answers true.
bool ParsePropsString(std::string_view text);

// The value of a key in the parsed props; an unknown key raises kInvalidCall.
std::string GetPropsItem(std::string_view key);

// The user of the session, as the parsed props have it.
std::int16_t GetUserID();

}  // namespace component
