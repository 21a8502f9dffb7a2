#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/rows/RowAppender.h"

namespace bench {

// The values of one ledger row: 28 columns.
struct LedgerRow {
  std::int16_t year = 0, period = 0, qtyDecimal = 0, priceDecimal = 0;
  std::int32_t id = 0, entryId = 0, classTypeId = 0, sumSort = 0;
  platform::Date date;
  std::string periodName, voucherNo, batchNo, billNo, tranTypeName, auxName, note;
  double inQty = 0, inPrice = 0, outQty = 0, outPrice = 0, balQty = 0, balPrice = 0;
  platform::Currency inAmount, inDiff, outAmount, outDiff, balAmount, balDiff;
};

// A stretch of ledger whose texts repeat as they do in a book: a few kinds of movement and properties, dozens
// of batches, a bill number for every three rows.
const std::vector<LedgerRow>& LedgerSource();

// A new open recordset with the 28 columns.
platform::Ref<platform::Recordset> NewLedger();
// Appends `count` rows from the source, again from its start when it is used up.
void AppendLedger(platform::Recordset& ledger, std::size_t count);

}  // namespace bench
