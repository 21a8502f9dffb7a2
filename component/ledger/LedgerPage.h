#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/ledger/LedgerRow.h"
#include "platform/rows/RowAppender.h"
#include "platform/rows/Vector.h"

namespace component {

inline constexpr std::size_t kLedgerTitles = 11;

// A ledger page without rows, open: 28 fields, and FTitle1 to FTitle11 behind them in an output of many
// pages, where each row carries the title lines of its page.
platform::Ref<platform::Recordset> NewLedgerRs(bool withTitles);
// The same with titles, as the builders for all items at once lay it out.
platform::Ref<platform::Recordset> NewBatchLedgerRs();

// Title texts by their place, FTitle1 first.
using LedgerTitles = std::array<std::string, kLedgerTitles>;

// The texts of title lines ("FIndex" from 0, "FCaption") at the places of their fields.
LedgerTitles TitlesOf(const platform::Ref<platform::Vector>& lines);

// A page that takes rows. A text longer than its field is cut at a whole character; a date drops its time of
// day. Rows wait until there are some to be written column by column. While it lives nobody else may add rows
// to the recordset.
class LedgerPage {
 public:
  // Rows that AddLedgerRow adds carry these titles, which stay as they are; null for a page without them.
  explicit LedgerPage(platform::Recordset& page, const LedgerTitles* titles = nullptr);

  // Rows will have texts of this recordset: a page without rows keeps its texts there as well, so that it
  // takes them by their ids.
  void ShareTexts(const platform::Recordset& source);
  const platform::TextStore& Texts() const { return *page_.Texts(); }
  // Texts of the row that are not kept there must stay good until the rows are written.
  void AddLedgerRow(const LedgerRow& row);
  // With title texts of its own, whatever the page's titles are; written at once.
  void AddLedgerRowTitled(const LedgerRow& row, const LedgerTitles& titles);
  // Writes the rows that wait.
  void WriteRows();
  // Writes the rows that wait, and the page's titles for all its rows. Call it behind the last row.
  void Finish();

  std::int32_t RowCount() const { return page_.RecordCount() + static_cast<std::int32_t>(waiting_.size()); }

 private:
  platform::RowText Caption(LedgerRowKind kind);
  platform::RowText Fitting(std::size_t field, const platform::RowText& text) const;
  void WriteTexts(std::size_t firstRow);
  void WriteTitle(std::size_t field, std::string_view title);
  void WriteFigures(std::size_t firstRow, std::size_t firstField, LedgerFigures LedgerRow::*side);
  template <class Value>
  void Write(std::size_t firstRow, std::size_t field, Value value);
  platform::RowText PeriodName(std::int16_t year, std::int16_t period);

  struct Target {
    std::size_t column = 0;
    std::size_t width = 0;
  };

  platform::Recordset& page_;
  platform::RowAppender rows_;
  const LedgerTitles* titles_;
  std::size_t untitled_ = 0;     // the first row whose titles are not written yet
  std::vector<Target> targets_;  // by the field's place in NewLedgerRs
  std::vector<LedgerRow> waiting_;
  std::array<std::optional<platform::RowText>, kLedgerRowKinds> captions_;  // as the page keeps them
  std::int32_t namedPeriod_ = 0;
  std::optional<platform::RowText> periodName_;  // as the page keeps it
};

// Appends the rows of `source` to `target`, each with the year and the period that it belongs to. A target of
// nothing becomes a recordset with the source's fields, numeric ones as double, and FYear and FPeriod behind
// them. The source is left at its end. A failure raises number -1000 and says that appending failed.
platform::Variant MergeRecord(platform::Ref<platform::Recordset>& target, platform::Recordset& source,
                              std::int16_t year, std::int16_t period);

}  // namespace component
