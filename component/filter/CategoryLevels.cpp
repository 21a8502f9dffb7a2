#include "component/filter/CategoryLevels.h"

#include <string>

#include "component/frame/MMTS.h"

namespace component {

using platform::TextBox;
using platform::Variant;

std::int32_t ReadMaxCategoryLevel(std::int32_t itemClass) {
  std::int32_t level = 1;
  platform::SkipErrors([&] {
    const platform::Ref<platform::Recordset> rows = ExecuteSql(
        "select (max(FLevel) - 1) as MaxLevel from t_Item, t_ItemClass where t_Item.FItemClassID = "
        "t_ItemClass.FItemClassID and t_ItemClass.FItemClassID=" +
        std::to_string(itemClass) + "\n");
    if (!rows || rows->AtEnd()) return;
    const std::int32_t found = platform::ToInt32(rows->Value("MaxLevel"));
    if (found >= 1) level = found;
  });
  return level;
}

void CategoryLevels::Attach(const platform::Form& form, platform::Frame& panel) {
  check_ = &dynamic_cast<platform::CheckBox&>(*form.Find("chkMultiLevel"));
  panel_ = &panel;
  begin_ = &dynamic_cast<TextBox&>(*form.Find("txtMultiLevelBegin"));
  end_ = &dynamic_cast<TextBox&>(*form.Find("txtMultiLevelEnd"));
  for (TextBox* box : {begin_, end_}) {
    box->PlaceInside(&panel);
    form.Find("lbl_" + box->Name())->PlaceInside(&panel);
  }
  check_->onClick = [this] { ShowPanel(); };
  begin_->onChange = [this] { Bound(*begin_, *end_); };
  end_->onChange = [this] { Bound(*end_, *begin_); };
}

void CategoryLevels::Load(DataType itemClass) {
  maxLevel_ = itemClass == kNoDataType ? 1 : ReadMaxCategoryLevel(itemClass);
  begin_->SetText("1");
  end_->SetText("1");
}

void CategoryLevels::Allow(bool allowed) {
  if (!allowed) check_->SetChecked(0);
  check_->SetEnabled(allowed);
}

void CategoryLevels::WriteTo(platform::Dictionary& filter) const {
  const bool on = check_->Checked() == 1;
  filter.Set("MultiLevel", check_->Checked());
  filter.Set("MultiLevelBegin", on ? Variant(begin_->Text()) : Variant(0));
  filter.Set("MultiLevelEnd", on ? Variant(end_->Text()) : Variant(0));
}

void CategoryLevels::ShowPanel() { panel_->SetVisible(check_->Checked() == 1); }

// The boxes are compared as texts: with "2" and "10" the second gives way, since "10" sorts before "2".
void CategoryLevels::Bound(TextBox& changed, TextBox& other) {
  platform::SkipErrors([&] {
    const std::int32_t level = platform::ToInt32(Variant(changed.Text()));
    if (level > maxLevel_) {
      changed.SetText(std::to_string(maxLevel_));
    } else if (level < 1) {
      changed.SetText("1");
    }
    if (!(begin_->Text() < end_->Text())) other.SetText(changed.Text());
  });
}

}  // namespace component
