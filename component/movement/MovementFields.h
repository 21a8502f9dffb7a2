#pragma once

#include <algorithm>
#include <array>

#include "component/filter/FilterDialog.h"

namespace component {

// The ranges that the dialogs of the movement summaries and details begin with.
inline constexpr DialogField kMovementRanges[] = {
    {.control = "DtpBDate",
     .kind = FieldKind::kDate,
     .label = "起始日期:",
     .key = "BDate",
     .date = DateDefault::kStockStart},
    {.control = "DtpEDate", .kind = FieldKind::kDate, .label = "截至日期:", .key = "EDate"},
    {.control = "txtItem", .index = 0, .label = "商品代码:", .key = "BItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 1, .label = "至:", .key = "EItemNumber", .dataType = kItem},
    {.control = "txtItem", .index = 2, .label = "批号:", .key = "BBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 3, .label = "至:", .key = "EBatchNo", .dataType = kBatch},
    {.control = "txtItem", .index = 4, .label = "部门代码:", .key = "BDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 5, .label = "至:", .key = "EDeptNumber", .dataType = kDepartment},
    {.control = "txtItem", .index = 6, .label = "仓库代码:", .key = "BStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 7, .label = "至:", .key = "EStockNumber", .dataType = kStock},
    {.control = "txtItem", .index = 8, .label = "业务员代码:", .key = "BEmpNumber", .dataType = kEmployee},
    {.control = "txtItem", .index = 9, .label = "至:", .key = "EEmpNumber", .dataType = kEmployee},
};

// The fields of such a dialog: the ranges, and what it has of its own.
template <std::size_t N>
constexpr auto AfterMovementRanges(const DialogField (&own)[N]) {
  std::array<DialogField, std::size(kMovementRanges) + N> fields{};
  std::ranges::copy(own, std::ranges::copy(kMovementRanges, fields.begin()).out);
  return fields;
}

}  // namespace component
