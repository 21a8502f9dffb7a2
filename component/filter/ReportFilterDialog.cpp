#include "component/filter/ReportFilterDialog.h"

#include <array>

#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"

namespace component {

using platform::Dictionary;
using platform::EqualsIgnoreCase;
using platform::MakeRef;
using platform::Object;
using platform::Ref;
using platform::Variant;

ReportFilterDialog::ReportFilterDialog(std::string name, std::span<const DialogField> fields)
    : FilterDialog(std::move(name), fields, "VEZ_GRFC.ReportFilter") {}

Ref<Dictionary> ReportFilterDialog::Settings() {
  Ref<Dictionary> settings = MakeRef<Dictionary>();
  settings->Set("reportid", "");
  settings->Set("paytypeid", 0);
  settings->Set("versiontype", 1);
  settings->Set("moduletype", 0);
  settings->Set("limitmindate", true);
  settings->Set("autosave", true);
  settings->Set("filteritems", MakeRef<Dictionary>());
  settings->Set("filtervisible0", true);
  for (const char* page :
       {"filtervisible1", "filtervisible2", "filtervisible3", "filtervisible4", "filtervisible5"}) {
    settings->Set(page, false);
  }
  struct Pane {
    std::string_view name;
    std::string_view frame;  // empty: the dialog has no such pane
  };
  constexpr std::array kPanes = {Pane{"date", "fraPeriod"}, Pane{"period", ""}, Pane{"ccode", "fraItem"},
                                 Pane{"summary", ""},       Pane{"acode", ""},  Pane{"query", ""}};
  for (const Pane& pane : kPanes) {
    settings->Set(std::string(pane.name) + ":control", !pane.frame.empty());
    settings->Set(std::string(pane.name) + ":controlname", pane.frame);
  }
  AdjustSettings(*settings);
  return settings;
}

void ReportFilterDialog::OnLoad() {
  CreateFilterControl("TOVRptFilter", Settings());
  FilterControl().Put("ReportID", RptID());
  if (Result()) {
    FilterControl().Call("LoadFilter", Result());
  } else {
    NewResult();
  }
  Variant autoFilter(autoFilter_);
  FilterControl().Put("AutoFilter", autoFilter);
  SetCaption(ResString("过滤"));
  SetUp();
}

void ReportFilterDialog::OnFilterEvent(std::string_view event, std::span<Variant> arguments) {
  auto dictionary = [&]() -> Dictionary& {
    const Ref<Dictionary> given = arguments.empty() ? Ref<Dictionary>() : arguments[0].AsRef<Dictionary>();
    if (!given) {
      throw platform::Error(platform::ErrorNumber::kObjectRequired, Name(),
                            "the event " + std::string(event) + " needs a dictionary");
    }
    return *given;
  };
  if (EqualsIgnoreCase(event, "SaveFields")) {
    SaveFields(dictionary());
  } else if (EqualsIgnoreCase(event, "LoadFields")) {
    LoadFields(dictionary());
  } else if (EqualsIgnoreCase(event, "SaveQuery")) {
    SaveQuery(dictionary());
  } else if (EqualsIgnoreCase(event, "LoadQuery")) {
    LoadQuery(dictionary());
  } else if (EqualsIgnoreCase(event, "ResetFields")) {
    ResetFields();
  } else if (EqualsIgnoreCase(event, "FilterDone")) {
    FilterDone(arguments.empty() ? 0 : platform::ToInt32(arguments[0]));
  } else if (EqualsIgnoreCase(event, "GetDataType")) {
    GetDataType(arguments);
  }
}

Variant ReportFilterDialog::FieldValue(const DialogField& field) const {
  const bool isLevel = field.key == "MultiLevelBegin" || field.key == "MultiLevelEnd";
  if (isLevel && Field<platform::CheckBox>("chkMultiLevel").Checked() != 1) return 0;
  const Ref<platform::Control> control = ControlOf(field);
  if (const auto* combo = dynamic_cast<const platform::ComboBox*>(control.Get())) return combo->ListIndex();
  if (const auto* text = dynamic_cast<const platform::TextBox*>(control.Get())) {
    return platform::TrimBlanks(text->Text());
  }
  return control->Value();
}

Variant ReportFilterDialog::LoadDefault(const DialogField& field) const {
  switch (field.kind) {
    case FieldKind::kText:
    case FieldKind::kDate:
      return "";
    case FieldKind::kOption:
      return field.control == "OptSortA" ? -1 : 0;
    case FieldKind::kCheck:
    case FieldKind::kCombo:
      return 0;
  }
  return {};
}

void ReportFilterDialog::SaveFields(Dictionary& filter) {
  for (const DialogField& field : Fields()) {
    if (!field.key.empty()) filter.Set(field.key, FieldValue(field));
  }
  AddKeys(filter);
}

void ReportFilterDialog::LoadFields(const Dictionary& filter) {
  LoadFieldValues([&](const DialogField& field) {
    const Variant* value = filter.Find(field.key);
    return value == nullptr ? LoadDefault(field) : *value;
  });
}

void ReportFilterDialog::FilterDone(std::int32_t cancelCode) {
  try {
    OnDone();
    if (cancelCode != 0) return Hide();
    OnConfirmed();
    const Variant collected = FilterControl().Call("FilterResult");
    const Ref<Dictionary> filter = collected.AsRef<Dictionary>();
    if (!filter) {
      throw platform::Error(platform::ErrorNumber::kTypeMismatch, Name(),
                            "the filter control delivers no filter");
    }
    SetResult(filter);
    filter->Set("OK", true);
    OnCollected(*filter);
    Hide();
    CheckQuickCost(Ref<Object>(this), true);
  } catch (const std::exception&) {
    if (Result()) Result()->Set("OK", false);
  }
}

// The control is about to offer a lookup: which base data a field takes follows from its index alone.
void ReportFilterDialog::GetDataType(std::span<Variant> arguments) const {
  if (arguments.size() < 2) return;
  const std::int32_t index = platform::ToInt32(arguments[0].AsObject().Get("Index"));
  for (const DialogField& field : Fields()) {
    if (field.dataType != kNoDataType && field.index == index) arguments[1] = std::int32_t{field.dataType};
  }
}

}  // namespace component
