#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// The other receipt and issue bills, each with the customer, supplier, department or employee that it is
// linked to, and its lines of goods.
class Rpt10403 final : public platform::Exposed<Rpt10403, TOVRptFilterReport> {
 public:
  Rpt10403();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10403";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10403::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10403::GetReportData>("GetReportData"),
      platform::Method<&Rpt10403::Refresh>("Refresh"), platform::Method<&Rpt10403::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10403::Filter>("Filter"),
      platform::PropertyPut<&Rpt10403::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10403::Header>("Header"),
      platform::PropertyGet<&Rpt10403::Property>("Property"),
      platform::PropertyGet<&Rpt10403::Result>("Result"), platform::PropertyGet<&Rpt10403::RptID>("RptID"),
      platform::PropertyPut<&Rpt10403::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10403::Rows>("rs"), platform::PropertyGet<&Rpt10403::Title>("Title"));

 protected:
  void AddReportColumns() override;
  void WriteDataRight() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
};

}  // namespace component
