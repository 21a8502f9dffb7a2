#include "books/reports/movement/MovementReader.h"

#include <algorithm>

#include "books/reports/ReportSql.h"
#include "books/schema/Codes.h"

namespace books::reports {
namespace {

using database::Statement;
using schema::BillClass;

constexpr std::string_view kBalanceSql = R"sql(
SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount
FROM balance
WHERE item_id = ? AND period = ?
)sql";

constexpr std::string_view kBalanceSumSql = R"sql(
SELECT 0, 0, 0, SUM(quantity), SUM(aux_quantity), SUM(amount)
FROM balance
WHERE item_id = ? AND period = ?
)sql";

// What happened before the first day belongs to the opening figures, whoever's bill it was.
constexpr std::string_view kMovementSql = R"sql(
SELECT m.date, m.direction, m.bill_class, m.quantity, m.aux_quantity, m.amount,
       {bill}, {warehouse}, {batch}, {aux}
FROM movement m
WHERE m.item_id = ? AND m.date >= ? AND m.date <= ? {who}
ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line
)sql";

constexpr std::string_view kBillSql = R"sql(
AND (m.date < ? OR EXISTS (
  SELECT 1 FROM bill b
  LEFT JOIN base_data d ON d.id = b.department_id
  LEFT JOIN base_data e ON e.id = b.employee_id
  WHERE b.id = m.bill_id AND {conditions}))
)sql";

std::string MovementSql(const MovementChoice& choice, const MovementParts& parts) {
  std::string who;
  if (choice.byBill) {
    const Slot conditions[] = {{"conditions", choice.bills.Sql()}};
    who = Compose(kBillSql, conditions).sql;
  }
  const Slot slots[] = {{"bill", parts.bills ? "m.bill_id, m.line" : "0, 0"},
                        {"warehouse", parts.warehouses ? "m.warehouse_id" : "0"},
                        {"batch", parts.batches ? "m.batch_id" : "0"},
                        {"aux", parts.auxiliaries ? "m.aux_id" : "0"},
                        {"who", who}};
  return Compose(kMovementSql, slots).sql;
}

// A choice of places needs what a report may not.
MovementParts Needed(MovementParts parts, const MovementChoice& choice) {
  if (choice.hidesSamePrice) parts.bills = true;
  if (!choice.warehouses.all) parts.warehouses = true;
  if (!choice.batches.all) parts.batches = true;
  if (!choice.auxiliaries.all) parts.auxiliaries = true;
  const bool allPlaces = choice.warehouses.all && choice.batches.all && choice.auxiliaries.all;
  if (parts.openings == Openings::kSum && !allPlaces) parts.openings = Openings::kByPlace;
  return parts;
}

Sums SumsFrom(const Statement& row, int column) {
  return {.quantity = row.Integer(column),
          .auxQuantity = row.Integer(column + 1),
          .amount = row.Integer(column + 2)};
}

}  // namespace

bool IsReceipt(std::int32_t billClass, std::int32_t direction) {
  switch (static_cast<BillClass>(billClass)) {
    case BillClass::kAssembly:
    case BillClass::kDisassembly:
    case BillClass::kTransfer:
      return direction > 0;
    case BillClass::kSalesIssue:
    case BillClass::kConsignment:
    case BillClass::kSalesRebateGoods:
    case BillClass::kOtherIssue:
    case BillClass::kCountLoss:
      return false;
    default:
      return true;
  }
}

MovementReader::MovementReader(services::Store& store, const MovementChoice& choice, MovementParts parts)
    : choice_(choice),
      parts_(Needed(parts, choice)),
      firstDay_(parts_.openings == Openings::kNone ? choice.base.from : choice.base.balance.firstDay),
      balances_(store.Reading().Prepare(parts_.openings == Openings::kSum ? kBalanceSumSql : kBalanceSql)),
      movements_(store.Reading().Prepare(MovementSql(choice, parts_))) {}

