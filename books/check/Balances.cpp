// Goes item by item, so that memory stays small whatever the size of the book. A closing figure is compared
// with the one before it as it stands, not as it should be: a fault is then told where it happened and not
// again in every period after.
#include "books/check/Balances.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "books/posting/Groups.h"
#include "books/posting/Periods.h"
#include "books/posting/StockReader.h"

namespace books::check {
namespace {

using database::Connection;
using database::Quantity;
using database::Statement;
using platform::Currency;
using posting::Id;

struct Figures {
  Quantity quantity;
  Quantity auxQuantity;
  Currency amount;

  friend bool operator==(const Figures&, const Figures&) = default;
};

Figures Read(const Statement& row, int column) {
  return {row.GetQuantity(column), row.GetQuantity(column + 1), row.Amount(column + 2)};
}
Figures Sum(const Figures& one, const Figures& other) {
  return {one.quantity + other.quantity, one.auxQuantity + other.auxQuantity, one.amount + other.amount};
}

std::string Show(const Figures& figures) {
  return Currency::FromDouble(figures.quantity.ToDouble()).ToText() + " pieces (auxiliary " +
         Currency::FromDouble(figures.auxQuantity.ToDouble()).ToText() + ") worth " + figures.amount.ToText();
}

using Cell = std::tuple<Id, Id, Id>;                // warehouse, batch, auxiliary property
using PeriodCell = std::tuple<std::int32_t, Cell>;  // period, cell

std::vector<Id> ReadIds(Connection& connection, std::string_view sql) {
  std::vector<Id> ids;
  Statement rows = connection.Query(sql);
  while (rows.Step()) ids.push_back(rows.Integer(0));
  return ids;
}

class BalanceCheck {
 public:
  BalanceCheck(Connection& connection, std::size_t limit)
      : connection_(connection),
        limit_(limit),
        start_(posting::ReadCalendar(connection).start),
        until_(posting::BalancesUntil(connection)),
        openings_(connection.Prepare("SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount "
                                     "FROM opening_stock WHERE item_id = ?")),
        moved_(connection.Prepare(
            "SELECT period, warehouse_id, batch_id, aux_id, SUM(direction * quantity), "
            "SUM(direction * aux_quantity), SUM(direction * amount) FROM movement WHERE item_id = ? "
            "GROUP BY period, warehouse_id, batch_id, aux_id")),
        closings_(connection.Prepare(
            "SELECT period, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM balance "
            "WHERE item_id = ?")),
        stock_(connection.Prepare("SELECT warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount "
                                  "FROM stock WHERE item_id = ?")) {}

  std::vector<Violation> Run() {
    Statement items = connection_.Query(
        "SELECT item_id FROM movement UNION SELECT item_id FROM balance UNION SELECT item_id FROM stock "
        "UNION SELECT item_id FROM opening_stock");
    while (items.Step() && violations_.size() < limit_) CheckItem(items.Integer(0));
    return std::move(violations_);
  }

 private:
  static std::map<Cell, Figures> ReadCells(Statement& rows, Id item) {
    std::map<Cell, Figures> cells;
    rows.Bind(item);
    while (rows.Step()) cells[{rows.Integer(0), rows.Integer(1), rows.Integer(2)}] = Read(rows, 3);
    return cells;
  }
  static std::map<PeriodCell, Figures> ReadPeriods(Statement& rows, Id item) {
    std::map<PeriodCell, Figures> cells;
    rows.Bind(item);
    while (rows.Step()) {
      cells[{rows.Int32(0), {rows.Integer(1), rows.Integer(2), rows.Integer(3)}}] = Read(rows, 4);
    }
    return cells;
  }

  void CheckItem(Id item) {
    const std::map<Cell, Figures> openings = ReadCells(openings_, item);
    const std::map<PeriodCell, Figures> moved = ReadPeriods(moved_, item);
    const std::map<PeriodCell, Figures> closings = ReadPeriods(closings_, item);
    std::map<Cell, Figures> carried;
    for (const auto& [cell, figures] : openings) carried[cell] = figures;
    for (const auto& [key, figures] : moved) carried.try_emplace(std::get<1>(key));
    for (const auto& [key, figures] : closings) carried.try_emplace(std::get<1>(key));
    for (std::int32_t period = start_ - 1; period <= until_; ++period) {
      for (auto& [cell, figures] : carried) {
        const auto movement = moved.find({period, cell});
        const auto closing = closings.find({period, cell});
        if (movement != moved.end()) figures = Sum(figures, movement->second);
        const Figures found = closing == closings.end() ? Figures() : closing->second;
        if (found != figures) {
          Report(item, cell, period,
                 "closes with " + Show(found) + ", opening and movements give " + Show(figures));
        } else if (movement != moved.end() && closing == closings.end()) {
          Report(item, cell, period, "has movements and no balance");
        }
        figures = found;
      }
    }
    CheckStock(item, carried);
  }

