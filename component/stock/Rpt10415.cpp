#include "component/stock/Rpt10415.h"

#include "component/frame/MMTS.h"
#include "component/stock/frmFirter10415.h"

namespace component {
namespace {

using enum ColumnType;

// FID, Fbarcode and Fdate are the data component's own spellings.
constexpr Column kColumns[] = {
    {.caption = "行号$", .type = kText, .field = "FID"},
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "条形码$", .type = kText, .field = "Fbarcode"},
    {.caption = "单位$", .type = kText, .field = "FUnitName"},
    {.caption = "数量$", .type = kQuantity, .field = "FQty"},
    {.caption = "金额$", .type = kAmount, .field = "FAmount"},
    {.caption = "平均价格$", .type = kPrice, .field = "FAvgPrice"},
    {.caption = "最高价格$", .type = kPrice, .field = "FMaxPrice"},
    {.caption = "最低价格$", .type = kPrice, .field = "FMinPrice"},
    {.caption = "最近进价1$", .type = kPrice, .field = "FPrice1"},
    {.caption = "最近进价2$", .type = kPrice, .field = "FPrice2"},
    {.caption = "最近进价3$", .type = kPrice, .field = "FPrice3"},
    {.caption = "最近进价4$", .type = kPrice, .field = "FPrice4"},
    {.caption = "最近进价5$", .type = kPrice, .field = "FPrice5"},
    {.caption = "最近进价6$", .type = kPrice, .field = "FPrice6"},
    {.caption = "最近进价7$", .type = kPrice, .field = "FPrice7"},
    {.caption = "最低价供应商$", .type = kText, .field = "FSupplyName"},
    {.caption = "最低价购进日期$", .type = kText, .field = "Fdate"},
};

constexpr DataRight kDataRights[] = {{.table = "t_supplier", .alias = "t7", .itemClass = "8"},
                                     {.table = "t_stock", .alias = "t4", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10415",
    .name = "采购价格分析表",
    .property = 6,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data10415",
    .dataMethod = "GetRpt10415Data",
    .dataRights = kDataRights,
};

}  // namespace

Rpt10415::Rpt10415() : Exposed(kFacts) {}

void Rpt10415::SetUpProperty(platform::Dictionary& property) {
  property.Set("FrozenColumn", GetIndustryType() == 1 ? 8 : 5);
}

void Rpt10415::AddReportColumns() { AddColumns(kColumns); }

platform::Ref<TOVRptFilterDialog> Rpt10415::MakeDialog() { return platform::MakeRef<frmFirter10415>(); }

}  // namespace component
