#pragma once

#include <memory>
#include <string>

#include "books/services/Store.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 采购价格分析表: what was bought of each item in a range of days, and at what prices, all in its base unit.
//
// - Filter keys: BDate, EDate (open without them); the ranges ItemNumber, SupplyNumber, DeptNumber,
//   StockNumber, EmpNumber; DataRightWhere (on t7, the supplier, and t4, the warehouse); cboType: 0 all, 1
//   estimated receipts, 2 purchase receipts; cmbGroup; chkOnlyTotal leaves the sums alone; chkNoAmt,
//   chkNoBal; OrderBy (FItemNumber, within a group). chkNoDB speaks of transfers, which buy nothing.
// - An item that is not disabled is listed without purchases too, as long as no supplier, department,
//   warehouse or employee is asked for. chkNoAmt leaves it out; chkNoBal leaves out items of which nothing
//   lies in the warehouses that the filter selects and the user may see.
// - FAvgPrice is the amount by the quantity, with returns taken off both. FMaxPrice, FMinPrice and FPrice1
//   (the last) to FPrice7 are prices of single entries; FSupplyName and Fdate tell whose the lowest was, and
//   of which day; of equal ones the last. What there is not is null.
// - cmbGroup: by 1 employee, 2 department, 3 warehouse each item has a row a group, named by FCommonName,
//   with the group's sum behind it (FSumSort 1); −1, 0 and an empty text are no group. The total (101) ends
//   the report. FID counts the rows that are no sums.
// - Without any warehouse that the user may see, nothing is listed.
class Data10415 final : public platform::Exposed<Data10415> {
 public:
  explicit Data10415(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  platform::Ref<platform::Recordset> GetRpt10415Data(const std::string& props, platform::Variant& filter);

  static constexpr std::string_view kClassName = "TOVMStockRpt.Data10415";
  static constexpr auto kOperations = platform::Operations(
      platform::Method<&Data10415::GetRpt10415Data>("GetRpt10415Data", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

}  // namespace books::reports
