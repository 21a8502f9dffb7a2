#include "component/filter/Rpt10414.h"

#include "component/filter/frmFirter10414.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "单位$", .type = kText, .field = "FUnitName"},
    {.caption = "最低库存$", .type = kQuantity, .field = "FLowerQty"},
    {.caption = "最高库存$", .type = kQuantity, .field = "FMostQty"},
    {.caption = "结存数量$", .type = kQuantity, .field = "FQty"},
    {.caption = "状态$", .type = kText, .field = "FStatus"},
    {.caption = "超储短缺数量$", .type = kQuantity, .field = "FOverQty"},
    {.caption = "辅助单位$", .type = kText, .field = "FSecUnitName", .mask = kWithAuxiliaryUnits},
    {.caption = "辅助数量$", .type = kQuantity, .field = "FSecQty", .mask = kWithAuxiliaryUnits},
};

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "t4", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10414",
    .name = "商品超储短缺表",
    .property = 6,
    .dataComponent = "TOVMStockRpt.Data10414",
    .dataMethod = "GetRpt10414Data",
    .dataRights = kDataRights,
};

}  // namespace

Rpt10414::Rpt10414() : Exposed(kFacts) {}

void Rpt10414::AddReportColumns() { AddColumns(kColumns); }

platform::Ref<TOVRptFilterDialog> Rpt10414::MakeDialog() { return platform::MakeRef<frmFirter10414>(); }

}  // namespace component
