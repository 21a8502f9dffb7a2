#pragma once

#include "component/movement/MovementFields.h"

namespace component {

// The fields of the dialogs of both movement details, where employees have a shorter label.
constexpr auto DetailFields() {
  const DialogField own[] = {
      {.control = "txtItem",
       .index = 10,
       .label = "辅助属性:",
       .key = "BAuxPropNumber",
       .dataType = kAuxiliaryProperty},
      {.control = "txtItem",
       .index = 11,
       .label = "至:",
       .key = "EAuxPropNumber",
       .dataType = kAuxiliaryProperty},
      {.control = "cmbGroup", .kind = FieldKind::kCombo, .label = "分组依据:", .key = "cmbGroup"},
      {.control = "chkOnlyTotal",
       .kind = FieldKind::kCheck,
       .label = "不显示期初及期末数",
       .key = "chkOnlyTotal"},
      {.control = "chkNoAmt", .kind = FieldKind::kCheck, .label = "无本期发生额不显示", .key = "chkNoAmt"},
      {.control = "chkNoBal", .kind = FieldKind::kCheck, .label = "无期末结存不显示", .key = "chkNoBal"},
      {.control = "chkNoDB",
       .kind = FieldKind::kCheck,
       .label = "同价调拨不显示",
       .key = "chkNoDB",
       .standard = 1},
      {.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
      {.control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
      {.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
      {.control = "chkGroupByGood",
       .kind = FieldKind::kCheck,
       .label = "按商品显示",
       .key = "chkGroupByGood",
       .keptOnReset = true},
      {.control = "chkNoZero",
       .kind = FieldKind::kCheck,
       .label = "无发生额和余额不显示",
       .key = "chkNoZero",
       .keptOnReset = true},
  };
  auto fields = AfterMovementRanges(own);
  std::ranges::find(fields, "BEmpNumber", &DialogField::key)->label = "业务员:";
  return fields;
}
inline constexpr auto kDetailFields = DetailFields();

inline constexpr std::string_view kDetailGroups[] = {"不分组", "按日期", "按仓库", "辅助属性"};

// The rows can be sorted by these whatever they are grouped by.
inline constexpr SortChoice kDetailSorts[] = {
    {.caption = "日期", .field = "T1.FDate"},         {.caption = "单据编号", .field = "T1.FBillNo"},
    {.caption = "单据类型", .field = "T1.FBillType"}, {.caption = "商品代码", .field = "T2.FNumber"},
    {.caption = "商品名称", .field = "T2.FName"},
};

}  // namespace component
