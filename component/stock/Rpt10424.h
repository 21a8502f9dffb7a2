#pragma once

#include "component/filter/FilteredReport.h"

namespace component {

// What is available of each item: stock, plus what suppliers still owe, less what customers wait for and
// what must stay in stock, as far as the user counts each of these.
class Rpt10424 final : public platform::Exposed<Rpt10424, TOVRptFilterReport> {
 public:
  Rpt10424();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt10424";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt10424::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt10424::GetReportData>("GetReportData"),
      platform::Method<&Rpt10424::Refresh>("Refresh"), platform::Method<&Rpt10424::ShowFilter>("ShowFilter"),
      platform::PropertyGet<&Rpt10424::Filter>("Filter"),
      platform::PropertyPut<&Rpt10424::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt10424::Header>("Header"),
      platform::PropertyGet<&Rpt10424::Property>("Property"),
      platform::PropertyGet<&Rpt10424::Result>("Result"), platform::PropertyGet<&Rpt10424::RptID>("RptID"),
      platform::PropertyPut<&Rpt10424::SetRptID>("RptID", "Value"),
      platform::PropertyGet<&Rpt10424::Rows>("rs"), platform::PropertyGet<&Rpt10424::Title>("Title"));

 protected:
  void AddReportColumns() override;
  platform::Ref<TOVRptFilterDialog> MakeDialog() override;
  void SetUpProperty(platform::Dictionary& property) override;
};

}  // namespace component
