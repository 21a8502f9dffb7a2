#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "component/ledger/LedgerFigures.h"
#include "platform/rows/RowAppender.h"
#include "platform/rows/Vector.h"

namespace component {

inline constexpr std::size_t kLedgerTitles = 11;

// A ledger page without rows, open: 28 fields, and FTitle1 to FTitle11 behind them in an output of many
// pages, where each row carries the title lines of its page.
platform::Ref<platform::Recordset> NewLedgerRs(bool withTitles);
// The same with titles, as the builders for all items at once lay it out.
platform::Ref<platform::Recordset> NewBatchLedgerRs();

// The rows that the report adds to the movements. A reader tells them by their captions, since the totals of
// a period and of a year share a mark.
enum class LedgerRowKind : std::uint8_t { kOpening, kPeriodTotal, kClosing, kYearTotal, kYearToDate };

struct LedgerRow {
  std::int16_t year = 0;
  std::int16_t period = 0;
  std::int32_t id = 0;  // FID: of the document, or the mark of a summary row
  std::int32_t entryId = 0;
  platform::Date date;
  std::string_view voucherNo;
  std::string_view batchNo;
  std::string_view note;
  std::string_view tranTypeName;
  std::string_view auxName;
  std::string_view billNo;
  std::int32_t classTypeId = 0;
  std::int16_t qtyDecimal = 0;
  std::int16_t priceDecimal = 0;
  LedgerFigures in;
  LedgerFigures out;
  LedgerFigures balance;
  std::int32_t sumSort = 0;  // 0 on a movement, 101 on every summary row
};

// A summary row without figures.
LedgerRow SummaryRow(LedgerRowKind kind, std::int16_t year, std::int16_t period, platform::Date date);

// Title texts by their place, FTitle1 first.
using LedgerTitles = std::array<std::string, kLedgerTitles>;

// The texts of title lines ("FIndex" from 0, "FCaption") at the places of their fields.
LedgerTitles TitlesOf(const platform::Ref<platform::Vector>& lines);

// A page that takes rows. A text longer than its field is cut at a whole character; a date drops its time of
// day. While it lives nobody else may add rows to the recordset.
class LedgerPage {
 public:
  // Rows that AddLedgerRow adds carry these titles, which stay as they are; null for a page without them.
  explicit LedgerPage(platform::Recordset& page, const LedgerTitles* titles = nullptr);

  void AddLedgerRow(const LedgerRow& row);
  // With title texts of its own, whatever the page's titles are.
  void AddLedgerRowTitled(const LedgerRow& row, const LedgerTitles& titles);
  // The page's titles are written for all its rows at once. Call it behind the last row.
  void Finish();

  std::int32_t RowCount() const { return page_.RecordCount(); }

 private:
  void SetFields(const LedgerRow& row);
  std::string_view Fitting(std::size_t field, std::string_view text) const;
  void SetText(std::size_t field, std::string_view text);
  void SetFigures(std::size_t firstField, const LedgerFigures& figures);
  std::string_view PeriodName(std::int16_t year, std::int16_t period);

  struct Target {
    std::size_t column = 0;
    std::size_t width = 0;
  };

  platform::Recordset& page_;
  platform::RowAppender rows_;
  const LedgerTitles* titles_;
  std::size_t untitled_ = 0;     // the first row whose titles are not written yet
  std::vector<Target> targets_;  // by the field's place in NewLedgerRs
  std::int32_t namedPeriod_ = 0;
  std::string periodName_;
};

// Appends the rows of `source` to `target`, each with the year and the period that it belongs to. A target of
// nothing becomes a recordset with the source's fields, numeric ones as double, and FYear and FPeriod behind
// them. The source is left at its end. A failure raises number -1000 and says that appending failed.
platform::Variant MergeRecord(platform::Ref<platform::Recordset>& target, platform::Recordset& source,
                              std::int16_t year, std::int16_t period);

}  // namespace component
