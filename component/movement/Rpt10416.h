#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// The quantities of goods kept in batches: opening balance, receipts, issues and closing balance in a range
// of dates. A row opens the bills behind it.
class Rpt10416 final : public platform::Exposed<Rpt10416, TOVRptFilterReport> {
 public:
  Rpt10416();

  // The detail of a row, counted from 0, as a finished report that belongs to the caller; null for a row that
  // sums up others, and after a failure, which the user has been told.
  platform::Ref<platform::Object> GetDetailReport(std::int32_t lRow);

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10416";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10416::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10416::GetDetailReport>("GetDetailReport", "lRow"),
      platform::Method<&Rpt10416::GetReportData>("GetReportData"),
      platform::Method<&Rpt10416::Refresh>("Refresh"), platform::Method<&Rpt10416::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10416::Filter>("Filter"),
      platform::PropertyPut<&Rpt10416::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10416::Header>("Header"),
      platform::PropertyGet<&Rpt10416::Property>("Property"),
      platform::PropertyGet<&Rpt10416::Result>("Result"), platform::PropertyGet<&Rpt10416::RptID>("RptID"),
      platform::PropertyPut<&Rpt10416::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10416::Rows>("rs"), platform::PropertyGet<&Rpt10416::Title>("Title"));

 protected:
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void Fetch() override;
  void AddReportColumns() override;

 private:
  LevelRange levels_;
};

}  // namespace component
