#pragma once

#include <cstdint>

#include "platform/form/Form.h"

namespace component {

// How many levels of categories an item class has, 1 when it cannot be told. The items themselves are not
// counted.
std::int32_t ReadMaxCategoryLevel(std::int32_t itemClass);

// The panel of a dialog in which the user chooses from which to which category level rows are summed up.
class CategoryLevels {
 public:
  // Watches the controls; the panel shows while the check is set.
  void Attach(platform::CheckBox& check, platform::Frame& panel, platform::TextBox& begin,
              platform::TextBox& end);
  // Reads how many levels there are and sets both boxes to the first.
  void Load(std::int32_t itemClass);
  void ShowPanel();

 private:
  void Bound(platform::TextBox& changed, platform::TextBox& other);

  std::int32_t maxLevel_ = 1;
  platform::CheckBox* check_ = nullptr;
  platform::Frame* panel_ = nullptr;
  platform::TextBox* begin_ = nullptr;
  platform::TextBox* end_ = nullptr;
};

}  // namespace component
