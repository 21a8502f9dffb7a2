#include "tests/component/sample/Rpt10499.h"

#include "tests/component/sample/frmFirter10499.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "条形码$", .type = kText, .field = "FBarCode"},
    {.caption = "供应商名称$", .type = kText, .field = "FSupplyName"},
    {.caption = "最低库存$", .type = kQuantity, .field = "FLowerQty"},
    {.caption = "辅助单位$", .type = kText, .field = "FSecUnitName", .mask = kWithAuxiliaryUnits},
};

constexpr DataRight kDataRights[] = {{.table = "t_supplier", .alias = "t7", .itemClass = "8"}};

constexpr ReportFacts kFacts = {
    .number = "10499",
    .name = "商品条码清单",
    .property = 6,
    .frozenColumn = 2,
    .dataComponent = "TOVMStockRpt.Data10499",
    .dataMethod = "GetRpt10499Data",
    .dataRights = kDataRights,
};

}  // namespace

Rpt10499::Rpt10499() : Exposed(kFacts) {}

void Rpt10499::AddReportColumns() { AddColumns(kColumns); }

platform::Ref<TOVRptFilterDialog> Rpt10499::MakeDialog() { return platform::MakeRef<frmFirter10499>(); }

}  // namespace component
