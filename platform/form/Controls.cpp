#include "platform/form/Controls.h"

#include <utility>

#include "platform/object/EventSource.h"

namespace platform {

std::string_view ToString(ControlKind kind) {
  switch (kind) {
    case ControlKind::kText:
      return "text";
    case ControlKind::kCombo:
      return "combo";
    case ControlKind::kCheck:
      return "check";
    case ControlKind::kOption:
      return "option";
    case ControlKind::kButton:
      return "button";
    case ControlKind::kLabel:
      return "label";
    case ControlKind::kDate:
      return "date";
    case ControlKind::kSpin:
      return "spin";
    case ControlKind::kTree:
      return "tree";
    case ControlKind::kProgress:
      return "progress";
    case ControlKind::kFrame:
      return "frame";
    case ControlKind::kEmbedded:
      return "embedded";
  }
  return "unknown";
}

std::string Control::Id() const { return index_ < 0 ? name_ : name_ + "(" + std::to_string(index_) + ")"; }

void Control::SetValue(const Variant&) {
  throw Error(ErrorNumber::kUnknownMember, "Control", Id() + ": the control has no value to set");
}

void Control::DropEvents() {
  onChange = {};
  onClick = {};
  onGotFocus = {};
  onLostFocus = {};
  onKeyDown = {};
  onKeyPress = {};
}

bool Control::IsShown() const { return visible_ && (container_ == nullptr || container_->IsShown()); }

bool Control::IsUsable() const { return enabled_ && (container_ == nullptr || container_->IsUsable()); }

Variant Control::Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) {
  return InvokeOperation(detail::Described<Control>::kInfo, *this, member, kind, arguments);
}

void EmbeddedControl::DropEvents() {
  Control::DropEvents();
  if (EventSource* events = content_->Events()) events->Listen({});
}

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Fire(onChange);
}

void CheckBox::SetChecked(std::int32_t checked) {
  const std::int32_t wanted = checked == 0 ? 0 : 1;
  if (checked_ == wanted) return;
  checked_ = wanted;
  Fire(onClick);
}

void CheckBox::SetValue(const Variant& value) {
  const bool flag = value.As<bool>() != nullptr;
  SetChecked(flag ? (ToBoolean(value) ? 1 : 0) : ToInt32(value));
}

void OptionButton::DropEvents() {
  Control::DropEvents();
  onSwitchedOn = {};
}

void OptionButton::SetOn(bool on) {
  if (on_ == on) return;
  on_ = on;
  if (!on) return;
  Fire(onSwitchedOn);
  Fire(onClick);
}

void ComboBox::Clear() {
  entries_.clear();
  listIndex_ = -1;
}

const ComboBox::Entry& ComboBox::At(std::int32_t index) const {
  if (index < 0 || index >= EntryCount()) {
    throw Error(ErrorNumber::kInvalidCall, "ComboBox", Id() + ": there is no entry " + std::to_string(index));
  }
  return entries_[static_cast<std::size_t>(index)];
}

void ComboBox::SetListIndex(std::int32_t index) {
  if (index != -1) At(index);
  listIndex_ = index;
  Fire(onClick);
}

std::string ComboBox::Text() const { return listIndex_ < 0 ? std::string() : At(listIndex_).text; }

void ComboBox::SetValue(const Variant& value) {
  const std::string* text = value.As<std::string>();
  if (text == nullptr) return SetListIndex(ToInt32(value));
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].text == *text) return SetListIndex(static_cast<std::int32_t>(i));
  }
  throw Error(ErrorNumber::kInvalidCall, "ComboBox", Id() + ": there is no entry '" + *text + "'");
}

void DatePicker::SetDate(Date date) {
  if (date_ == date) return;
  date_ = date;
  Fire(onChange);
}

void SpinButton::Step(std::int32_t difference) {
  buddy_->SetText(ToText(Variant(static_cast<std::int32_t>(LeadingNumber(buddy_->Text())) + difference)));
}

}  // namespace platform
