#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// What was bought of each item in a range of dates, at which prices, and who was cheapest when.
class Rpt10415 final : public platform::Exposed<Rpt10415, TOVRptFilterReport> {
 public:
  Rpt10415();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10415";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10415::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10415::GetReportData>("GetReportData"),
      platform::Method<&Rpt10415::Refresh>("Refresh"), platform::Method<&Rpt10415::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10415::Filter>("Filter"),
      platform::PropertyPut<&Rpt10415::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10415::Header>("Header"),
      platform::PropertyGet<&Rpt10415::Property>("Property"),
      platform::PropertyGet<&Rpt10415::Result>("Result"), platform::PropertyGet<&Rpt10415::RptID>("RptID"),
      platform::PropertyPut<&Rpt10415::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10415::Rows>("rs"), platform::PropertyGet<&Rpt10415::Title>("Title"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
};

}  // namespace component
