// A bill is drawn from the outside in: the warehouse by how much is sold there, the customer by the
// warehouse, then one line after the other by what sells this month. What is not there is not sold; the
// customer takes something else.
#include "books/demo/Selling.h"

#include <algorithm>

namespace books::demo {
namespace {

using schema::BillClass;

constexpr std::int64_t kMillion = 1'000'000;
constexpr int kMostTries = 12;

constexpr std::string_view kSaleNotes[] = {"送货上门", "自提", "月结", "加急", "要求新日期"};

}  // namespace

Selling::Selling(Business& business)
    : business_(business),
      random_(business.plan.seed, "selling"),
      returns_(8, 1),
      rebates_(5, 2),
      orders_(12, 3) {
  // A handful of sales before the receipt, more in a larger company, the last of them still open at the end.
  const std::int64_t count = 3 + (business.plan.entries / 50'000);
  const std::int32_t last = business.plan.today.Days();
  beyondDays_.push_back(last - 1);
  for (std::int64_t index = 0; index < count; ++index) {
    beyondDays_.push_back(
        last - static_cast<std::int32_t>(random_.Between(2, std::max(business.plan.Days() - 1, 2))));
  }
  std::ranges::sort(beyondDays_, std::ranges::greater());
}

void Selling::Sell(std::int64_t untilEntries) {
  int tries = kMostTries;
  while (business_.journal.Entries() < untilEntries && tries > 0) {
    const std::int64_t before = business_.journal.Entries();
    WriteSale();
    tries = business_.journal.Entries() > before ? kMostTries : tries - 1;
  }
}

const Customer& Selling::DrawCustomer(Role role) {
  const Customer* customer = &random_.Pick(business_.company.customers);
  // A central warehouse mostly delivers to those who sell on.
  for (int tries = 0; tries < 3 && role == Role::kCentral && !customer->wholesale; ++tries) {
    customer = &random_.Pick(business_.company.customers);
  }
  return *customer;
}

std::int64_t Selling::QuantityFor(const Shelf& shelf, const Customer& customer) {
  const Item& item = business_.shelves.ItemOf(shelf);
  const std::int64_t quantity = random_.Around(shelf.sale, 700);
  const std::int64_t package = std::int64_t{item.family->packageFactor} * kMillion;
  if (customer.wholesale && item.packageUnitId != 0 && quantity * 2 > package && random_.Chance(600)) {
    return (quantity + (package / 2)) / package * package;
  }
  return std::max(RoundDown(item, quantity), RoundDown(item, kMillion));
}

void Selling::WriteSale() {
  const std::size_t warehouse = business_.shelves.DrawWarehouse(random_);
  if (warehouse >= business_.company.warehouses.size() || !business_.shelves.Sells(warehouse)) return;
  const Role role = business_.company.warehouses[warehouse].role;
  const Customer& customer = DrawCustomer(role);
  const bool consigned = customer.wholesale && random_.Chance(45);
  Draft draft;
  draft.bill = NewBill(business_, consigned ? BillClass::kConsignment : BillClass::kSalesIssue,
                       business_.company.sellingDepartment, random_.Pick(business_.company.sellers));
  draft.bill.customerId = customer.id;
  draft.bill.audited = !(business_.MayWaitForAudit() && random_.Chance(400));
  if (random_.Chance(150)) draft.bill.explanation = random_.Pick(kSaleNotes);
  draft.ordered = !consigned && role == Role::kCentral && random_.Chance(200);
  const std::int64_t lines = role == Role::kCentral ? random_.Between(1, 7) : random_.Between(1, 4);
  int tries = kMostTries;
  while (std::ssize(draft.bill.entries) < lines && tries-- > 0) {
    AddLine(draft, business_.shelves.DrawShelf(warehouse, random_), customer);
  }
  if (draft.ordered) WriteOrderOf(draft, customer);
  business_.journal.Write(std::move(draft.bill));
}

void Selling::AddLine(Draft& draft, std::size_t index, const Customer& customer) {
  const Shelf& shelf = business_.shelves.At(index);
  const Item& item = business_.shelves.ItemOf(shelf);
  const std::int32_t day = business_.day.Days();
  const std::int64_t asked = QuantityFor(shelf, customer);
  if (item.discontinued && business_.DaysLeft() < 60) return;
  if (business_.shelves.Sellable(index, day) <= 0) {
    business_.shelves.Want(index);
    return;
  }
  const std::int64_t price = draft.free ? 0 : business_.prices.SellingPrice(item, customer, business_.day);
  for (const Taken& goods : business_.shelves.Take(index, asked, day, random_)) {
    posting::Entry entry = NewEntry(business_, shelf, goods, price);
    const InUnit inUnit = InSuitingUnit(item, goods.lot.quantity);
    draft.order.push_back({.itemId = item.id,
                           .auxId = entry.auxId,
                           .unitId = inUnit.unitId,
                           .unitQuantity = inUnit.quantity,
                           .quantity = goods.lot.quantity,
                           .price = price * inUnit.factor});
    draft.bill.entries.push_back(std::move(entry));
  }
}

// The order came some days before. Sometimes more was asked for than could be sent: an old rest was given up,
// a new one is still to come.
void Selling::WriteOrderOf(Draft& draft, const Customer& customer) {
  if (draft.bill.entries.empty()) return;
  Order order;
  order.billClass = BillClass::kSalesOrder;
  const platform::Date ordered = business_.day.AddDays(-static_cast<std::int32_t>(random_.Between(1, 8)));
  order.date = std::max(ordered, business_.plan.firstDay);
  order.due = business_.day;
  order.customerId = customer.id;
  order.departmentId = business_.company.sellingDepartment;
  order.employeeId = draft.bill.employeeId.value_or(0);
  order.lines = draft.order;
  for (OrderLine& line : order.lines) {
    if (!random_.Chance(150)) continue;
    const std::int64_t more = random_.Between(1, 2);
    line.unitQuantity += line.unitQuantity * more;
    line.quantity += line.quantity * more;
    line.closed = business_.DaysLeft() > 25;
  }
  const Id id = business_.journal.WriteOrder(order);
  std::int32_t number = 0;
  for (posting::Entry& entry : draft.bill.entries) {
    entry.orderId = id;
    entry.orderLine = ++number;
  }
}

void Selling::SellSpecially(std::int64_t entriesTimesThousand) {
  returns_.Add(entriesTimesThousand);
  while (returns_.Due()) TakeBack();
  rebates_.Add(entriesTimesThousand);
  while (rebates_.Due()) GiveRebate();
  while (!beyondDays_.empty() && beyondDays_.back() <= business_.day.Days()) {
    beyondDays_.pop_back();
    SellBeyond();
  }
  if (business_.DaysLeft() > 20) return;
  orders_.Add(entriesTimesThousand);
  while (orders_.Due()) TakeOrder();
}

// Goods come back as a sale of a negative quantity.
void Selling::TakeBack() {
  const std::size_t index = random_.Below(business_.shelves.Count());
  const Shelf& shelf = business_.shelves.At(index);
  const Item& item = business_.shelves.ItemOf(shelf);
  const Role role = business_.company.warehouses[shelf.warehouse].role;
  const bool open = role == Role::kCentral || role == Role::kShop;
  if (!open || item.Is(Handling::kSerial) || shelf.lots.empty() || shelf.quantity <= 0) return;
  const Customer& customer = DrawCustomer(role);
  Taken goods{.lot = shelf.lots.back(), .serials = {}};
  goods.lot.quantity = std::max(RoundDown(item, shelf.sale / 4), RoundDown(item, kMillion));
  goods.lot.auxQuantity = item.auxUnitId == 0 ? 0 : kMillion;
  posting::Document bill = NewBill(business_, BillClass::kSalesIssue, business_.company.sellingDepartment,
                                   random_.Pick(business_.company.sellers));
  bill.customerId = customer.id;
  bill.explanation = "客户退货";
  Taken returned = goods;
  returned.lot.quantity = -returned.lot.quantity;
  returned.lot.auxQuantity = -returned.lot.auxQuantity;
  bill.entries.push_back(
      NewEntry(business_, shelf, returned, business_.prices.SellingPrice(item, customer, business_.day)));
  business_.shelves.Put(index, goods.lot);
  business_.journal.Write(std::move(bill));
}

void Selling::GiveRebate() {
  const Customer& customer = random_.Pick(business_.company.customers);
  Draft draft;
  draft.free = true;
  draft.bill = NewBill(business_, BillClass::kSalesRebateGoods, business_.company.sellingDepartment,
                       random_.Pick(business_.company.sellers));
  draft.bill.customerId = customer.id;
  draft.bill.explanation = "季度返利";
  if (!business_.shelves.Sells(0)) return;
  for (int line = 0; line < 2; ++line) AddLine(draft, business_.shelves.DrawShelf(0, random_), customer);
  business_.journal.Write(std::move(draft.bill));
}

// The goods are on the lorry and sold already; their receipt follows in a few days.
void Selling::SellBeyond() {
  if (!business_.shelves.Sells(0)) return;
  for (int tries = 0; tries < 200; ++tries) {
    const std::size_t index = business_.shelves.DrawShelf(0, random_);
    const Shelf& shelf = business_.shelves.At(index);
    const Item& item = business_.shelves.ItemOf(shelf);
    const bool plain = item.Is(Handling::kPlain) && item.auxIds.empty() && item.auxUnitId == 0;
    // What is sold so at the very end is still open when the book ends.
    if (shelf.coming > 0 && business_.DaysLeft() < 15) continue;
    if (!plain || shelf.quantity < 0 || shelf.quantity > shelf.sale * 3) continue;
    const Customer& customer = DrawCustomer(Role::kCentral);
    posting::Document bill = NewBill(business_, BillClass::kSalesIssue, business_.company.sellingDepartment,
                                     random_.Pick(business_.company.sellers));
    bill.customerId = customer.id;
    bill.explanation = "货已在途，先行发货";
    Taken goods{.lot = {.quantity = shelf.quantity + (shelf.sale / kMillion * kMillion)}, .serials = {}};
    bill.entries.push_back(
        NewEntry(business_, shelf, goods, business_.prices.SellingPrice(item, customer, business_.day)));
    business_.shelves.TakeBeyond(index, goods.lot.quantity);
    business_.journal.Write(std::move(bill));
    return;
  }
}

void Selling::TakeOrder() {
  if (!business_.shelves.Sells(0)) return;
  const Customer& customer = DrawCustomer(Role::kCentral);
  Order order;
  order.billClass = BillClass::kSalesOrder;
  order.date = business_.day;
  order.due = business_.day.AddDays(static_cast<std::int32_t>(random_.Between(5, 25)));
  order.customerId = customer.id;
  order.departmentId = business_.company.sellingDepartment;
  order.employeeId = random_.Pick(business_.company.sellers);
  order.audited = !random_.Chance(100);
  const std::int64_t lines = random_.Between(1, 5);
  for (std::int64_t line = 0; line < lines; ++line) {
    const Shelf& shelf = business_.shelves.At(business_.shelves.DrawShelf(0, random_));
    const Item& item = business_.shelves.ItemOf(shelf);
    if (item.discontinued) continue;
    const InUnit inUnit = InSuitingUnit(item, QuantityFor(shelf, customer));
    order.lines.push_back(
        {.itemId = item.id,
         .auxId = std::nullopt,
         .unitId = inUnit.unitId,
         .unitQuantity = inUnit.quantity,
         .quantity = inUnit.quantity * inUnit.factor,
         .price = business_.prices.SellingPrice(item, customer, business_.day) * inUnit.factor});
  }
  if (!order.lines.empty()) business_.journal.WriteOrder(order);
}

}  // namespace books::demo
