#include "browser/worker/LedgerPages.h"

#include <algorithm>

#include "platform/value/Convert.h"

namespace browser {

using platform::Recordset;
using platform::Ref;
using platform::Vector;

LedgerPages::LedgerPages(Ref<Recordset> rows, const Recordset& ends, Ref<Vector> header)
    : rows_(std::move(rows)), header_(std::move(header)), summaryField_(rows_->FindField("FSumSort")) {
  const std::size_t field = ends.FieldIndex("FBreakRow");
  ends_.reserve(ends.ViewCount());
  for (std::size_t i = 0; i < ends.ViewCount(); ++i) {
    ends_.push_back(static_cast<std::size_t>(ends.IntegerAt(field, ends.RowAt(i))));
  }
  for (int i = 1; const auto title = rows_->FindField("FTitle" + std::to_string(i)); ++i) {
    titleFields_.push_back(*title);
  }
}

bool LedgerPages::IsSummary(std::size_t row) const {
  return summaryField_ && rows_->IntegerAt(*summaryField_, row) > 0;
}

std::vector<std::string> LedgerPages::Title(std::size_t page) const {
  std::vector<std::string> lines;
  for (const std::size_t field : titleFields_) {
    const std::string_view line = rows_->TextAt(field, Begin(page));
    if (!line.empty()) lines.emplace_back(line);
  }
  return lines;
}

bool LedgerPages::HoldsText(std::size_t page, std::string_view text) const {
  return std::ranges::any_of(titleFields_, [&](std::size_t field) {
    return platform::ToLowerAscii(rows_->TextAt(field, Begin(page))).find(text) != std::string::npos;
  });
}

std::optional<std::size_t> LedgerPages::Find(std::string_view text, std::size_t start) const {
  const std::string wanted = platform::ToLowerAscii(text);
  if (wanted.empty()) return std::nullopt;
  // A title names its item with the number in brackets behind the name.
  for (const std::string& looked : {"(" + wanted + ")", wanted}) {
    for (std::size_t i = 0; i < Count(); ++i) {
      const std::size_t page = (start + i) % Count();
      if (HoldsText(page, looked)) return page;
    }
  }
  return std::nullopt;
}

std::optional<exports::LedgerTotals> LedgerPages::CarriedTo(std::size_t page, std::size_t row) const {
  if (row <= Begin(page) || row >= End(page)) return std::nullopt;
  exports::LedgerTotals totals(*rows_);
  for (std::size_t at = Begin(page); at < row; ++at) totals.Add(at);
  return totals;
}

}  // namespace browser
