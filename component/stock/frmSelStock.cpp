// Numbers name every ticked node, groups included; names tell a wholly chosen group by itself and a partly
// chosen one by its chosen members.
#include "component/stock/frmSelStock.h"

#include <algorithm>

#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using platform::Button;
using platform::Recordset;
using platform::Ref;
using platform::TreeView;

constexpr std::uint32_t kRed = 255;

struct ButtonDesign {
  std::string_view name;
  std::string_view caption;
};
constexpr ButtonDesign kButtons[] = {
    {"cmdOK", "确定(&O)"}, {"cmdCancel", "取消(&C)"}, {"cmdSelAll", "全选(&L)"}, {"cmdQXAll", "全清(&U)"}};

bool IsWhollyTicked(const TreeView::Node& node) {
  if (node.children.empty()) return node.checked;
  return std::ranges::all_of(node.children,
                             [](const TreeView::Node* child) { return IsWhollyTicked(*child); });
}

bool HasTickedChild(const TreeView::Node& node) {
  return std::ranges::any_of(node.children, [](const TreeView::Node* child) { return child->checked; });
}

void TickBelow(TreeView::Node& node, bool ticked) {
  for (TreeView::Node* child : node.children) {
    child->checked = ticked;
    TickBelow(*child, ticked);
  }
}

void DropLastComma(std::string& list) {
  if (!list.empty()) list.pop_back();
}

}  // namespace

frmSelStock::frmSelStock(Ref<Recordset> stocks, StockScope chosen)
    : Form("frmSelStock"), stocks_(std::move(stocks)), chosen_(std::move(chosen)) {
  SetCaption(ResString("可用库存--库存范围"));
  auto& tree = Add<TreeView>("tree");
  tree.SetPlace({.row = 1, .columns = 4});
  tree.onNodeCheck = [](Node& node) { Spread(node); };
  auto& note = Add<platform::Label>("lblDisabled");
  note.SetCaption(ResString("禁用基础资料红色显示"));
  note.SetPlace({.row = 2, .columns = 4});
  int column = 0;
  for (const ButtonDesign& design : kButtons) {
    auto& button = Add<Button>(std::string(design.name));
    button.SetCaption(ResString(design.caption));
    button.SetPlace({.row = 3, .column = column++});
  }
  dynamic_cast<Button&>(*Find("cmdOK")).onClick = [this] { Confirm(); };
  dynamic_cast<Button&>(*Find("cmdCancel")).onClick = [this] { Unload(); };
  dynamic_cast<Button&>(*Find("cmdSelAll")).onClick = [this] { TickAll(true); };
  dynamic_cast<Button&>(*Find("cmdQXAll")).onClick = [this] { TickAll(false); };
}

void frmSelStock::OnActivate() {
  if (!firstTime_) return;
  firstTime_ = false;
  platform::SkipErrors([&] { BuildTree(); });  // a bad row ends the tree there
}

void frmSelStock::OnUnload() {
  platform::SkipErrors([&] {
    if (stocks_) stocks_->Close();
  });
  stocks_ = nullptr;
  while (!Tree().Nodes().empty()) Tree().Remove(*Tree().Nodes().back());
}

void frmSelStock::BuildTree() {
  Tree().Clear();
  if (!stocks_) return;
  for (; !stocks_->AtEnd(); stocks_->MoveNext()) AddNode();
}

void frmSelStock::AddNode() {
  auto text = [&](const char* field) { return platform::ToText(stocks_->Value(field)); };
  const std::string id = text("FItemID");
  const bool isGroup = platform::ToInt32(stocks_->Value("FDetail")) == 0;
  const std::string parent = text("FParentID");
  Node& node = Tree().Add(parent == "0" ? std::string() : "K" + parent, "K" + id,
                          text("FNumber") + "-" + text("FName"));
  node.image = isGroup ? "Close" : "Item";
  node.selectedImage = isGroup ? "Open" : "Item";
  node.tag = text("FNumber");
  if (platform::ToInt32(stocks_->Value("FDeleted")) == 1) node.color = kRed;
  // Contained as plain text, so that 1 is also found in a set that holds 12.
  if (!chosen_.numbers.empty()) node.checked = chosen_.numbers.find(id) != std::string::npos;
}

// A group is ticked when anything in it is.
void frmSelStock::Spread(Node& node) {
  TickBelow(node, node.checked);
  for (Node* parent = node.parent; parent != nullptr; parent = parent->parent) {
    parent->checked = node.checked || HasTickedChild(*parent);
  }
}

void frmSelStock::TickAll(bool ticked) const {
  for (const auto& node : Tree().Nodes()) node->checked = ticked;
}

void frmSelStock::Confirm() {
  CollectNumbers();
  CollectNames();
  ok_ = true;
  Unload();
}

void frmSelStock::CollectNumbers() {
  std::string numbers;
  std::size_t count = 0;
  scopeState_ = 0;
  for (const auto& node : Tree().Nodes()) {
    if (!node->checked) continue;
    ++count;
    if (!node->key.empty()) numbers += node->key.substr(1) + ",";
    scopeState_ = 2;
  }
  DropLastComma(numbers);
  chosen_.numbers = numbers.empty() ? numbers : "(" + numbers + ")";
  if (count > 0 && count == Tree().Nodes().size()) scopeState_ = 1;
}

void frmSelStock::CollectNames() {
  std::string names;
  for (const Node* root : Tree().Roots()) {
    if (root->checked) names += NamesOf(*root);
  }
  DropLastComma(names);
  chosen_.names = names;
}

// The members of a group are looked for by position and by the group's text, so that of two groups of the
// same text that stand mixed each tells the members of both.
std::string frmSelStock::NamesOf(const Node& node) const {
  if (node.children.empty()) return node.checked ? node.text + "," : std::string();
  if (IsWhollyTicked(node)) return node.text + ",";
  const auto& nodes = Tree().Nodes();
  auto positionOf = [&](const Node* wanted) {
    return std::ranges::find_if(nodes, [&](const auto& candidate) { return candidate.get() == wanted; });
  };
  std::string names;
  const auto last = positionOf(node.children.back());
  for (auto each = positionOf(node.children.front()); each <= last; ++each) {
    const Node* parent = (*each)->parent;
    if (parent != nullptr && parent->text == node.text) names += NamesOf(**each);
  }
  return names;
}

}  // namespace component
