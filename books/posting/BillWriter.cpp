#include "books/posting/BillWriter.h"

#include <algorithm>
#include <cmath>

#include "platform/value/Error.h"

namespace books::posting {
namespace {

using database::Quantity;
using schema::BillClass;
using schema::BillKind;
using schema::Direction;

[[noreturn]] void Refuse(const Document& document, const std::string& reason) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Posting",
                        "bill " + document.number + ": " + reason);
}
[[noreturn]] void Refuse(const Document& document, const Entry& entry, const std::string& reason) {
  Refuse(document, "line " + std::to_string(entry.line) + ": " + reason);
}

Direction DirectionOf(BillKind kind, const Entry& entry) {
  switch (kind) {
    case BillKind::kIssue:
    case BillKind::kTransfer:
      return Direction::kOut;
    case BillKind::kConversion:
      return entry.direction;
    default:
      return Direction::kIn;
  }
}

}  // namespace

BillKind KindOf(BillClass billClass) {
  switch (billClass) {
    case BillClass::kPurchaseOrder:
    case BillClass::kSalesOrder:
      return BillKind::kOrder;
    case BillClass::kSalesIssue:
    case BillClass::kConsignment:
    case BillClass::kSalesRebateGoods:
    case BillClass::kOtherIssue:
    case BillClass::kCountLoss:
      return BillKind::kIssue;
    case BillClass::kAssembly:
    case BillClass::kDisassembly:
      return BillKind::kConversion;
    case BillClass::kTransfer:
      return BillKind::kTransfer;
    case BillClass::kPurchaseRebateMoney:
    case BillClass::kPriceAdjustment:
      return BillKind::kAmountOnly;
    default:
      return BillKind::kReceipt;
  }
}

BillWriter::BillWriter(database::Connection& connection)
    : calendar_(ReadCalendar(connection)),
      connection_(connection),
      readItem_(connection.Prepare("SELECT batch_managed, serial_managed FROM item WHERE id = ?")),
      writeBill_(connection.Prepare(
          "INSERT INTO bill (id, bill_class, number, date, period, supplier_id, customer_id, department_id, "
          "employee_id, audited, voucher_number, explanation) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
      writeEntry_(connection.Prepare(
          "INSERT INTO bill_entry (bill_id, line, direction, item_id, warehouse_id, to_warehouse_id, "
          "batch_id, aux_id, unit_id, unit_quantity, quantity, aux_quantity, price, amount, order_id, "
          "order_line, note) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
      writeSerial_(
          connection.Prepare("INSERT INTO bill_serial (bill_id, line, serial_id) VALUES (?, ?, ?)")) {
  database::Statement newest = connection.Query("SELECT COALESCE(MAX(id), 0) FROM bill");
  if (newest.Step()) nextId_ = newest.Integer(0) + 1;
}

Id BillWriter::Write(const Document& document) {
  const BillKind kind = KindOf(document.billClass);
  if (kind == BillKind::kOrder) Refuse(document, "an order moves no stock, it is not posted");
  if (document.entries.empty()) Refuse(document, "has no lines");
  const std::int32_t period = OpenPeriod(document);
  for (const Entry& entry : document.entries) CheckEntry(document, entry, kind);
  if (kind == BillKind::kConversion) {
    const auto in = std::ranges::count(document.entries, Direction::kIn, &Entry::direction);
    if (in == 0 || in == std::ssize(document.entries)) {
      Refuse(document, "an assembly needs lines that go out and lines that come in");
    }
  }
  const Id bill = nextId_++;
  writeBill_.Run(bill, document.billClass, document.number, document.date, period, document.supplierId,
                 document.customerId, document.departmentId, document.employeeId, document.audited,
                 document.voucherNumber, document.explanation);
  std::int32_t line = 0;
  for (const Entry& entry : document.entries) {
    line = entry.line == 0 ? line + 1 : entry.line;
    WriteEntry(bill, document, entry, line);
  }
  return bill;
}

void BillWriter::CheckEntry(const Document& document, const Entry& entry, BillKind kind) {
  const ItemFacts& facts = FactsOf(entry.itemId);
  if (entry.toWarehouseId.has_value() != (kind == BillKind::kTransfer)) {
    Refuse(document, entry, "a transfer, and only a transfer, names the warehouse that the goods go to");
  }
  if (entry.toWarehouseId == entry.warehouseId) {
    Refuse(document, entry, "goods cannot be transferred into the warehouse where they are");
  }
  if ((kind == BillKind::kTransfer || kind == BillKind::kConversion) && entry.quantity <= Quantity()) {
    Refuse(document, entry, "the quantity of a transfer or an assembly must be above 0");
  }
  if (kind == BillKind::kAmountOnly && (entry.quantity != Quantity() || !entry.amount)) {
    Refuse(document, entry, "a change of amounts has an amount and the quantity 0");
  }
  if (kind != BillKind::kAmountOnly && facts.batchManaged != entry.batchId.has_value()) {
    Refuse(document, entry,
           facts.batchManaged ? "the item is kept by batch, name the batch" : "the item has no batches");
  }
  const std::int64_t pieces = facts.serialManaged ? std::abs(entry.quantity.Units()) / Quantity::kScale : 0;
  if (std::ssize(entry.serialIds) != pieces) {
    Refuse(
        document, entry,
        "needs " + std::to_string(pieces) + " serial numbers, has " + std::to_string(entry.serialIds.size()));
  }
}

std::int32_t BillWriter::OpenPeriod(const Document& document) {
  const auto [found, isNew] = periods_.try_emplace(document.date.Days(), 0);
  if (isNew) found->second = PeriodOfDay(connection_, document.date);
  if (found->second < calendar_.current) {
    Refuse(document,
           "lies on " + document.date.ToText() + ", in a closed period; open the period again first");
  }
  return found->second;
}

const BillWriter::ItemFacts& BillWriter::FactsOf(Id item) {
  const auto [found, isNew] = facts_.try_emplace(item);
  if (isNew) {
    readItem_.Bind(item);
    if (readItem_.Step()) found->second = {readItem_.Boolean(0), readItem_.Boolean(1)};
    readItem_.Reset();
  }
  return found->second;
}

void BillWriter::WriteEntry(Id bill, const Document& document, const Entry& entry, std::int32_t line) {
  writeEntry_.Run(bill, line, DirectionOf(KindOf(document.billClass), entry), entry.itemId, entry.warehouseId,
                  entry.toWarehouseId, entry.batchId, entry.auxId, entry.unitId, entry.unitQuantity,
                  entry.quantity, entry.auxQuantity, entry.price, entry.amount, entry.orderId,
                  entry.orderLine, entry.note);
  for (const Id serial : entry.serialIds) writeSerial_.Run(bill, line, serial);
}

}  // namespace books::posting
