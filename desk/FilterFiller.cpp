// A field is known by its key, which a dialog keeps in the control's tag. What a dialog writes beside its
// fields, the sort clause and the like, it writes as always.
#include "desk/FilterFiller.h"

#include <array>
#include <utility>

#include "desk/HeadlessScreen.h"
#include "desk/filter/ReportFilter.h"
#include "platform/form/UserInput.h"
#include "platform/value/Convert.h"

namespace desk {
namespace {

using platform::Control;
using platform::ControlKind;
using platform::EqualsIgnoreCase;
using platform::Error;
using platform::ErrorNumber;
using platform::Form;
using platform::Variant;

[[noreturn]] void Refuse(const std::string& text) { throw Error(ErrorNumber::kBadArgument, "desk", text); }

Control* FieldOf(const Form& form, const std::string& key) {
  for (const auto& control : form.Controls()) {
    if (!control->Tag().empty() && EqualsIgnoreCase(control->Tag(), key)) return control.Get();
  }
  return nullptr;
}

// What a user writes, as the field takes it. A combo's entry is chosen by its position, counted from 0.
Variant ValueFor(const Control& field, const std::string& text) {
  switch (field.GetKind()) {
    case ControlKind::kDate:
      return platform::ToDate(text);
    case ControlKind::kCheck:
    case ControlKind::kOption:
      return platform::ToBoolean(text);
    case ControlKind::kCombo:
      return platform::ToInt32(text);
    default:
      return text;
  }
}

}  // namespace

void FilterFiller::Fill(FilterSettings settings) {
  settings_ = std::move(settings);
  left_.clear();
  fieldKeys_.clear();
  failure_.reset();
  refused_.reset();
  lastMessage_.clear();
}

void FilterFiller::FillIn(Form& form) {
  for (const auto& control : form.Controls()) {
    if (!control->Tag().empty()) fieldKeys_.push_back(control->Tag());
  }
  for (const auto& setting : settings_) {
    if (FieldOf(form, setting.first) == nullptr) left_.push_back(setting);
  }
  // Checks and choices first: they may open or close the fields behind them.
  for (const bool choices : {true, false}) {
    for (const auto& [key, text] : settings_) {
      Control* const found = FieldOf(form, key);
      if (found == nullptr) continue;
      Control& field = *found;
      const bool isChoice = field.GetKind() != ControlKind::kText && field.GetKind() != ControlKind::kDate;
      if (isChoice != choices) continue;
      refused_.emplace(key, text);
      std::optional<platform::Refusal> refused;
      try {
        refused = platform::UserInput(form).Set(field.Id(), ValueFor(field, text));
      } catch (const Error& error) {
        Refuse(key + "=" + text + ": " + error.Description());
      }
      if (refused) {
        Refuse(key + ": the field is " + std::string(platform::ToString(*refused)) +
               " with these conditions");
      }
      refused_.reset();
    }
  }
}

void FilterFiller::Confirm(Form& form) {
  if (auto* control = dynamic_cast<ReportFilter*>(FilterControlOf(form))) {
    control->Confirm(false);
  } else {
    platform::UserInput(form).Click("cmdOK");
  }
}

void FilterFiller::ShowModal(Form& form) {
  if (form.Role() == platform::FormRole::kProgress) return RunProgressBox(form);
  try {
    form.Activate();
    if (FilterControl* control = FilterControlOf(form)) control->Reset();
    FillIn(form);
    Confirm(form);
    if (form.IsVisible()) Refuse(lastMessage_.empty() ? "the conditions were refused" : lastMessage_);
  } catch (const Error& error) {
    failure_ = error;
    throw;
  }
}

platform::Answer FilterFiller::Ask(const platform::MessageBox& box) {
  lastMessage_ = box.text;
  return box.standard;
}

}  // namespace desk
