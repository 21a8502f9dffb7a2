#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 商品超储短缺表: items whose stock lies outside their lowest and highest level. One row an item, over the
// warehouses that the filter selects and the user may see.
//
// - The quantity is what lies in these warehouses, gift warehouses included.
// - Levels: the item's own, when all warehouses are selected; otherwise the sum of the levels that the
//   selected warehouses set for the item. Where the one kind is not set, the other one stands in: an item
//   without levels by warehouse is judged by its own, and the other way round.
// - Without any warehouse, because none is selected or the user may see none, nothing is judged and nothing
//   listed: a user learns nothing of goods that lie where they may not look.
// - A level of 0 is no level. An item without levels, and a disabled one, is not listed.
// - FStatus is 短缺 below the lowest level, 超储 above the highest. FOverQty is what lies above (positive) or
//   is missing (negative). FSecQty is null for an item without auxiliary unit.
// - FItemNumber, and the filter's numbers, are full or short numbers as the book's profile has it.
class Data10414 final : public platform::Exposed<Data10414> {
 public:
  explicit Data10414(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // Filter keys: BItemNumber, EItemNumber, BStockNumber, EStockNumber, OrderBy, DataRightWhere (on t4, the
  // warehouse). Nothing for a filter lists all items over all warehouses.
  platform::Ref<platform::Recordset> GetRpt10414Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10414";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10414::GetRpt10414Data>("GetRpt10414Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
