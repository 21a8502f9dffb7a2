#pragma once

#include "books/services/Store.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Variant.h"

namespace books::reports {

// 其他出入库单关联表: the audited other receipts and issues that are linked to a kind of account item, one
// row a line of goods, and a total as the last row (FSumSort 1).
//
// - InvoiceStyle is the kind of account item: 0 customer, 1 supplier, 2 matched customer, 3 matched supplier,
//   4 department, 5 employee. A bill is listed when it has one. A firm that is customer and supplier at once
//   is matched: a bill of it counts whichever side it names, and both sides are shown.
// - BCustNumber and ECustNumber are supplier numbers for 1 and 3, customer numbers for 0 and 2, and without
//   meaning for 4 and 5.
// - chkShowItem sums up by account item and item (and its property, batch and unit) instead; date, type,
//   number and note of the bill are empty then.
// - OrderBy is the position of the chosen sort in the dialog's list: date, type, number, customer, supplier,
//   department, employee, item; OptSortD true is ascending.
// - Amounts are costs. Prices are amount by quantity, null without a quantity; the figures of the other
//   direction are null. FShowUnit and its figures are those of the bill's line.
// - Further keys: BDate, EDate, BItemNumber, BBatchNo, BDeptNumber, BEmpNumber, BAuxPropNumber with their
//   ends, DataRightWhere over tog (the customer shown) and ts (the supplier shown).
platform::Ref<platform::Recordset> ReadLinkedBills(services::Store& store, const platform::Variant& filter);

}  // namespace books::reports
