#pragma once

#include "component/movement/MovementFields.h"

namespace component {

// The fields of the dialogs of both movement summaries, which differ in the group that they open with.
constexpr auto SummaryFields(std::int32_t group) {
  const DialogField own[] = {
      {.control = "cmbGroup",
       .kind = FieldKind::kCombo,
       .label = "汇总依据:",
       .key = "cmbGroup",
       .standard = group},
      {.control = "chkOnlyTotal", .kind = FieldKind::kCheck, .label = "仅显示汇总行", .key = "chkOnlyTotal"},
      {.control = "chkNoAmt", .kind = FieldKind::kCheck, .label = "无发生额不显示", .key = "chkNoAmt"},
      {.control = "chkNoBal", .kind = FieldKind::kCheck, .label = "余额为零不显示", .key = "chkNoBal"},
      {.control = "chkShowTran",
       .kind = FieldKind::kCheck,
       .label = "包括同价调拨数据",
       .key = "chkShowTran"},
      {.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
      {.control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
      {.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
      {.control = "chkMultiLevel",
       .kind = FieldKind::kCheck,
       .label = "分级汇总",
       .key = "MultiLevel",
       .keptOnReset = true},
      {.control = "txtMultiLevelBegin", .label = "类别级别:", .key = "MultiLevelBegin", .keptOnReset = true},
      {.control = "txtMultiLevelEnd", .label = "至:", .key = "MultiLevelEnd", .keptOnReset = true},
  };
  return AfterMovementRanges(own);
}

inline constexpr std::string_view kSummaryGroups[] = {"商品", "仓库", "商品批号"};

}  // namespace component
