#include "component/movement/GroupChoice.h"

#include <string>

#include "component/filter/FilterDialog.h"
#include "component/frame/VEZPublic.h"

namespace component {
namespace {

// The item class whose levels a group is summed up by; a group that is not here has none.
struct LevelClass {
  std::string_view group;
  DataType itemClass = kNoDataType;
};
constexpr LevelClass kLevelClasses[] = {
    {"商品", kItem},       {"商品批号", kItem},   {"商品批次", kItem},   {"商品+供应商", kItem},
    {"供应商", kSupplier}, {"部门", kDepartment}, {"业务员", kEmployee}, {"仓库", kStock},
};

DataType LevelClassOf(std::string_view group) {
  for (const LevelClass& known : kLevelClasses) {
    if (ResString(known.group) == group) return known.itemClass;
  }
  return kNoDataType;
}

}  // namespace

void GroupChoice::Attach(const platform::Form& form, platform::ComboBox& group, platform::Frame& levelPanel) {
  group_ = &group;
  levels_.Attach(form, levelPanel);
  group.onClick = [this] { Follow(); };
}

void GroupChoice::Fill(std::span<const std::string_view> captions, std::int32_t chosen) {
  FillCombo(*group_, captions, chosen);
}

std::string GroupChoice::ShowTypeValue() const { return DescribeComboItems(*group_, "InvoiceStyle"); }

// Rows by order number have no categories; no dialog offers them today.
void GroupChoice::Follow() {
  if (onChosen) onChosen(group_->ListIndex());
  const std::string chosen = group_->Text();
  levels_.Allow(chosen != ResString("订单编号") + SortSeparator() + "FBillNo");
  levels_.Load(LevelClassOf(chosen));
  levels_.ShowPanel();
}

}  // namespace component
