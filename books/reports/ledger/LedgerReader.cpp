// An item's balances are read once, as they stood before the first period. From there they are carried on
// from movement to movement, which is how the book works its stored balances out, so that every period's
// closing is the next one's opening. Goods that are costed by batch lie there batch by batch. The others lie
// together: a batch of them has no cost of its own, and a sold-out one would be left with a rest of the
// common cost. Before accounting began there is nothing; the balances of the period just before it are the
// opening stock. Beyond the last stored balance nothing has moved. Movements are clustered by item and come
// in the order of costing.
#include "books/reports/ledger/LedgerReader.h"

#include <algorithm>
#include <span>

#include "books/schema/Codes.h"
#include "platform/rows/RowAppender.h"
#include "platform/value/Convert.h"

namespace books::reports {
namespace {

using database::Quantity;
using database::Statement;
using database::Transaction;
using platform::Currency;
using platform::Date;
using platform::RowAppender;
using platform::Variant;
using services::Kept;
using services::RowField;

// Ends the look-ups of a reading with it.
class Released {
 public:
  explicit Released(BillTexts& bills) : bills_(bills) {}
  Released(const Released&) = delete;
  Released& operator=(const Released&) = delete;
  Released(Released&&) = delete;
  Released& operator=(Released&&) = delete;
  ~Released() { bills_.Release(); }

 private:
  BillTexts& bills_;
};

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

// The warehouse is read only where some are left out: each column costs its time over millions of movements.
std::string MovementSql(bool withWarehouse) {
  return "SELECT date, bill_id, line, batch_id, aux_id, direction, quantity, amount" +
         std::string(withWarehouse ? ", warehouse_id" : "") +
         " FROM movement WHERE item_id = ? AND date >= ? AND date < ?"
         " ORDER BY date, day_order, bill_id, direction, line";
}

constexpr std::string_view kBalanceSql = R"sql(
SELECT warehouse_id, batch_id, quantity, amount FROM balance WHERE item_id = ? AND period = ?
)sql";

constexpr std::string_view kValuationSql = "SELECT valuation FROM item WHERE id = ?";

constexpr std::string_view kBatchSql = R"sql(
SELECT id, number, (? = '' OR number >= ?) AND (? = '' OR number <= ?) FROM batch WHERE item_id = ?
)sql";

// A reader's rows go to new recordsets once there are so many.
constexpr std::int32_t kManyRows = 4096;

ItemLedger NewLedger() {
  return {.opening = {.rows = services::NewRows(kOpeningFields), .starts = {}},
          .happened = {.rows = services::NewRows(kMovementFields), .starts = {}},
          .closing = {.rows = services::NewRows(kClosingFields), .starts = {}}};
}

void SetSide(RowAppender& row, std::size_t first, double quantity, Currency amount) {
  row.SetDouble(first, quantity);
  row.SetDouble(first + 1, quantity == 0 ? 0 : amount.ToDouble() / quantity);
  row.SetCurrency(first + 2, amount);
  row.SetCurrency(first + 3, Currency());
}

// Rows in the making, with the place where each period's begin.
class RowsOutput {
 public:
  explicit RowsOutput(LedgerRows& target)
      : row(*target.rows),
        starts_(target.starts),
        count_(static_cast<std::size_t>(target.rows->RecordCount())) {
    starts_.clear();
  }

  void BeginPeriod() { starts_.push_back(count_); }
  void Commit() {
    row.CommitRow();
    ++count_;
  }

  RowAppender row;

 private:
  std::vector<std::size_t>& starts_;
  std::size_t count_;
};

}  // namespace

// The rows of one item, period after period.
class LedgerReader::Output {
 public:
  Output(std::int32_t itemId, ItemLedger& ledger)
      : itemId_(itemId), opening_(ledger.opening), happened_(ledger.happened), closing_(ledger.closing) {}

  RowsOutput& Movements() { return happened_; }

  void BeginPeriod() {
    opening_.BeginPeriod();
    happened_.BeginPeriod();
    closing_.BeginPeriod();
  }
  void AddOpening(std::span<const Batch> batches) { AddBalances(opening_, batches, false); }
  // With those of 0 that have moved, when they are asked for.
  void AddClosing(std::span<const Batch> batches, bool withMoved) {
    AddBalances(closing_, batches, withMoved);
  }

