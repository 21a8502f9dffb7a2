#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "books/reports/ledger/LedgerChoice.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {

// The days of a period: the first, and the one past the last.
struct PeriodDays {
  platform::Date first;
  platform::Date past;
};

// The rows of a stretch of periods, each period's rows together, and where they begin.
struct LedgerRows {
  platform::Ref<platform::Recordset> rows;
  std::vector<std::size_t> starts;  // of each period, and the end of the last

  platform::Ref<platform::Recordset> Of(std::size_t period) const {
    return rows->Slice(starts[period], starts[period + 1] - starts[period]);
  }
};

// What one item did in a stretch of periods.
struct ItemLedger {
  LedgerRows opening;
  LedgerRows happened;
  LedgerRows closing;
};

// Reads an item's ledger in one go: its balances and its movements, each from one place of the book. Kept
// with the book, so that names which occur again and again are read once an output.
class LedgerReader {
 public:
  explicit LedgerReader(services::Store& store) : store_(store) {}

  // Texts may have changed since the last output.
  void Forget();
  PeriodDays DaysOf(std::int32_t period);
  // An item over a stretch of periods.
  ItemLedger Read(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                  const LedgerChoice& choice);
  // All items of a list in one period.
  ItemLedger ReadAll(const std::vector<std::int32_t>& items, std::int32_t period, const LedgerChoice& choice);

 private:
  struct Batch {
    std::string number;
    bool chosen = true;
  };
  struct Balance {
    std::int32_t period = 0;
    std::int64_t batchId = 0;
    database::Quantity quantity;
    platform::Currency amount;
  };

  void ReadBatches(std::int32_t itemId, const LedgerChoice& choice);
  const Batch* ChosenBatch(std::int64_t id, const LedgerChoice& choice) const;
  void ReadBalances(std::int32_t itemId, std::int32_t firstPeriod, std::int32_t lastPeriod,
                    const LedgerChoice& choice);
  void AddBalances(platform::RowAppender& rows, std::int32_t itemId, std::int32_t period, bool keepsZero,
                   const LedgerChoice& choice);
  void AddMovements(LedgerRows& target, std::int32_t itemId, std::int32_t firstPeriod,
                    std::int32_t lastPeriod, const LedgerChoice& choice);
  std::int32_t BalancesUntil();
  const std::string& AuxName(std::int64_t id);
  const std::string& ClassName(std::int32_t billClass);

  services::Store& store_;
  std::unordered_map<std::int64_t, Batch> batches_;  // of the item that is being read
  std::vector<Balance> balances_;                    // likewise, by period and batch
  std::unordered_map<std::int64_t, std::string> auxNames_;
  std::unordered_map<std::int32_t, std::string> classNames_;
  std::unordered_map<std::int32_t, PeriodDays> days_;
};

}  // namespace books::reports
