// An item's balances are read once, as they stood before the first period. From there they are carried on
// from movement to movement, which is how the book works its stored balances out, so that every period's
// closing is the next one's opening. Goods that are costed by batch lie there batch by batch. The others lie
// together: a batch of them has no cost of its own, and a sold-out one would be left with a rest of the
// common cost. Before accounting began there is nothing; the balances of the period just before it are the
// opening stock. Beyond the last stored balance nothing has moved.
#include "books/reports/ledger/LedgerReader.h"

#include <algorithm>
#include <span>

#include "books/schema/Codes.h"
#include "platform/value/Convert.h"

namespace books::reports {
namespace {

using database::Quantity;
using database::Statement;
using database::Transaction;
using platform::Currency;
using platform::Date;
using platform::TextStore;
using platform::Variant;

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

constexpr std::string_view kBalanceSql = R"sql(
SELECT warehouse_id, batch_id, quantity, amount FROM balance WHERE item_id = ? AND period = ?
)sql";

constexpr std::string_view kValuationSql = "SELECT valuation FROM item WHERE id = ?";

constexpr std::string_view kBatchSql = "SELECT id, number FROM batch WHERE item_id = ?";
constexpr std::string_view kChosenBatchSql = R"sql(
SELECT id, number, (? = '' OR number >= ?) AND (? = '' OR number <= ?) FROM batch WHERE item_id = ?
)sql";

// A reader's rows go to new recordsets once there are so many.
constexpr std::int32_t kManyRows = 4096;

// Texts that may pile up over outputs, titles above all, before the reader begins anew with none.
constexpr std::size_t kMostTexts = std::size_t{1} << 22U;

}  // namespace

LedgerReader::LedgerReader(services::Store& store)
    : store_(store),
      movements_(store.Reading()),
      balances_(store.Reading().Prepare(kBalanceSql)),
      valuation_(store.Reading().Prepare(kValuationSql)),
      itemBatches_(store.Reading().Prepare(kBatchSql)),
      chosenBatches_(store.Reading().Prepare(kChosenBatchSql)),
      bills_(store.Reading()) {}

