#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/form/Control.h"

namespace platform {

// A tree with a check box a node. Nodes are found by key, and walked as a tree or in the order of adding.
class TreeView final : public Control {
 public:
  struct Node {
    std::string key;
    std::string text;
    std::string tag;
    std::string image;
    std::string selectedImage;
    std::uint32_t color = 0;  // red in the lowest byte, then green, then blue; 0 is the normal colour
    bool checked = false;
    Node* parent = nullptr;
    std::vector<Node*> children;
  };

  explicit TreeView(std::string name) : Control(ControlKind::kTree, std::move(name), -1) {}

  // Adds at the end of the parent's children, or as a root when `parentKey` is empty. A key that is taken
  // raises kKeyExists, a parent that is not there kInvalidCall; the tree is then as before.
  Node& Add(const std::string& parentKey, const std::string& key, std::string text);
  Node* Find(std::string_view key) const;
  const std::vector<std::unique_ptr<Node>>& Nodes() const { return nodes_; }
  const std::vector<Node*>& Roots() const { return roots_; }
  // Removes the node with all below it.
  void Remove(Node& node);
  void Clear();

  // A user changed the node's box; setting Node::checked from code fires nothing.
  void ToggleByUser(Node& node);
  std::function<void(Node& node)> onNodeCheck;
  void DropEvents() override;

 private:
  std::vector<std::unique_ptr<Node>> nodes_;
  std::vector<Node*> roots_;
};

}  // namespace platform
