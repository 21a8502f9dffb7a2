#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// Items whose stock lies outside their lowest and highest level.
class Rpt10414 final : public platform::Exposed<Rpt10414, TOVRptFilterReport> {
 public:
  Rpt10414();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10414";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10414::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10414::GetReportData>("GetReportData"),
      platform::Method<&Rpt10414::Refresh>("Refresh"), platform::Method<&Rpt10414::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10414::Filter>("Filter"),
      platform::PropertyPut<&Rpt10414::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10414::Header>("Header"),
      platform::PropertyGet<&Rpt10414::Property>("Property"),
      platform::PropertyGet<&Rpt10414::Result>("Result"), platform::PropertyGet<&Rpt10414::RptID>("RptID"),
      platform::PropertyPut<&Rpt10414::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10414::Rows>("rs"), platform::PropertyGet<&Rpt10414::Title>("Title"),
      platform::PropertyPut<&Rpt10414::SetNoFilter>("NoFilter", "Value"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
};

}  // namespace component
