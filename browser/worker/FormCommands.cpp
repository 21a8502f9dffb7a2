// What the page does to the topmost form, with the same rules about hidden and disabled fields as everywhere.
#include <algorithm>

#include "browser/worker/FormText.h"
#include "browser/worker/Session.h"
#include "desk/filter/ReportFilter.h"
#include "desk/lookup/BatchForm.h"
#include "desk/lookup/LookupForm.h"
#include "platform/form/UserInput.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"

namespace browser {
namespace {

using platform::UserInput;
using platform::Variant;

void Require(const UserInput::Outcome& outcome, const Command& command) {
  if (!outcome) return;
  throw RefusedMessage(
      "refused", *outcome == platform::Refusal::kHidden ? "这个字段现在不显示。" : "这个字段现在不可用。",
      command.id);
}

Variant ValueFrom(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_boolean()) return value.get<bool>();
  return value.get<std::int32_t>();
}

void RequireSchemeName(const std::string& name, const Command& command) {
  constexpr std::size_t kLongest = 100;
  if (name.empty() || name.size() > kLongest || IsHiddenScheme(name) || platform::TrimBlanks(name) != name) {
    throw RefusedMessage("refused", "方案名称不能为空，也不能太长。", command.id);
  }
}

}  // namespace

void Session::SetValue(const Command& command) {
  try {
    Require(UserInput(windows_.TopForm()).Set(command.Text("control"), ValueFrom(command.body["value"])),
            command);
  } catch (const platform::Error& error) {
    // A date that does not exist, an entry that a list has not got: the value is at fault, not the form.
    using platform::ErrorNumber;
    if (error.Number() != ErrorNumber::kTypeMismatch && error.Number() != ErrorNumber::kInvalidCall &&
        error.Number() != ErrorNumber::kOverflow) {
      throw;
    }
    throw RefusedMessage("refused", error.Description(), command.id);
  }
}

void Session::Click(const Command& command) {
  UserInput user(windows_.TopForm());
  Require(command.Has("node") ? user.ClickNode(command.Text("control"), command.Text("node"))
                              : user.Click(command.Text("control")),
          command);
}

void Session::PressKey(const Command& command) {
  Require(UserInput(windows_.TopForm()).PressKey(command.Text("control"), command.Text("key")), command);
}

void Session::Enter(const Command& command) {
  Require(UserInput(windows_.TopForm()).Enter(command.Text("control")), command);
}

void Session::Leave(const Command& command) {
  Require(UserInput(windows_.TopForm()).Leave(command.Text("control")), command);
}

void Session::Step(const Command& command) {
  auto* spin = dynamic_cast<platform::SpinButton*>(windows_.TopForm().Find(command.Text("control")));
  if (spin == nullptr) throw RefusedMessage("refused", "there is no such spin button", command.id);
  if (!spin->IsShown()) Require(platform::Refusal::kHidden, command);
  if (!spin->IsUsable()) Require(platform::Refusal::kDisabled, command);
  spin->Step(std::clamp(command.Number("by"), -1, 1));
}

void Session::CloseForm(const Command& /*command*/) { desk::CloseByUser(windows_.TopForm()); }

desk::FilterControl& Session::TopFilter(const Command& command) const {
  desk::FilterControl* control = desk::FilterControlOf(windows_.TopForm());
  if (control == nullptr) throw RefusedMessage("refused", "the form has no filter control", command.id);
  return *control;
}

void Session::FilterAction(const Command& command) {
  desk::FilterControl& control = TopFilter(command);
  const std::string& action = command.Text("action");
  if (action == "reset") return control.Reset();
  auto* own = dynamic_cast<desk::ReportFilter*>(&control);
  if (own == nullptr) throw RefusedMessage("refused", "the dialog has buttons of its own", command.id);
  if (action == "cancel") return own->Cancel(windows_.TopForm());
  own->Confirm(action == "quick");
}

// The control's own lookup: the dialog says what kind of base data the field takes.
void Session::LookUp(const Command& command) {
  auto* control = dynamic_cast<desk::ReportFilter*>(&TopFilter(command));
  platform::Control* field = windows_.TopForm().Find(command.Text("control"));
  if (control == nullptr || field == nullptr) {
    throw RefusedMessage("refused", "the field has no lookup", command.id);
  }
  if (!field->IsShown()) Require(platform::Refusal::kHidden, command);
  if (!field->IsUsable()) Require(platform::Refusal::kDisabled, command);
  const std::int32_t dataType = control->DataTypeOf(*field);
  if (dataType == 0) throw RefusedMessage("refused", "这个字段没有可查找的资料。", command.id);
  const std::string text = platform::ToText(field->Value());
  if (dataType == desk::kBatchType) {
    const auto picked = book_->PickBatch({.filterItem = {}, .filter = {}, .keyWord = text});
    if (picked) field->SetValue(picked->Value("FBatchNo"));
    return;
  }
  const auto picked =
      book_->PickBaseData({.kind = "ItemLookUp", .dataType = dataType, .text = text, .filter = {}});
  if (picked) field->SetValue(picked->number);
}

void Session::SchemeAction(const Command& command) {
  const platform::Form& form = windows_.TopForm();
  desk::FilterControl& control = TopFilter(command);
  desk::SchemeStore& schemes = book_->Schemes();
  const std::string& action = command.Text("action");
  const std::string& scheme = command.Text("scheme");
  if (action == "setStandard" && scheme.empty()) {
    schemes.Delete(form.Name(), kStandardScheme);
    return;
  }
  RequireSchemeName(scheme, command);
  if (action == "save") {
    control.Save(schemes, form.Name(), scheme);
    return windows_.SetTopScheme(scheme);
  }
  const auto kept = schemes.Load(form.Name(), scheme);
  if (!kept) throw RefusedMessage("refused", "没有这个方案：" + scheme, command.id);
  if (action == "load") {
    control.Load(schemes, form.Name(), scheme);
    windows_.SetTopScheme(scheme);
  } else if (action == "setStandard") {
    schemes.Save(form.Name(), kStandardScheme, {{"name", scheme}});
  } else if (action == "delete") {
    schemes.Delete(form.Name(), scheme);
    if (windows_.TopScheme() == scheme) windows_.SetTopScheme("");
  } else {
    if (!command.Has("to")) throw RefusedMessage("fields", "schemeAction: to is missing", command.id);
    const std::string& to = command.Text("to");
    RequireSchemeName(to, command);
    if (schemes.Load(form.Name(), to)) throw RefusedMessage("refused", "已有同名方案：" + to, command.id);
    const bool standard = StandardScheme(schemes, form.Name()) == scheme;
    schemes.Save(form.Name(), to, *kept);
    schemes.Delete(form.Name(), scheme);
    if (standard) schemes.Save(form.Name(), kStandardScheme, {{"name", to}});
    if (windows_.TopScheme() == scheme) windows_.SetTopScheme(to);
  }
}

void Session::Answer(const Command& command) {
  using platform::Answer;
  for (const Answer answer : {Answer::kOk, Answer::kCancel, Answer::kYes, Answer::kNo}) {
    if (platform::ToString(answer) != command.Text("answer")) continue;
    if (!screen_.Offers(answer)) break;
    return screen_.Answer(answer);
  }
  throw RefusedMessage("refused", "the message box has no such button", command.id);
}

}  // namespace browser
