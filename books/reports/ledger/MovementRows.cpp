// Movements are clustered by item and lie there in the order of costing, so that they nearly always come in
// it; the database is not asked to promise it, which would cost a step a row.
#include "books/reports/ledger/MovementRows.h"

#include <algorithm>
#include <span>
#include <string>

namespace books::reports {
namespace {

std::string MovementSql(bool withWarehouse) {
  return "SELECT gather(date, day_order, bill_id, direction, line, batch_id, aux_id, quantity, amount" +
         std::string(withWarehouse ? ", warehouse_id" : "") +
         ") FROM movement WHERE item_id = ? AND date >= ? AND date < ?";
}

}  // namespace

MovementRows::MovementRows(database::Connection& connection)
    : movements_(connection.Prepare(MovementSql(false))),
      placedMovements_(connection.Prepare(MovementSql(true))) {}

void MovementRows::Read(std::int32_t itemId, platform::Date first, platform::Date past, bool withWarehouse) {
  database::Statement& statement = withWarehouse ? placedMovements_ : movements_;
  width_ = withWarehouse ? MovementRow::kWarehouse + 1 : MovementRow::kWarehouse;
  values_.clear();
  statement.Bind(itemId, first, past);
  statement.Gather(values_);
  PutInOrder(values_, width_);
}

void PutInOrder(std::vector<std::int64_t>& values, std::size_t width) {
  auto comesBefore = [](const std::int64_t* left, const std::int64_t* right) {
    return std::lexicographical_compare(left, left + MovementRow::kOrderColumns, right,
                                        right + MovementRow::kOrderColumns);
  };
  bool isSorted = true;
  for (std::size_t at = width; at < values.size() && isSorted; at += width) {
    isSorted = !comesBefore(&values[at], &values[at - width]);
  }
  if (isSorted) return;
  std::vector<const std::int64_t*> rows;
  for (std::size_t at = 0; at < values.size(); at += width) rows.push_back(&values[at]);
  std::ranges::stable_sort(rows, comesBefore);
  std::vector<std::int64_t> sorted;
  sorted.reserve(values.size());
  for (const std::int64_t* row : rows) sorted.insert(sorted.end(), row, row + width);
  values = std::move(sorted);
}

}  // namespace books::reports
