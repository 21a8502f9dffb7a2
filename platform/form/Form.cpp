#include "platform/form/Form.h"

#include <algorithm>

#include "platform/form/Screen.h"

namespace platform {

Form::~Form() {
  for (const auto& control : controls_) {
    control->SetOwner(nullptr);
    control->PlaceInside(nullptr);
    control->DropEvents();
  }
}

void Form::EnsureLoaded() {
  if (loaded_) return;
  loaded_ = true;
  OnLoad();
}

void Form::Show() {
  const Ref<Form> kept(this);  // an event may drop the last reference while the form is up
  EnsureLoaded();
  struct HideAtEnd {
    Form& form;
    ~HideAtEnd() { form.visible_ = false; }
  };
  const HideAtEnd hide{*this};
  visible_ = true;
  Screen::Current().ShowModal(*this);
}

void Form::Unload() {
  visible_ = false;
  if (!loaded_) return;
  loaded_ = false;
  OnUnload();
}

Control* Form::Find(std::string_view id) const {
  const auto found = std::ranges::find_if(
      controls_, [&](const auto& control) { return EqualsIgnoreCase(control->Id(), id); });
  return found == controls_.end() ? nullptr : found->Get();
}

TreeView* Form::FirstTree() const {
  for (const auto& control : controls_) {
    if (auto* tree = dynamic_cast<TreeView*>(control.Get())) return tree;
  }
  return nullptr;
}

EmbeddedControl* Form::FirstEmbedded() const {
  for (const auto& control : controls_) {
    if (auto* embedded = dynamic_cast<EmbeddedControl*>(control.Get())) return embedded;
  }
  return nullptr;
}

void Form::SetFocus(Control* control) {
  if (control == focus_) return;
  if (control != nullptr && !(control->TakesFocus() && control->IsShown() && control->IsUsable())) {
    throw Error(ErrorNumber::kInvalidCall, name_, control->Id() + ": the control cannot take the focus");
  }
  Control* const old = std::exchange(focus_, control);
  if (old != nullptr && old->onLostFocus) old->onLostFocus();
  // Leaving the old control may have moved the focus on; only the one that has it hears of it.
  if (focus_ == control && control != nullptr && control->onGotFocus) control->onGotFocus();
}

void Form::FocusNext() {
  const auto current =
      std::ranges::find_if(controls_, [this](const auto& control) { return control.Get() == focus_; });
  const std::size_t start = current == controls_.end()
                                ? controls_.size() - 1
                                : static_cast<std::size_t>(current - controls_.begin());
  for (std::size_t step = 1; step <= controls_.size(); ++step) {
    Control& candidate = *controls_[(start + step) % controls_.size()];
    if (!candidate.TakesFocus() || !candidate.IsShown() || !candidate.IsUsable()) continue;
    return SetFocus(&candidate);
  }
}

void Form::Adopt(const Ref<Control>& control) {
  if (auto* option = dynamic_cast<OptionButton*>(control.Get())) {
    option->onSwitchedOn = [this, option] { SwitchOffOthers(*option); };
  }
  control->SetOwner(this);
  controls_.push_back(control);
}

void Form::SwitchOffOthers(const OptionButton& on) {
  for (const auto& control : controls_) {
    auto* other = dynamic_cast<OptionButton*>(control.Get());
    if (other != nullptr && other != &on && other->Container() == on.Container()) other->SetOn(false);
  }
}

Variant Form::Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) {
  if (kind != CallKind::kPut && arguments.empty()) {
    if (EqualsIgnoreCase(member, "Name")) return name_;
    if (EqualsIgnoreCase(member, "Caption")) return caption_;
  }
  throw Error(ErrorNumber::kUnknownMember, name_,
              name_ + "." + std::string(member) + ": the form has no such member");
}

}  // namespace platform
