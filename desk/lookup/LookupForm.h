#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desk/Backend.h"
#include "platform/form/Form.h"

namespace desk {

// Looking up base data: a search text, and below it what the search finds. Without a search text the rows
// stand in the tree of their groups, otherwise as a list. Rows out of use are red. Ticking a row chooses it,
// one at a time; a group cannot be chosen. Typing a whole number chooses its row.
class LookupForm final : public platform::Form {
 public:
  // `backend` is borrowed while the form lives.
  LookupForm(Backend& backend, LookupQuery query);

  // What was chosen when the form was confirmed; nothing before and after a cancel.
  const std::optional<Picked>& Outcome() const { return outcome_; }

  // The form shows at most this many rows and says when there are more: of a search, and in the tree.
  static constexpr std::int32_t kMostRows = 200;
  static constexpr std::int32_t kMostInTree = 1000;

 protected:
  void OnLoad() override;

 private:
  std::vector<BaseDataRow> Find(bool asTree, std::int32_t most);
  void Search();
  void AddRows(const std::vector<BaseDataRow>& rows, bool asTree);
  void Choose(platform::TreeView::Node& node);
  void ChooseTyped();
  void Confirm();
  const BaseDataRow* Chosen() const;

  Backend& backend_;
  LookupQuery query_;
  platform::TextBox& search_;
  platform::TreeView& tree_;
  platform::Label& count_;
  platform::Button& ok_;
  std::vector<BaseDataRow> rows_;
  std::optional<Picked> outcome_;
};

// Shows a lookup form on the current screen: the list of batches for their type, this one for any other.
std::optional<Picked> PickBaseData(Backend& backend, const LookupQuery& query);

}  // namespace desk