  void CheckStock(Id item, std::map<Cell, Figures>& carried) {
    const std::map<Cell, Figures> stock = ReadCells(stock_, item);
    for (const auto& [cell, figures] : stock) carried.try_emplace(cell);
    for (const auto& [cell, figures] : carried) {
      const auto row = stock.find(cell);
      const Figures found = row == stock.end() ? Figures() : row->second;
      if (found == figures) continue;
      Violation& violation = Add("stock", item, cell);
      violation.description += " shows " + Show(found) + ", its last balance is " + Show(figures);
    }
  }

  Violation& Add(std::string rule, Id item, const Cell& cell) {
    const auto& [warehouse, batch, aux] = cell;
    std::string place = "item " + NumberOf(item) + " in warehouse " + NumberOf(warehouse);
    if (batch != 0) place += ", batch " + BatchOf(batch);
    if (aux != 0) place += ", property " + NumberOf(aux);
    violations_.push_back({.rule = std::move(rule), .description = std::move(place), .documents = {}});
    return violations_.back();
  }

  void Report(Id item, const Cell& cell, std::int32_t period, const std::string& what) {
    const auto& [warehouse, batch, aux] = cell;
    Violation& violation = Add("balance", item, cell);
    violation.description += ": period " + std::to_string(schema::YearOf(period)) + "-" +
                             std::to_string(schema::NumberOf(period)) + " " + what;
    Statement bills = connection_.Query(
        "SELECT DISTINCT c.name || ' ' || b.number FROM movement m JOIN bill b ON b.id = m.bill_id "
        "JOIN bill_class c ON c.id = b.bill_class WHERE m.item_id = ? AND m.period = ? AND "
        "m.warehouse_id = ? AND m.batch_id = ? AND m.aux_id = ? ORDER BY 1",
        item, period, warehouse, batch, aux);
    while (bills.Step()) violation.documents.push_back(bills.Text(0));
  }

  std::string NumberOf(Id id) {
    Statement row = connection_.Query("SELECT number FROM base_data WHERE id = ?", id);
    return row.Step() ? row.Text(0) : "#" + std::to_string(id);
  }
  std::string BatchOf(Id id) {
    Statement row = connection_.Query("SELECT number FROM batch WHERE id = ?", id);
    return row.Step() ? row.Text(0) : "#" + std::to_string(id);
  }

  Connection& connection_;
  std::size_t limit_;
  std::int32_t start_;
  std::int32_t until_;
  Statement openings_;
  Statement moved_;
  Statement closings_;
  Statement stock_;
  std::vector<Violation> violations_;
};

}  // namespace

std::vector<Violation> CheckBalances(Connection& connection, std::size_t limit) {
  return BalanceCheck(connection, limit).Run();
}

std::vector<Violation> CheckCosts(Connection& connection, std::size_t limit) {
  std::vector<Violation> violations;
  const std::vector<Id> items = ReadIds(connection, "SELECT id FROM item");
  const std::vector<Id> list = ReadIds(connection, "SELECT item_id FROM waiting_item");
  const std::set<Id> waiting(list.begin(), list.end());
  Statement document = connection.Prepare(
      "SELECT d.number, c.name || ' ' || b.number FROM base_data d, bill b "
      "JOIN bill_class c ON c.id = b.bill_class WHERE d.id = ? AND b.id = ?");
  posting::StockReader reader(connection);
  posting::ItemGroup group;
  for (const std::vector<Id>& ids : posting::GroupsOf(connection, items)) {
    if (std::ranges::any_of(ids, [&](Id id) { return waiting.contains(id); })) continue;
    reader.Load(ids, group);
    std::vector<posting::Movement> valued = group.movements;
    posting::ValueMovements(valued, group.openings, group.methods, reader.Rules());
    for (std::size_t index = 0; index < valued.size() && violations.size() < limit; ++index) {
      const posting::Movement& found = group.movements[index];
      if (found.amount == valued[index].amount) continue;
      document.Bind(found.itemId, found.billId);
      const bool known = document.Step();
      violations.push_back(
          {.rule = "cost",
           .description = "item " + (known ? document.Text(0) : std::to_string(found.itemId)) + " line " +
                          std::to_string(found.line) + " moves with the amount " + found.amount.ToText() +
                          ", costing gives " + valued[index].amount.ToText(),
           .documents = known ? std::vector{document.Text(1)} : std::vector<std::string>{}});
    }
  }
  return violations;
}

}  // namespace books::check
