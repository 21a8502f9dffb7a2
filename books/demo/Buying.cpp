// The buyers look at each warehouse every third day. A central warehouse buys what it wants from the items'
// suppliers, mostly on order; a shop fetches it from the items' home and buys only what is not there. A
// delivery that would arrive after the last day stays an open order.
#include "books/demo/Buying.h"

#include <algorithm>
#include <utility>

namespace books::demo {
namespace {

using database::Quantity;
using schema::BillClass;

constexpr std::int64_t kMillion = 1'000'000;
constexpr std::size_t kMostLines = 8;
constexpr std::int32_t kEveryDays = 3;
constexpr std::int32_t kDiscontinuedDays = 200;

}  // namespace

Buying::Buying(Business& business)
    : business_(business), random_(business.plan.seed, "buying"), returns_(4, 1) {
  const std::int32_t last = business.plan.today.Days();
  const std::int32_t span = business.plan.Days();
  for (std::size_t item = 0; item < business.company.items.size(); ++item) {
    const std::int64_t fate = random_.Between(1, 1000);
    const auto back = static_cast<std::int32_t>(random_.Between(std::min(span - 1, 45), std::min(span, 210)));
    const Item& facts = business.company.items[item];
    const bool starves = fate <= 130 || facts.discontinued;
    starvedFrom_.push_back(starves ? last - (facts.discontinued ? kDiscontinuedDays : back) : last + 1);
    if (fate > 930 && !facts.suppliers.empty() && !facts.discontinued) {
      surplus_[last - (back / 2)].push_back(item);
    }
  }
}

bool Buying::Starved(std::size_t item) const { return business_.day.Days() >= starvedFrom_[item]; }

std::int64_t Buying::Missing(const Shelf& shelf) const { return shelf.full - shelf.quantity - shelf.coming; }

std::vector<Taken> Buying::NewGoods(const Item& item, std::int64_t quantity, std::int32_t oldest) {
  std::vector<Taken> goods;
  std::size_t parts = item.auxIds.empty() ? 1 : item.auxIds.size();
  parts = std::min(parts, static_cast<std::size_t>(std::max<std::int64_t>(quantity / kMillion, 1)));
  std::int64_t rest = quantity;
  for (std::size_t part = 0; part < parts; ++part) {
    Taken made;
    const auto left = static_cast<std::int64_t>(parts - part);
    made.lot.quantity = left == 1 ? rest : RoundDown(item, rest / left);
    rest -= made.lot.quantity;
    if (!item.auxIds.empty()) made.lot.auxId = item.auxIds[part];
    if (item.Is(Handling::kBatch)) {
      const platform::Date produced =
          business_.day.AddDays(-static_cast<std::int32_t>(random_.Between(1, std::max(oldest, 1))));
      made.lot.batchId = business_.journal.NewBatch(item, produced);
      if (item.family->shelfLifeDays > 0) made.lot.expiryDay = produced.Days() + item.family->shelfLifeDays;
    }
    if (item.auxUnitId != 0) {
      const std::int64_t piece = std::int64_t{item.family->auxFactor} * kMillion;
      made.lot.auxQuantity = std::max<std::int64_t>((made.lot.quantity + (piece / 2)) / piece, 1) * kMillion;
    }
    if (item.Is(Handling::kSerial)) {
      for (std::int64_t piece = 0; piece < made.lot.quantity / kMillion; ++piece) {
        made.serials.push_back(business_.journal.NewSerial(item));
      }
    }
    goods.push_back(std::move(made));
  }
  return goods;
}

void Buying::FillShelves() {
  std::vector<posting::OpeningStock> rows;
  for (std::size_t index = 0; index < business_.shelves.Count(); ++index) {
    const Shelf& shelf = business_.shelves.At(index);
    const Item& item = business_.shelves.ItemOf(shelf);
    // A serial number begins with the bill that it came in with.
    if (item.Is(Handling::kSerial) || random_.Chance(80)) {
      business_.shelves.Want(index);
      continue;
    }
    OpenShelf(index, rows);
  }
  business_.journal.Open(rows);
}

void Buying::OpenShelf(std::size_t index, std::vector<posting::OpeningStock>& rows) {
  const Shelf& shelf = business_.shelves.At(index);
  const Item& item = business_.shelves.ItemOf(shelf);
  const bool gift = business_.company.warehouses[shelf.warehouse].role == Role::kGift;
  const std::int64_t quantity =
      RoundDown(item, random_.Between(shelf.reorder / kMillion, shelf.full / kMillion) * kMillion);
  if (quantity <= 0) return;
  for (const Taken& goods : NewGoods(item, quantity, item.family->shelfLifeDays / 3)) {
    const std::int64_t cost = business_.prices.CostOn(item, business_.plan.firstDay);
    rows.push_back({.itemId = item.id,
                    .warehouseId = business_.WarehouseIdOf(shelf),
                    .batchId = goods.lot.batchId,
                    .auxId = goods.lot.auxId,
                    .quantity = Quantity::FromUnits(goods.lot.quantity),
                    .auxQuantity = Quantity::FromUnits(goods.lot.auxQuantity),
                    .amount = gift ? platform::Currency() : AmountOf(cost, goods.lot.quantity)});
    business_.shelves.Put(index, goods.lot);
  }
}

void Buying::Replenish(std::int64_t entriesTimesThousand) {
  const std::int32_t day = business_.day.Days();
  BuyTooMuch();
  for (std::size_t warehouse = 0; warehouse < business_.company.warehouses.size(); ++warehouse) {
    if ((day + static_cast<std::int32_t>(warehouse)) % kEveryDays != 0) continue;
    const std::vector<std::size_t> wanted = business_.shelves.CollectWanted(warehouse);
    if (business_.company.warehouses[warehouse].role == Role::kShop) {
      Feed(warehouse, wanted);
    } else {
      Buy(warehouse, wanted);
    }
  }
  returns_.Add(entriesTimesThousand);
  while (returns_.Due()) ReturnToSupplier();
}

// Everybody wanted more of these, for a season that then was not so good.
void Buying::BuyTooMuch() {
  const auto today = surplus_.find(business_.day.Days());
  if (today == surplus_.end()) return;
  std::map<std::size_t, std::vector<Line>> bySupplier;
  for (const std::size_t item : today->second) {
    const Item& facts = business_.company.items[item];
    std::int64_t highest = 0;
    for (const std::size_t place : business_.shelves.OfItem(item))
      highest += business_.shelves.At(place).full;
    const std::size_t home = business_.shelves.OfItem(item).front();
    const std::int64_t quantity = RoundDown(facts, highest * random_.Between(120, 260) / 100);
    bySupplier[facts.suppliers[0]].push_back({.shelf = home, .quantity = quantity});
  }
  for (auto& [supplier, lines] : bySupplier) BuyFrom(supplier, std::move(lines));
}

void Buying::Buy(std::size_t /*warehouse*/, const std::vector<std::size_t>& wanted) {
  std::map<std::size_t, std::vector<Line>> bySupplier;
  for (const std::size_t index : wanted) {
    const Shelf& shelf = business_.shelves.At(index);
    const Item& item = business_.shelves.ItemOf(shelf);
    if (item.suppliers.empty() || Starved(shelf.item)) continue;
    const std::int64_t quantity = RoundDown(item, Missing(shelf));
    if (quantity <= 0) continue;
    const std::size_t supplier = random_.Chance(750) ? item.suppliers[0] : random_.Pick(item.suppliers);
    std::vector<Line>& lines = bySupplier[supplier];
    lines.push_back({.shelf = index, .quantity = quantity});
    if (lines.size() == kMostLines) BuyFrom(supplier, std::exchange(lines, {}));
  }
  for (auto& [supplier, lines] : bySupplier) {
    if (!lines.empty()) BuyFrom(supplier, std::move(lines));
  }
}

void Buying::BuyFrom(std::size_t supplier, std::vector<Line> lines) {
  for (Line& line : lines) {
    Shelf& shelf = business_.shelves.At(line.shelf);
    const Item& item = business_.shelves.ItemOf(shelf);
    // Whole packages, when a package is not far too much.
    const std::int64_t package = std::int64_t{item.family->packageFactor} * kMillion;
    if (item.packageUnitId != 0 && line.quantity * 2 > package) {
      line.quantity = (line.quantity + (package / 2)) / package * package;
    }
    line.price = business_.prices.BuyingPrice(item, supplier, business_.day);
    shelf.coming += line.quantity;
  }
  if (random_.Chance(700)) {
    Order order;
    order.date = business_.day;
    order.due = business_.day.AddDays(7);
    order.supplierId = business_.company.suppliers[supplier].id;
    order.departmentId = business_.company.buyingDepartment;
    order.employeeId = random_.Pick(business_.company.buyers);
    for (const Line& line : lines) {
      const Item& item = business_.shelves.ItemOf(business_.shelves.At(line.shelf));
      const InUnit inUnit = InSuitingUnit(item, line.quantity);
      order.lines.push_back({.itemId = item.id,
                             .auxId = std::nullopt,
                             .unitId = inUnit.unitId,
                             .unitQuantity = inUnit.quantity,
                             .quantity = line.quantity,
                             .price = line.price * inUnit.factor});
    }
    const Id id = business_.journal.WriteOrder(order);
    std::int32_t number = 0;
    for (Line& line : lines) {
      line.order = id;
      line.orderLine = ++number;
    }
  }
  Schedule(supplier, lines);
}

void Buying::Schedule(std::size_t supplier, const std::vector<Line>& lines) {
  const bool fresh = std::ranges::any_of(lines, [&](const Line& line) {
    return business_.shelves.ItemOf(business_.shelves.At(line.shelf)).Perishable();
  });
  const auto arrival = business_.day.Days() + static_cast<std::int32_t>(fresh ? 1 : random_.Between(3, 14));
  Delivery first{.supplier = supplier, .lines = lines};
  Delivery second{.supplier = supplier, .lines = {}};
  for (Line& line : first.lines) {
    const Item& item = business_.shelves.ItemOf(business_.shelves.At(line.shelf));
    if (!line.order || !random_.Chance(200)) continue;
    Line later = line;
    line.quantity = RoundDown(item, line.quantity * 6 / 10);
    later.quantity -= line.quantity;
    second.lines.push_back(later);
  }
  std::erase_if(first.lines, [](const Line& line) { return line.quantity <= 0; });
  if (!first.lines.empty()) deliveries_[arrival].push_back(std::move(first));
  if (!second.lines.empty()) {
    deliveries_[arrival + static_cast<std::int32_t>(random_.Between(4, 14))].push_back(std::move(second));
  }
}

void Buying::Receive() {
  const auto today = deliveries_.find(business_.day.Days());
  if (today == deliveries_.end()) return;
  for (const Delivery& delivery : today->second) ReceiveDelivery(delivery);
  deliveries_.erase(today);
}

void Buying::ReceiveDelivery(const Delivery& delivery) {
  const bool estimated = random_.Chance(60);
  posting::Document bill =
      NewBill(business_, estimated ? BillClass::kEstimatedReceipt : BillClass::kPurchaseReceipt,
              business_.company.buyingDepartment, random_.Pick(business_.company.buyers));
  bill.supplierId = business_.company.suppliers[delivery.supplier].id;
  bill.audited = !(business_.MayWaitForAudit() && business_.DaysLeft() < 2 && random_.Chance(400));
  if (estimated) bill.explanation = "发票未到，按估价入库";
  for (const Line& line : delivery.lines) {
    Shelf& shelf = business_.shelves.At(line.shelf);
    const Item& item = business_.shelves.ItemOf(shelf);
    const std::int32_t oldest = std::max(item.family->shelfLifeDays / 6, 3);
    for (const Taken& goods : NewGoods(item, line.quantity, oldest)) {
      posting::Entry entry = NewEntry(business_, shelf, goods, line.price);
      entry.orderId = line.order;
      if (line.order) entry.orderLine = line.orderLine;
      bill.entries.push_back(std::move(entry));
      // What is not audited is not there yet.
      if (bill.audited) business_.shelves.Put(line.shelf, goods.lot, goods.serials);
    }
    if (bill.audited) shelf.coming -= line.quantity;
  }
  // Now and then a receipt is booked days after the goods came, on its right day.
  const platform::Date later = business_.day.AddDays(static_cast<std::int32_t>(random_.Between(2, 8)));
  if (random_.Chance(12) && business_.SameMonth(later) && later <= business_.plan.today) {
    bill.explanation = "补录";
    business_.journal.WriteLate(std::move(bill), later);
  } else {
    business_.journal.Write(std::move(bill));
  }
}

void Buying::Feed(std::size_t warehouse, const std::vector<std::size_t>& wanted) {
  std::map<std::size_t, posting::Document> byHome;
  std::vector<std::size_t> notThere;
  const std::int32_t day = business_.day.Days();
  for (const std::size_t index : wanted) {
    Shelf& shelf = business_.shelves.At(index);
    const Item& item = business_.shelves.ItemOf(shelf);
    const std::size_t home = business_.shelves.OfItem(shelf.item).front();
    const std::int64_t quantity =
        RoundDown(item, std::min(Missing(shelf), business_.shelves.Sellable(home, day) * 8 / 10));
    if (quantity < std::min(shelf.sale, Missing(shelf))) {
      business_.shelves.Want(index);
      if (random_.Chance(60)) notThere.push_back(index);
      continue;
    }
    const std::size_t from = business_.shelves.At(home).warehouse;
    posting::Document& bill = byHome[from];
    if (bill.entries.empty()) {
      bill = NewBill(business_, BillClass::kTransfer, business_.company.keepingDepartment,
                     random_.Pick(business_.company.keepers));
    }
    for (const Taken& goods : business_.shelves.Take(home, quantity, day, random_)) {
      posting::Entry entry = NewEntry(business_, business_.shelves.At(home), goods, std::nullopt);
      entry.toWarehouseId = business_.company.warehouses[warehouse].id;
      bill.entries.push_back(std::move(entry));
      business_.shelves.Put(index, goods.lot, goods.serials);
    }
    if (bill.entries.size() >= kMostLines) business_.journal.Write(std::exchange(bill, {}));
  }
  for (auto& [from, bill] : byHome) business_.journal.Write(std::move(bill));
  Buy(warehouse, notThere);
}

void Buying::ReturnToSupplier() {
  const std::size_t index = random_.Below(business_.shelves.Count());
  const Shelf& shelf = business_.shelves.At(index);
  const Item& item = business_.shelves.ItemOf(shelf);
  const Role role = business_.company.warehouses[shelf.warehouse].role;
  if (item.suppliers.empty() || item.Is(Handling::kSerial) || role != Role::kCentral) return;
  posting::Document bill = NewBill(business_, BillClass::kPurchaseReceipt, business_.company.buyingDepartment,
                                   random_.Pick(business_.company.buyers));
  bill.supplierId = business_.company.suppliers[item.suppliers[0]].id;
  bill.explanation = "退货";
  const std::int64_t quantity = RoundDown(item, std::max(shelf.sale / 3, kMillion));
  const std::int64_t price = business_.prices.BuyingPrice(item, item.suppliers[0], business_.day);
  for (Taken goods : business_.shelves.Take(index, quantity, business_.day.Days(), random_)) {
    goods.lot.quantity = -goods.lot.quantity;
    goods.lot.auxQuantity = -goods.lot.auxQuantity;
    bill.entries.push_back(NewEntry(business_, shelf, goods, price));
  }
  business_.journal.Write(std::move(bill));
}

}  // namespace books::demo
