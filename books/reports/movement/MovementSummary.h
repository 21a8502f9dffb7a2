#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "books/reports/movement/MovementReader.h"
#include "books/reports/stock/StockItems.h"

namespace books::reports {

// What makes a row, in the numbers of the dialogs' lists: an item; an item in a warehouse, below its
// warehouse; a batch of an item, below its item.
enum class SummaryBy : std::int32_t { kItem = 0, kWarehouse = 1, kBatch = 2 };

// A warehouse with its groups of the levels asked for; null where it stands higher.
struct SummaryWarehouse {
  std::int64_t id = 0;
  std::string name;
  std::vector<const Category*> above;
};

// What a summary is to show. Sums and the total add up the rows that are shown, or would be.
struct SummaryShape {
  SummaryBy by = SummaryBy::kItem;
  LevelRange levels;          // of the item tree; by warehouse, of the warehouse tree
  bool onlySums = false;      // no rows but sums and the total
  bool hidesUnmoved = false;  // rows without movement
  bool hidesEmpty = false;    // rows that end with nothing
  MovementGoods goods = MovementGoods::kAll;
  // The movements of a row may be told apart by groups.
  std::size_t groupCount = 0;
  std::size_t (*groupOf)(const Move& move) = nullptr;
};

struct SummaryFigures {
  Sums opening;
  Sums receipts;
  Sums issues;
  std::vector<Sums> groups;
  bool moved = false;

  Sums Closing() const { return opening + receipts - issues; }
  void Add(const SummaryFigures& other);
};

// One row of the answer. A sum knows what all its rows have in common, and nothing else.
struct SummaryLine {
  enum class Kind { kRow, kItemSum, kWarehouseSum, kLevelSum, kTotal };

  Kind kind = Kind::kRow;
  std::int32_t sumSort = 0;  // 0 for a row; the level, 100 for an item or a warehouse, 101 for the total
  std::vector<const Category*> above;           // one a level; of a level sum: down to its own
  const StockItem* item = nullptr;              // null in sums over several
  const SummaryWarehouse* warehouse = nullptr;  // null unless by warehouse, and in sums over several
  std::string batch;
  SummaryFigures figures;
};

// Reads a summary and hands out its lines in order, the sums behind their rows.
class MovementSummary {
 public:
  // `asked` brings the range of items and the order: OrderBy with FItemNumber or FCommonName (the name of the
  // warehouse).
  MovementSummary(services::Store& store, const ReportFilter& asked, MovementChoice choice,
                  const SummaryShape& shape);

  void Read(const std::function<void(const SummaryLine&)>& sink);
  // The item's default supplier, "" for none.
  const std::string& SupplierOf(std::int64_t itemId) const;

 private:
  struct Order {
    ItemSort items;
    std::string warehouses;
  };
  static Order OrderOf(const ReportFilter& asked, bool shortNumbers);
  void ReadWarehouses(const std::string& order);
  void ReadWarehouseGroups();
  void ReadSuppliers();
  void ReadBatches(const Conditions& items);
  void AddRows(const StockItem& item, const ItemMovement& movement);
  SummaryLine& RowOf(const StockItem& item, const Place& place);
  void Finish(std::size_t first);
  bool IsShown(const SummaryFigures& figures) const;
  SummaryLine SumOver(const SummaryLine& last, std::size_t depth) const;
  void HandOut(const std::function<void(const SummaryLine&)>& sink);

  services::Store& store_;
  MovementChoice choice_;
  SummaryShape shape_;
  Order order_;
  StockItems items_;
  std::vector<SummaryWarehouse> warehouses_;  // in the order of the report
  std::unordered_map<std::int64_t, std::size_t> warehouseAt_;
  std::unordered_map<std::int64_t, Category> warehouseGroups_;
  std::unordered_map<std::int64_t, std::string> suppliers_;
  std::unordered_map<std::int64_t, std::string> batches_;  // their numbers
  std::vector<SummaryLine> rows_;
  // The row of a warehouse or a batch, of the item that is being read; what others left behind is void.
  struct RowOfPlace {
    const StockItem* item = nullptr;
    std::size_t row = 0;
  };
  std::unordered_map<std::int64_t, RowOfPlace> rowOf_;
};

}  // namespace books::reports
