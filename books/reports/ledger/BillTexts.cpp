#include "books/reports/ledger/BillTexts.h"

#include <limits>
#include <string_view>

namespace books::reports {
namespace {

using database::Connection;
using database::Statement;
using platform::TextStore;

// Reading a bill among all takes about a sixteenth of looking it up.
constexpr std::int64_t kReadsOfALookUp = 16;
// Ids with larger gaps between them would fill memory with nothing.
constexpr std::int64_t kMostIdsOfABill = 8;

}  // namespace

BillTexts::BillTexts(Connection& connection)
    : connection_(connection),
      one_(connection.Prepare(
          "SELECT bill_class, number, voucher_number, explanation FROM bill WHERE id = ?")) {}

void BillTexts::Forget(platform::TextStore& texts) {
  lookUps_ = 0;
  lookUpsAllowed_ = 0;
  bills_.clear();
  texts_ = &texts;
  const TextStore::Id empty = texts.Keep({});
  none_ = {.billClass = 0, .number = empty, .voucher = empty, .explanation = empty};
}

BillText BillTexts::Of(std::int64_t billId) {
  if (bills_.empty()) {
    if (lookUpsAllowed_ == 0) Plan();
    if (++lookUps_ <= lookUpsAllowed_) return LookUp(billId);
    ReadAll();
    if (bills_.empty()) return LookUp(billId);
  }
  const auto place = static_cast<std::size_t>(billId - firstId_);  // huge for what stands before the first
  return place < bills_.size() ? bills_[place] : none_;
}

// Vouchers and explanations repeat, and most bills have none.
BillText BillTexts::Keep(const Statement& row, int firstColumn, TextStore::Id number) {
  auto text = [&](int column) {
    const std::string_view view = row.TextView(column);
    return view.empty() ? none_.number : texts_->Keep(view);
  };
  return {.billClass = row.Int32(firstColumn),
          .number = number,
          .voucher = text(firstColumn + 2),
          .explanation = text(firstColumn + 3)};
}

BillText BillTexts::LookUp(std::int64_t billId) {
  one_.Bind(billId);
  return one_.Step() ? Keep(one_, 0, texts_->Keep(one_.TextView(1))) : none_;
}

// Ids are given in the order of writing, so that the newest one tells about how many bills there are.
void BillTexts::Plan() {
  lookUpsAllowed_ = 1;
  Statement newest = connection_.Query("SELECT (SELECT MAX(id) FROM bill) - (SELECT MIN(id) FROM bill)");
  if (newest.Step()) lookUpsAllowed_ += newest.Integer(0) / kReadsOfALookUp;
}

// The ends and the number are asked one by one: each is found at once, all three together only by reading
// all.
void BillTexts::ReadAll() {
  one_.Reset();
  Statement span = connection_.Query(
      "SELECT (SELECT MIN(id) FROM bill), (SELECT MAX(id) FROM bill), (SELECT COUNT(*) FROM bill)");
  if (!span.Step()) return;
  firstId_ = span.Integer(0);
  const std::int64_t ids = span.Integer(1) - firstId_ + 1;
  if (ids > span.Integer(2) * kMostIdsOfABill) {
    lookUpsAllowed_ = std::numeric_limits<std::int64_t>::max();
    return;
  }
  bills_.assign(static_cast<std::size_t>(ids), none_);
  Statement rows = connection_.Query("SELECT id, bill_class, number, voucher_number, explanation FROM bill");
  while (rows.Step()) {
    const TextStore::Id number = texts_->KeepNew(rows.TextView(2));  // no two bills of a class share one
    bills_[static_cast<std::size_t>(rows.Integer(0) - firstId_)] = Keep(rows, 1, number);
  }
}

}  // namespace books::reports
