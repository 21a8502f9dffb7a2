#include "books/reports/ledger/LedgerOutput.h"

#include "books/services/Rows.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::Recordset;
using platform::RowText;
using platform::TextStore;
using services::Kept;
using services::RowField;

// The item comes last, so that both layouts share their places.
enum BalanceColumn : std::size_t { kBalanceBatch, kBalanceQty, kBalanceAmount, kBalanceDiff, kBalanceItem };
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

enum MovementColumn : std::size_t {
  kInterId,
  kEntryId,
  kDate,
  kVoucherNo,
  kBatchNo,
  kNote,
  kTranTypeName,
  kAuxName,
  kBillNo,
  kTranType,
  kIn,  // quantity, price, amount and difference
  kOut = kIn + 4,
  kItemId = kOut + 4,
};
constexpr RowField kMovementFields[] = {
    {"FInterID", Kept::kInteger},   {"FEntryID", Kept::kInteger},  {"FDate", Kept::kDate},
    {"FVoucherNo", Kept::kText},    {"FBatchNo", Kept::kText},     {"FNote", Kept::kText},
    {"FTranTypeName", Kept::kText}, {"FAuxName", Kept::kText},     {"FBillNo", Kept::kText},
    {"FTranType", Kept::kInteger},  {"FInQty", Kept::kQuantity},   {"FInPrice", Kept::kReal},
    {"FInAmount", Kept::kAmount},   {"FInDiff", Kept::kAmount},    {"FOutQty", Kept::kQuantity},
    {"FOutPrice", Kept::kReal},     {"FOutAmount", Kept::kAmount}, {"FOutDiff", Kept::kAmount},
    {"FItemID", Kept::kInteger}};
static_assert(std::size(kMovementFields) == kItemId + 1);

// New rows of a recordset, set column by column from what they are made of.
template <class Row>
class NewRows {
 public:
  NewRows(Recordset& target, const std::vector<Row>& rows)
      : rows_(rows), to_(target), texts_(*target.Texts()), first_(to_.AddRows(rows.size())) {}

  template <class Value>
  void Set(std::size_t column, Value value) {
    to_.Fill(column, first_, rows_.size(), [&](std::size_t i) { return value(rows_[i]); });
  }
  void SetText(std::size_t column, TextStore::Id Row::*id) {
    Set(column, [&](const Row& row) { return RowText(texts_, row.*id); });
  }

 private:
  const std::vector<Row>& rows_;
  platform::RowAppender to_;
  const TextStore& texts_;
  std::size_t first_;
};

void WriteBalances(Recordset& target, const std::vector<LedgerBalance>& balances, std::int32_t itemId) {
  if (balances.empty()) return;
  NewRows rows(target, balances);
  rows.SetText(kBalanceBatch, &LedgerBalance::batch);
  rows.Set(kBalanceQty, [](const LedgerBalance& balance) { return balance.quantity.ToDouble(); });
  rows.Set(kBalanceAmount, [](const LedgerBalance& balance) { return balance.amount; });
  rows.Set(kBalanceDiff, [](const LedgerBalance&) { return Currency(); });
  rows.Set(kBalanceItem, [itemId](const LedgerBalance&) { return itemId; });
}

// A price is that of the movement; the other side shows zeros.
void WriteSide(NewRows<LedgerMovement>& rows, std::size_t first, bool isIn) {
  rows.Set(first, [isIn](const LedgerMovement& movement) {
    return movement.isIn == isIn ? movement.quantity.ToDouble() : 0;
  });
  rows.Set(first + 1, [isIn](const LedgerMovement& movement) {
    const bool hasPrice = movement.isIn == isIn && movement.quantity != database::Quantity();
    return hasPrice ? movement.amount.ToDouble() / movement.quantity.ToDouble() : 0;
  });
  rows.Set(first + 2, [isIn](const LedgerMovement& movement) {
    return movement.isIn == isIn ? movement.amount : Currency();
  });
  rows.Set(first + 3, [](const LedgerMovement&) { return Currency(); });
}

void WriteMovements(Recordset& target, const std::vector<LedgerMovement>& movements, std::int32_t itemId) {
  if (movements.empty()) return;
  NewRows rows(target, movements);
  rows.Set(kInterId, [](const LedgerMovement& movement) { return movement.billId; });
  rows.Set(kEntryId, [](const LedgerMovement& movement) { return movement.line; });
  rows.Set(kDate, [](const LedgerMovement& movement) { return movement.date; });
  rows.SetText(kVoucherNo, &LedgerMovement::voucher);
  rows.SetText(kBatchNo, &LedgerMovement::batch);
  rows.SetText(kNote, &LedgerMovement::note);
  rows.SetText(kTranTypeName, &LedgerMovement::className);
  rows.SetText(kAuxName, &LedgerMovement::auxName);
  rows.SetText(kBillNo, &LedgerMovement::billNumber);
  rows.Set(kTranType, [](const LedgerMovement& movement) { return movement.billClass; });
  WriteSide(rows, kIn, true);
  WriteSide(rows, kOut, false);
  rows.Set(kItemId, [itemId](const LedgerMovement&) { return itemId; });
}

}  // namespace

ItemLedger LedgerOutput::NewLedger(const std::shared_ptr<TextStore>& texts) {
  ItemLedger ledger = {.opening = {.rows = services::NewRows(kOpeningFields), .starts = {}},
                       .happened = {.rows = services::NewRows(kMovementFields), .starts = {}},
                       .closing = {.rows = services::NewRows(kClosingFields), .starts = {}}};
  for (LedgerRows* each : {&ledger.opening, &ledger.happened, &ledger.closing}) {
    each->rows->KeepTextsIn(texts);
  }
  return ledger;
}

void LedgerOutput::Begin() {
  openings_.clear();
  movements_.clear();
  closings_.clear();
  periods_.clear();
}

void LedgerOutput::BeginPeriod() {
  periods_.push_back(
      {.openings = openings_.size(), .movements = movements_.size(), .closings = closings_.size()});
}

void LedgerOutput::WriteTo(ItemLedger& ledger, std::int32_t itemId) {
  BeginPeriod();  // the one that would follow marks the end of the last
  auto setStarts = [this](LedgerRows& target, std::size_t Counts::*count) {
    const auto before = static_cast<std::size_t>(target.rows->RecordCount());
    target.starts.clear();
    for (const Counts& period : periods_) target.starts.push_back(before + period.*count);
  };
  setStarts(ledger.opening, &Counts::openings);
  setStarts(ledger.happened, &Counts::movements);
  setStarts(ledger.closing, &Counts::closings);
  WriteBalances(*ledger.opening.rows, openings_, itemId);
  WriteMovements(*ledger.happened.rows, movements_, itemId);
  WriteBalances(*ledger.closing.rows, closings_, itemId);
  Begin();
}

}  // namespace books::reports
