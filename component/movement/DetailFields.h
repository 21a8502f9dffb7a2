#pragma once

#include <array>

#include "component/filter/FilterDialog.h"

namespace component {

// The fields of the dialogs of both movement details.
inline constexpr std::array kDetailFields = {
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
    DialogField{.control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    DialogField{
        .control = "txtItem", .index = 8, .label = "业务员:", .key = "BEmpNumber", .dataType = kEmployee},
    DialogField{.control = "txtItem", .index = 9, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
    DialogField{.control = "txtItem",
                .index = 10,
                .label = "辅助属性:",
                .key = "BAuxPropNumber",
                .dataType = kAuxiliaryProperty},
    DialogField{.control = "txtItem",
                .index = 11,
                .label = "至:",
                .key = "EAuxPropNumber",
                .dataType = kAuxiliaryProperty},
    DialogField{.control = "cmbGroup", .kind = FieldKind::kCombo, .label = "分组依据:", .key = "cmbGroup"},
    DialogField{.control = "chkOnlyTotal",
                .kind = FieldKind::kCheck,
                .label = "不显示期初及期末数",
                .key = "chkOnlyTotal"},
    DialogField{
        .control = "chkNoAmt", .kind = FieldKind::kCheck, .label = "无本期发生额不显示", .key = "chkNoAmt"},
    DialogField{
        .control = "chkNoBal", .kind = FieldKind::kCheck, .label = "无期末结存不显示", .key = "chkNoBal"},
    DialogField{.control = "chkNoDB",
                .kind = FieldKind::kCheck,
                .label = "同价调拨不显示",
                .key = "chkNoDB",
                .standard = 1},
    DialogField{.control = "cboSort", .kind = FieldKind::kCombo, .label = "排序:", .key = "cboSort"},
    DialogField{
        .control = "OptSortD", .kind = FieldKind::kOption, .label = "升序", .key = "OptSortD", .standard = 1},
    DialogField{.control = "OptSortA", .kind = FieldKind::kOption, .label = "降序", .key = "OptSortA"},
    DialogField{.control = "chkGroupByGood",
                .kind = FieldKind::kCheck,
                .label = "按商品显示",
                .key = "chkGroupByGood",
                .keptOnReset = true},
    DialogField{.control = "chkNoZero",
                .kind = FieldKind::kCheck,
                .label = "无发生额和余额不显示",
                .key = "chkNoZero",
                .keptOnReset = true},
};

inline constexpr std::string_view kDetailGroups[] = {"不分组", "按日期", "按仓库", "辅助属性"};

// The rows can be sorted by these whatever they are grouped by.
inline constexpr SortChoice kDetailSorts[] = {
    {.caption = "日期", .field = "T1.FDate"},         {.caption = "单据编号", .field = "T1.FBillNo"},
    {.caption = "单据类型", .field = "T1.FBillType"}, {.caption = "商品代码", .field = "T2.FNumber"},
    {.caption = "商品名称", .field = "T2.FName"},
};

}  // namespace component
