#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Vector.h"

namespace books::reports {

// 库存结构分析表: how the present stock divides over categories, items or batches.
//
// - Filter keys: BItemNumber, EItemNumber, BStockNumber, EStockNumber, DataRightWhere (on d); cmbtype: 0
//   first categories, 1 second categories, 2 items, 3 items and batches; chkonlysum leaves the sums alone;
//   OrderBy (FItemNumber, FItemName or FModel), within the categories.
// - Disabled items count: the money lies in them all the same.
// - Shares are in percent of the amount. FPercent is that of the first category, FPercentTT that of the
//   whole; for first categories the two are one. A share of nothing is null.
// - FPercentST cumulates FPercentTT from the largest amount down, in whatever order the rows stand: rows up
//   to 80 are the A goods.
// - Behind the rows of a first category its sum (FSumSort 1), but not where the categories are the rows; the
//   total (101) ends the report.
class Data303 final : public platform::Exposed<Data303> {
 public:
  explicit Data303(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // One recordset in a vector.
  platform::Ref<platform::Vector> GetRpt303Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data303";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data303::GetRpt303Data>("GetRpt303Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
