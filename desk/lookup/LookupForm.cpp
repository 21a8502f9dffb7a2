#include "desk/lookup/LookupForm.h"

#include <algorithm>
#include <array>

#include "desk/lookup/BatchForm.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"

namespace desk {
namespace {

using platform::Button;
using platform::EqualsIgnoreCase;
using platform::TreeView;

constexpr std::uint32_t kDisabledColor = 255;
constexpr std::int32_t kAllRows = 1'000'000;

struct KindOfData {
  std::int32_t dataType;
  std::string_view caption;
};

constexpr std::array kKinds = {
    KindOfData{1, "客户"}, KindOfData{2, "部门"},   KindOfData{3, "职员"},      KindOfData{4, "商品"},
    KindOfData{5, "仓库"}, KindOfData{8, "供应商"}, KindOfData{10, "辅助属性"},
};

std::string CaptionOf(std::int32_t dataType) {
  for (const KindOfData& kind : kKinds) {
    if (kind.dataType == dataType) return "选择" + std::string(kind.caption);
  }
  return "选择基础资料";
}

std::string KeyOf(std::int32_t id) { return "K" + std::to_string(id); }

}  // namespace

LookupForm::LookupForm(Backend& backend, LookupQuery query)
    : Form("frmLookup"),
      backend_(backend),
      query_(std::move(query)),
      search_(Add<platform::TextBox>("txtSearch")),
      tree_(Add<TreeView>("tvwRows")),
      count_(Add<platform::Label>("lblCount")),
      ok_(Add<Button>("cmdOK")) {
  SetCaption(CaptionOf(query_.dataType));
  ok_.SetCaption("确定(&O)");
  ok_.onClick = [this] { Confirm(); };
  auto& cancel = Add<Button>("cmdCancel");
  cancel.SetCaption("取消(&C)");
  cancel.onClick = [this] { Hide(); };
  search_.onChange = [this] { Search(); };
  search_.onKeyPress = [this](int& character) {
    if (character == platform::kKeyEnter && ok_.Enabled()) Confirm();
  };
  tree_.onNodeCheck = [this](TreeView::Node& node) { Choose(node); };
  auto& hint = Add<platform::Label>("lblHint");
  hint.SetCaption("禁用基础资料红色显示");
}

void LookupForm::OnLoad() {
  outcome_.reset();
  if (search_.Text() == query_.text) {
    Search();
  } else {
    search_.SetText(query_.text);
  }
}

std::vector<BaseDataRow> LookupForm::Find(bool asTree, std::int32_t most) {
  return backend_.BaseData({.dataType = query_.dataType,
                            .search = search_.Text(),
                            .filter = query_.filter,
                            .withGroups = asTree,
                            .limit = most});
}

// A tree that would be too long has its groups alone, all of them, to search below one.
void LookupForm::Search() {
  const bool asTree = search_.Text().empty();
  const std::int32_t most = asTree ? kMostInTree : kMostRows;
  std::vector<BaseDataRow> found = Find(asTree, most + 1);
  const bool more = found.size() > static_cast<std::size_t>(most);
  bool onlyGroups = false;
  if (more && asTree) {
    std::vector<BaseDataRow> groups = Find(asTree, kAllRows);
    std::erase_if(groups, [](const BaseDataRow& row) { return row.detail; });
    onlyGroups = !groups.empty();
    if (onlyGroups) found = std::move(groups);
  }
  if (more && !onlyGroups) found.resize(static_cast<std::size_t>(most));
  AddRows(found, asTree);
  rows_ = std::move(found);
  const std::string count = std::to_string(onlyGroups ? rows_.size() : static_cast<std::size_t>(most));
  count_.SetCaption(onlyGroups ? "共 " + count + " 个类别，请选择类别或输入内容"
                    : more     ? "仅显示前 " + count + " 条，请输入更多内容"
                               : "共 " + std::to_string(rows_.size()) + " 条");
  ok_.SetEnabled(false);
  ChooseTyped();
}

void LookupForm::AddRows(const std::vector<BaseDataRow>& rows, bool asTree) {
  tree_.Clear();
  for (const BaseDataRow& row : rows) {
    const std::string parent = KeyOf(row.parentId);
    const bool below = asTree && tree_.Find(parent) != nullptr;
    TreeView::Node& node = tree_.Add(below ? parent : "", KeyOf(row.id), row.number + "  " + row.name);
    node.tag = row.number;
    node.image = row.detail ? "Item" : "Close";
    node.selectedImage = row.detail ? "Item" : "Open";
    if (row.disabled) node.color = kDisabledColor;
  }
}

void LookupForm::Choose(TreeView::Node& node) {
  const auto row = std::ranges::find_if(
      rows_, [&](const BaseDataRow& candidate) { return KeyOf(candidate.id) == node.key; });
  const bool chosen = node.checked && row != rows_.end() && row->detail;
  for (const auto& other : tree_.Nodes()) other->checked = false;
  node.checked = chosen;
  ok_.SetEnabled(chosen);
}

// A number typed in full is chosen, and so is the only row that was found.
void LookupForm::ChooseTyped() {
  for (const BaseDataRow& row : rows_) {
    const bool typed =
        EqualsIgnoreCase(row.number, search_.Text()) || EqualsIgnoreCase(row.shortNumber, search_.Text());
    if (!row.detail || !(typed || (rows_.size() == 1 && !search_.Text().empty()))) continue;
    TreeView::Node& node = *tree_.Find(KeyOf(row.id));
    node.checked = true;
    return Choose(node);
  }
}

const BaseDataRow* LookupForm::Chosen() const {
  const auto found = std::ranges::find_if(rows_, [this](const BaseDataRow& row) {
    const TreeView::Node* node = tree_.Find(KeyOf(row.id));
    return node != nullptr && node->checked;
  });
  return found == rows_.end() ? nullptr : &*found;
}

void LookupForm::Confirm() {
  if (const BaseDataRow* row = Chosen()) {
    outcome_ = Picked{.number = row->number, .shortNumber = row->shortNumber, .detail = row->detail};
  }
  Hide();
}

std::optional<Picked> PickBaseData(Backend& backend, const LookupQuery& query) {
  if (query.dataType == kBatchType) {
    const platform::Ref<platform::Recordset> batch =
        PickBatch(backend, {.filterItem = {}, .filter = query.filter, .keyWord = query.text});
    if (!batch) return std::nullopt;
    return Picked{.number = batch->Value("FBatchNo"), .shortNumber = "", .detail = true};
  }
  const auto form = platform::MakeRef<LookupForm>(backend, query);
  form->Show();
  return form->Outcome();
}

}  // namespace desk
