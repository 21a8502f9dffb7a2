#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "books/database/Quantity.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/TextStore.h"

namespace books::reports {

// The rows of a stretch of periods, each period's rows together, and where they begin. The recordset may hold
// rows of other stretches before them.
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

// Texts by their ids in the store of the output.
struct LedgerBalance {
  platform::TextStore::Id batch = 0;
  database::Quantity quantity;
  platform::Currency amount;
};
struct LedgerMovement {
  std::int32_t billId = 0;
  std::int32_t line = 0;
  std::int32_t billClass = 0;
  platform::Date date;
  platform::TextStore::Id voucher = 0;
  platform::TextStore::Id batch = 0;
  platform::TextStore::Id note = 0;
  platform::TextStore::Id className = 0;
  platform::TextStore::Id auxName = 0;
  platform::TextStore::Id billNumber = 0;
  bool isIn = false;
  database::Quantity quantity;
  platform::Currency amount;
};

// Collects what an item did, period after period, and writes it column by column. Kept for the items to come,
// so that they find its room.
class LedgerOutput {
 public:
  // Recordsets without rows that keep their texts in `texts`.
  static ItemLedger NewLedger(const std::shared_ptr<platform::TextStore>& texts);

  // Empty, whatever an earlier item left that could not be read to its end.
  void Begin();
  void BeginPeriod();
  void AddOpening(const LedgerBalance& balance) { openings_.push_back(balance); }
  void AddMovement(const LedgerMovement& movement) { movements_.push_back(movement); }
  void AddClosing(const LedgerBalance& balance) { closings_.push_back(balance); }
  std::vector<LedgerMovement>& Movements() { return movements_; }
  // Adds all to the rows of `ledger`, and is empty again. The recordsets are those of NewLedger, with the
  // store that the ids are of.
  void WriteTo(ItemLedger& ledger, std::int32_t itemId);

 private:
  struct Counts {
    std::size_t openings = 0;
    std::size_t movements = 0;
    std::size_t closings = 0;
  };

  std::vector<LedgerBalance> openings_;
  std::vector<LedgerMovement> movements_;
  std::vector<LedgerBalance> closings_;
  std::vector<Counts> periods_;  // what stood before each
};

}  // namespace books::reports
