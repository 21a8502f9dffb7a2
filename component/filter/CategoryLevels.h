#pragma once

#include <cstdint>

#include "component/filter/BaseData.h"
#include "platform/form/Form.h"

namespace component {

// How many levels of categories an item class has, 1 when it cannot be told. The items themselves are not
// counted.
std::int32_t ReadMaxCategoryLevel(std::int32_t itemClass);

// The panel of a dialog in which the user chooses from which to which category level rows are summed up: the
// check box chkMultiLevel, which shows the panel, and the boxes txtMultiLevelBegin and txtMultiLevelEnd in
// it.
class CategoryLevels {
 public:
  // Puts the boxes of the form into the panel and watches them.
  void Attach(const platform::Form& form, platform::Frame& panel);
  // Reads how many levels there are and sets both boxes to the first. Without an item class there is one.
  void Load(DataType itemClass);
  // Whether levels can be chosen at all; where they cannot, the check box is cleared.
  void Allow(bool allowed);
  void ShowPanel();
  // The keys of the choice, where a scheme does not bring them: the levels as texts, 0 while they are off.
  void WriteTo(platform::Dictionary& filter) const;

 private:
  void Bound(platform::TextBox& changed, platform::TextBox& other);

  std::int32_t maxLevel_ = 1;
  platform::CheckBox* check_ = nullptr;
  platform::Frame* panel_ = nullptr;
  platform::TextBox* begin_ = nullptr;
  platform::TextBox* end_ = nullptr;
};

}  // namespace component
