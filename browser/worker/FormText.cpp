#include "browser/worker/FormText.h"

#include <algorithm>

#include "desk/filter/ReportFilter.h"
#include "desk/filter/TOVRptFilter.h"
#include "platform/value/Convert.h"

namespace browser {
namespace {

using platform::ComboBox;
using platform::Control;
using platform::DatePicker;
using platform::ProgressBar;
using platform::TextBox;
using platform::TreeView;
using platform::Variant;

// Sort boxes push the field's name out of sight with fifty blanks; nobody types as many.
std::string WithoutHiddenKey(const std::string& text) {
  const std::size_t blanks = text.find("          ");
  return blanks == std::string::npos ? text : text.substr(0, blanks);
}

Json Items(const ComboBox& combo) {
  Json items = Json::array();
  for (const ComboBox::Entry& entry : combo.Entries()) {
    items.push_back({{"text", WithoutHiddenKey(entry.text)}, {"data", entry.data}});
  }
  return items;
}

Json Nodes(const TreeView& tree) {
  Json nodes = Json::array();
  for (const auto& node : tree.Nodes()) {
    nodes.push_back({{"key", node->key},
                     {"parent", node->parent == nullptr ? std::string() : node->parent->key},
                     {"text", node->text},
                     {"tag", node->tag},
                     {"checked", node->checked},
                     {"color", node->color},
                     {"image", node->image}});
  }
  return nodes;
}

void AddKindsOwn(Json& json, const Control& control) {
  if (const auto* text = dynamic_cast<const TextBox*>(&control)) {
    json["readOnly"] = text->ReadOnly();
  } else if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) {
    json["value"] = WithoutHiddenKey(combo->Text());
    json["items"] = Items(*combo);
    json["listIndex"] = combo->ListIndex();
  } else if (const auto* date = dynamic_cast<const DatePicker*>(&control)) {
    json["minDate"] = date->MinDate().ToText();
  } else if (const auto* tree = dynamic_cast<const TreeView*>(&control)) {
    json["nodes"] = Nodes(*tree);
  } else if (const auto* bar = dynamic_cast<const ProgressBar*>(&control)) {
    json["min"] = bar->min;
    json["max"] = bar->max;
  }
}

Json DescribeControl(const Control& control, int tabIndex) {
  Json json = Json::object();
  json["control"] = control.Id();
  json["name"] = control.BaseName();
  json["index"] = control.ArrayIndex();
  json["kind"] = std::string(platform::ToString(control.GetKind()));
  json["caption"] = control.Caption();
  json["tag"] = control.Tag();
  json["value"] = CellOf(control.Value());
  json["enabled"] = control.IsUsable();
  json["visible"] = control.IsShown();
  json["tabIndex"] = tabIndex;
  json["takesFocus"] = control.TakesFocus();
  json["frame"] = control.Container() == nullptr ? std::string() : control.Container()->Id();
  json["row"] = control.GetPlace().row;
  json["column"] = control.GetPlace().column;
  json["columns"] = control.GetPlace().columns;
  AddKindsOwn(json, control);
  return json;
}

std::string SettingOf(const platform::Form& form, const char* key) {
  const auto& settings = form.FirstEmbedded()->Settings();
  const Variant* value = settings ? settings->Find(key) : nullptr;
  return value != nullptr && value->IsText() ? platform::ToText(*value) : std::string();
}

}  // namespace

Json CellOf(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::kBoolean:
      return platform::ToBoolean(value);
    case Variant::Kind::kInt16:
    case Variant::Kind::kInt32:
    case Variant::Kind::kInt64:
      return platform::ToInt64(value);
    case Variant::Kind::kDouble:
      return platform::ToDouble(value);
    case Variant::Kind::kCurrency:
    case Variant::Kind::kDate:
    case Variant::Kind::kText:
      return platform::ToText(value);
    default:
      return nullptr;
  }
}

bool IsHiddenScheme(std::string_view name) { return name == kLastScheme || name == kStandardScheme; }

std::string StandardScheme(const desk::SchemeStore& schemes, std::string_view dialog) {
  const auto kept = schemes.Load(dialog, kStandardScheme);
  if (!kept) return {};
  const std::string name = platform::ToText(desk::ValueOf(*kept, "name"));
  return !name.empty() && schemes.Load(dialog, name) ? name : std::string();
}

Json DescribeControls(const platform::Form& form) {
  Json controls = Json::array();
  int tabIndex = 0;
  for (const auto& control : form.Controls()) controls.push_back(DescribeControl(*control, tabIndex++));
  return controls;
}

Json ControlChanges(const Json& before, const Json& after) {
  Json changes = Json::array();
  for (std::size_t i = 0; i < after.size() && i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    Json change = {{"control", after[i]["control"]}};
    for (const auto& [key, value] : after[i].items()) {
      if (!before[i].contains(key) || before[i][key] != value) change[key] = value;
    }
    changes.push_back(std::move(change));
  }
  return changes;
}

std::string FocusOf(const platform::Form& form) {
  if (form.Focus() != nullptr) return form.Focus()->Id();
  for (const auto& control : form.Controls()) {
    if (control->TakesFocus() && control->IsShown() && control->IsUsable()) return control->Id();
  }
  return {};
}

Json DescribeFilter(const platform::Form& form, const desk::SchemeStore& schemes,
                    const std::string& current) {
  const desk::FilterControl* control = desk::FilterControlOf(form);
  if (control == nullptr) return nullptr;
  const auto* plain = dynamic_cast<const desk::TOVRptFilter*>(control);
  Json names = Json::array();
  for (const std::string& name : schemes.Names(form.Name())) {
    if (!IsHiddenScheme(name)) names.push_back(name);
  }
  Json json = Json::object();
  json["name"] = form.FirstEmbedded()->Id();
  json["kind"] = plain != nullptr ? "TOVRptFilter" : "ReportFilter";
  json["buttons"] = control->HasButtons();
  json["title"] = plain != nullptr ? plain->Title() : std::string();
  json["quick"] = SettingOf(form, "query:controlname");
  json["dateFrame"] = SettingOf(form, "date:controlname");
  json["itemFrame"] = SettingOf(form, "ccode:controlname");
  json["schemes"] = std::move(names);
  json["current"] = current;
  json["standard"] = StandardScheme(schemes, form.Name());
  return json;
}

}  // namespace browser
