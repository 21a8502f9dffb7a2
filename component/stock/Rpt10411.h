#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// What lies in stock with its batch, and how far it is past its shelf life on a day.
class Rpt10411 final : public platform::Exposed<Rpt10411, TOVRptFilterReport> {
 public:
  Rpt10411();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10411";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10411::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10411::GetReportData>("GetReportData"),
      platform::Method<&Rpt10411::Refresh>("Refresh"), platform::Method<&Rpt10411::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10411::Filter>("Filter"),
      platform::PropertyPut<&Rpt10411::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10411::Header>("Header"),
      platform::PropertyGet<&Rpt10411::Property>("Property"),
      platform::PropertyGet<&Rpt10411::Result>("Result"), platform::PropertyGet<&Rpt10411::RptID>("RptID"),
      platform::PropertyPut<&Rpt10411::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10411::Rows>("rs"), platform::PropertyGet<&Rpt10411::Title>("Title"),
      platform::PropertyPut<&Rpt10411::SetNoFilter>("NoFilter", "Value"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
  void OnNoFilter() override;
};

}  // namespace component
