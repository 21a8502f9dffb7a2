#pragma once

#include "books/services/Store.h"
#include "platform/rows/Recordset.h"

namespace books::reports {

// 保质期清单: a row for what lies of a batch in a warehouse now, of all batches whose expiry is known.
//
// - Filter keys: EDate, the due date, today without it; BItemNumber, EItemNumber, BStockNumber, EStockNumber,
//   DataRightWhere (on t3, the warehouse); chkHideForbiddenGood leaves disabled items out; cmbGroup; OrderBy
//   (FItemNumber, FQty, FBal or Overdays), within a group.
// - Overdays are the days from the expiry to the due date: above 0 the goods are over it, below 0 they have
//   days left. The last day itself is 0.
// - cmbGroup: 0 none, 1 by item, 2 by warehouse, each group with its sum behind it (FSumSort 1). The total
//   (101) ends the list.
// - FSecQty is null for an item without auxiliary unit.
platform::Ref<platform::Recordset> ReadShelfLife(services::Store& store, const platform::Variant& filter);

}  // namespace books::reports
