#include "cli/DialogFiller.h"

#include <algorithm>

#include "desk/filter/ReportFilter.h"
#include "platform/form/UserInput.h"
#include "platform/value/Convert.h"

namespace cli {
namespace {

using platform::Control;
using platform::ControlKind;
using platform::Form;
using platform::UserInput;
using platform::Variant;

// Boxes, options and lists decide which other fields can be filled in, so they come first.
bool DecidesOthers(ControlKind kind) {
  return kind == ControlKind::kCheck || kind == ControlKind::kOption || kind == ControlKind::kCombo;
}

bool IsField(const Control& control) {
  return !control.Tag().empty() &&
         (DecidesOthers(control.GetKind()) || control.GetKind() == ControlKind::kText ||
          control.GetKind() == ControlKind::kDate);
}

// A text as the field takes it: a combo by index or by an entry's text, a date only as a date.
Variant ValueFor(const Control& field, const std::string& text) {
  switch (field.GetKind()) {
    case ControlKind::kCombo:
      if (platform::IsNumeric(text)) return platform::ToInt32(text);
      return text;
    case ControlKind::kCheck:
      return platform::ToBoolean(text);
    case ControlKind::kDate:
      return platform::ToDate(text);
    default:
      return text;
  }
}

}  // namespace

platform::Answer DialogFiller::Ask(const platform::MessageBox& box) {
  lastMessage_ = box.text;
  return HeadlessScreen::Ask(box);
}

void DialogFiller::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) return HeadlessScreen::ShowModal(form);
  form.Activate();
  try {
    if (desk::FilterControl* control = desk::FilterControlOf(form)) control->Reset();
    Fill(form);
    if (problem_.empty()) Confirm(form);
  } catch (const platform::Error& error) {
    problem_ = error.Description();
  }
  if (!form.IsVisible()) return;
  if (problem_.empty())
    problem_ = lastMessage_.empty() ? "the dialog " + form.Name() + " stays open" : lastMessage_;
  desk::CloseByUser(form);
}

void DialogFiller::Fill(Form& form) {
  for (const bool deciding : {true, false}) {
    // By position, as filling a field may change the form.
    for (std::size_t i = 0; i < form.Controls().size(); ++i) {
      const platform::Ref<Control> field = form.Controls()[i];
      if (!IsField(*field) || DecidesOthers(field->GetKind()) != deciding) continue;
      fieldKeys_.push_back(field->Tag());
      FillField(form, *field);
    }
  }
}

void DialogFiller::FillField(Form& form, const Control& field) {
  const auto given = std::ranges::find_if(
      keys_, [&](const auto& key) { return platform::EqualsIgnoreCase(key.first, field.Tag()); });
  if (given == keys_.end() || !problem_.empty()) return;
  const auto [key, text] = *given;
  keys_.erase(given);
  try {
    const UserInput::Outcome refused = UserInput(form).Set(field.Id(), ValueFor(field, text));
    if (refused) {
      problem_ = key + ": the dialog does not take it as the other fields stand (the field is " +
                 std::string(platform::ToString(*refused)) + ")";
    }
  } catch (const platform::Error& error) {
    problem_ = key + "=" + text + ": " + error.Description();
  }
}

void DialogFiller::Confirm(Form& form) {
  if (auto* control = dynamic_cast<desk::ReportFilter*>(desk::FilterControlOf(form))) {
    control->Confirm(false);
  } else {
    UserInput(form).Click("cmdOK");
  }
}

}  // namespace cli
