// Balances are read from the period before the first to the last one, so that every period's opening is the
// closing of the one before. Beyond the last stored balance nothing has moved: its rows stand for every later
// period. Both tables are clustered by item, so an item's rows lie in one place and come in order.
#include "books/reports/ledger/LedgerReader.h"

#include <algorithm>

#include "books/schema/Codes.h"

namespace books::reports {
namespace {

using database::Quantity;
using database::Statement;
using database::Transaction;
using platform::Currency;
using platform::Date;
using platform::RowAppender;
using services::Kept;
using services::RowField;

// The item comes last, so that both layouts share their places.
constexpr RowField kOpeningFields[] = {{"FBatchNo", Kept::kText},
                                       {"FBegQty", Kept::kQuantity},
                                       {"FBegAmount", Kept::kAmount},
                                       {"FBegDiff", Kept::kAmount},
                                       {"FItemID", Kept::kInteger}};
constexpr RowField kClosingFields[] = {{"FBatchNo", Kept::kText},
                                       {"FEndQty", Kept::kQuantity},
                                       {"FEndAmount", Kept::kAmount},
                                       {"FEndDiff", Kept::kAmount},
                                       {"FItemID", Kept::kInteger}};
constexpr RowField kMovementFields[] = {
    {"FInterID", Kept::kInteger},   {"FEntryID", Kept::kInteger},  {"FDate", Kept::kDate},
    {"FVoucherNo", Kept::kText},    {"FBatchNo", Kept::kText},     {"FNote", Kept::kText},
    {"FTranTypeName", Kept::kText}, {"FAuxName", Kept::kText},     {"FBillNo", Kept::kText},
    {"FTranType", Kept::kInteger},  {"FInQty", Kept::kQuantity},   {"FInPrice", Kept::kReal},
    {"FInAmount", Kept::kAmount},   {"FInDiff", Kept::kAmount},    {"FOutQty", Kept::kQuantity},
    {"FOutPrice", Kept::kReal},     {"FOutAmount", Kept::kAmount}, {"FOutDiff", Kept::kAmount},
    {"FItemID", Kept::kInteger}};
constexpr std::size_t kIn = 10;
constexpr std::size_t kOut = 14;

constexpr std::string_view kMovementSql = R"sql(
SELECT m.period, m.bill_id, m.line, m.date, b.voucher_number, m.batch_id, b.explanation, m.bill_class,
       m.aux_id, b.number, m.direction, m.quantity, m.amount, m.warehouse_id
FROM movement m
CROSS JOIN bill b
WHERE m.item_id = ? AND m.date >= ? AND m.date < ? AND b.id = m.bill_id
ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line
)sql";

constexpr std::string_view kBalanceSql = R"sql(
SELECT period, warehouse_id, batch_id, quantity, amount
FROM balance
WHERE item_id = ? AND period BETWEEN ? AND ?
)sql";

constexpr std::string_view kBatchSql = R"sql(
SELECT id, number, (? = '' OR number >= ?) AND (? = '' OR number <= ?) FROM batch WHERE item_id = ?
)sql";

ItemLedger NewLedger() {
  return {.opening = {.rows = services::NewRows(kOpeningFields), .starts = {}},
          .happened = {.rows = services::NewRows(kMovementFields), .starts = {}},
          .closing = {.rows = services::NewRows(kClosingFields), .starts = {}}};
}

std::size_t RowsIn(const LedgerRows& rows) { return static_cast<std::size_t>(rows.rows->RecordCount()); }

void SetSide(RowAppender& row, std::size_t first, double quantity, Currency amount) {
  row.SetDouble(first, quantity);
  row.SetDouble(first + 1, quantity == 0 ? 0 : amount.ToDouble() / quantity);
  row.SetCurrency(first + 2, amount);
  row.SetCurrency(first + 3, Currency());
}

}  // namespace

void LedgerReader::Forget() {
  auxNames_.clear();
  classNames_.clear();
  days_.clear();
}

