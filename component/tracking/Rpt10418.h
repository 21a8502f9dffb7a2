#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// Where each serial number of the goods stands and, where the user asks for it, every bill that moved it.
class Rpt10418 final : public platform::Exposed<Rpt10418, TOVRptFilterReport> {
 public:
  Rpt10418();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10418";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10418::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10418::GetReportData>("GetReportData"),
      platform::Method<&Rpt10418::Refresh>("Refresh"), platform::Method<&Rpt10418::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10418::Filter>("Filter"),
      platform::PropertyPut<&Rpt10418::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10418::Header>("Header"),
      platform::PropertyGet<&Rpt10418::Property>("Property"),
      platform::PropertyGet<&Rpt10418::Result>("Result"), platform::PropertyGet<&Rpt10418::RptID>("RptID"),
      platform::PropertyPut<&Rpt10418::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10418::Rows>("rs"), platform::PropertyGet<&Rpt10418::Title>("Title"));

 protected:
  void AddReportColumns() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void WriteDataRight() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
};

}  // namespace component
