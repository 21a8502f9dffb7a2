// The small jobs are paced by their share of all entries; expired goods are looked through every tenth day.
#include "books/demo/Keeping.h"

#include <algorithm>
#include <utility>

namespace books::demo {
namespace {

using platform::Currency;
using schema::BillClass;
using schema::Direction;

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::size_t kMostLines = 20;
constexpr int kTries = 60;
constexpr std::size_t kPartsInBox = 3;
constexpr std::string_view kUses[] = {"样品", "领用", "展会", "检验", "捐赠"};

}  // namespace

Keeping::Keeping(Business& business) : business_(business), random_(business.plan.seed, "keeping") {
  jobs_ = {{Pace(10, 2), &Keeping::CountGain},         {Pace(16, 3), &Keeping::CountLoss},
           {Pace(18, 2), &Keeping::IssueOther},        {Pace(12, 2), &Keeping::ReceiveOther},
           {Pace(8, 2), &Keeping::HandOutGift},        {Pace(5, 2), &Keeping::ReceiveGift},
           {Pace(5, 2), &Keeping::AdjustCost},         {Pace(5, 2), &Keeping::ReceiveRebateGoods},
           {Pace(2, 1), &Keeping::ReceiveRebateMoney}, {Pace(14, 4), &Keeping::PackGiftBoxes},
           {Pace(3, 4), &Keeping::UnpackGiftBoxes}};
  for (std::size_t item = 0; item < business.company.items.size(); ++item) {
    const Item& facts = business.company.items[item];
    if (facts.Is(Handling::kAssembled)) boxes_.push_back(item);
    const bool counted = facts.auxIds.empty() && facts.auxUnitId == 0 && !facts.Is(Handling::kSerial);
    if (counted && !facts.Is(Handling::kAssembled) && facts.cost < 400'000) parts_.push_back(item);
  }
  closingDay_ = business.plan.firstDay.Days() + (business.plan.Days() / 3);
}

void Keeping::Work(std::int64_t entriesTimesThousand) {
  for (Job& job : jobs_) {
    job.pace.Add(entriesTimesThousand);
    while (job.pace.Due()) (this->*job.work)();
  }
  if (business_.day.Days() == closingDay_) ClearOldWarehouse();
  if (business_.day.Days() % 10 == 0) DisposeOfExpired();
}

posting::Document Keeping::NewKeepersBill(BillClass billClass) {
  return NewBill(business_, billClass, business_.company.keepingDepartment,
                 random_.Pick(business_.company.keepers));
}

std::optional<std::size_t> Keeping::DrawStocked(bool plainOnly) {
  for (int tries = 0; tries < kTries; ++tries) {
    const std::size_t index = random_.Below(business_.shelves.Count());
    const Shelf& shelf = business_.shelves.At(index);
    const Item& item = business_.shelves.ItemOf(shelf);
    const Role role = business_.company.warehouses[shelf.warehouse].role;
    if ((role != Role::kCentral && role != Role::kShop) || item.Is(Handling::kSerial)) continue;
    if (plainOnly && (item.Is(Handling::kBatch) || !item.auxIds.empty())) continue;
    if (business_.shelves.Sellable(index, business_.day.Days()) >= 4 * kMillion) return index;
  }
  return std::nullopt;
}

std::optional<std::size_t> Keeping::DrawGiftShelf() {
  for (std::size_t warehouse = 0; warehouse < business_.company.warehouses.size(); ++warehouse) {
    if (business_.company.warehouses[warehouse].role != Role::kGift) continue;
    const std::vector<std::size_t>& shelves = business_.shelves.InWarehouse(warehouse);
    if (!shelves.empty()) return random_.Pick(shelves);
  }
  return std::nullopt;
}

void Keeping::CountGain() {
  posting::Document bill = NewKeepersBill(BillClass::kCountGain);
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawStocked(false);
    if (!index) continue;
    const Shelf& shelf = business_.shelves.At(*index);
    Taken found{.lot = shelf.lots.front(), .serials = {}};
    if (found.lot.quantity <= 0) continue;
    found.lot.quantity = random_.Between(1, 2) * kMillion;
    found.lot.auxQuantity = 0;
    bill.entries.push_back(NewEntry(business_, shelf, found, std::nullopt));
    business_.shelves.Put(*index, found.lot);
  }
  business_.journal.Write(std::move(bill));
}

void Keeping::CountLoss() {
  posting::Document bill = NewKeepersBill(BillClass::kCountLoss);
  for (int line = 0; line < 3; ++line) {
    const std::optional<std::size_t> index = DrawStocked(false);
    if (!index) continue;
    const std::int64_t quantity = random_.Between(1, 3) * kMillion;
    for (const Taken& lost : business_.shelves.Take(*index, quantity, business_.day.Days(), random_)) {
      bill.entries.push_back(NewEntry(business_, business_.shelves.At(*index), lost, std::nullopt));
    }
  }
  business_.journal.Write(std::move(bill));
}

// Other bills are linked to one account: a customer, a supplier, a department or an employee.
void Keeping::LinkToAccount(posting::Document& bill) {
  const std::int64_t kind = random_.Between(0, 3);
  if (kind == 0) bill.customerId = random_.Pick(business_.company.customers).id;
  if (kind == 1) bill.supplierId = random_.Pick(business_.company.suppliers).id;
  if (kind == 2) bill.departmentId = random_.Pick(business_.company.departments);
  if (kind == 3) bill.employeeId = random_.Pick(business_.company.sellers);
  bill.explanation = random_.Pick(kUses);
}

void Keeping::IssueOther() {
  posting::Document bill = NewKeepersBill(BillClass::kOtherIssue);
  LinkToAccount(bill);
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawStocked(false);
    if (!index) continue;
    const Shelf& shelf = business_.shelves.At(*index);
    const Item& item = business_.shelves.ItemOf(shelf);
    const std::int64_t quantity = std::max(RoundDown(item, random_.Around(shelf.sale / 2, 500)), kMillion);
    for (const Taken& used : business_.shelves.Take(*index, quantity, business_.day.Days(), random_)) {
      posting::Entry entry = NewEntry(business_, shelf, used, business_.prices.CostOn(item, business_.day));
      entry.note = bill.explanation;
      bill.entries.push_back(std::move(entry));
    }
  }
  bill.audited = !(business_.MayWaitForAudit() && random_.Chance(300));
  business_.journal.Write(std::move(bill));
}

