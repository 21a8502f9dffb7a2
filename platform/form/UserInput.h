#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/form/Form.h"

namespace platform {

// Why a user could not have done something.
enum class Refusal { kDisabled, kHidden };
std::string_view ToString(Refusal refusal);

// What a user does in a form, with every event that follows from it. A page and a script player act through
// this one class, so that both follow the same rules. An action that a user could not have done changes
// nothing and answers why. A control that the form has not got, or an action that it does not understand,
// raises kInvalidCall, and so does a day before a date picker's minimum.
class UserInput {
 public:
  using Outcome = std::optional<Refusal>;  // nothing: it was done

  explicit UserInput(Form& form) : form_(form) {}

  // Types a text as a whole, sets a date, a check value, an option, or a combo's index. The focus stays.
  Outcome Set(std::string_view id, const Variant& value);
  // Clicks a button, check box or option; the focus goes there first. A click on an option that is on
  // already fires its click again.
  Outcome Click(std::string_view id);
  // Ticks or unticks a tree node's box.
  Outcome ClickNode(std::string_view treeId, std::string_view nodeKey);
  // Presses a key in a control: "F7", "F8", "Enter", "Tab", or one character.
  Outcome PressKey(std::string_view id, std::string_view key);
  Outcome Enter(std::string_view id);
  // Leaving a control that has not got the focus enters it first: one can only leave where one is.
  Outcome Leave(std::string_view id);

 private:
  Control& Need(std::string_view id) const;
  static Outcome Check(const Control& control);

  Form& form_;
};

}  // namespace platform
