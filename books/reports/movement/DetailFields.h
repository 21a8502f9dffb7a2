#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "books/reports/movement/DetailFacts.h"
#include "books/reports/movement/MovementReader.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {

// A row that sums up others, or tells a balance.
struct DetailSum {
  std::string caption;
  std::int32_t sumSort = 0;
  const StockItem* item = nullptr;  // null in sums over several
  std::optional<Sums> receipts;
  std::optional<Sums> issues;
  std::optional<Sums> balance;
};

// The rows of a movement detail. A movement has figures on its own side only; its unit is that of its bill,
// in which the balance behind it is told as well. In sums the shown unit is the item's base unit.
class DetailFields {
 public:
  // Adds the fields and opens the rows.
  DetailFields(platform::Recordset& rows, DetailFacts& facts);

  // `balance` is the item's balance behind the movement, where the report shows it.
  void AddMove(const StockItem& item, const Move& move, const std::optional<Sums>& balance);
  void AddSum(const DetailSum& sum);

 private:
  void SetItem(const StockItem& item);
  // `shown` is the quantity in the unit that the row shows.
  void SetSide(std::size_t column, const StockItem* item, const Sums& sums, double shown);

  DetailFacts& facts_;
  std::optional<platform::RowAppender> to_;
};

}  // namespace books::reports
