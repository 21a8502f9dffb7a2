#include "books/posting/Serials.h"

#include <optional>
#include <vector>

namespace books::posting {
namespace {

using database::Connection;
using database::Statement;
using schema::SerialState;

std::vector<Id> Gather(Statement rows) {
  std::vector<Id> serials;
  while (rows.Step()) serials.push_back(rows.Integer(0));
  return serials;
}

void Refresh(Connection& connection, const std::vector<Id>& serials) {
  Statement last = connection.Prepare(
      "SELECT e.direction, e.quantity, e.warehouse_id, e.to_warehouse_id, e.aux_id "
      "FROM bill_serial s JOIN bill b ON b.id = s.bill_id JOIN bill_class c ON c.id = b.bill_class "
      "JOIN bill_entry e ON e.bill_id = s.bill_id AND e.line = s.line "
      "WHERE s.serial_id = ? AND b.audited = 1 "
      "ORDER BY b.date DESC, CASE c.kind WHEN 1 THEN 1 WHEN 5 THEN 2 WHEN 2 THEN 4 ELSE 3 END DESC, "
      "b.id DESC, e.direction DESC, e.line DESC LIMIT 1");
  Statement write =
      connection.Prepare("UPDATE serial SET state = ?, warehouse_id = ?, aux_id = ? WHERE id = ?");
  for (const Id serial : serials) {
    auto state = SerialState::kNew;
    std::optional<Id> warehouse;
    std::optional<Id> aux;
    last.Bind(serial);
    if (last.Step()) {
      const bool transferred = !last.IsNull(3);
      const bool in = transferred || (last.Integer(0) > 0) == (last.Integer(1) > 0);
      state = in ? SerialState::kInStock : SerialState::kIssued;
      if (in) warehouse = last.Integer(transferred ? 3 : 2);
      aux = last.OptionalInteger(4);
    }
    write.Run(state, warehouse, aux, serial);
  }
}

}  // namespace

void RefreshSerials(Connection& connection, Id bill) {
  Refresh(connection,
          Gather(connection.Query("SELECT DISTINCT serial_id FROM bill_serial WHERE bill_id = ?", bill)));
}

void RefreshAllSerials(Connection& connection) {
  Refresh(connection, Gather(connection.Query("SELECT id FROM serial")));
}

}  // namespace books::posting
