#include "component/movement/Rpt10417.h"

#include "component/frame/VEZPublic.h"
#include "component/movement/MovementDetail.h"
#include "component/movement/frmFirter10417.h"

namespace component {
namespace {

constexpr ReportFacts kFacts = {
    .number = "10417",
    .name = "批号管理商品收发明细表",
    .property = 4,
    .frozenColumn = 5,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data10417",
    .dataMethod = "GetRpt10417Data",
    .dataRights = kMovementRights,
};

}  // namespace

Rpt10417::Rpt10417() : Exposed(kFacts) {}

void Rpt10417::SetUpProperty(platform::Dictionary& property) {
  property.Set("UserDefinedGoods", NewUserFieldRequest(true, "FModel", "", ""));
}

void Rpt10417::AddReportColumns() { AddDetailColumns(Variety::kBatches, RequireFilter()); }

platform::Ref<TOVRptFilterDialog> Rpt10417::MakeDialog() { return platform::MakeRef<frmFirter10417>(); }

}  // namespace component
