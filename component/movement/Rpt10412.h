#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// Opening balance, receipts, issues and closing balance in a range of dates, by item, by warehouse or by item
// and batch. A row opens the bills behind it.
class Rpt10412 final : public platform::Exposed<Rpt10412, ReportFilterReport> {
 public:
  Rpt10412();

  // The detail of a row, counted from 0, as a finished report that belongs to the caller; null for a row that
  // sums up others, and after a failure, which the user has been told.
  platform::Ref<platform::Object> GetDetailReport(std::int32_t lRow);

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10412";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10412::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10412::GetDetailReport>("GetDetailReport", "lRow"),
      platform::Method<&Rpt10412::GetReportData>("GetReportData"),
      platform::Method<&Rpt10412::Refresh>("Refresh"),
      platform::Method<&Rpt10412::ShowFilter>("ShowFilter", "bShowFilter"),
      platform::PropertyGet<&Rpt10412::Filter>("Filter"),
      platform::PropertyPut<&Rpt10412::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10412::Header>("Header"),
      platform::PropertyGet<&Rpt10412::Property>("Property"),
      platform::PropertyGet<&Rpt10412::Result>("Result"), platform::PropertyGet<&Rpt10412::RptID>("RptID"),
      platform::PropertyPut<&Rpt10412::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10412::Rows>("rs"), platform::PropertyGet<&Rpt10412::Title>("Title"));

 protected:
  platform::Ref<ReportFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void Fetch() override;
  void AddReportColumns() override;

 private:
  LevelRange levels_;
};

}  // namespace component