void Keeping::ReceiveOther() {
  posting::Document bill = NewKeepersBill(BillClass::kOtherReceipt);
  LinkToAccount(bill);
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawStocked(true);
    if (!index) continue;
    const Shelf& shelf = business_.shelves.At(*index);
    const Item& item = business_.shelves.ItemOf(shelf);
    Taken goods{.lot = {.quantity = std::max(RoundDown(item, random_.Around(shelf.sale / 2, 500)), kMillion)},
                .serials = {}};
    if (item.auxUnitId != 0) goods.lot.auxQuantity = kMillion;
    posting::Entry entry = NewEntry(business_, shelf, goods, business_.prices.CostOn(item, business_.day));
    entry.note = bill.explanation;
    bill.entries.push_back(std::move(entry));
    business_.shelves.Put(*index, goods.lot);
  }
  business_.journal.Write(std::move(bill));
}

void Keeping::HandOutGift() {
  posting::Document bill = NewKeepersBill(BillClass::kOtherIssue);
  bill.customerId = random_.Pick(business_.company.customers).id;
  bill.explanation = "赠品发放";
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawGiftShelf();
    if (!index) continue;
    const std::int64_t quantity = random_.Between(1, 4) * kMillion;
    for (const Taken& gift : business_.shelves.Take(*index, quantity, business_.day.Days(), random_)) {
      bill.entries.push_back(NewEntry(business_, business_.shelves.At(*index), gift, 0));
    }
  }
  business_.journal.Write(std::move(bill));
}

void Keeping::ReceiveGift() {
  posting::Document bill = NewKeepersBill(BillClass::kOtherReceipt);
  bill.supplierId = random_.Pick(business_.company.suppliers).id;
  bill.explanation = "供应商赠品";
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawGiftShelf();
    if (!index) continue;
    const Item& item = business_.shelves.ItemOf(business_.shelves.At(*index));
    Taken gift{.lot = {.quantity = random_.Between(4, 12) * kMillion}, .serials = {}};
    if (item.auxUnitId != 0) gift.lot.auxQuantity = kMillion;
    bill.entries.push_back(NewEntry(business_, business_.shelves.At(*index), gift, 0));
    business_.shelves.Put(*index, gift.lot);
  }
  business_.journal.Write(std::move(bill));
}

