#include "browser/worker/LedgerPages.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/value/Convert.h"

namespace browser {

using platform::Recordset;
using platform::Ref;
using platform::Vector;

namespace {

std::vector<std::int32_t> EndsIn(const Recordset& ends) {
  const std::size_t field = ends.FieldIndex("FBreakRow");
  std::vector<std::int32_t> rows(ends.ViewCount());
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = ends.IntegerAt(field, ends.RowAt(i));
  return rows;
}

}  // namespace

LedgerPages::LedgerPages(Ref<Recordset> rows, const Recordset& ends, Ref<Vector> header)
    : rows_(std::move(rows)),
      header_(std::move(header)),
      items_(*rows_, EndsIn(ends)),
      summaryField_(rows_->FindField("FSumSort")) {}

bool LedgerPages::IsSummary(std::size_t row) const {
  return summaryField_ && rows_->IntegerAt(*summaryField_, row) > 0;
}

bool LedgerPages::HoldsText(std::size_t page, std::string_view text) const {
  return std::ranges::any_of(items_.TitleLines(page), [&](const std::string& line) {
    return platform::ToLowerAscii(line).find(text) != std::string::npos;
  });
}

std::optional<std::size_t> LedgerPages::Find(std::string_view text, std::size_t start) const {
  const std::string wanted = platform::ToLowerAscii(text);
  if (wanted.empty()) return std::nullopt;
  // A title names its item with the number in brackets behind the name.
  for (const std::string& looked : {"(" + wanted + ")", wanted}) {
    for (std::size_t i = 0; i < items_.Count(); ++i) {
      const std::size_t page = (start + i) % items_.Count();
      if (HoldsText(page, looked)) return page;
    }
  }
  return std::nullopt;
}

std::optional<exports::LedgerTotals> LedgerPages::CarriedTo(std::size_t page, std::size_t row) const {
  if (row <= items_.Begin(page) || row >= items_.End(page)) return std::nullopt;
  exports::LedgerTotals totals(*rows_);
  for (std::size_t at = items_.Begin(page); at < row; ++at) totals.Add(at);
  return totals;
}

}  // namespace browser
