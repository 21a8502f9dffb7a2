#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// How the present stock divides over item categories or items: quantity, amount and their shares.
class Rpt303 final : public platform::Exposed<Rpt303, TOVRptFilterReport> {
 public:
  Rpt303();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt303";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt303::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt303::GetReportData>("GetReportData"),
      platform::Method<&Rpt303::Refresh>("Refresh"), platform::Method<&Rpt303::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt303::Filter>("Filter"),
      platform::PropertyPut<&Rpt303::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt303::Header>("Header"), platform::PropertyGet<&Rpt303::Property>("Property"),
      platform::PropertyGet<&Rpt303::Result>("Result"), platform::PropertyGet<&Rpt303::RptID>("RptID"),
      platform::PropertyPut<&Rpt303::SetRptID>("RptID", "Value"), platform::PropertyGet<&Rpt303::Rows>("rs"),
      platform::PropertyGet<&Rpt303::Title>("Title"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
};

}  // namespace component
