#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "books/reports/movement/MovementSummary.h"
#include "platform/object/OperationTable.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 收发业务汇总表: opening and closing figures, and between them a group of figures for every class of bill.
// The receipt groups, money rebates and price changes among them, add up to the receipt total, the issue
// groups to that of the issues; transfers count on both sides, at whatever price.
//
// Filter keys: BDate, EDate; the ranges ItemNumber, DeptNumber, EmpNumber, StockNumber, BatchNo;
// DataRightWhere (on ts, the warehouse); OnlyTotal, ShowNoHappen (1 leaves out what did not move, as its
// caption says), Balance (1 leaves out what ends with nothing); MultiLevel, MultiLevelBegin, MultiLevelEnd;
// OrderBy.
platform::Ref<platform::Recordset> ReadBusinessSummary(services::Store& store,
                                                       const platform::Variant& filter, SummaryBy by);

// The components of the report's three layouts, which differ in what makes a row.
template <SummaryBy By>
class Data10401 final : public platform::Exposed<Data10401<By>> {
 public:
  explicit Data10401(std::shared_ptr<services::Store> store) : store_(std::move(store)) {}

  platform::Ref<platform::Recordset> GetRptData(const std::string& /*props*/, platform::Variant& filter) {
    return ReadBusinessSummary(*store_, filter, By);
  }

  static constexpr std::string_view kClassName = By == SummaryBy::kItem        ? "TOVMStockRpt.Data1040101"
                                                 : By == SummaryBy::kWarehouse ? "TOVMStockRpt.Data1040102"
                                                                               : "TOVMStockRpt.Data1040104";
  static constexpr auto kOperations =
      platform::Operations(platform::Method<&Data10401::GetRptData>("GetRptData", "Props", "Filter"));

 private:
  std::shared_ptr<services::Store> store_;
};

using Data1040101 = Data10401<SummaryBy::kItem>;
using Data1040102 = Data10401<SummaryBy::kWarehouse>;
using Data1040104 = Data10401<SummaryBy::kBatch>;

}  // namespace books::reports
