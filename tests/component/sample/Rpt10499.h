#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// Items with their bar codes and who usually supplies them. No report of the product: it is the example of
// docs/adding-a-report.md, and its tests prove that the steps told there make a whole report.
class Rpt10499 final : public platform::Exposed<Rpt10499, TOVRptFilterReport> {
 public:
  Rpt10499();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10499";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10499::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10499::GetReportData>("GetReportData"),
      platform::Method<&Rpt10499::Refresh>("Refresh"), platform::Method<&Rpt10499::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10499::Filter>("Filter"),
      platform::PropertyPut<&Rpt10499::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10499::Header>("Header"),
      platform::PropertyGet<&Rpt10499::Property>("Property"),
      platform::PropertyGet<&Rpt10499::Result>("Result"), platform::PropertyGet<&Rpt10499::RptID>("RptID"),
      platform::PropertyPut<&Rpt10499::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10499::Rows>("rs"), platform::PropertyGet<&Rpt10499::Title>("Title"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
};

}  // namespace component