PeriodDays LedgerReader::DaysOf(std::int32_t period) {
  if (const auto known = days_.find(period); known != days_.end()) return known->second;
  PeriodDays days;
  Statement row =
      store_.Reading().Query("SELECT first_day, last_day FROM accounting_period WHERE period = ?", period);
  if (row.Step()) {
    days = {.first = row.GetDate(0), .past = row.GetDate(1).AddDays(1)};
  } else {
    auto firstDay = [](std::int32_t p) { return Date::Of(schema::YearOf(p), schema::NumberOf(p), 1); };
    days = {.first = firstDay(period), .past = firstDay(period + 1)};
  }
  days_.emplace(period, days);
  return days;
}

std::int32_t LedgerReader::BalancesUntil() {
  Statement row = store_.Reading().Query("SELECT balances_until FROM book_state WHERE id = 1");
  return row.Step() ? row.Int32(0) : 0;
}

const std::string& LedgerReader::AuxName(std::int64_t id) {
  const auto [known, isNew] = auxNames_.try_emplace(id);
  if (isNew && id != 0) {
    Statement row = store_.Reading().Query("SELECT name FROM base_data WHERE id = ?", id);
    if (row.Step()) known->second = row.Text(0);
  }
  return known->second;
}

const std::string& LedgerReader::ClassName(std::int32_t billClass) {
  const auto [known, isNew] = classNames_.try_emplace(billClass);
  if (isNew) {
    Statement row = store_.Reading().Query("SELECT name FROM bill_class WHERE id = ?", billClass);
    if (row.Step()) known->second = row.Text(0);
  }
  return known->second;
}

void LedgerReader::ReadBatches(std::int32_t itemId, const LedgerChoice& choice) {
  batches_.clear();
  const Range& range = choice.batches;
  Statement rows = store_.Reading().Query(kBatchSql, range.from, range.from, range.to, range.to, itemId);
  while (rows.Step()) batches_[rows.Integer(0)] = {.number = rows.Text(1), .chosen = rows.Boolean(2)};
}

// Null for what the range of batches leaves out; goods without a batch have no number to lie in a range.
const LedgerReader::Batch* LedgerReader::ChosenBatch(std::int64_t id, const LedgerChoice& choice) const {
  static const Batch kNone;
  if (id == 0) return choice.HasBatchRange() ? nullptr : &kNone;
  const auto known = batches_.find(id);
  if (known == batches_.end()) return nullptr;
  return known->second.chosen ? &known->second : nullptr;
}

// Sums a batch's warehouses and auxiliary properties, since the page tells batches apart and nothing else.
void LedgerReader::ReadBalances(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                                const LedgerChoice& choice) {
  balances_.clear();
  Statement rows = store_.Reading().Query(kBalanceSql, itemId, firstPeriod, lastPeriod);
  while (rows.Step()) {
    const std::int64_t batchId = rows.Integer(2);
    if (!choice.HasWarehouse(rows.Integer(1)) || ChosenBatch(batchId, choice) == nullptr) continue;
    const std::int32_t period = rows.Int32(0);
    auto sum = std::find_if(balances_.rbegin(), balances_.rend(), [&](const Balance& each) {
      return each.period != period || each.batchId == batchId;
    });
    if (sum == balances_.rend() || sum->period != period) {
      balances_.push_back({.period = period, .batchId = batchId, .quantity = {}, .amount = {}});
      sum = balances_.rbegin();
    }
    sum->quantity += rows.GetQuantity(3);
    sum->amount += rows.Amount(4);
  }
  std::ranges::sort(balances_, [this](const Balance& left, const Balance& right) {
    if (left.period != right.period) return left.period < right.period;
    auto number = [this](const Balance& each) -> const std::string& {
      static const std::string kNone;
      const auto known = batches_.find(each.batchId);
      return known == batches_.end() ? kNone : known->second.number;
    };
    return number(left) < number(right);
  });
}

void LedgerReader::AddBalances(RowAppender& rows, std::int32_t itemId, std::int32_t period, bool keepsZero,
                               const LedgerChoice& choice) {
  auto at = std::ranges::lower_bound(balances_, period, {}, &Balance::period);
  for (; at != balances_.end() && at->period == period; ++at) {
    const Balance& balance = *at;
    if (!keepsZero && balance.quantity == Quantity() && balance.amount == Currency()) continue;
    rows.SetText(0, ChosenBatch(balance.batchId, choice)->number);
    rows.SetDouble(1, balance.quantity.ToDouble());
    rows.SetCurrency(2, balance.amount);
    rows.SetCurrency(3, Currency());
    rows.SetInteger(4, itemId);
    rows.CommitRow();
  }
}