// Within the transaction of a reading, so that what is kept and what is read are of the same moment.
void LedgerReader::Renew(const Variant& filter) {
  const std::int64_t version = store_.Reading().DataVersion();
  if (version != version_ || !choice_) {
    version_ = version;
    choice_.reset();
    texts_ = std::make_shared<TextStore>();
    noText_ = texts_->Keep({});
    bills_.Forget(*texts_);
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
    while (classes.Step()) classNames_.emplace_back(classes.Int32(0), texts_->Keep(classes.TextView(1)));
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

TextStore::Id LedgerReader::AuxName(std::int64_t id) {
  if (id == 0) return noText_;
  const auto [known, isNew] = auxNames_.try_emplace(id, noText_);
  if (isNew) {
    Statement row = store_.Reading().Query("SELECT name FROM base_data WHERE id = ?", id);
    if (row.Step()) known->second = texts_->Keep(row.TextView(0));
  }
  return known->second;
}

TextStore::Id LedgerReader::ClassName(std::int32_t billClass) const {
  const auto known = std::ranges::find(classNames_, billClass, [](const auto& each) { return each.first; });
  return known == classNames_.end() ? noText_ : known->second;
}

void LedgerReader::ReadBatches(std::int32_t itemId) {
  knowsBatches_ = true;
  const bool choosing = choice_->HasBatchRange();
  Statement& rows = choosing ? chosenBatches_ : itemBatches_;
  if (choosing) {
    const Range& range = choice_->batches;
    rows.Bind(range.from, range.from, range.to, range.to, itemId);
  } else {
    rows.Bind(itemId);
  }
  while (rows.Step()) {
    batches_.push_back({.id = rows.Integer(0),
                        .number = rows.Text(1),
                        .text = {},
                        .chosen = !choosing || rows.Boolean(2),
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
  batches_.front() = {
      .number = {}, .text = noText_, .chosen = !choice_->HasBatchRange(), .quantity = {}, .amount = {}};
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

TextStore::Id LedgerReader::NumberOf(Batch& batch) {
  if (!batch.text) batch.text = texts_->Keep(batch.number);
  return *batch.text;
}

LedgerBalance LedgerReader::BalanceOf(Batch& batch) {
  return {.batch = NumberOf(batch), .quantity = batch.quantity, .amount = batch.amount};
}

void LedgerReader::AddOpening() {
  for (Batch& stock : Stocks()) {
    if (!stock.IsZero()) output_.AddOpening(BalanceOf(stock));
  }
}

// With those of 0 that have moved, when they are asked for.
void LedgerReader::AddClosing(bool withMoved) {
  for (Batch& stock : Stocks()) {
    if (!stock.IsZero() || (withMoved && stock.moved)) output_.AddClosing(BalanceOf(stock));
  }
}

void LedgerReader::AddMovement(std::int32_t itemId, const MovementRow& movement) {
  if (!choice_->everyWarehouse && !choice_->HasWarehouse(movement.WarehouseId())) return;
  Batch* const batch = ChosenBatch(itemId, movement.BatchId());
  if (batch == nullptr) return;
  const bool isIn = movement.IsIn();
  const Quantity quantity = movement.Quantity();
  const Currency amount = movement.Amount();
  Batch& stock = StockOf(*batch);
  stock.quantity += isIn ? quantity : -quantity;
  stock.amount += isIn ? amount : -amount;
  stock.moved = true;
  output_.AddMovement({.billId = movement.BillId(),
                       .line = movement.Line(),
                       .date = movement.Day(),
                       .batch = NumberOf(*batch),
                       .auxName = AuxName(movement.AuxId()),
                       .isIn = isIn,
                       .quantity = quantity,
                       .amount = amount});
}

// All at the end: bills lie scattered in memory, and one after the other they are fetched side by side.
void LedgerReader::SetBills() {
  for (LedgerMovement& movement : output_.Movements()) {
    const BillText bill = bills_.Of(movement.billId);
    movement.billClass = bill.billClass;
    movement.billNumber = bill.number;
    movement.voucher = bill.voucher;
    movement.note = bill.explanation;
    movement.className = ClassName(bill.billClass);
  }
}

void LedgerReader::ReadItem(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                            ItemLedger& ledger) {
  const std::int32_t known = std::max(firstPeriod - 1, balancesFrom_);  // from here on there are balances
  ReadBalances(itemId, std::min(known, balancesUntil_));
  auto begin = [&](std::int32_t period) {
    output_.BeginPeriod();
    for (Batch& stock : Stocks()) stock.moved = false;
    if (period > known) AddOpening();
  };
  auto end = [&](std::int32_t period) {
    if (period >= known) AddClosing(period <= balancesUntil_ && !choice_->leavesOutZero);
  };
  output_.Begin();
  std::int32_t at = firstPeriod;
  begin(at);
  movements_.Read(itemId, DaysOf(firstPeriod).first, DaysOf(lastPeriod).past, !choice_->everyWarehouse);
  Date past = DaysOf(at).past;
  for (std::size_t i = 0; i < movements_.Count(); ++i) {
    const MovementRow movement = movements_[i];
    for (; at < lastPeriod && movement.Day() >= past; past = DaysOf(at).past) {
      end(at);
      begin(++at);
    }
    AddMovement(itemId, movement);
  }
  for (; at < lastPeriod; begin(++at)) end(at);
  end(at);
  SetBills();
  output_.WriteTo(ledger, itemId);
}

void LedgerReader::BeginOutput() {
  if (texts_ && texts_->Count() > kMostTexts + 2 * bills_.Count()) choice_.reset();
}

void LedgerReader::Read(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                        const Variant& filter, ItemLedger& ledger) {
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const Released released(bills_);
  Renew(filter);
  auto isFull = [this](const LedgerRows& rows) {
    return !rows.rows || rows.rows->RecordCount() >= kManyRows || rows.rows->Texts() != texts_;
  };
  if (isFull(ledger.opening) || isFull(ledger.happened) || isFull(ledger.closing))
    ledger = LedgerOutput::NewLedger(texts_);
  ReadItem(itemId, firstPeriod, lastPeriod, ledger);
}

ItemLedger LedgerReader::ReadAll(const std::vector<std::int32_t>& items, std::int32_t period,
                                 const Variant& filter) {
  const Transaction picture(store_.Reading(), Transaction::Kind::kRead);
  const Released released(bills_);
  Renew(filter);
  ItemLedger ledger = LedgerOutput::NewLedger(texts_);
  for (const std::int32_t item : items) ReadItem(item, period, period, ledger);
  return ledger;
}

}  // namespace books::reports
