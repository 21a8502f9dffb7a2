#include "books/import/BillEntries.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/value/Convert.h"

namespace books::importer {
namespace {

using database::Quantity;
using schema::BillClass;
using schema::BillKind;
using schema::Direction;

constexpr Choice kDirections[] = {{"in", 1}, {"out", -1}, {"入", 1}, {"出", -1}, {"1", 1}, {"-1", -1}};

// Returns are negative quantities in a bill of the original class. What was counted, moved or assembled the
// other way round is a bill of another class.
bool MayBeNegative(const BillClassFacts& billClass) {
  return (billClass.kind == BillKind::kReceipt || billClass.kind == BillKind::kIssue) &&
         billClass.id != BillClass::kCountGain && billClass.id != BillClass::kCountLoss;
}

// The class of orders that bills of this class deliver: 102xxxx is the purchase side, 103xxxx the sales side.
std::optional<BillClassFacts> OrderClassOf(BillClass billClass) {
  const std::int32_t side = static_cast<std::int32_t>(billClass) / 10000;
  if (side == 102) return BillClassFacts{BillClass::kPurchaseOrder, BillKind::kOrder};
  if (side == 103) return BillClassFacts{BillClass::kSalesOrder, BillKind::kOrder};
  return std::nullopt;
}

}  // namespace

BillEntries::BillEntries(Run& run, DocumentIndex& bills)
    : run_(run), bills_(bills), orders_(run, "order_bill", "orders.csv") {}

void BillEntries::Take(const BillEntryRow& row, const Place& place, bool sound) {
  if (row.billClass == nullptr || row.number.empty()) return;
  if (row.billClass->kind == BillKind::kOrder) {
    run_.findings.Add(place, "class", {}, "this is a class of orders", "write it into order_entries.csv");
    return;
  }
  const std::optional<DocumentIndex::Found> bill = bills_.Find(place, *row.billClass, row.number);
  if (bill) CountEntry(bill->id);
  if (!sound) return;
  Entry entry;
  const std::optional<Direction> direction = DirectionOf(row, place);
  const bool warehouses = CheckWarehouses(row, place);
  const bool quantity = CheckQuantity(row, place);
  const std::optional<Reference> batch = row.billClass->kind == BillKind::kAmountOnly && row.batch.empty()
                                             ? std::optional(Reference())
                                             : FindBatch(run_, place, *row.item, row.batch);
  const std::optional<Figures> figures = WorkOut(run_, place,
                                                 {.item = *row.item,
                                                  .unit = row.unit,
                                                  .unitQuantity = *row.quantity,
                                                  .price = row.price,
                                                  .amount = row.amount});
  const bool order = FindOrder(row, place, entry);
  if (!bill || !direction || !warehouses || !quantity || !batch || !figures || !order) return;
  entry.billId = bill->id;
  entry.direction = *direction;
  entry.batch = *batch;
  entry.figures = *figures;
  entry.auxQuantity = row.auxQuantity.value_or(Quantity());
  if (!FindSerials(row, place, entry)) return;
  if (bill->isNew) {
    Insert(row, place, entry);
  } else {
    Compare(row, place, entry);
  }
}

void BillEntries::CountEntry(std::int64_t bill) {
  const auto position = static_cast<std::size_t>(bill);
  if (entries_.size() <= position) entries_.resize(position + 1 + (position / 2));
  ++entries_[position];
}

std::optional<Direction> BillEntries::DirectionOf(const BillEntryRow& row, const Place& place) {
  const BillKind kind = row.billClass->kind;
  const bool conversion = kind == BillKind::kConversion;
  if (conversion && row.direction.empty()) {
    run_.findings.Add(place, "direction", {}, "the value is missing: goods of an assembly go in or out",
                      "write in or out");
    return std::nullopt;
  }
  const bool out = kind == BillKind::kIssue || kind == BillKind::kTransfer;
  const Direction own = out ? Direction::kOut : Direction::kIn;
  if (row.direction.empty()) return own;
  const std::optional<std::int32_t> chosen = Choose(run_, place, "direction", row.direction, kDirections);
  if (!chosen) return std::nullopt;
  const Direction direction = *chosen > 0 ? Direction::kIn : Direction::kOut;
  if (conversion || direction == own) return direction;
  run_.findings.Add(place, "direction", row.direction, "the bill's class has the other direction",
                    "leave it empty; a return has a negative quantity");
  return std::nullopt;
}

bool BillEntries::CheckWarehouses(const BillEntryRow& row, const Place& place) {
  const bool transfer = row.billClass->kind == BillKind::kTransfer;
  if (transfer && !row.toWarehouse) {
    run_.findings.Add(place, "to_warehouse", {}, "the value is missing: a transfer goes somewhere",
                      "fill it in");
    return false;
  }
  if (!transfer && row.toWarehouse) {
    run_.findings.Add(place, "to_warehouse", {}, "only a transfer goes to another warehouse",
                      "leave it empty");
    return false;
  }
  if (transfer && row.toWarehouse == row.warehouse) {
    run_.findings.Add(place, "to_warehouse", {}, "the goods are in this warehouse already",
                      "name another one");
    return false;
  }
  return true;
}

bool BillEntries::CheckQuantity(const BillEntryRow& row, const Place& place) {
  const Quantity none;
  auto refuse = [&](std::string_view column, std::string problem, std::string remedy) {
    run_.findings.Add(place, column,
                      column == "quantity" ? platform::NumberToText(row.quantity->ToDouble()) : "",
                      std::move(problem), std::move(remedy));
    return false;
  };
  if (row.billClass->kind == BillKind::kAmountOnly) {
    if (*row.quantity != none)
      return refuse("quantity", "bills of this class change amounts only", "write 0");
    if (!row.amount)
      return refuse("amount", "the value is missing: the bill changes an amount", "fill it in");
    return true;
  }
  if (*row.quantity == none)
    return refuse("quantity", "the quantity is 0", "write how many, or take the row out");
  if (*row.quantity < none && !MayBeNegative(*row.billClass)) {
    return refuse("quantity", "bills of this class have no negative quantities",
                  "write what went the other way as a bill of the class for that");
  }
  if (row.auxQuantity.value_or(none) != none && !run_.known.FindItem(*row.item)->hasAuxUnit) {
    return refuse("aux_quantity", "the item has no auxiliary unit",
                  "leave it empty, or add aux_unit in items.csv");
  }
  return true;
}

bool BillEntries::FindOrder(const BillEntryRow& row, const Place& place, Entry& entry) {
  if (row.orderNumber.empty() && !row.orderLine) return true;
  const std::optional<BillClassFacts> orderClass = OrderClassOf(row.billClass->id);
  if (!orderClass || row.orderNumber.empty() || !row.orderLine) {
    run_.findings.Add(
        place, row.orderNumber.empty() ? "order_number" : "order_line", {},
        orderClass ? "an order's number and line go together" : "bills of this class deliver no order",
        orderClass ? "fill in both or none" : "leave it empty");
    return false;
  }
  const std::optional<DocumentIndex::Found> order = orders_.Find(place, *orderClass, row.orderNumber);
  if (!order) return false;
  database::Statement line = run_.connection.Query(
      "SELECT item_id FROM order_entry WHERE order_id = ? AND line = ?", order->id, *row.orderLine);
  const bool there = line.Step();
  if (!there && run_.known.IsFaultyFile("order_entries.csv")) return false;
  if (!there) {
    run_.findings.Add(place, "order_line", std::to_string(*row.orderLine), "the order has no such line",
                      "correct it or add it to order_entries.csv");
    return false;
  }
  if (line.Integer(0) != *row.item) {
    run_.findings.Add(place, "order_line", std::to_string(*row.orderLine), "the line orders another item",
                      "correct the item or the line");
    return false;
  }
  entry.orderId = order->id;
  return true;
}

bool BillEntries::FindSerials(const BillEntryRow& row, const Place& place, Entry& entry) {
  if (!run_.known.FindItem(*row.item)->serialManaged) {
    if (row.serials.empty()) return true;
    run_.findings.Add(place, "serials", row.serials, "the item has no serial numbers", "leave it empty");
    return false;
  }
  const std::int64_t units = std::abs(entry.figures.quantity.Units());
  if (units % Quantity::kScale != 0) {
    run_.findings.Add(place, "quantity", platform::NumberToText(row.quantity->ToDouble()),
                      "goods with serial numbers are counted in whole pieces", "correct it");
    return false;
  }
  bool sound = true;
  std::string_view rest = row.serials;
  while (!rest.empty()) {
    const std::size_t end = rest.find(';');
    const std::string_view number = platform::TrimBlanks(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    database::Statement found =
        run_.connection.Query("SELECT id FROM serial WHERE item_id = ? AND number = ?", *row.item, number);
    const bool there = found.Step();
    const std::int64_t id = there ? found.Integer(0) : 0;
    const bool twice = there && std::ranges::find(entry.serials, id) != entry.serials.end();
    if (there) entry.serials.push_back(id);
    if (there && !twice) continue;
    sound = false;
    if (twice) {
      run_.findings.Add(place, "serials", number, "the serial number stands here twice", "take one out");
    } else if (!run_.known.IsFaulty("serial", *row.item, number) && !run_.known.IsUnread("serials.csv")) {
      run_.findings.Add(place, "serials", number, "the item has no such serial number",
                        "correct it or add it to serials.csv");
    }
  }
  const std::int64_t pieces = units / Quantity::kScale;
  if (sound && std::ssize(entry.serials) != pieces) {
    run_.findings.Add(place, "serials", row.serials,
                      "there are " + std::to_string(entry.serials.size()) + " serial numbers for " +
                          std::to_string(pieces) + " pieces",
                      "list one for every piece, separated by semicolons");
    sound = false;
  }
  return sound;
}

void BillEntries::Insert(const BillEntryRow& row, const Place& place, const Entry& entry) {
  const Figures& figures = entry.figures;
  const std::int64_t added = run_.connection.Execute(
      "INSERT INTO bill_entry (bill_id, line, direction, item_id, warehouse_id, to_warehouse_id, batch_id, "
      "aux_id, unit_id, unit_quantity, quantity, aux_quantity, price, amount, order_id, order_line, note) "
      "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT DO NOTHING",
      entry.billId, *row.line, entry.direction, *row.item, *row.warehouse, row.toWarehouse, entry.batch,
      row.property, figures.unitId, figures.unitQuantity, figures.quantity, entry.auxQuantity, figures.price,
      figures.amount, entry.orderId, row.orderLine, row.note);
  if (added == 0) {
    run_.findings.Add(place, "line", std::to_string(*row.line), "the line stands in the file twice",
                      "give every line of a bill a number of its own");
    return;
  }
  ++run_.Count(place.file).added;
  for (const std::int64_t serial : entry.serials) {
    run_.connection.Execute("INSERT INTO bill_serial (bill_id, line, serial_id) VALUES (?, ?, ?)",
                            entry.billId, *row.line, serial);
  }
}

void BillEntries::Compare(const BillEntryRow& row, const Place& place, const Entry& entry) {
  constexpr std::array<std::string_view, 14> kColumns = {
      "direction", "item",         "warehouse", "to_warehouse", "batch",        "property",   "unit",
      "quantity",  "aux_quantity", "price",     "amount",       "order_number", "order_line", "note"};
  const Figures& figures = entry.figures;
  ++run_.Count(place.file).known;
  database::Statement book = run_.connection.Query(
      "SELECT direction = ?, item_id = ?, warehouse_id = ?, to_warehouse_id IS NOT DISTINCT FROM ?, "
      "batch_id IS NOT DISTINCT FROM ?, aux_id IS NOT DISTINCT FROM ?, unit_id = ?, unit_quantity = ?, "
      "aux_quantity = ?, price = ?, amount IS NOT DISTINCT FROM ?, order_id IS NOT DISTINCT FROM ?, "
      "order_line IS NOT DISTINCT FROM ?, note = ? FROM bill_entry WHERE bill_id = ? AND line = ?",
      entry.direction, *row.item, *row.warehouse, row.toWarehouse, entry.batch, row.property, figures.unitId,
      figures.unitQuantity, entry.auxQuantity, figures.price, figures.amount, entry.orderId, row.orderLine,
      row.note, entry.billId, *row.line);
  std::string_view other;
  if (!book.Step()) other = "line";
  for (std::size_t i = 0; other.empty() && i < kColumns.size(); ++i) {
    if (!book.Boolean(static_cast<int>(i))) other = kColumns[i];
  }
  if (other.empty()) {
    database::Statement serials = run_.connection.Query(
        "SELECT serial_id FROM bill_serial WHERE bill_id = ? AND line = ?", entry.billId, *row.line);
    std::size_t count = 0;
    while (serials.Step()) {
      if (std::ranges::find(entry.serials, serials.Integer(0)) != entry.serials.end()) ++count;
    }
    if (count != entry.serials.size()) other = "serials";
  }
  if (other.empty()) return;
  run_.findings.Add(place, other, {}, "the bill " + std::string(row.number) + " says otherwise in the book",
                    "bills in the book stay; correct the row or write a bill of another number");
}

void BillEntries::CheckWholeBills() {
  if (run_.known.IsUnread("bill_entries.csv")) return;
  const std::int64_t last = run_.LastId("bill");
  for (std::int64_t id = 1; id <= last; ++id) {
    const std::int64_t line = bills_.LineOf(id);
    if (line == 0) continue;
    const auto position = static_cast<std::size_t>(id);
    const std::uint32_t entries = position < entries_.size() ? entries_[position] : 0;
    if (id >= bills_.FirstNew()) {
      if (entries > 0) continue;
      run_.findings.Add({"bills.csv", line}, {}, {}, "the bill has no entries",
                        "add them to bill_entries.csv");
      continue;
    }
    database::Statement book = run_.connection.Query("SELECT COUNT(*) FROM bill_entry WHERE bill_id = ?", id);
    if (!book.Step() || book.Integer(0) == entries) continue;
    run_.findings.Add(
        {"bills.csv", line}, {}, {},
        "the bill has " + std::to_string(entries) + " entries here and " + book.Text(0) + " in the book",
        "bills in the book stay; list all of their entries or leave the bill out");
  }
  database::Statement oneWay = run_.connection.Query(
      "SELECT b.id, COUNT(*) FROM bill b JOIN bill_class c ON c.id = b.bill_class AND c.kind = ? "
      "JOIN bill_entry e ON e.bill_id = b.id WHERE b.id >= ? "
      "GROUP BY b.id HAVING MIN(e.direction) = MAX(e.direction)",
      BillKind::kConversion, bills_.FirstNew());
  while (oneWay.Step()) {
    // With a refused entry nobody knows.
    if (oneWay.Integer(1) != entries_[static_cast<std::size_t>(oneWay.Integer(0))]) continue;
    run_.findings.Add({"bills.csv", bills_.LineOf(oneWay.Integer(0))}, {}, {},
                      "nothing goes out of the assembly or nothing comes in",
                      "add the entries that are missing");
  }
}

}  // namespace books::importer
