#pragma once

#include <string>
#include <string_view>

#include "component/stock/InstantStockReport.h"

namespace component {

// What lies in each warehouse, one row an item: a band of columns a warehouse, which exists only once the
// data component has told which warehouses there are.
class Rpt302 final : public platform::Exposed<Rpt302, InstantStockReport> {
 public:
  Rpt302();

  static constexpr std::string_view kClassName = "TOVStockRpt.Rpt302";
  static constexpr auto kOperations = platform::Operations(
      platform::PropertyPut<&Rpt302::SetExtFirter>("ExtFirter", "Value"),
      platform::Method<&Rpt302::GetReportData>("GetReportData"),
      platform::Method<&Rpt302::Refresh>("Refresh"), platform::Method<&Rpt302::ShowFilterPlain>("ShowFilter"),
      platform::Method<&Rpt302::AddDataRight>("AddDataRight", "DataRightDic"),
      platform::PropertyGet<&Rpt302::Filter>("Filter"),
      platform::PropertyPut<&Rpt302::SetFilter>("Filter", "Value"),
      platform::PropertyGet<&Rpt302::Header>("Header"), platform::PropertyGet<&Rpt302::Property>("Property"),
      platform::PropertyGet<&Rpt302::Result>("Result"), platform::PropertyGet<&Rpt302::RptID>("RptID"),
      platform::PropertyPut<&Rpt302::SetRptID>("RptID", "Value"), platform::PropertyGet<&Rpt302::Rows>("rs"),
      platform::PropertyGet<&Rpt302::Title>("Title"));

 protected:
  platform::Ref<ReportFilterDialog> MakeDialog() override;
  void BeforeRead() override;
  platform::Variant CallData(platform::Object& data) override;
  void AfterRead() override;

 private:
  void AddWarehouseBand(const std::string& prefix, const std::string& name, bool hasCost) const;

  // The warehouses of the answer as texts joined by commas: prefixes of their row fields, captions, types.
  std::string fields_;
  std::string names_;
  std::string types_;
};

}  // namespace component
