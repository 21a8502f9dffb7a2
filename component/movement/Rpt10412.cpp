#include "component/movement/Rpt10412.h"

#include "component/frame/MMTS.h"
#include "component/movement/DrillDown.h"
#include "component/movement/MovementSummary.h"
#include "component/movement/frmFirter10412.h"

namespace component {
namespace {

constexpr ReportFacts kFacts = {
    .number = "10412",
    .name = "商品收发汇总表",
    .property = 2,
    .titleInsideBox = true,
    .hasDateRange = true,
    .dataComponent = "TOVMStockRpt.Data",
    .dataMethod = "GetRpt10412Data",
    .dataRights = kMovementRights,
};

}  // namespace

Rpt10412::Rpt10412() : Exposed(kFacts) {}

void Rpt10412::SetUpProperty(platform::Dictionary& property) {
  property.Set("DetailRptID", 10413);
  property.Set("FrozenColumn", 4);
  property.Set("HasDefaultFilterOption", true);
}

void Rpt10412::Fetch() {
  levels_ = ReadLevelRange(RequireFilter());
  ReportFilterReport::Fetch();
}

void Rpt10412::AddReportColumns() {
  AddSummaryColumns(Variety::kGoods, levels_, RequireFilter(), *Property());
}

platform::Ref<ReportFilterDialog> Rpt10412::MakeDialog() { return platform::MakeRef<frmFirter10412>(); }

platform::Ref<platform::Object> Rpt10412::GetDetailReport(std::int32_t lRow) {
  const platform::Ref<Rpt10412> kept(this);  // the browser may let go of the report while the detail runs
  // Without batches there is no balance row by row.
  const DetailReport detail = {.programmaticId = "TOVStockRpt.Rpt10413",
                               .number = "10413",
                               .rptId = 10413,
                               .groupByGood = GetAppType() == 1 ? 0 : 1,
                               .noZero = 0};
  return OpenDetail(detail, Filter(), Rows(), lRow);
}

}  // namespace component
