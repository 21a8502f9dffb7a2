#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Vector.h"

namespace books::reports {

// 可用库存查询表: a row an item and auxiliary property with stock, with open orders or with a lowest level.
//
// - Filter keys: OnTime, EDate, CheckItem, ContainBills, IncludeExpireGoodQty; BItemNumber, EItemNumber,
//   ItemName, Model, ShowDeletedItem; txtStock, DataRightWhere (on d); chkInv, chkCGBook, chkXSBook, chkLmtQ;
//   Sort, ASC, DESC. OnTime also holds without the key.
// - FSuggestQty = FInvQty + FMovingCgQty − FMovingXsQty − FLowLimitQty, of which the ticked terms count. The
//   four figures are there with or without their tick.
// - txtStock is a set of warehouses, "(501,502)", and behind a bar what the user reads. Numbers in it that
//   are no warehouses, such as groups, have no effect; an empty text is all warehouses.
// - Batches past their expiry date count only with IncludeExpireGoodQty; the day is EDate, else today.
// - On order is what audited orders still wait for, whatever warehouse it is for; an order line that has had
//   more than it asked for, or is closed, waits for nothing. At a date orders of later days and deliveries
//   after it do not count; a closed line counts as closed on every day, for the day is not kept. With
//   ContainBills the orders and deliveries that are not audited count too, now only.
// - The lowest level is the item's own, or that of the selected warehouses, as 商品超储短缺表 has it. It
//   stands in the item's first row.
// - Without any warehouse that the user may see, nothing is listed. The total carries FSumSort 101.
class Data10424 final : public platform::Exposed<Data10424> {
 public:
  explicit Data10424(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // One recordset in a vector.
  platform::Ref<platform::Vector> GetRptData(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10424";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data10424::GetRptData>("GetRptData", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
