#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "component/filter/CategoryLevels.h"

namespace component {

// The box in which a dialog asks what rows are summed up by, and what follows from a choice: how many
// category levels there are, and what else the dialog hangs on it.
class GroupChoice {
 public:
  // Watches the combo; the boxes of the category levels go into the panel.
  void Attach(const platform::Form& form, platform::ComboBox& group, platform::Frame& levelPanel);
  // Runs first when a group is chosen, also one that is chosen already.
  std::function<void(std::int32_t group)> onChosen;

  // Refills the combo and chooses an entry.
  void Fill(std::span<const std::string_view> captions, std::int32_t chosen);
  // The choice as the data component and the title take it: "InvoiceStyle", "ShowTypeValue", "SumBy".
  std::int32_t InvoiceStyle() const { return group_->ListIndex(); }
  std::string ShowTypeValue() const;
  std::string SumBy() const { return group_->Text(); }
  const CategoryLevels& Levels() const { return levels_; }

 private:
  void Follow();

  platform::ComboBox* group_ = nullptr;
  CategoryLevels levels_;
};

}  // namespace component
