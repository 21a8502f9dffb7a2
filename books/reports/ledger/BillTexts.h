#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "books/database/Connection.h"
#include "platform/rows/TextStore.h"

namespace books::reports {

// What a ledger shows of a bill.
struct BillText {
  std::int32_t billClass = 0;
  std::string_view number;
  std::string_view voucher;
  std::string_view explanation;
};

// Bills by their id, for a reader that meets them in no order. The first ones are looked up one by one; when
// that has cost about as much as reading all bills of the book in one go, that is done, and from then on a
// bill is a place in memory.
class BillTexts {
 public:
  explicit BillTexts(database::Connection& connection);

  // Bills may have changed.
  void Forget();
  // Texts stay good until the next call. A bill that is not there has none.
  BillText Of(std::int64_t billId);
  // The end of a reading. A look-up that were left standing on its row would hold the picture of the data
  // that it was read from, for every reading to come.
  void Release() { one_.Reset(); }

 private:
  // In one place, so that a bill costs memory one visit.
  struct Entry {
    std::int32_t billClass = 0;
    platform::TextStore::Id voucher = 0;
    platform::TextStore::Id explanation = 0;
    std::uint8_t numberSize = 0;    // kLongNumber: the number is a text of the store, too
    std::array<char, 27> number{};  // or its id
  };
  static constexpr std::uint8_t kLongNumber = 255;

  BillText LookUp(std::int64_t billId);
  void Plan();
  void ReadAll();

  database::Connection& connection_;
  database::Statement one_;
  std::int64_t lookUps_ = 0;
  std::int64_t lookUpsAllowed_ = 0;  // before all are read; unknown while 0
  std::int64_t firstId_ = 0;
  std::vector<Entry> entries_;  // from the first id on; empty while bills are looked up
  platform::TextStore texts_;   // vouchers and explanations, many of which repeat
};

}  // namespace books::reports
