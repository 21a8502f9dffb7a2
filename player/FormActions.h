#pragma once

#include <functional>
#include <string>

#include "desk/filter/FilterControl.h"
#include "platform/form/UserInput.h"
#include "player/Json.h"
#include "player/ScriptDesk.h"
#include "player/Transcript.h"

namespace player {

// Does in a form what a script says, one action at a time. What a user could not have done is written down
// as refused. An action that makes no sense in the form is told to `fault` and raises; an error that the
// form's own events raise goes out as it is.
class FormActions {
 public:
  FormActions(platform::Form& form, Transcript& transcript, ScriptDesk& desk, const Names& names,
              const std::function<void(const std::string&)>& fault)
      : form_(form), transcript_(transcript), desk_(desk), names_(names), fault_(fault) {}

  // An action that the check of the script has let through.
  void Perform(const Json& action);

 private:
  void Set(const Json& action);
  void Click(const Json& action);
  void Key(const Json& action);
  void Leave(const Json& action);
  void Enter(const Json& action);
  void State(const Json& action);
  void Activate(const Json& action);
  void Close(const Json& action);
  void Control(const Json& action);

  void Confirm(const Json& action, bool quick);
  void ForceResult(const Json& action, const char* key);
  void LookUp(const std::string& name);

  platform::Control& Need(const std::string& name) const;
  desk::FilterControl& NeedFilter() const;
  template <class C>
  C& NeedFilterWith(const char* what) const;
  void Report(const std::string& name, const platform::UserInput::Outcome& outcome);
  // Tells mistakes of the script that come to light while the user's hands move.
  template <class Action>
  platform::UserInput::Outcome ByHand(Action&& action) const;
  [[noreturn]] void Fault(const std::string& text) const;

  platform::Form& form_;
  Transcript& transcript_;
  ScriptDesk& desk_;
  const Names& names_;
  const std::function<void(const std::string&)>& fault_;
};

}  // namespace player
