#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// S/N号跟踪分析表: the serial numbers that audited bills of a range of days moved, one row a number with the
// place where it stands now; with chkDetail one row a bill that moved it, in the order of the movements.
//
// - With chkDetail and without chkAllDetailShow the columns of the number stand in its first row only.
// - FSerialNoStatus is 在库 or 已出库; cboSerialNoStatus 1 and 2 choose between them. A number that was
//   issued has no warehouse, and so is in no range of warehouses.
// - Ranges of suppliers and customers, and DataRightWhere over t7 (the bill's supplier) and t8 (its
//   customer), choose among the bills; a number without a bill left is not listed. DataRightWhereStock is
//   over t4, the warehouse where the number stands.
// - cboSort (item, model, number) sorts, downwards when OptSortD is set.
// - FShowPrice is the price on the bill.
class Data10418 final : public platform::Exposed<Data10418> {
 public:
  explicit Data10418(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  // Filter keys: BDate, EDate, BSerialNo, BItemNumber, BStockNumber, BSupplyNumber, BCustNumber with their
  // ends, Model, SerialNoNote (contained texts), cboSerialNoStatus, chkDetail, chkAllDetailShow, cboSort,
  // OptSortD, DataRightWhere, DataRightWhereStock.
  platform::Ref<platform::Recordset> GetRpt10418Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10418";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10418::GetRpt10418Data>("GetRpt10418Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
