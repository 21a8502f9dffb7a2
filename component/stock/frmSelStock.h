#pragma once

#include <string>

#include "platform/form/Form.h"
#include "platform/rows/Recordset.h"

namespace component {

// A set of warehouses: "(12,15)", the numbers of the ticked nodes, and how it reads for the user. Both are
// empty when nothing is chosen.
struct StockScope {
  std::string numbers;
  std::string names;
};

// The warehouses as a tree with a check box a node. A group that is ticked may be chosen in part: ticking a
// node ticks every group above it.
class frmSelStock final : public platform::Form {
 public:
  // Takes the warehouses, a parent before its children, and closes them when the dialog unloads. `chosen` is
  // the set of an earlier showing.
  frmSelStock(platform::Ref<platform::Recordset> stocks, StockScope chosen);

  // The set as the user confirmed it; as it was given after a cancel.
  const StockScope& Chosen() const { return chosen_; }
  bool IsOk() const { return ok_; }
  // 0 nothing ticked, 2 something, 1 every node.
  std::int16_t ScopeState() const { return scopeState_; }

 protected:
  void OnActivate() override;
  void OnUnload() override;

 private:
  using Node = platform::TreeView::Node;

  platform::TreeView& Tree() const { return *FirstTree(); }
  void BuildTree();
  void AddNode();
  static void Spread(Node& node);
  void TickAll(bool ticked) const;
  void Confirm();
  void CollectNumbers();
  void CollectNames();
  std::string NamesOf(const Node& node) const;

  platform::Ref<platform::Recordset> stocks_;
  StockScope chosen_;
  bool ok_ = false;
  bool firstTime_ = true;
  std::int16_t scopeState_ = 0;
};

}  // namespace component
