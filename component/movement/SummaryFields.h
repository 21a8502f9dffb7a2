#pragma once

#include <array>

#include "component/filter/FilterDialog.h"

namespace component {

// The fields of the dialogs of both movement summaries, which differ in the group that they open with.
constexpr auto SummaryFields(std::int32_t group) {
  return std::array{
      DialogField{.control = "DtpBDate",
                  .kind = FieldKind::kDate,
                  .label = "起始日期:",
                  .key = "BDate",
                  .date = DateDefault::kStockStart},
      DialogField{.control = "DtpEDate", .kind = FieldKind::kDate, .label = "截至日期:", .key = "EDate"},
      DialogField{
          .control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
      DialogField{.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
      DialogField{.control = "txtItem", .index = 2, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
      DialogField{.control = "txtItem", .index = 3, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
      DialogField{.control = "txtItem",
                  .index = 4,
                  .label = "部门代码:",
                  .key = "BDeptNumber",
                  .dataType = kDepartment},
      DialogField{
          .control = "txtItem", .index = 5, .label = "至:", .key = "EDeptNumber", .dataType = kDepartment},
      DialogField{
          .control = "txtItem", .index = 6, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
      DialogField{
          .control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
      DialogField{.control = "txtItem",
                  .index = 8,
                  .label = "业务员代码:",
                  .key = "BEmpNumber",
                  .dataType = kEmployee},
      DialogField{
          .control = "txtItem", .index = 9, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
      DialogField{.control = "cmbGroup",
                  .kind = FieldKind::kCombo,
                  .label = "汇总依据:",
                  .key = "cmbGroup",
                  .standard = group},
      DialogField{.control = "chkOnlyTotal",
                  .kind = FieldKind::kCheck,
                  .label = "仅显示汇总行",
                  .key = "chkOnlyTotal"},
      DialogField{
          .control = "chkNoAmt", .kind = FieldKind::kCheck, .label = "无发生额不显示", .key = "chkNoAmt"},
      DialogField{
          .control = "chkNoBal", .kind = FieldKind::kCheck, .label = "余额为零不显示", .key = "chkNoBal"},
      DialogField{.control = "chkShowTran",
                  .kind = FieldKind::kCheck,
                  .label = "包括同价调拨数据",
                  .key = "chkShowTran"},
      DialogField{.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
      DialogField{.control = "OptSortD",
                  .kind = FieldKind::kOption,
                  .label = "升序",
                  .key = "OptSortD",
                  .standard = 1},
      DialogField{.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
      DialogField{.control = "chkMultiLevel",
                  .kind = FieldKind::kCheck,
                  .label = "分级汇总",
                  .key = "MultiLevel",
                  .keptOnReset = true},
      DialogField{.control = "txtMultiLevelBegin",
                  .label = "类别级别:",
                  .key = "MultiLevelBegin",
                  .keptOnReset = true},
      DialogField{.control = "txtMultiLevelEnd", .label = "至:", .key = "MultiLevelEnd", .keptOnReset = true},
  };
}

inline constexpr std::string_view kSummaryGroups[] = {"商品", "仓库", "商品批号"};

}  // namespace component
