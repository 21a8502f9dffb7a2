#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "books/database/Connection.h"
#include "platform/rows/TextStore.h"

namespace books::reports {

// What a ledger shows of a bill; its texts by their ids.
struct BillText {
  std::int32_t billClass = 0;
  platform::TextStore::Id number = 0;
  platform::TextStore::Id voucher = 0;
  platform::TextStore::Id explanation = 0;
};

// Bills by their id, for a reader that meets them in no order. The first ones are looked up one by one; when
// that has cost about as much as reading all bills of the book in one go, that is done, and from then on a
// bill is a place in memory.
class BillTexts {
 public:
  explicit BillTexts(database::Connection& connection);

  // Bills may have changed; from now on their texts are kept in `texts`, which must outlive this or its next
  // Forget.
  void Forget(platform::TextStore& texts);
  // The bills that are known beforehand.
  std::size_t Count() const { return bills_.size(); }
  // A bill that is not there has empty texts.
  BillText Of(std::int64_t billId);
  // The end of a reading. A look-up that were left standing on its row would hold the picture of the data
  // that it was read from, for every reading to come.
  void Release() { one_.Reset(); }

 private:
  BillText LookUp(std::int64_t billId);
  void Plan();
  void ReadAll();
  // Of a row with the class at `firstColumn` and the texts behind it.
  BillText Keep(const database::Statement& row, int firstColumn, platform::TextStore::Id number);

  database::Connection& connection_;
  database::Statement one_;
  platform::TextStore* texts_ = nullptr;
  BillText none_;
  std::int64_t lookUps_ = 0;
  std::int64_t lookUpsAllowed_ = 0;  // before all are read; unknown while 0
  std::int64_t firstId_ = 0;
  std::vector<BillText> bills_;  // from the first id on; empty while bills are looked up
};

}  // namespace books::reports
