#pragma once

#include "desk/Backend.h"
#include "platform/form/Form.h"

namespace desk {

// The list of batches in stock, narrowed by what is typed. Ticking a batch chooses it, one at a time.
class BatchForm final : public platform::Form {
 public:
  // `backend` is borrowed while the form lives.
  BatchForm(Backend& backend, BatchQuery query);

  // Positioned on the batch chosen; null before the form was confirmed and after a cancel.
  const platform::Ref<platform::Recordset>& Outcome() const { return outcome_; }

 protected:
  void OnLoad() override;

 private:
  void Search();
  void Choose(platform::TreeView::Node& node);
  void Confirm();

  Backend& backend_;
  BatchQuery query_;
  platform::TextBox& search_;
  platform::TreeView& tree_;
  platform::Button& ok_;
  platform::Ref<platform::Recordset> rows_;
  platform::Ref<platform::Recordset> outcome_;
};

// Shows the list on the current screen.
platform::Ref<platform::Recordset> PickBatch(Backend& backend, const BatchQuery& query);

}  // namespace desk
