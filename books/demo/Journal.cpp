#include "books/demo/Journal.h"

#include "books/demo/Registry.h"
#include "platform/value/Variant.h"

namespace books::demo {
namespace {

using database::Quantity;
using schema::BillClass;

struct Prefix {
  BillClass billClass = BillClass::kPurchaseOrder;
  std::string_view letters;
};
constexpr Prefix kPrefixes[] = {
    {BillClass::kPurchaseOrder, "CGDD"},       {BillClass::kPurchaseReceipt, "CGSH"},
    {BillClass::kEstimatedReceipt, "GJRK"},    {BillClass::kPurchaseRebateGoods, "CGFS"},
    {BillClass::kPurchaseRebateMoney, "CGFJ"}, {BillClass::kSalesOrder, "XSDD"},
    {BillClass::kSalesIssue, "XSFH"},          {BillClass::kConsignment, "WTDX"},
    {BillClass::kSalesRebateGoods, "XSFS"},    {BillClass::kOtherReceipt, "QTRK"},
    {BillClass::kOtherIssue, "QTCK"},          {BillClass::kCountGain, "PYRK"},
    {BillClass::kCountLoss, "PKSH"},           {BillClass::kAssembly, "ZZ"},
    {BillClass::kDisassembly, "CX"},           {BillClass::kTransfer, "DB"},
    {BillClass::kPriceAdjustment, "TJ"},
};

std::string_view LettersOf(BillClass billClass) {
  for (const Prefix& prefix : kPrefixes) {
    if (prefix.billClass == billClass) return prefix.letters;
  }
  return "DJ";
}

// Large enough to keep (item, day) and (class, month) apart.
constexpr std::int64_t kDays = 100'000;

double PriceOf(std::int64_t tenThousandths) { return static_cast<double>(tenThousandths) / 10000.0; }

}  // namespace

Journal::Journal(database::Connection& connection)
    : posting_(connection),
      insertOrder_(connection.Prepare(
          "INSERT INTO order_bill (id, bill_class, number, date, supplier_id, customer_id, department_id, "
          "employee_id, audited) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")),
      insertOrderEntry_(
          connection.Prepare("INSERT INTO order_entry (order_id, line, item_id, aux_id, unit_id, "
                             "unit_quantity, quantity, price, "
                             "amount, due_date, closed) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
      insertBatch_(
          connection.Prepare("INSERT INTO batch (id, item_id, number, production_date, shelf_life_days, "
                             "expiry_date) VALUES (?, ?, ?, ?, ?, ?)")),
      insertSerial_(
          connection.Prepare("INSERT INTO serial (id, item_id, number, note) VALUES (?, ?, ?, ?)")) {}

void Journal::Write(posting::Document document) {
  if (document.entries.empty()) return;
  document.number = NextNumber(document.billClass, document.date);
  entries_ += std::ssize(document.entries);
  posting_.Add(document);
}

void Journal::WriteLateBills(platform::Date day) {
  while (!late_.empty() && late_.begin()->first <= day.Days()) {
    for (posting::Document& document : late_.begin()->second) Write(std::move(document));
    late_.erase(late_.begin());
  }
}

Id Journal::WriteOrder(const Order& order) {
  ++lastOrder_;
  insertOrder_.Run(lastOrder_, order.billClass, NextNumber(order.billClass, order.date), order.date,
                   order.supplierId, order.customerId, order.departmentId, order.employeeId, order.audited);
  std::int32_t number = 0;
  for (const OrderLine& line : order.lines) {
    const platform::Currency amount = platform::MultiplyDivide(platform::Currency::FromUnits(line.price),
                                                               line.unitQuantity, Quantity::kScale);
    insertOrderEntry_.Run(lastOrder_, ++number, line.itemId, line.auxId, line.unitId, line.unitQuantity,
                          line.quantity, PriceOf(line.price), amount, order.due, line.closed);
  }
  return lastOrder_;
}

Id Journal::NewBatch(const Item& item, platform::Date produced) {
  const platform::CalendarDay day = produced.Calendar();
  std::string number = Padded(day.year, 4) + Padded(day.month, 2) + Padded(day.day, 2);
  const int sameDay = batchesOfDay_[(item.id * kDays) + produced.Days()]++;
  if (sameDay > 0) number += '-' + std::to_string(sameDay + 1);
  const std::int32_t life = item.family->shelfLifeDays;
  platform::Variant expiry = platform::Null();
  if (life > 0) expiry = produced.AddDays(life);
  insertBatch_.Run(++lastBatch_, item.id, number, produced, life, expiry);
  return lastBatch_;
}

Id Journal::NewSerial(const Item& item) {
  ++lastSerial_;
  const std::string number = "SN" + Padded(item.id, 6) + Padded(lastSerial_, 7);
  insertSerial_.Run(lastSerial_, item.id, number, lastSerial_ % 37 == 0 ? "样机" : "");
  return lastSerial_;
}

std::string Journal::NextNumber(BillClass billClass, platform::Date date) {
  const platform::CalendarDay day = date.Calendar();
  const std::int64_t month = (std::int64_t{day.year} * 12) + day.month;
  const std::int64_t ordinal = ++numbers_[(static_cast<std::int64_t>(billClass) * kDays) + month];
  return std::string(LettersOf(billClass)) + '-' + Padded(day.year, 4) + Padded(day.month, 2) + '-' +
         Padded(ordinal, 5);
}

}  // namespace books::demo
