#pragma once

#include <string_view>

#include "component/stock/InstantStockReport.h"

namespace component {

// What lies in each warehouse, one row an item and warehouse, under a heading that is complete before the
// data are read.
class Rpt332 final : public platform::Exposed<Rpt332, InstantStockReport> {
 public:
  Rpt332();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt332";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt332::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt332::GetReportData>("GetReportData"),
      platform::Method<&Rpt332::Refresh>("Refresh"), platform::Method<&Rpt332::ShowFilterPlain>("ShowFilter"),
      platform::Method<&Rpt332::AddDataRight>("AddDataRight", "DataRightDic"),
      platform::PropertyGet<&Rpt332::Filter>("Filter"),
      platform::PropertyPut<&Rpt332::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt332::Header>("Header"), platform::PropertyGet<&Rpt332::Property>("Property"),
      platform::PropertyGet<&Rpt332::Result>("Result"), platform::PropertyGet<&Rpt332::RptID>("RptID"),
      platform::PropertyPut<&Rpt332::SetRptID>("RptID", "Value"), platform::PropertyGet<&Rpt332::Rows>("rs"),
      platform::PropertyGet<&Rpt332::Title>("Title"));

 protected:
  platform::Ref<ReportFilterDialog> MakeDialog() override;
  void AddFigureColumns() override;
};

}  // namespace component
