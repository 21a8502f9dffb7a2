#pragma once

#include "platform/form/Form.h"
#include "player/Json.h"

namespace player {

// A control's name in scripts: its own, and "tree" for a form's only tree.
std::string ScriptName(const platform::Form& form, const platform::Control& control);
// The control of that name; null when the form has none.
platform::Control* FindControl(const platform::Form& form, std::string_view name);

// What a user sees of a form: {"form","caption","controls","focus"}.
Json StateOf(const platform::Form& form, const Names* names);

}  // namespace player