void Keeping::AddAmountLine(posting::Document& bill, std::size_t index, int permille) {
  const Shelf& shelf = business_.shelves.At(index);
  const Item& item = business_.shelves.ItemOf(shelf);
  const Currency value = AmountOf(business_.prices.CostOn(item, business_.day), shelf.quantity);
  posting::Entry entry = NewEntry(business_, shelf, {}, std::nullopt);
  // Put right to whole 元.
  entry.amount =
      Currency::FromInteger(platform::MultiplyDivide(value, permille, 1000).Units() / Currency::kScale);
  if (*entry.amount != Currency()) bill.entries.push_back(std::move(entry));
}

void Keeping::AdjustCost() {
  posting::Document bill = NewKeepersBill(BillClass::kPriceAdjustment);
  bill.explanation = "成本调整";
  for (int line = 0; line < 2; ++line) {
    const std::optional<std::size_t> index = DrawStocked(true);
    if (index) AddAmountLine(bill, *index, random_.Chance(500) ? 30 : -30);
  }
  business_.journal.Write(std::move(bill));
}

void Keeping::ReceiveRebateMoney() {
  posting::Document bill = NewKeepersBill(BillClass::kPurchaseRebateMoney);
  bill.explanation = "供应商返利";
  const std::optional<std::size_t> index = DrawStocked(true);
  if (!index) return;
  const Item& item = business_.shelves.ItemOf(business_.shelves.At(*index));
  if (item.suppliers.empty()) return;
  bill.supplierId = business_.company.suppliers[item.suppliers[0]].id;
  AddAmountLine(bill, *index, -25);
  business_.journal.Write(std::move(bill));
}

void Keeping::ReceiveRebateGoods() {
  posting::Document bill = NewKeepersBill(BillClass::kPurchaseRebateGoods);
  bill.explanation = "供应商返利";
  const std::optional<std::size_t> index = DrawStocked(true);
  if (!index) return;
  const Shelf& shelf = business_.shelves.At(*index);
  const Item& item = business_.shelves.ItemOf(shelf);
  if (item.suppliers.empty()) return;
  bill.supplierId = business_.company.suppliers[item.suppliers[0]].id;
  Taken goods{.lot = {.quantity = std::max(RoundDown(item, shelf.sale / 2), kMillion)}, .serials = {}};
  if (item.auxUnitId != 0) goods.lot.auxQuantity = kMillion;
  bill.entries.push_back(NewEntry(business_, shelf, goods, 0));
  business_.shelves.Put(*index, goods.lot);
  business_.journal.Write(std::move(bill));
}

// No item goes into two kinds of boxes, so that a box ties few items together.
std::vector<std::size_t> Keeping::PartsOf(std::size_t box) const {
  std::vector<std::size_t> parts;
  const std::size_t stride = std::max<std::size_t>(boxes_.size(), 1);
  for (std::size_t part = 0; part < kPartsInBox; ++part) {
    const std::size_t place = box + (part * stride);
    if (place < parts_.size()) parts.push_back(parts_[place]);
  }
  return parts;
}

void Keeping::PackGiftBoxes() {
  if (boxes_.empty()) return;
  const std::size_t box = random_.Below(boxes_.size());
  const std::size_t boxShelf = business_.shelves.OfItem(boxes_[box]).front();
  const std::int32_t day = business_.day.Days();
  const std::vector<std::size_t> parts = PartsOf(box);
  if (parts.empty() || business_.shelves.At(boxShelf).quantity > business_.shelves.At(boxShelf).full) return;
  std::int64_t count = random_.Between(4, 16);
  for (const std::size_t part : parts) {
    count =
        std::min(count, business_.shelves.Sellable(business_.shelves.OfItem(part).front(), day) / kMillion);
  }
  if (count <= 0) return;
  posting::Document bill = NewKeepersBill(BillClass::kAssembly);
  Taken made{.lot = {.quantity = count * kMillion}, .serials = {}};
  bill.entries.push_back(NewEntry(business_, business_.shelves.At(boxShelf), made, std::nullopt));
  bill.entries.back().direction = Direction::kIn;
  for (const std::size_t part : parts) {
    const std::size_t home = business_.shelves.OfItem(part).front();
    for (const Taken& goods : business_.shelves.Take(home, count * kMillion, day, random_)) {
      bill.entries.push_back(NewEntry(business_, business_.shelves.At(home), goods, std::nullopt));
      bill.entries.back().direction = Direction::kOut;
    }
  }
  business_.shelves.Put(boxShelf, made.lot);
  business_.journal.Write(std::move(bill));
}

