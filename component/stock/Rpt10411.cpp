#include "component/stock/Rpt10411.h"

#include "component/frame/SysObjects.h"
#include "component/stock/frmFirter10411.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "仓库代码$", .type = kText, .field = "FStockNumber", .visible = false},
    {.caption = "仓库名称$", .type = kText, .field = "FStockName"},
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "辅助属性$",
     .type = kText,
     .field = "FAuxPropName",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.caption = "单位$", .type = kText, .field = "FUnitName"},
    {.caption = "辅助单位$",
     .type = kText,
     .field = "FSecUnitName",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.caption = "数量$", .type = kQuantity, .field = "FQty"},
    {.caption = "辅助数量$",
     .type = kQuantity,
     .field = "FSecQty",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.caption = "成本金额$", .type = kAmount, .field = "FBal"},
    {.caption = "批号$", .type = kText, .field = "FBatchNo"},
    {.caption = "生产日期$", .type = kText, .field = "FKFDate"},
    {.caption = "保质期(天)$", .type = kQuantity, .field = "FKFPeriod"},
    {.caption = "有效期至$", .type = kText, .field = "FExpDate"},
    {.caption = "超期天数$", .type = kQuantity, .field = "Overdays"},
};

// The alias that this data component's SQL has for the warehouses, unlike that of the sibling reports.
constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "t3", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10411",
    .name = "保质期清单",
    .property = 6,
    .frozenColumn = 5,
    .dataComponent = "TOVMStockRpt.Data",
    .dataMethod = "GetRpt10411Data",
    .dataRights = kDataRights,
};

}  // namespace

Rpt10411::Rpt10411() : Exposed(kFacts) {}

void Rpt10411::AddReportColumns() { AddColumns(kColumns); }

platform::Ref<TOVRptFilterDialog> Rpt10411::MakeDialog() { return platform::MakeRef<frmFirter10411>(); }

void Rpt10411::OnNoFilter() { CheckQuickCost(platform::Ref<platform::Object>(this), true); }

}  // namespace component
