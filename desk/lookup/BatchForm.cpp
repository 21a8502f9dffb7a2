#include "desk/lookup/BatchForm.h"

#include "platform/value/Convert.h"

namespace desk {

using platform::Button;
using platform::Recordset;
using platform::Ref;
using platform::TreeView;

BatchForm::BatchForm(Backend& backend, BatchQuery query)
    : Form("frmBatchList"),
      backend_(backend),
      query_(std::move(query)),
      search_(Add<platform::TextBox>("txtSearch")),
      tree_(Add<TreeView>("tvwRows")),
      ok_(Add<Button>("cmdOK")) {
  SetCaption("选择批号");
  ok_.SetCaption("确定(&O)");
  ok_.onClick = [this] { Confirm(); };
  auto& cancel = Add<Button>("cmdCancel");
  cancel.SetCaption("取消(&C)");
  cancel.onClick = [this] { Hide(); };
  search_.onChange = [this] { Search(); };
  tree_.onNodeCheck = [this](TreeView::Node& node) { Choose(node); };
}

void BatchForm::OnLoad() {
  outcome_ = nullptr;
  const std::string typed = query_.keyWord.IsEmpty() ? "" : platform::ToText(query_.keyWord);
  if (search_.Text() == typed) {
    Search();
  } else {
    search_.SetText(typed);
  }
}

void BatchForm::Search() {
  BatchQuery query = query_;
  query.keyWord = search_.Text();
  rows_ = backend_.Batches(query);
  tree_.Clear();
  ok_.SetEnabled(false);
  if (!rows_) return;
  const std::size_t batch = rows_->FieldIndex("FBatchNo");
  const std::size_t quantity = rows_->FieldIndex("FQty");
  // One number may be a batch of several items.
  const std::size_t number = rows_->FieldIndex("FItemNumber");
  const std::size_t name = rows_->FieldIndex("FItemName");
  for (std::size_t i = 0; i < rows_->ViewCount(); ++i) {
    const std::size_t row = rows_->RowAt(i);
    const std::string text =
        std::string(rows_->TextAt(batch, row)) + "  " + std::string(rows_->TextAt(number, row)) + " " +
        std::string(rows_->TextAt(name, row)) + "  " + platform::NumberToText(rows_->DoubleAt(quantity, row));
    // The key is the row's place in the list, which its node leads back to.
    tree_.Add("", std::to_string(i + 1), text).image = "Item";
  }
}

void BatchForm::Choose(TreeView::Node& node) {
  const bool chosen = node.checked;
  for (const auto& other : tree_.Nodes()) other->checked = false;
  node.checked = chosen;
  ok_.SetEnabled(chosen);
}

void BatchForm::Confirm() {
  for (const auto& node : tree_.Nodes()) {
    if (!node->checked) continue;
    rows_->SetAbsolutePosition(platform::ToInt32(node->key));
    outcome_ = rows_;
  }
  Hide();
}

Ref<Recordset> PickBatch(Backend& backend, const BatchQuery& query) {
  const auto form = platform::MakeRef<BatchForm>(backend, query);
  form->Show();
  return form->Outcome();
}

}  // namespace desk
