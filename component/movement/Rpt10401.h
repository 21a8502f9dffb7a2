#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// What each class of stock bills brought in and took out in a range of dates, by item, by warehouse or by
// item and batch, between the opening and the closing balance.
class Rpt10401 final : public platform::Exposed<Rpt10401, ReportFilterReport> {
 public:
  Rpt10401();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10401";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10401::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10401::GetReportData>("GetReportData"),
      platform::Method<&Rpt10401::Refresh>("Refresh"),
      platform::Method<&Rpt10401::ShowFilter>("ShowFilter", "bShowFilter"),
      platform::PropertyGet<&Rpt10401::Filter>("Filter"),
      platform::PropertyPut<&Rpt10401::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10401::Header>("Header"),
      platform::PropertyGet<&Rpt10401::Property>("Property"),
      platform::PropertyGet<&Rpt10401::Result>("Result"), platform::PropertyGet<&Rpt10401::RptID>("RptID"),
      platform::PropertyPut<&Rpt10401::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10401::Rows>("rs"), platform::PropertyGet<&Rpt10401::Title>("Title"));

 protected:
  platform::Ref<ReportFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void Fetch() override;
  void AddReportColumns() override;

 private:
  LevelRange levels_;
};

}  // namespace component
