#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// The bills that moved goods in a range of dates, one row an entry.
class Rpt10413 final : public platform::Exposed<Rpt10413, ReportFilterReport> {
 public:
  Rpt10413();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10413";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10413::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10413::GetReportData>("GetReportData"),
      platform::Method<&Rpt10413::Refresh>("Refresh"),
      platform::Method<&Rpt10413::ShowFilter>("ShowFilter", "bShowFilter"),
      platform::PropertyGet<&Rpt10413::Filter>("Filter"),
      platform::PropertyPut<&Rpt10413::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10413::Header>("Header"),
      platform::PropertyGet<&Rpt10413::Property>("Property"),
      platform::PropertyGet<&Rpt10413::Result>("Result"), platform::PropertyGet<&Rpt10413::RptID>("RptID"),
      platform::PropertyPut<&Rpt10413::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10413::Rows>("rs"), platform::PropertyGet<&Rpt10413::Title>("Title"));

 protected:
  platform::Ref<ReportFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void AddReportColumns() override;
};

}  // namespace component
