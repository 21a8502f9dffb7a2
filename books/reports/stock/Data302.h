#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Vector.h"

namespace books::reports {

// 即时库存表: a row an item (or auxiliary property, or batch), a band of fields a warehouse in which any of
// them lies. InstantStock.h tells the filter keys.
//
// - The prefix of a warehouse's fields is "S" and its id. Behind it FQty, FComplexQtyDis and FSecQty, and in
//   an ordinary warehouse FAvgBal and FBal. What does not lie in a warehouse is null there.
// - FQtySum, FComplexQtyDisSum, FSecQtySum, FAvgBalSum and FBalSum are the row over all its warehouses.
// - An average price is the amount by the quantity that it stands for: goods in gift warehouses and those of
//   unaudited bills have none. FSecQty is null for an item without auxiliary unit.
// - Subtotals and the total carry FSumSort above 0 and neither prices nor packages, which differ by item.
class Data302 final : public platform::Exposed<Data302> {
 public:
  explicit Data302(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // One recordset in a vector. The three lists, joined with commas, are one entry a band: prefix, name and
  // type code (500 ordinary). A comma in a name comes as its full-width form.
  platform::Ref<platform::Vector> GetRptData(const std::string& props, platform::Variant& filter,
                                             platform::Variant& fields, platform::Variant& names,
                                             platform::Variant& types);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data302";
  static constexpr auto kOperations = platform::Operations(platform::Method<&Data302::GetRptData>(
      "GetRptData", "Props", "Filter", "StockFields", "StockNames", "StockTypes"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
