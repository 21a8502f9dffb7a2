#pragma once

#include <memory>
#include <string>

#include "books/reports/movement/MovementDetail.h"
#include "platform/object/OperationTable.h"

namespace books::reports {

// 商品收发明细表; MovementDetail.h tells its rows and its filter.
class Data10413 final : public platform::Exposed<Data10413> {
 public:
  explicit Data10413(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  platform::Ref<platform::Recordset> GetRpt10413Data(const std::string& /*props*/,
                                                     platform::Variant& filter) {
    return ReadMovementDetail(*store_, filter, MovementGoods::kAll);
  }

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10413";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10413::GetRpt10413Data>("GetRpt10413Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
