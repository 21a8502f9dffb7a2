#pragma once

#include <cstdint>
#include <vector>

#include "books/demo/Business.h"

namespace books::demo {

// What the keepers do with the goods themselves: counts, goods that have expired, goods that are used, given
// away or found, gift boxes put together and taken apart, costs put right, and the old warehouse cleared.
class Keeping {
 public:
  explicit Keeping(Business& business);

  void Work(std::int64_t entriesTimesThousand);

 private:
  struct Job {
    Pace pace;
    void (Keeping::*work)();
  };

  void CountGain();
  void CountLoss();
  void IssueOther();
  void ReceiveOther();
  void HandOutGift();
  void ReceiveGift();
  void AdjustCost();
  void ReceiveRebateGoods();
  void ReceiveRebateMoney();
  void PackGiftBoxes();
  void UnpackGiftBoxes();
  void DisposeOfExpired();
  void ClearOldWarehouse();

  posting::Document NewKeepersBill(schema::BillClass billClass);
  // A shelf of a warehouse in use that has goods which are neither numbered nor expired; nothing when none is
  // found soon.
  std::optional<std::size_t> DrawStocked(bool plainOnly);
  std::optional<std::size_t> DrawGiftShelf();
  void AddAmountLine(posting::Document& bill, std::size_t index, int permille);
  std::vector<std::size_t> PartsOf(std::size_t box) const;
  void LinkToAccount(posting::Document& bill);

  Business& business_;
  Random random_;
  std::vector<Job> jobs_;
  std::vector<std::size_t> boxes_;  // items
  std::vector<std::size_t> parts_;  // items that go into boxes
  std::int32_t closingDay_ = 0;
};

}  // namespace books::demo
