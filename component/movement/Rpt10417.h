#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// The bills that moved goods kept in batches, in quantities, one row an entry.
class Rpt10417 final : public platform::Exposed<Rpt10417, TOVRptFilterReport> {
 public:
  Rpt10417();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10417";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10417::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10417::GetReportData>("GetReportData"),
      platform::Method<&Rpt10417::Refresh>("Refresh"), platform::Method<&Rpt10417::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10417::Filter>("Filter"),
      platform::PropertyPut<&Rpt10417::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10417::Header>("Header"),
      platform::PropertyGet<&Rpt10417::Property>("Property"),
      platform::PropertyGet<&Rpt10417::Result>("Result"), platform::PropertyGet<&Rpt10417::RptID>("RptID"),
      platform::PropertyPut<&Rpt10417::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10417::Rows>("rs"), platform::PropertyGet<&Rpt10417::Title>("Title"));

 protected:
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
  void AddReportColumns() override;
};

}  // namespace component
