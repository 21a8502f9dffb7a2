#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 商品条码清单: one row an item that is not disabled, with its bar code and its usual supplier. No report of
// the product: it is the example of docs/adding-a-report.md.
class Data10499 final : public platform::Exposed<Data10499> {
 public:
  explicit Data10499(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // Filter keys: BItemNumber, EItemNumber, chkNoCode, OrderBy, DataRightWhere (on t7, the supplier; an item
  // without one is for everybody).
  platform::Ref<platform::Recordset> GetRpt10499Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10499";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10499::GetRpt10499Data>("GetRpt10499Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
