#include "platform/form/TreeView.h"

#include <algorithm>

namespace platform {

TreeView::Node& TreeView::Add(const std::string& parentKey, const std::string& key, std::string text) {
  Node* parent = nullptr;
  if (!parentKey.empty()) {
    parent = Find(parentKey);
    if (parent == nullptr) {
      throw Error(ErrorNumber::kInvalidCall, "TreeView", Id() + ": there is no node '" + parentKey + "'");
    }
  }
  if (!key.empty() && Find(key) != nullptr) {
    throw Error(ErrorNumber::kKeyExists, "TreeView", Id() + ": the key '" + key + "' is taken");
  }
  nodes_.push_back(std::make_unique<Node>());
  Node& node = *nodes_.back();
  node.key = key;
  node.text = std::move(text);
  node.parent = parent;
  (parent == nullptr ? roots_ : parent->children).push_back(&node);
  return node;
}

TreeView::Node* TreeView::Find(std::string_view key) const {
  const auto found = std::ranges::find_if(nodes_, [&](const auto& node) { return node->key == key; });
  return found == nodes_.end() ? nullptr : found->get();
}

void TreeView::Remove(Node& node) {
  while (!node.children.empty()) Remove(*node.children.back());
  std::erase(node.parent == nullptr ? roots_ : node.parent->children, &node);
  std::erase_if(nodes_, [&](const auto& candidate) { return candidate.get() == &node; });
}

void TreeView::Clear() {
  roots_.clear();
  nodes_.clear();
}

void TreeView::DropEvents() {
  Control::DropEvents();
  onNodeCheck = {};
}

void TreeView::ToggleByUser(Node& node) {
  node.checked = !node.checked;
  if (onNodeCheck) onNodeCheck(node);
}

}  // namespace platform
