#include "player/FormState.h"

#include <algorithm>

#include "platform/value/Convert.h"

namespace player {
namespace {

using platform::ComboBox;
using platform::Control;
using platform::ControlKind;
using platform::Form;
using platform::TreeView;

constexpr std::string_view kOnlyTree = "tree";

const TreeView* OnlyTree(const Form& form) {
  const auto trees = std::ranges::count_if(
      form.Controls(), [](const auto& control) { return control->GetKind() == ControlKind::kTree; });
  return trees == 1 ? form.FirstTree() : nullptr;
}

Json Nodes(const TreeView& tree) {
  Json nodes = Json::array();
  for (const auto& node : tree.Nodes()) {
    Json json = Json::object();
    json["key"] = node->key;
    json["parent"] = node->parent == nullptr ? std::string() : node->parent->key;
    json["text"] = node->text;
    json["checked"] = node->checked;
    json["color"] = node->color;
    json["image"] = node->image;
    nodes.push_back(std::move(json));
  }
  return nodes;
}

Json Describe(const Control& control, const Names* names) {
  Json json = Json::object();
  json["kind"] = std::string(platform::ToString(control.GetKind()));
  json["value"] = ToJson(control.Value(), names);
  json["enabled"] = control.IsUsable();
  json["visible"] = control.IsShown();
  json["caption"] = control.Caption();
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) {
    Json items = Json::array();
    for (const ComboBox::Entry& entry : combo->Entries()) items.push_back(entry.text);
    json["items"] = std::move(items);
    json["index"] = combo->ListIndex();
  } else if (const auto* tree = dynamic_cast<const TreeView*>(&control)) {
    json["nodes"] = Nodes(*tree);
  }
  return json;
}

}  // namespace

std::string ScriptName(const Form& form, const Control& control) {
  return &control == OnlyTree(form) ? std::string(kOnlyTree) : control.Id();
}

Control* FindControl(const Form& form, std::string_view name) {
  if (Control* control = form.Find(name)) return control;
  return platform::EqualsIgnoreCase(name, kOnlyTree) && OnlyTree(form) != nullptr ? form.FirstTree()
                                                                                  : nullptr;
}

Json StateOf(const Form& form, const Names* names) {
  Json state = Json::object();
  state["form"] = form.Name();
  state["caption"] = form.Caption();
  Json controls = Json::object();
  for (const auto& control : form.Controls()) {
    controls[ScriptName(form, *control)] = Describe(*control, names);
  }
  state["controls"] = std::move(controls);
  state["focus"] = form.Focus() == nullptr ? Json() : Json(ScriptName(form, *form.Focus()));
  return state;
}

}  // namespace player