void LedgerReader::AddMovements(LedgerRows& target, std::int32_t itemId, std::int32_t firstPeriod,
                                std::int32_t lastPeriod, const LedgerChoice& choice) {
  std::size_t rowCount = RowsIn(target);
  std::int32_t at = firstPeriod;
  target.starts = {rowCount};
  RowAppender row(*target.rows);
  Statement rows =
      store_.Reading().Query(kMovementSql, itemId, DaysOf(firstPeriod).first, DaysOf(lastPeriod).past);
  while (rows.Step()) {
    const Batch* batch = ChosenBatch(rows.Integer(5), choice);
    if (batch == nullptr || !choice.HasWarehouse(rows.Integer(13))) continue;
    for (const std::int32_t period = std::min(rows.Int32(0), lastPeriod); at < period; ++at) {
      target.starts.push_back(rowCount);
    }
    row.SetInteger(0, rows.Int32(1));
    row.SetInteger(1, rows.Int32(2));
    row.SetDate(2, rows.GetDate(3));
    row.SetText(3, rows.TextView(4));
    row.SetText(4, batch->number);
    row.SetText(5, rows.TextView(6));
    row.SetText(6, ClassName(rows.Int32(7)));
    row.SetText(7, AuxName(rows.Integer(8)));
    row.SetText(8, rows.TextView(9));
    row.SetInteger(9, rows.Int32(7));
    const bool isIn = rows.Int32(10) > 0;
    const double quantity = rows.GetQuantity(11).ToDouble();
    SetSide(row, kIn, isIn ? quantity : 0, isIn ? rows.Amount(12) : Currency());
    SetSide(row, kOut, isIn ? 0 : quantity, isIn ? Currency() : rows.Amount(12));
    row.SetInteger(18, itemId);
    row.CommitRow();
    ++rowCount;
  }
  for (; at <= lastPeriod; ++at) target.starts.push_back(rowCount);
}

ItemLedger LedgerReader::Read(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                              const LedgerChoice& choice) {
  ItemLedger ledger = NewLedger();
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const std::int32_t until = BalancesUntil();
  ReadBatches(itemId, choice);
  ReadBalances(itemId, std::min(firstPeriod - 1, until), std::min(lastPeriod, until), choice);
  RowAppender opening(*ledger.opening.rows);
  RowAppender closing(*ledger.closing.rows);
  for (std::int32_t period = firstPeriod; period <= lastPeriod; ++period) {
    ledger.opening.starts.push_back(RowsIn(ledger.opening));
    ledger.closing.starts.push_back(RowsIn(ledger.closing));
    AddBalances(opening, itemId, std::min(period - 1, until), false, choice);
    AddBalances(closing, itemId, std::min(period, until), period <= until && !choice.leavesOutZero, choice);
  }
  ledger.opening.starts.push_back(RowsIn(ledger.opening));
  ledger.closing.starts.push_back(RowsIn(ledger.closing));
  AddMovements(ledger.happened, itemId, firstPeriod, lastPeriod, choice);
  return ledger;
}

ItemLedger LedgerReader::ReadAll(const std::vector<std::int32_t>& items, std::int32_t period,
                                 const LedgerChoice& choice) {
  ItemLedger ledger = NewLedger();
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const std::int32_t until = BalancesUntil();
  for (const std::int32_t item : items) {
    ReadBatches(item, choice);
    ReadBalances(item, std::min(period - 1, until), std::min(period, until), choice);
    RowAppender opening(*ledger.opening.rows);
    RowAppender closing(*ledger.closing.rows);
    AddBalances(opening, item, std::min(period - 1, until), false, choice);
    AddBalances(closing, item, std::min(period, until), period <= until && !choice.leavesOutZero, choice);
    AddMovements(ledger.happened, item, period, period, choice);
  }
  return ledger;
}

}  // namespace books::reports
