#include "player/FormActions.h"

#include <array>

#include "desk/filter/ReportFilter.h"
#include "desk/filter/TOVRptFilter.h"
#include "platform/value/Convert.h"
#include "player/FormState.h"
#include "player/Script.h"

namespace player {

using platform::Error;
using platform::ErrorNumber;
using platform::UserInput;
using platform::Variant;

void FormActions::Perform(const Json& action) {
  struct Doer {
    std::string_view kind;
    void (FormActions::*run)(const Json& action);
  };
  static constexpr std::array kDoers = {
      Doer{"set", &FormActions::Set},           Doer{"click", &FormActions::Click},
      Doer{"key", &FormActions::Key},           Doer{"leave", &FormActions::Leave},
      Doer{"enter", &FormActions::Enter},       Doer{"state", &FormActions::State},
      Doer{"activate", &FormActions::Activate}, Doer{"close", &FormActions::Close},
      Doer{"control", &FormActions::Control},
  };
  const std::string kind = ActionKind(action);
  for (const Doer& doer : kDoers) {
    if (doer.kind == kind) return (this->*doer.run)(action);
  }
}

void FormActions::Fault(const std::string& text) const {
  fault_(text);
  throw Error(ErrorNumber::kInvalidCall, "player", text);
}

platform::Control& FormActions::Need(const std::string& name) const {
  platform::Control* control = FindControl(form_, name);
  if (control == nullptr) Fault("the form " + form_.Name() + " has no control '" + name + "'");
  return *control;
}

template <class Action>
UserInput::Outcome FormActions::ByHand(Action&& action) const {
  try {
    return action(UserInput(form_));
  } catch (const Error& error) {
    // What UserInput itself raises is a mistake of the script; errors of the form's events come by another
    // name.
    if (error.Source() == "UserInput") fault_(error.Description());
    throw;
  }
}

void FormActions::Report(const std::string& name, const UserInput::Outcome& outcome) {
  if (!outcome) return;
  Json line = Json::object();
  line["refused"] = name;
  line["why"] = std::string(platform::ToString(*outcome));
  transcript_.Write(line);
}

void FormActions::Set(const Json& action) {
  const auto name = action["set"].get<std::string>();
  const std::string id = Need(name).Id();
  const Variant value = FromJson(action["to"], &names_);
  Report(name, ByHand([&](UserInput user) { return user.Set(id, value); }));
}

void FormActions::Click(const Json& action) {
  const auto name = action["click"].get<std::string>();
  const std::string id = Need(name).Id();
  Report(name, ByHand([&](UserInput user) {
           return action.contains("node") ? user.ClickNode(id, action["node"].get<std::string>())
                                          : user.Click(id);
         }));
}

void FormActions::Key(const Json& action) {
  const auto name = action["on"].get<std::string>();
  const std::string id = Need(name).Id();
  Report(name, ByHand([&](UserInput user) { return user.PressKey(id, action["key"].get<std::string>()); }));
}

void FormActions::Leave(const Json& action) {
  const auto name = action["leave"].get<std::string>();
  const std::string id = Need(name).Id();
  Report(name, ByHand([&](UserInput user) { return user.Leave(id); }));
}

void FormActions::Enter(const Json& action) {
  const auto name = action["enter"].get<std::string>();
  const std::string id = Need(name).Id();
  Report(name, ByHand([&](UserInput user) { return user.Enter(id); }));
}

void FormActions::State(const Json& /*action*/) {
  Json line = Json::object();
  line["state"] = StateOf(form_, &names_);
  transcript_.Write(line);
}

void FormActions::Activate(const Json& /*action*/) { form_.Activate(); }

void FormActions::Close(const Json& /*action*/) { desk::CloseByUser(form_); }

desk::FilterControl& FormActions::NeedFilter() const {
  desk::FilterControl* control = desk::FilterControlOf(form_);
  if (control == nullptr) Fault("the form " + form_.Name() + " has no filter control of the desk");
  return *control;
}

template <class C>
C& FormActions::NeedFilterWith(const char* what) const {
  auto* control = dynamic_cast<C*>(&NeedFilter());
  if (control == nullptr) Fault("the filter control of " + form_.Name() + " has no " + what);
  return *control;
}

void FormActions::Control(const Json& action) {
  const auto word = action["control"].get<std::string>();
  if (word == "ok" || word == "quick") {
    Confirm(action, word == "quick");
  } else if (word == "cancel") {
    NeedFilterWith<desk::ReportFilter>("buttons of its own").Cancel(form_);
  } else if (word == "reset") {
    NeedFilter().Reset();
  } else if (word == "notice") {
    NeedFilterWith<desk::TOVRptFilter>("notices").Notice();
  } else if (word == "result") {
    ForceResult(action, "value");
  } else if (word == "save") {
    NeedFilter().Save(desk_.Schemes(), form_.Name(), action["scheme"].get<std::string>());
  } else if (word == "load") {
    const auto scheme = action["scheme"].get<std::string>();
    if (!desk_.Schemes().Load(form_.Name(), scheme)) {
      Fault("there is no scheme '" + scheme + "' of " + form_.Name());
    }
    NeedFilter().Load(desk_.Schemes(), form_.Name(), scheme);
  } else if (word == "lookup") {
    LookUp(action["on"].get<std::string>());
  }
}

void FormActions::Confirm(const Json& action, bool quick) {
  auto& control = NeedFilterWith<desk::ReportFilter>("buttons of its own");
  ForceResult(action, "result");
  control.Confirm(quick);
}

void FormActions::ForceResult(const Json& action, const char* key) {
  if (action.contains("raises")) NeedFilter().ForceErrorOnce(action["raises"].get<std::string>());
  if (action.contains(key)) NeedFilter().ForceResultOnce(FromJson(action[key], &names_));
}

// The control's own lookup. The dialog says what kind of base data the field takes; the pick is the user's.
void FormActions::LookUp(const std::string& name) {
  platform::Control& field = Need(name);
  auto& control = NeedFilterWith<desk::ReportFilter>("lookups of its own");
  if (!field.IsShown()) return Report(name, platform::Refusal::kHidden);
  if (!field.IsUsable()) return Report(name, platform::Refusal::kDisabled);
  const std::int32_t dataType = control.DataTypeOf(field);
  Json lookup = Json::object();
  lookup["kind"] = dataType == desk::kBatchType ? "BaseList" : "ItemLookUp";
  lookup["type"] = dataType;
  lookup["text"] = platform::ToText(field.Value());
  lookup["filter"] = "";
  Json line = Json::object();
  line["lookup"] = std::move(lookup);
  transcript_.Write(line);
  const auto picked = desk_.PickBaseData({.kind = "", .dataType = dataType, .text = {}, .filter = {}});
  if (picked) field.SetValue(picked->number);
}

}  // namespace player
