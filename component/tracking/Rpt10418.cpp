#include "component/tracking/Rpt10418.h"

#include "component/frame/VEZPublic.h"
#include "component/tracking/frmFirter10418.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "S/N号$", .type = kText, .field = "FSerialNo"},
    {.caption = "仓库名称$", .type = kText, .field = "FStockName"},
    {.caption = "辅助属性$", .type = kText, .field = "FAuxPropName"},
    {.caption = "S/N号状态$", .type = kText, .field = "FSerialNoStatus"},
    {.caption = "S/N号备注$", .type = kText, .field = "FSerialNoNote"},
};

// Of each bill that moved the number.
constexpr Column kBillColumns[] = {
    {.caption = "单据号码$", .type = kText, .field = "FBillNo"},
    {.caption = "单据类型$", .type = kText, .field = "FBillType"},
    {.caption = "单据日期$", .type = kText, .field = "FDate"},
    {.caption = "往来单位$", .type = kText, .field = "FSuppOrgName"},
    {.caption = "单价$", .type = kPrice, .field = "FShowPrice"},
    {.caption = "单据备注$", .type = kText, .field = "FEntryNote"},
};

// Partners and warehouses are restricted by a clause each: a bill may have no partner, and a number that was
// issued stands in no warehouse.
constexpr DataRight kPartners[] = {{.table = "t_supplier", .alias = "t7", .itemClass = "8"},
                                   {.table = "t_Organization", .alias = "t8", .itemClass = "1"}};
constexpr DataRight kWarehouses[] = {{.table = "t_stock", .alias = "t4", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10418",
    .name = "S/N号跟踪分析表",
    .property = 4,
    .frozenColumn = 5,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data10418",
    .dataMethod = "GetRpt10418Data",
};

}  // namespace

Rpt10418::Rpt10418() : Exposed(kFacts) {}

void Rpt10418::SetUpProperty(platform::Dictionary& property) {
  property.Set("UserDefinedGoods", NewUserFieldRequest(true, "FModel", "", ""));
}

void Rpt10418::AddReportColumns() {
  AddColumns(kColumns);
  const std::string detail = platform::ToText(RequireFilter().Value("chkDetail"));
  if (platform::LeadingNumber(detail) == 1) AddColumns(kBillColumns);
}

void Rpt10418::WriteDataRight() {
  WriteRightClause("DataRightWhere", kPartners);
  WriteRightClause("DataRightWhereStock", kWarehouses);
}

platform::Ref<TOVRptFilterDialog> Rpt10418::MakeDialog() { return platform::MakeRef<frmFirter10418>(); }

}  // namespace component
