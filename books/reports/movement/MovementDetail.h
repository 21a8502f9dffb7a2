#pragma once

#include "books/reports/movement/MovementChoice.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 商品收发明细表, and 批号管理商品收发明细表, which knows batch-managed items only: a row a movement, and the
// total of all.
//
// With chkGroupByGood the movements come item by item, each with the item's balance behind it, between a row
// with the opening figures and one with the sums of the item and its closing figures; without, they come in
// one list. OrderBy sorts by T1.FDate, T1.FBillNo, T1.FBillType, T2.FNumber or T2.FName; balances are those
// behind the movement in the order of costing, however rows are sorted. cmbGroup brings together and sums up
// the days (1), warehouses (2) or auxiliary properties (3) within the list or the item.
//
// chkOnlyTotal leaves out opening and closing rows, chkNoAmt items without movement, chkNoBal items that end
// with nothing, chkNoZero those with neither: an item that has nothing at all, ever, is listed by default
// unless a batch or property is asked for. Further keys: BDate, EDate; the ranges ItemNumber, BatchNo,
// DeptNumber, StockNumber, EmpNumber, AuxPropNumber; DataRightWhere (on t4, the warehouse); chkNoDB,
// chkShowTran. MovementChoice.h tells what they mean.
platform::Ref<platform::Recordset> ReadMovementDetail(services::Store& store, const platform::Variant& filter,
                                                      MovementGoods goods);

}  // namespace books::reports
