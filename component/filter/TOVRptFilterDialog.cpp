// The control keeps the schemes, the dialog the fields: whenever the control saves or collects, it asks for
// every field with SaveScheme, and whenever it recalls a scheme, it hands every field back with LoadScheme.
// Confirming collects the same way, so the keys of the filter are the keys of a scheme, and more.
#include "component/filter/TOVRptFilterDialog.h"

#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"

namespace component {

using platform::Button;
using platform::Dictionary;
using platform::EqualsIgnoreCase;
using platform::Object;
using platform::Ref;
using platform::Variant;

TOVRptFilterDialog::TOVRptFilterDialog(const Design& design, std::span<const DialogField> fields)
    : FilterDialog(std::string(design.name), fields, "TOVRptFilterCtl.TOVRptFilter"), design_(design) {
  Add<Button>("cmdOK").onClick = [this] { Confirm(); };
  Add<Button>("cmdCacel").onClick = [this] { Cancel(); };
}

void TOVRptFilterDialog::OnLoad() {
  CreateFilterControl(std::string(design_.filterControl), {});
  NewResult();
  firstTime_ = true;
}

void TOVRptFilterDialog::OnActivate() {
  if (!firstTime_) return;
  SetCaption(ResString("过滤"));
  Field<Button>("cmdOK").SetCaption(ResString("确定(&O)"));
  Field<Button>("cmdCacel").SetCaption(ResString("取消(&E)"));
  SetUp();
  FilterControl().Put("PageVisible", std::int16_t{1}, false);
  FilterControl().Put("PageVisible", std::int16_t{2}, false);
  Variant number(RptID());
  FilterControl().Call("InitFilter", ResString(design_.reportTitle), number);
  firstTime_ = false;
}

void TOVRptFilterDialog::OnFilterEvent(std::string_view event, std::span<Variant> arguments) {
  auto section = [&] { return arguments.empty() ? std::string() : platform::ToText(arguments[0]); };
  if (EqualsIgnoreCase(event, "SaveScheme")) {
    SaveScheme(section());
  } else if (EqualsIgnoreCase(event, "LoadScheme")) {
    LoadScheme(section());
  } else if (EqualsIgnoreCase(event, "ResetFields")) {
    ResetFields();
  } else if (EqualsIgnoreCase(event, "SchemeActivated")) {
    OnSchemeActivated();
  }
  // SchemeNotice says nothing that a dialog would act on.
}

std::optional<std::string> TOVRptFilterDialog::LookUpNumber(const DialogField& field,
                                                            const std::string& text) {
  if (field.dataType != kBatch) return FilterDialog::LookUpNumber(field, text);
  std::string condition;
  for (const auto& [box, comparison] :
       {std::pair("txtItem(0)", "t3.FNumber >='"), std::pair("txtItem(1)", "t3.FNumber <='")}) {
    const std::string& number = Field<platform::TextBox>(box).Text();
    if (number.empty()) continue;
    if (!condition.empty()) condition += " And ";
    condition += comparison + number + "'";
  }
  std::string batch = LookupBatch(text, condition, false, "");
  if (batch.empty()) return {};
  return batch;
}

void TOVRptFilterDialog::OnSchemeActivated() { FilterControl().Call("ApplyScheme"); }

std::string TOVRptFilterDialog::SchemeText(const DialogField& field) const {
  const Ref<platform::Control> control = ControlOf(field);
  if (const auto* combo = dynamic_cast<const platform::ComboBox*>(control.Get())) {
    return std::to_string(combo->ListIndex());
  }
  return platform::ToText(control->Value());
}

void TOVRptFilterDialog::SaveScheme(const std::string& section) {
  for (const DialogField& field : Fields()) {
    if (field.key.empty()) continue;
    Variant sectionArgument(section);
    FilterControl().Call("WriteValue", sectionArgument, field.key, SchemeText(field));
  }
}

void TOVRptFilterDialog::LoadScheme(const std::string& section) {
  LoadFieldValues([&](const DialogField& field) {
    Variant sectionArgument(section);
    return FromScheme(field, FilterControl().Call("ReadValue", sectionArgument, field.key));
  });
}

void TOVRptFilterDialog::Confirm() {
  if (!Validate()) return;
  ParsePropsString(GetPropsString());
  const Variant collected = FilterControl().Get("FilterInfo").AsObject().Call("FilterResult");
  SetResult(platform::detail::FromVariant<Ref<Dictionary>>(collected));
  // A control that delivers nothing leaves no filter to add to; the report tells the user.
  if (Result() && !AcceptCollected(*Result())) return;
  if (Result()) AddKeys(*Result());
  Hide();
  if (Result() && design_.checksCost) CheckQuickCost(Ref<Object>(this), true);
}

void TOVRptFilterDialog::Cancel() {
  Result()->Set("OK", false);
  Hide();
}

}  // namespace component
