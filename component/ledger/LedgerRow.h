#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "component/ledger/LedgerFigures.h"
#include "platform/rows/RowText.h"
#include "platform/value/Date.h"

namespace component {

// What a row is: a movement, or one of those that the report adds. A reader tells these by their captions,
// since the totals of a period and of a year share a mark.
enum class LedgerRowKind : std::uint8_t {
  kMovement,
  kOpening,
  kPeriodTotal,
  kClosing,
  kYearTotal,
  kYearToDate,
};
inline constexpr std::size_t kLedgerRowKinds = 6;

// What such a row shows in the place of a movement's type; nothing for a movement.
std::string_view CaptionOf(LedgerRowKind kind);

struct LedgerRow {
  LedgerRowKind kind = LedgerRowKind::kMovement;
  std::int16_t year = 0;
  std::int16_t period = 0;
  std::int32_t id = 0;  // FID: of the document, or the mark of a summary row
  std::int32_t entryId = 0;
  platform::Date date;
  platform::RowText voucherNo;
  platform::RowText batchNo;
  platform::RowText note;
  platform::RowText tranTypeName;  // a movement's; other rows show what they are
  platform::RowText auxName;
  platform::RowText billNo;
  std::int32_t classTypeId = 0;
  std::int16_t qtyDecimal = 0;
  std::int16_t priceDecimal = 0;
  LedgerFigures in;
  LedgerFigures out;
  LedgerFigures balance;
};

// A summary row without figures.
LedgerRow SummaryRow(LedgerRowKind kind, std::int16_t year, std::int16_t period, platform::Date date);

}  // namespace component