// After the festival what is left is sold piece by piece. Goods kept by batch come back as a new batch.
void Keeping::UnpackGiftBoxes() {
  if (boxes_.empty()) return;
  const std::size_t box = random_.Below(boxes_.size());
  const std::size_t boxShelf = business_.shelves.OfItem(boxes_[box]).front();
  const std::vector<std::size_t> parts = PartsOf(box);
  const std::int64_t stocked = business_.shelves.Sellable(boxShelf, business_.day.Days()) / kMillion;
  if (parts.empty() || stocked < 3) return;
  posting::Document bill = NewKeepersBill(BillClass::kDisassembly);
  const std::int64_t count = random_.Between(1, 2);
  for (const Taken& goods :
       business_.shelves.Take(boxShelf, count * kMillion, business_.day.Days(), random_)) {
    bill.entries.push_back(NewEntry(business_, business_.shelves.At(boxShelf), goods, std::nullopt));
    bill.entries.back().direction = Direction::kOut;
  }
  for (const std::size_t part : parts) {
    const Item& item = business_.company.items[part];
    const std::size_t home = business_.shelves.OfItem(part).front();
    Taken goods{.lot = {.quantity = count * kMillion}, .serials = {}};
    if (item.Is(Handling::kBatch)) {
      const platform::Date produced = business_.day.AddDays(-item.family->shelfLifeDays / 3);
      goods.lot.batchId = business_.journal.NewBatch(item, produced);
      goods.lot.expiryDay = produced.Days() + item.family->shelfLifeDays;
    }
    posting::Entry entry = NewEntry(business_, business_.shelves.At(home), goods, std::nullopt);
    entry.direction = Direction::kIn;
    entry.amount = AmountOf(business_.prices.CostOn(item, business_.day), goods.lot.quantity);
    bill.entries.push_back(std::move(entry));
    business_.shelves.Put(home, goods.lot);
  }
  business_.journal.Write(std::move(bill));
}

// Fresh goods are thrown away at once; of the others some lie on until somebody notices.
void Keeping::DisposeOfExpired() {
  for (std::size_t warehouse = 0; warehouse < business_.company.warehouses.size(); ++warehouse) {
    posting::Document bill = NewKeepersBill(BillClass::kCountLoss);
    bill.explanation = "过期报损";
    for (const std::size_t index : business_.shelves.InWarehouse(warehouse)) {
      const Shelf& shelf = business_.shelves.At(index);
      const Item& item = business_.shelves.ItemOf(shelf);
      if (item.family->shelfLifeDays == 0 || !random_.Chance(item.Perishable() ? 950 : 130)) continue;
      for (const Taken& goods : business_.shelves.TakeExpired(index, business_.day.Days())) {
        bill.entries.push_back(NewEntry(business_, shelf, goods, std::nullopt));
      }
      if (bill.entries.size() < kMostLines) continue;
      posting::Document full = std::exchange(bill, NewKeepersBill(BillClass::kCountLoss));
      bill.explanation = full.explanation;
      business_.journal.Write(std::move(full));
    }
    business_.journal.Write(std::move(bill));
  }
}

void Keeping::ClearOldWarehouse() {
  for (std::size_t warehouse = 0; warehouse < business_.company.warehouses.size(); ++warehouse) {
    if (business_.company.warehouses[warehouse].role != Role::kClosed) continue;
    business_.shelves.StopSelling(warehouse);
    posting::Document bill = NewKeepersBill(BillClass::kTransfer);
    for (const std::size_t index : business_.shelves.InWarehouse(warehouse)) {
      const Shelf& shelf = business_.shelves.At(index);
      const std::size_t home = business_.shelves.OfItem(shelf.item).front();
      for (const Taken& goods :
           business_.shelves.Take(index, shelf.quantity, business_.day.Days(), random_)) {
        posting::Entry entry = NewEntry(business_, shelf, goods, std::nullopt);
        entry.toWarehouseId = business_.WarehouseIdOf(business_.shelves.At(home));
        bill.entries.push_back(std::move(entry));
        business_.shelves.Put(home, goods.lot);
      }
      if (bill.entries.size() < kMostLines) continue;
      business_.journal.Write(std::exchange(bill, NewKeepersBill(BillClass::kTransfer)));
    }
    bill.explanation = "旧仓库清仓";
    business_.journal.Write(std::move(bill));
  }
}

}  // namespace books::demo
