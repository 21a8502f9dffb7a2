#pragma once

#include "books/reports/movement/MovementChoice.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 商品收发汇总表, and 批号管理商品收发汇总表, which knows batch-managed items only and tells their batches
// apart unless it is asked otherwise. By cmbGroup a row is an item (0), an item in a warehouse (1) or a batch
// of an item (2), with sums by category level, warehouse or item, and the total.
//
// Filter keys: BDate, EDate; the ranges ItemNumber, BatchNo, DeptNumber, StockNumber, EmpNumber;
// DataRightWhere (on t4, the warehouse); chkOnlyTotal, chkNoAmt, chkNoBal, chkShowTran; MultiLevel,
// MultiLevelBegin, MultiLevelEnd; OrderBy. MovementChoice.h and MovementSummary.h tell what they mean.
platform::Ref<platform::Recordset> ReadMovementSummary(services::Store& store,
                                                       const platform::Variant& filter, MovementGoods goods);

}  // namespace books::reports
