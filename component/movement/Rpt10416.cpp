#include "component/movement/Rpt10416.h"

#include "component/frame/MMTS.h"
#include "component/movement/DrillDown.h"
#include "component/movement/MovementSummary.h"
#include "component/movement/frmFirter10416.h"

namespace component {
namespace {

constexpr ReportFacts kFacts = {
    .number = "10416",
    .name = "批号管理商品收发汇总表",
    .property = 2,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data",
    .dataMethod = "GetRpt10416Data",
    .dataRights = kMovementRights,
};

}  // namespace

Rpt10416::Rpt10416() : Exposed(kFacts) {}

void Rpt10416::SetUpProperty(platform::Dictionary& property) {
  property.Set("DetailRptID", 10417);
  property.Set("FrozenColumn", 4);
}

void Rpt10416::Fetch() {
  levels_ = ReadLevelRange(RequireFilter());
  TOVRptFilterReport::Fetch();
}

void Rpt10416::AddReportColumns() {
  AddSummaryColumns(Variety::kBatches, levels_, RequireFilter(), *Property());
}

platform::Ref<TOVRptFilterDialog> Rpt10416::MakeDialog() { return platform::MakeRef<frmFirter10416>(); }

platform::Ref<platform::Object> Rpt10416::GetDetailReport(std::int32_t lRow) {
  const platform::Ref<Rpt10416> kept(this);  // the browser may let go of the report while the detail runs
  const DetailReport detail = {.programmaticId = "TOVStockRpt.Rpt10417",
                               .number = "10417",
                               .rptId = 10417,
                               .groupByGood = 1,
                               .noZero = GetAppType() == 1 ? 0 : 1};
  return OpenDetail(detail, Filter(), Rows(), lRow);
}

}  // namespace component