const ItemMovement& MovementReader::Read(std::int64_t itemId) {
  item_.opening.clear();
  item_.moves.clear();
  if (parts_.openings != Openings::kNone) ReadOpening(itemId);
  ReadMoves(itemId);
  if (choice_.hidesSamePrice) DropSamePrice();
  return item_;
}

bool MovementReader::IsChosen(const Place& place) const {
  return choice_.warehouses.Has(place.warehouseId) && choice_.batches.Has(place.batchId) &&
         choice_.auxiliaries.Has(place.auxId);
}

void MovementReader::ReadOpening(std::int64_t itemId) {
  balances_.Bind(itemId, choice_.base.balance.period);
  while (balances_.Step()) {
    const Place place{
        .warehouseId = balances_.Integer(0), .batchId = balances_.Integer(1), .auxId = balances_.Integer(2)};
    if (IsChosen(place)) item_.opening.push_back({.place = place, .sums = SumsFrom(balances_, 3)});
  }
}

void MovementReader::ReadMoves(std::int64_t itemId) {
  movements_.Reset();
  int parameter = 0;
  movements_.BindAt(parameter++, itemId);
  movements_.BindAt(parameter++, firstDay_);
  movements_.BindAt(parameter++, std::max(choice_.lastDay, choice_.base.from));
  if (choice_.byBill) {
    movements_.BindAt(parameter++, choice_.base.from);
    for (const platform::Variant& value : choice_.bills.Parameters()) {
      movements_.BindAt(parameter++, value);
    }
  }
  while (movements_.Step()) {
    Place place;
    if (parts_.warehouses) place.warehouseId = movements_.Integer(8);
    if (parts_.batches) place.batchId = movements_.Integer(9);
    if (parts_.auxiliaries) place.auxId = movements_.Integer(10);
    if (IsChosen(place)) AddMove(place);
  }
}

void MovementReader::AddMove(const Place& place) {
  const std::int32_t direction = movements_.Int32(1);
  const Sums figures = SumsFrom(movements_, 3);
  const Sums change = direction > 0 ? figures : -figures;
  const platform::Date date = movements_.GetDate(0);
  if (date < choice_.base.from) {
    item_.opening.push_back({.place = place, .sums = change});
    return;
  }
  if (!choice_.Happens(date)) return;
  Move& move = item_.moves.emplace_back();
  move.date = date;
  move.direction = direction;
  move.billClass = movements_.Int32(2);
  move.receipt = IsReceipt(move.billClass, direction);
  move.place = place;
  move.sums = move.receipt ? change : -change;
  if (parts_.bills) {
    move.billId = movements_.Integer(6);
    move.line = movements_.Int32(7);
  }
}

// The halves of a transfer are on one line of one bill, the one that goes out first. Where only one of them
// is chosen, or both in different places of a report by warehouse, they change what is shown and stay.
void MovementReader::DropSamePrice() {
  std::vector<Move>& moves = item_.moves;
  std::vector<std::size_t> dropped;
  for (std::size_t in = 0; in < moves.size(); ++in) {
    if (moves[in].billClass != static_cast<std::int32_t>(BillClass::kTransfer) || moves[in].direction < 0) {
      continue;
    }
    for (std::size_t out = in; out-- > 0 && moves[out].billId == moves[in].billId;) {
      if (moves[out].direction > 0 || moves[out].line != moves[in].line) continue;
      const bool apart = choice_.byWarehouse && moves[out].place.warehouseId != moves[in].place.warehouseId;
      if (!apart && moves[out].sums.amount == moves[in].sums.amount) dropped.insert(dropped.end(), {out, in});
      break;
    }
  }
  if (dropped.empty()) return;
  std::ranges::sort(dropped);
  std::size_t kept = 0;
  auto next = dropped.begin();
  for (std::size_t i = 0; i < moves.size(); ++i) {
    if (next != dropped.end() && *next == i) {
      ++next;
    } else {
      moves[kept++] = moves[i];
    }
  }
  moves.resize(kept);
}

}  // namespace books::reports
