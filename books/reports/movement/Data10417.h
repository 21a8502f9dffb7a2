#pragma once

#include <memory>
#include <string>

#include "books/reports/movement/MovementDetail.h"
#include "platform/object/OperationTable.h"

namespace books::reports {

// 批号管理商品收发明细表; MovementDetail.h tells its rows and its filter.
class Data10417 final : public platform::Exposed<Data10417> {
 public:
  explicit Data10417(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  platform::Ref<platform::Recordset> GetRpt10417Data(const std::string& /*props*/,
                                                     platform::Variant& filter) {
    return ReadMovementDetail(*store_, filter, MovementGoods::kBatchManaged);
  }

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10417";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10417::GetRpt10417Data>("GetRpt10417Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
