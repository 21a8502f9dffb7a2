#include "component/filter/FilterDialog.h"

#include <algorithm>
#include <array>

#include "component/frame/MParse.h"
#include "component/frame/ProcessState.h"
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"
#include "platform/object/EventSource.h"

namespace component {
namespace {

using platform::Button;
using platform::CheckBox;
using platform::ComboBox;
using platform::Control;
using platform::DatePicker;
using platform::Dictionary;
using platform::Label;
using platform::MakeRef;
using platform::Object;
using platform::OptionButton;
using platform::Ref;
using platform::TextBox;
using platform::Variant;

bool DrivesRules(FieldKind kind) { return kind != FieldKind::kText && kind != FieldKind::kDate; }

std::string IdOf(const DialogField& field) {
  return field.index < 0 ? std::string(field.control)
                         : std::string(field.control) + "(" + std::to_string(field.index) + ")";
}

}  // namespace

std::string SortSeparator() { return std::string(50, ' ') + "|"; }

FilterDialog::FilterDialog(std::string name, std::span<const DialogField> fields,
                           std::string_view filterControlId)
    : Form(std::move(name)), fields_(fields), filterControlId_(filterControlId) {
  int row = 0;
  const DialogField* before = nullptr;
  for (const DialogField& field : fields_) {
    BuildField(field);
    // A field labelled "to", and the second of two dates, stand beside the "from" field before them.
    const bool secondDate =
        before != nullptr && before->kind == FieldKind::kDate && field.kind == FieldKind::kDate;
    const bool sameRow = secondDate || field.label.starts_with("至");
    if (!sameRow) ++row;
    ControlOf(field)->SetPlace({.row = row, .column = sameRow ? 1 : 0});
    before = &field;
  }
}

void FilterDialog::BuildField(const DialogField& field) {
  const std::string name(field.control);
  const bool labelled = field.kind != FieldKind::kCheck && field.kind != FieldKind::kOption;
  if (labelled) Add<Label>("lbl_" + name, field.index).SetCaption(ResString(field.label));
  Control* control = nullptr;
  switch (field.kind) {
    case FieldKind::kText:
      control = &Add<TextBox>(name, field.index);
      break;
    case FieldKind::kDate:
      control = &Add<DatePicker>(name, field.index);
      break;
    case FieldKind::kCheck:
      control = &Add<CheckBox>(name, field.index);
      break;
    case FieldKind::kOption:
      control = &Add<OptionButton>(name, field.index);
      break;
    case FieldKind::kCombo:
      control = &Add<ComboBox>(name, field.index);
      break;
  }
  if (!labelled) control->SetCaption(ResString(field.label));
  control->SetTag(std::string(field.key));
  if (field.kind == FieldKind::kCheck || field.kind == FieldKind::kOption) ResetField(field);
  if (field.dataType == kNoDataType) return;

  const std::int32_t index = field.index;
  control->onKeyDown = [this, index](int& key) {
    if (key != platform::kKeyF7 && key != platform::kKeyF8) return;
    keyMark_ = key;
    LookUpInto(index);
  };
  Button& button = Add<Button>("cmdItem", field.index);
  button.SetCaption("…");
  button.onClick = [this, index] { LookUpInto(index); };
}

Ref<Control> FilterDialog::ControlOf(const DialogField& field) const {
  return Ref<Control>(Find(IdOf(field)));
}

// A function key in a code field and the button beside it come to the same.
void FilterDialog::LookUpInto(std::int32_t index) {
  const auto field = std::ranges::find_if(
      fields_, [index](const DialogField& f) { return f.dataType != kNoDataType && f.index == index; });
  if (field == fields_.end()) return;
  if (keyMark_ == 0 || keyMark_ == platform::kKeyF7 || keyMark_ == platform::kKeyF8) {
    auto& text = Field<TextBox>(IdOf(*field));
    if (const std::optional<std::string> number = LookUpNumber(*field, text.Text())) {
      text.SetText(*number);
      platform::Screen::Current().RunPendingEvents();
    }
  }
  keyMark_ = 0;
}

std::optional<std::string> FilterDialog::LookUpNumber(const DialogField& field, const std::string& text) {
  const Ref<Object> lookup = LookupBaseData(field.dataType, text, "", 1);
  if (!lookup) return {};
  const Variant chosen = lookup->Get("ReturnObject");  // held: the lookup may make it for this answer
  const bool isLong = ProcessState::Get().isLongNumber;
  return platform::ToText(chosen.AsObject().Get(isLong ? "Number" : "FShortNumber"));
}

void FilterDialog::OnKeyDown(int& key) {
  if (key == platform::kKeyEnter) FocusNext();
}

void FilterDialog::OnKeyPress(int& character) {
  if (character == platform::kKeyEnter || character == platform::kKeyQuote) character = 0;
}

Variant FilterDialog::Invoke(std::string_view member, platform::CallKind kind, std::span<Variant> arguments) {
  if (kind != platform::CallKind::kPut && arguments.empty()) {
    if (platform::EqualsIgnoreCase(member, "RptID")) return rptId_;
    if (platform::EqualsIgnoreCase(member, "Result")) return result_;
  }
  return Form::Invoke(member, kind, arguments);
}

void FilterDialog::CreateFilterControl(const std::string& controlName, const Ref<Dictionary>& settings) {
  if (FirstEmbedded() != nullptr) return;
  const Ref<Object> content = platform::CreateObject(filterControlId_);
  Add<platform::EmbeddedControl>(controlName, content, settings);
  if (platform::EventSource* events = content->Events()) {
    events->Listen(
        [this](std::string_view event, std::span<Variant> arguments) { OnFilterEvent(event, arguments); });
  }
}

void FilterDialog::NewResult() {
  result_ = MakeRef<Dictionary>();
  result_->Set("OK", false);
}

void FilterDialog::WriteUserID(Dictionary& filter) { filter.Set("UserID", std::int32_t{GetUserID()}); }

void FilterDialog::SetFieldValue(Control& control, FieldKind kind, const Variant& value) {
  switch (kind) {
    case FieldKind::kText:
      control.SetValue(platform::ToText(value));
      break;
    case FieldKind::kDate:
      if (platform::IsDate(value)) control.SetValue(platform::ToDate(value));
      break;
    case FieldKind::kCheck:
      control.SetValue(platform::IsNumeric(value) ? Variant(platform::ToInt32(value))
                                                  : Variant(platform::ToBoolean(value)));
      break;
    case FieldKind::kOption:
      control.SetValue(platform::ToBoolean(value));
      break;
    case FieldKind::kCombo:
      control.SetValue(platform::ToInt32(value));
      break;
  }
}

void FilterDialog::ResetField(const DialogField& field) const {
  Control& control = *ControlOf(field);
  switch (field.kind) {
    case FieldKind::kText:
      control.SetValue("");
      break;
    case FieldKind::kDate:
      if (field.date == DateDefault::kToday) control.SetValue(platform::Clock::Today());
      if (field.date == DateDefault::kPeriodFirstDay)
        control.SetValue(platform::ToDate(GetCurrentPeriodFirstDay()));
      if (field.date == DateDefault::kStockStart) {
        const platform::Date start = GetStockStartDate();
        if (!(start == platform::Date())) control.SetValue(start);
      }
      break;
    case FieldKind::kOption:
      if (field.standard != 0) control.SetValue(true);  // which switches the others of its group off
      break;
    case FieldKind::kCheck:
    case FieldKind::kCombo:
      control.SetValue(field.standard);
      break;
  }
}

void FilterDialog::ResetFieldValues() {
  for (const DialogField& field : fields_) {
    if (!field.key.empty() && !field.keptOnReset) ResetField(field);
  }
}

void FilterDialog::ResetFieldValues(std::initializer_list<std::string_view> keys) {
  for (const DialogField& field : fields_) {
    if (std::ranges::find(keys, field.key) != keys.end()) ResetField(field);
  }
}

void FilterDialog::HideCodes(std::initializer_list<int> indexes) const {
  for (const int index : indexes) {
    for (const char* part : {"lbl_txtItem", "txtItem", "cmdItem"}) {
      Find(std::string(part) + "(" + std::to_string(index) + ")")->SetVisible(false);
    }
  }
}

void FilterDialog::LoadFieldValues(const std::function<Variant(const DialogField& field)>& read) {
  std::vector<Variant> values(fields_.size(), platform::Missing());
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (fields_[i].key.empty()) continue;
    platform::SkipErrors([&] { values[i] = read(fields_[i]); });
  }
  for (const bool drivers : {true, false}) {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (values[i].IsMissing() || DrivesRules(fields_[i].kind) != drivers) continue;
      platform::SkipErrors([&] { SetFieldValue(*ControlOf(fields_[i]), fields_[i].kind, values[i]); });
    }
  }
}

