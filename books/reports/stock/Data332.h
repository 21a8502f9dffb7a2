#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Vector.h"

namespace books::reports {

// 即时库存行式查询: a row an item (or auxiliary property, or batch) and warehouse, with the same filter keys,
// figures and sums as 即时库存表. A row with ShowZero of an item that lies nowhere names no warehouse.
class Data332 final : public platform::Exposed<Data332> {
 public:
  explicit Data332(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // One recordset in a vector.
  platform::Ref<platform::Vector> GetRptData(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data332";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data332::GetRptData>("GetRptData", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
