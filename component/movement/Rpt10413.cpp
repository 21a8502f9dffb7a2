#include "component/movement/Rpt10413.h"

#include "component/frame/VEZPublic.h"
#include "component/movement/MovementDetail.h"
#include "component/movement/frmFirter10413.h"

namespace component {
namespace {

constexpr ReportFacts kFacts = {
    .number = "10413",
    .name = "商品收发明细表",
    .property = 4,
    .frozenColumn = 5,
    .titleInsideBox = true,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data10413",
    .dataMethod = "GetRpt10413Data",
    .dataRights = kMovementRights,
};

}  // namespace

Rpt10413::Rpt10413() : Exposed(kFacts) {}

void Rpt10413::SetUpProperty(platform::Dictionary& property) {
  property.Set("UserDefinedGoods", NewUserFieldRequest(true, "FModel", "", ""));
  property.Set("UserDefinedBillEntry", NewUserFieldRequest(true, "FBillNo", "", ""));
  property.Set("HasDefaultFilterOption", true);
}

void Rpt10413::AddReportColumns() { AddDetailColumns(Variety::kGoods, RequireFilter()); }

platform::Ref<ReportFilterDialog> Rpt10413::MakeDialog() { return platform::MakeRef<frmFirter10413>(); }

}  // namespace component