void FilterDialog::FillSort(ComboBox& combo, std::span<const SortChoice> choices) {
  combo.Clear();
  for (const SortChoice& choice : choices) {
    combo.AddEntry(ResString(choice.caption) + SortSeparator() + std::string(choice.field));
  }
  combo.SetListIndex(0);
}

void FilterDialog::FillSortByGroup(ComboBox& combo, std::int32_t group) {
  static constexpr std::array<std::string_view, 4> kByGroup = {"", "业务员代码", "部门代码", "仓库代码"};
  std::vector<SortChoice> choices = {{.caption = "商品代码", .field = "FItemNumber"}};
  if (group >= 1 && group < static_cast<std::int32_t>(kByGroup.size())) {
    choices.push_back({.caption = kByGroup[static_cast<std::size_t>(group)], .field = "FCommonName"});
  }
  FillSort(combo, choices);
}

std::string FilterDialog::OrderByText(const ComboBox& combo, bool ascending) {
  const std::string entry = combo.Text();
  const std::size_t bar = entry.find('|');
  if (bar == std::string::npos) {
    throw platform::Error(platform::ErrorNumber::kSubscriptOutOfRange, "OrderBy", "no sort entry is chosen");
  }
  const std::string field = entry.substr(bar + 1, entry.find('|', bar + 1) - bar - 1);
  return field + (ascending ? " ASC " : " DESC ");
}

std::string FilterDialog::ChosenOrder() const {
  return OrderByText(Field<ComboBox>("cboSort"), Field<OptionButton>("OptSortD").IsOn());
}

}  // namespace component
