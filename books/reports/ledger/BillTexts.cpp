#include "books/reports/ledger/BillTexts.h"

#include <cstring>
#include <limits>

namespace books::reports {
namespace {

using database::Connection;
using database::Statement;

// Reading a bill among all takes about a sixteenth of looking it up.
constexpr std::int64_t kReadsOfALookUp = 16;
// Ids with larger gaps between them would fill memory with nothing.
constexpr std::int64_t kMostIdsOfABill = 8;

}  // namespace

BillTexts::BillTexts(Connection& connection)
    : connection_(connection),
      one_(connection.Prepare(
          "SELECT bill_class, number, voucher_number, explanation FROM bill WHERE id = ?")) {}

void BillTexts::Forget() {
  lookUps_ = 0;
  lookUpsAllowed_ = 0;
  entries_.clear();
  texts_ = {};
}

BillText BillTexts::Of(std::int64_t billId) {
  if (entries_.empty()) {
    if (lookUpsAllowed_ == 0) Plan();
    if (++lookUps_ <= lookUpsAllowed_) return LookUp(billId);
    ReadAll();
    if (entries_.empty()) return LookUp(billId);
  }
  const std::int64_t place = billId - firstId_;
  if (place < 0 || place >= static_cast<std::int64_t>(entries_.size())) return {};
  const Entry& entry = entries_[static_cast<std::size_t>(place)];
  std::string_view number(entry.number.data(), entry.numberSize);
  if (entry.numberSize == kLongNumber) {
    platform::TextStore::Id id = 0;
    std::memcpy(&id, entry.number.data(), sizeof id);
    number = texts_.Text(id);
  }
  return {.billClass = entry.billClass,
          .number = number,
          .voucher = texts_.Text(entry.voucher),
          .explanation = texts_.Text(entry.explanation)};
}

BillText BillTexts::LookUp(std::int64_t billId) {
  one_.Bind(billId);
  if (!one_.Step()) return {};
  return {.billClass = one_.Int32(0),
          .number = one_.TextView(1),
          .voucher = one_.TextView(2),
          .explanation = one_.TextView(3)};
}

// Ids are given in the order of writing, so that the newest one tells about how many bills there are.
void BillTexts::Plan() {
  lookUpsAllowed_ = 1;
  Statement newest = connection_.Query("SELECT (SELECT MAX(id) FROM bill) - (SELECT MIN(id) FROM bill)");
  if (newest.Step()) lookUpsAllowed_ += newest.Integer(0) / kReadsOfALookUp;
}

void BillTexts::ReadAll() {
  one_.Reset();
  Statement span = connection_.Query("SELECT MIN(id), MAX(id) - MIN(id) + 1, COUNT(*) FROM bill");
  if (!span.Step()) return;
  firstId_ = span.Integer(0);
  const std::int64_t ids = span.Integer(1);
  if (ids > span.Integer(2) * kMostIdsOfABill) {
    lookUpsAllowed_ = std::numeric_limits<std::int64_t>::max();
    return;
  }
  const Entry none = {.voucher = texts_.Keep({}), .explanation = texts_.Keep({})};
  entries_.assign(static_cast<std::size_t>(ids), none);
  Statement rows = connection_.Query("SELECT id, bill_class, number, voucher_number, explanation FROM bill");
  while (rows.Step()) {
    Entry& entry = entries_[static_cast<std::size_t>(rows.Integer(0) - firstId_)];
    entry = {.billClass = rows.Int32(1),
             .voucher = texts_.Keep(rows.TextView(3)),
             .explanation = texts_.Keep(rows.TextView(4))};
    const std::string_view number = rows.TextView(2);
    if (number.size() <= entry.number.size()) {
      entry.numberSize = static_cast<std::uint8_t>(number.size());
      std::memcpy(entry.number.data(), number.data(), number.size());
    } else {
      const platform::TextStore::Id id = texts_.Keep(number);
      entry.numberSize = kLongNumber;
      std::memcpy(entry.number.data(), &id, sizeof id);
    }
  }
}

}  // namespace books::reports
