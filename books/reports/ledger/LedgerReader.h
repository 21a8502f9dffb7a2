#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "books/reports/ledger/BillTexts.h"
#include "books/reports/ledger/LedgerChoice.h"
#include "books/reports/ledger/LedgerOutput.h"
#include "books/reports/ledger/MovementRows.h"
#include "platform/rows/TextStore.h"

namespace books::reports {

// The days of a period: the first, and the one past the last.
struct PeriodDays {
  platform::Date first;
  platform::Date past;
};

// Reads an item's ledger in one go. Kept with the book; what it knows of the book from earlier items (names,
// bills, whom a filter chooses) holds as long as nobody has written to the book.
class LedgerReader {
 public:
  explicit LedgerReader(services::Store& store);

  // A new output begins: lets go of texts that earlier ones have piled up.
  void BeginOutput();

  PeriodDays DaysOf(std::int32_t period);
  // An item over a stretch of periods. The rows are added to those of `ledger` while they are few, otherwise
  // to new ones; slices that were handed out stay as they are.
  void Read(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
            const platform::Variant& filter, ItemLedger& ledger);
  // All items of a list in one period.
  ItemLedger ReadAll(const std::vector<std::int32_t>& items, std::int32_t period,
                     const platform::Variant& filter);

 private:
  // A batch of the item that is being read, and what lies of it. The first one stands for goods without, and
  // for all goods of an item that is not costed by batch.
  struct Batch {
    std::int64_t id = 0;
    std::string number;
    std::optional<platform::TextStore::Id> text;  // the number, once it was shown
    bool chosen = true;
    database::Quantity quantity;
    platform::Currency amount;
    bool moved = false;

    bool IsZero() const { return quantity == database::Quantity() && amount == platform::Currency(); }
  };

  void Renew(const platform::Variant& filter);
  void ReadItem(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod, ItemLedger& ledger);
  bool IsCostedByBatch(std::int32_t itemId);
  // Where goods of a batch are counted, and all such places.
  Batch& StockOf(Batch& batch) { return byBatch_ ? batch : batches_.front(); }
  std::span<Batch> Stocks() { return byBatch_ ? std::span(batches_) : std::span(batches_).first(1); }
  void ReadBatches(std::int32_t itemId);
  Batch* ChosenBatch(std::int32_t itemId, std::int64_t id);
  void ReadBalances(std::int32_t itemId, std::int32_t period);
  void AddMovement(std::int32_t itemId, const MovementRow& movement);
  void SetBills();
  LedgerBalance BalanceOf(Batch& batch);
  void AddOpening();
  void AddClosing(bool withMoved);
  platform::TextStore::Id NumberOf(Batch& batch);
  platform::TextStore::Id AuxName(std::int64_t id);
  platform::TextStore::Id ClassName(std::int32_t billClass) const;

  services::Store& store_;
  MovementRows movements_;
  database::Statement balances_;
  database::Statement valuation_;
  database::Statement itemBatches_;
  database::Statement chosenBatches_;  // the same, and which of them a range of numbers takes in

  // As of `version_` of the book.
  std::int64_t version_ = 0;
  LedgerFilterMark mark_;
  std::optional<LedgerChoice> choice_;
  std::int32_t balancesFrom_ = 0;  // the period before accounting began: its balances are the opening stock
  std::int32_t balancesUntil_ = 0;
  std::shared_ptr<platform::TextStore> texts_;  // of the rows, too, which may outlive this
  platform::TextStore::Id noText_ = 0;
  BillTexts bills_;
  std::unordered_map<std::int64_t, platform::TextStore::Id> auxNames_;
  std::vector<std::pair<std::int32_t, platform::TextStore::Id>> classNames_;
  std::unordered_map<std::int32_t, PeriodDays> days_;

  std::vector<Batch> batches_;          // by number
  std::vector<std::int64_t> batchIds_;  // of the same
  bool knowsBatches_ = false;
  bool byBatch_ = false;
  LedgerOutput output_;
};

}  // namespace books::reports