 private:
  void AddBalances(RowsOutput& rows, std::span<const Batch> batches, bool withMoved) const {
    for (const Batch& batch : batches) {
      const bool isZero = batch.quantity == Quantity() && batch.amount == Currency();
      if (isZero && !(withMoved && batch.moved)) continue;
      rows.row.SetText(0, batch.number);
      rows.row.SetDouble(1, batch.quantity.ToDouble());
      rows.row.SetCurrency(2, batch.amount);
      rows.row.SetCurrency(3, Currency());
      rows.row.SetInteger(4, itemId_);
      rows.Commit();
    }
  }

  std::int32_t itemId_;
  RowsOutput opening_;
  RowsOutput happened_;
  RowsOutput closing_;
};

LedgerReader::LedgerReader(services::Store& store)
    : store_(store),
      movements_(store.Reading().Prepare(MovementSql(false))),
      placedMovements_(store.Reading().Prepare(MovementSql(true))),
      balances_(store.Reading().Prepare(kBalanceSql)),
      valuation_(store.Reading().Prepare(kValuationSql)),
      itemBatches_(store.Reading().Prepare(kBatchSql)),
      bills_(store.Reading()) {}

// Within the transaction of a reading, so that what is kept and what is read are of the same moment.
void LedgerReader::Renew(const Variant& filter) {
  const std::int64_t version = store_.Reading().DataVersion();
  if (version != version_ || !choice_) {
    version_ = version;
    choice_.reset();
    bills_.Forget();
    auxNames_.clear();
    classNames_.clear();
    days_.clear();
    auto number = [this](std::string_view key) {
      return static_cast<std::int32_t>(platform::LeadingNumber(store_.Profile("IC", key).value_or("0")));
    };
    balancesFrom_ = schema::PeriodOf(number("StartYear"), number("StartPeriod")) - 1;
    Statement until = store_.Reading().Query("SELECT balances_until FROM book_state WHERE id = 1");
    balancesUntil_ = until.Step() ? until.Int32(0) : 0;
    Statement classes = store_.Reading().Query("SELECT id, name FROM bill_class");
    while (classes.Step()) classNames_.emplace_back(classes.Int32(0), classes.Text(1));
  }
  if (choice_ && mark_.Fits(filter)) return;
  choice_.reset();
  choice_.emplace(store_, filter);
  mark_.Take(filter);
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

std::string_view LedgerReader::AuxName(std::int64_t id) {
  if (id == 0) return {};
  const auto [known, isNew] = auxNames_.try_emplace(id);
  if (isNew) {
    Statement row = store_.Reading().Query("SELECT name FROM base_data WHERE id = ?", id);
    if (row.Step()) known->second = row.Text(0);
  }
  return known->second;
}

std::string_view LedgerReader::ClassName(std::int32_t billClass) {
  const auto known = std::ranges::find(classNames_, billClass, [](const auto& each) { return each.first; });
  return known == classNames_.end() ? std::string_view() : std::string_view(known->second);
}

void LedgerReader::ReadBatches(std::int32_t itemId) {
  knowsBatches_ = true;
  const Range& range = choice_->batches;
  itemBatches_.Bind(range.from, range.from, range.to, range.to, itemId);
  while (itemBatches_.Step()) {
    batches_.push_back({.id = itemBatches_.Integer(0),
                        .number = itemBatches_.Text(1),
                        .chosen = itemBatches_.Boolean(2),
                        .quantity = {},
                        .amount = {}});
  }
  std::ranges::sort(batches_.begin() + 1, batches_.end(), {}, &Batch::number);
  batchIds_.clear();
  for (const Batch& batch : batches_) batchIds_.push_back(batch.id);
}

// Null for what the range of batches leaves out; goods without a batch have no number to lie in a range.
LedgerReader::Batch* LedgerReader::ChosenBatch(std::int32_t itemId, std::int64_t id) {
  if (id == 0) return batches_.front().chosen ? &batches_.front() : nullptr;
  if (!knowsBatches_) ReadBatches(itemId);
  const auto found = std::ranges::find(batchIds_, id);
  if (found == batchIds_.end()) return nullptr;
  Batch& batch = batches_[static_cast<std::size_t>(found - batchIds_.begin())];
  return batch.chosen ? &batch : nullptr;
}

bool LedgerReader::IsCostedByBatch(std::int32_t itemId) {
  valuation_.Bind(itemId);
  const bool isItem = valuation_.Step();
  const std::int32_t valuation = isItem ? valuation_.Int32(0) : 0;
  valuation_.Reset();  // an open look-up would hold the book's state for later ones
  return valuation == static_cast<std::int32_t>(schema::Valuation::kBatchCost);
}

// Sums a batch's warehouses and auxiliary properties, since the page tells batches apart and nothing else.
void LedgerReader::ReadBalances(std::int32_t itemId, std::int32_t period) {
  byBatch_ = IsCostedByBatch(itemId);
  batches_.resize(1);
  batches_.front() = {.number = {}, .chosen = !choice_->HasBatchRange(), .quantity = {}, .amount = {}};
  knowsBatches_ = false;
  balances_.Bind(itemId, period);
  while (balances_.Step()) {
    if (!choice_->HasWarehouse(balances_.Integer(0))) continue;
    Batch* const batch = ChosenBatch(itemId, balances_.Integer(1));
    if (batch == nullptr) continue;
    Batch& stock = StockOf(*batch);
    stock.quantity += balances_.GetQuantity(2);
    stock.amount += balances_.Amount(3);
  }
}

void LedgerReader::AddMovement(std::int32_t itemId, const Statement& movement, Output& output) {
  if (!choice_->everyWarehouse && !choice_->HasWarehouse(movement.Integer(8))) return;
  Batch* const batch = ChosenBatch(itemId, movement.Integer(3));
  if (batch == nullptr) return;
  const bool isIn = movement.Int32(5) > 0;
  const Quantity quantity = movement.GetQuantity(6);
  const Currency amount = movement.Amount(7);
  Batch& stock = StockOf(*batch);
  stock.quantity += isIn ? quantity : -quantity;
  stock.amount += isIn ? amount : -amount;
  stock.moved = true;
  const std::int64_t billId = movement.Integer(1);
  const BillText bill = bills_.Of(billId);
  RowAppender& row = output.Movements().row;
  row.SetInteger(0, static_cast<std::int32_t>(billId));
  row.SetInteger(1, movement.Int32(2));
  row.SetDate(2, movement.GetDate(0));
  row.SetText(3, bill.voucher);
  row.SetText(4, batch->number);
  row.SetText(5, bill.explanation);
  row.SetText(6, ClassName(bill.billClass));
  row.SetText(7, AuxName(movement.Integer(4)));
  row.SetText(8, bill.number);
  row.SetInteger(9, bill.billClass);
  SetSide(row, kIn, isIn ? quantity.ToDouble() : 0, isIn ? amount : Currency());
  SetSide(row, kOut, isIn ? 0 : quantity.ToDouble(), isIn ? Currency() : amount);
  row.SetInteger(18, itemId);
  output.Movements().Commit();
}

void LedgerReader::ReadItem(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                            ItemLedger& ledger) {
  const std::int32_t known = std::max(firstPeriod - 1, balancesFrom_);  // from here on there are balances
  ReadBalances(itemId, std::min(known, balancesUntil_));
  Output output(itemId, ledger);
  auto begin = [&](std::int32_t period) {
    output.BeginPeriod();
    for (Batch& stock : Stocks()) stock.moved = false;
    if (period > known) output.AddOpening(Stocks());
  };
  auto end = [&](std::int32_t period) {
    if (period < known) return;
    output.AddClosing(Stocks(), period <= balancesUntil_ && !choice_->leavesOutZero);
  };
  std::int32_t at = firstPeriod;
  begin(at);
  Statement& movement = choice_->everyWarehouse ? movements_ : placedMovements_;
  movement.Bind(itemId, DaysOf(firstPeriod).first, DaysOf(lastPeriod).past);
  for (Date past = DaysOf(at).past; movement.Step(); AddMovement(itemId, movement, output)) {
    for (const Date date = movement.GetDate(0); at < lastPeriod && date >= past; past = DaysOf(at).past) {
      end(at);
      begin(++at);
    }
  }
  for (; at < lastPeriod; begin(++at)) end(at);
  end(at);
  output.BeginPeriod();
}

void LedgerReader::Read(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                        const Variant& filter, ItemLedger& ledger) {
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const Released released(bills_);
  Renew(filter);
  auto isFull = [](const LedgerRows& rows) { return !rows.rows || rows.rows->RecordCount() >= kManyRows; };
  if (isFull(ledger.opening) || isFull(ledger.happened) || isFull(ledger.closing)) ledger = NewLedger();
  ReadItem(itemId, firstPeriod, lastPeriod, ledger);
}

ItemLedger LedgerReader::ReadAll(const std::vector<std::int32_t>& items, std::int32_t period,
                                 const Variant& filter) {
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const Released released(bills_);
  Renew(filter);
  ItemLedger ledger = NewLedger();
  for (const std::int32_t item : items) ReadItem(item, period, period, ledger);
  return ledger;
}

}  // namespace books::reports
