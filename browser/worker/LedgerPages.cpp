// A ledger's rows come in periods: opening rows, movements, the period's total, closing rows. What is carried
// to a next sheet begins anew with each period, as the balance of a page does.
#include "browser/worker/LedgerPages.h"

#include <algorithm>

#include "browser/worker/RowText.h"
#include "platform/value/Convert.h"

namespace browser {

using platform::Currency;
using platform::Recordset;
using platform::Ref;
using platform::Vector;

namespace {

constexpr std::int32_t kOpening = -1;  // FID of an opening row

// The fields that totals are made of.
struct TotalFields {
  explicit TotalFields(const Recordset& rows)
      : id(rows.FieldIndex("FID")),
        inQuantity(rows.FieldIndex("FInQty")),
        inAmount(rows.FieldIndex("FInAmount")),
        outQuantity(rows.FieldIndex("FOutQty")),
        outAmount(rows.FieldIndex("FOutAmount")),
        balanceQuantity(rows.FieldIndex("FBalQty")),
        balanceAmount(rows.FieldIndex("FBalAmount")) {}

  std::size_t id;
  std::size_t inQuantity;
  std::size_t inAmount;
  std::size_t outQuantity;
  std::size_t outAmount;
  std::size_t balanceQuantity;
  std::size_t balanceAmount;
};

}  // namespace

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

std::optional<CarriedTotals> LedgerPages::CarriedTo(std::size_t page, std::size_t row) const {
  if (row <= Begin(page) || row >= End(page)) return std::nullopt;
  const TotalFields fields(*rows_);
  auto isOpening = [&](std::size_t at) {
    return IsSummary(at) && rows_->IntegerAt(fields.id, at) == kOpening;
  };
  // The last opening row before, and of several together the first.
  std::size_t first = row - 1;
  while (first > Begin(page) && !isOpening(first)) --first;
  while (first > Begin(page) && isOpening(first) && isOpening(first - 1)) --first;
  CarriedTotals totals;
  for (std::size_t at = first; at < row; ++at) {
    if (isOpening(at)) {
      totals.balanceQuantity += rows_->DoubleAt(fields.balanceQuantity, at);
      totals.balanceAmount += rows_->CurrencyAt(fields.balanceAmount, at);
    } else if (!IsSummary(at)) {
      totals.inQuantity += rows_->DoubleAt(fields.inQuantity, at);
      totals.inAmount += rows_->CurrencyAt(fields.inAmount, at);
      totals.outQuantity += rows_->DoubleAt(fields.outQuantity, at);
      totals.outAmount += rows_->CurrencyAt(fields.outAmount, at);
      totals.balanceQuantity = rows_->DoubleAt(fields.balanceQuantity, at);
      totals.balanceAmount = rows_->CurrencyAt(fields.balanceAmount, at);
    }
  }
  return totals;
}

}  // namespace browser
