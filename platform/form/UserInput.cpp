#include "platform/form/UserInput.h"

#include <array>

namespace platform {
namespace {

struct NamedKey {
  std::string_view name;
  int code;
  bool printable;
};

constexpr std::array kNamedKeys = {
    NamedKey{"Enter", kKeyEnter, true},
    NamedKey{"Tab", kKeyTab, true},
    NamedKey{"F7", kKeyF7, false},
    NamedKey{"F8", kKeyF8, false},
};

[[noreturn]] void NotUnderstood(const Control& control, std::string_view action) {
  throw Error(ErrorNumber::kInvalidCall, "UserInput",
              control.Id() + ": a control of kind " + std::string(ToString(control.GetKind())) +
                  " cannot be " + std::string(action));
}

bool HasValueToSet(const Control& control) {
  switch (control.GetKind()) {
    case ControlKind::kText:
    case ControlKind::kCombo:
    case ControlKind::kCheck:
    case ControlKind::kOption:
    case ControlKind::kDate:
      return true;
    default:
      return false;
  }
}

// One UTF-8 character as its code point; -1 when the text is not exactly one character.
int OneCharacter(std::string_view text) {
  if (text.empty()) return -1;
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
  if (length != text.size()) return -1;
  int code = length == 1 ? lead : lead & (0xFF >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3F);
  return code;
}

}  // namespace

std::string_view ToString(Refusal refusal) { return refusal == Refusal::kDisabled ? "disabled" : "hidden"; }

Control& UserInput::Need(std::string_view id) const {
  Control* control = form_.Find(id);
  if (control == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "UserInput",
                "the form " + form_.Name() + " has no control '" + std::string(id) + "'");
  }
  return *control;
}

UserInput::Outcome UserInput::Check(const Control& control) {
  if (!control.IsShown()) return Refusal::kHidden;
  if (!control.IsUsable()) return Refusal::kDisabled;
  return std::nullopt;
}

UserInput::Outcome UserInput::Set(std::string_view id, const Variant& value) {
  Control& control = Need(id);
  if (const Outcome refused = Check(control)) return refused;
  if (const auto* text = dynamic_cast<const TextBox*>(&control); text != nullptr && text->ReadOnly()) {
    return Refusal::kDisabled;
  }
  if (!HasValueToSet(control)) NotUnderstood(control, "set");
  if (const auto* picker = dynamic_cast<const DatePicker*>(&control);
      picker != nullptr && ToDate(value) < picker->MinDate()) {
    throw Error(ErrorNumber::kInvalidCall, "UserInput",
                picker->Id() + ": a day before " + picker->MinDate().ToText() + " cannot be chosen");
  }
  control.SetValue(value);
  return std::nullopt;
}

UserInput::Outcome UserInput::Click(std::string_view id) {
  Control& control = Need(id);
  if (const Outcome refused = Check(control)) return refused;
  if (control.TakesFocus()) form_.SetFocus(&control);
  if (auto* button = dynamic_cast<Button*>(&control)) {
    button->Click();
  } else if (auto* check = dynamic_cast<CheckBox*>(&control)) {
    check->SetChecked(1 - check->Checked());
  } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
    if (option->IsOn()) {
      if (option->onClick) option->onClick();
    } else {
      option->SetOn(true);
    }
  } else {
    NotUnderstood(control, "clicked");
  }
  return std::nullopt;
}

UserInput::Outcome UserInput::ClickNode(std::string_view treeId, std::string_view nodeKey) {
  Control* control = form_.Find(treeId);
  // A form has at most one tree, which a script may call by that word whatever its name is.
  if (control == nullptr && EqualsIgnoreCase(treeId, "tree")) control = form_.FirstTree();
  auto* tree = dynamic_cast<TreeView*>(control == nullptr ? &Need(treeId) : control);
  if (tree == nullptr) NotUnderstood(*control, "clicked at a node");
  if (const Outcome refused = Check(*tree)) return refused;
  TreeView::Node* node = tree->Find(nodeKey);
  if (node == nullptr) {
    throw Error(ErrorNumber::kInvalidCall, "UserInput",
                tree->Id() + ": the tree has no node '" + std::string(nodeKey) + "'");
  }
  form_.SetFocus(tree);
  tree->ToggleByUser(*node);
  return std::nullopt;
}

UserInput::Outcome UserInput::PressKey(std::string_view id, std::string_view key) {
  Control& control = Need(id);
  if (const Outcome refused = Check(control)) return refused;

  NamedKey pressed{.name = key, .code = OneCharacter(key), .printable = true};
  for (const NamedKey& named : kNamedKeys) {
    if (EqualsIgnoreCase(named.name, key)) pressed = named;
  }
  if (pressed.code < 0) {
    throw Error(ErrorNumber::kInvalidCall, "UserInput",
                "there is no key '" + std::string(key) + "'; use F7, F8, Enter, Tab or one character");
  }
  if (control.TakesFocus()) form_.SetFocus(&control);

  int code = pressed.code;
  form_.OnKeyDown(code);
  if (code != 0 && control.onKeyDown) control.onKeyDown(code);
  if (code == kKeyTab) form_.FocusNext();
  if (!pressed.printable) return std::nullopt;

  int character = pressed.code;
  form_.OnKeyPress(character);
  if (character != 0 && control.onKeyPress) control.onKeyPress(character);
  if (character < kKeySpace && character != kKeyEnter) return std::nullopt;
  if (auto* text = dynamic_cast<TextBox*>(&control); text != nullptr && character >= kKeySpace) {
    if (!text->ReadOnly()) text->SetText(text->Text() + std::string(key));
  } else if (auto* button = dynamic_cast<Button*>(&control)) {
    if (character == kKeyEnter || character == kKeySpace) button->Click();
  } else if (character == kKeySpace &&
             (control.GetKind() == ControlKind::kCheck || control.GetKind() == ControlKind::kOption)) {
    return Click(id);
  }
  return std::nullopt;
}

UserInput::Outcome UserInput::Enter(std::string_view id) {
  Control& control = Need(id);
  if (const Outcome refused = Check(control)) return refused;
  form_.SetFocus(&control);
  return std::nullopt;
}

UserInput::Outcome UserInput::Leave(std::string_view id) {
  if (const Outcome refused = Enter(id)) return refused;
  form_.SetFocus(nullptr);
  return std::nullopt;
}

}  // namespace platform
