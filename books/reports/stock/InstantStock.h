#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "books/reports/stock/StockCells.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"

// What 即时库存表 and 即时库存行式查询 share: the same stock, once in bands of warehouses, once by rows.
namespace books::reports {

// What lies in one warehouse.
struct Placed {
  std::size_t warehouse = 0;  // place in the list of warehouses
  Figures figures;
};

// An item, or one auxiliary property or batch of it, and where its places begin and end.
struct StockRow {
  const StockItem* item = nullptr;
  std::string aux;
  std::string batch;
  std::size_t first = 0;
  std::size_t last = 0;
};

// A subtotal of a category, or the total of the report.
struct SumRow {
  std::vector<const Category*> above;  // one a level; null below the level that is summed, and for the total
  std::int32_t level = 0;              // that is summed; 0 for the total
  std::vector<Figures> byWarehouse;
};

// Receives the rows in the report's order; a sum comes behind the rows that it sums.
class StockRowSink {
 public:
  StockRowSink() = default;
  StockRowSink(const StockRowSink&) = delete;
  StockRowSink& operator=(const StockRowSink&) = delete;
  StockRowSink(StockRowSink&&) = delete;
  StockRowSink& operator=(StockRowSink&&) = delete;
  virtual ~StockRowSink() = default;

  virtual void Row(const StockRow& row, std::span<const Placed> places) = 0;
  virtual void Sum(const SumRow& sum) = 0;
};

// Filter keys: EDate, OnTime, CheckItem, ShareAbnormalAmt, ContainBills; BItemNumber, EItemNumber, ItemName,
// Model, ShowDeletedItem; BBatchNo, EBatchNo, BAuxNumber, EAuxNumber; BStockNumber, EStockNumber, StockType,
// DataRightWhere (on d); ShowType, ShowZero, NotShowMinus; Sort, ASC, DESC; MultiLevel, MultiLevelBegin,
// MultiLevelEnd.
//
// - OnTime, which also holds without the key, asks for stock now; else EDate is needed. The check of instant
//   stock, the sharing of odd amounts and unaudited bills count only now, the sharing only with the check.
// - ShowType: 0 by item, 1 by auxiliary property, 2 by batch, 3 by both.
// - Zero stock is a row without any figure. With ShowZero, and by item only, the items that lie nowhere in
//   the selected warehouses are rows too, but for a user who may see no warehouse.
// - NotShowMinus leaves out what is below zero in a warehouse, in both reports alike.
// - A disabled item is listed only with ShowDeletedItem.
class InstantStock {
 public:
  InstantStock(services::Store& store, const ReportFilter& filter);

  const std::vector<Warehouse>& Warehouses() const { return warehouses_; }
  LevelRange Levels() const { return levels_; }
  bool ShowsAux() const { return showType_ == 1 || showType_ == 3; }
  bool ShowsBatches() const { return showType_ >= 2; }
  // Whether anything lies there, one a warehouse.
  std::vector<bool> Used() const;

  void Walk(StockRowSink& sink) const;

 private:
  void AddItem(const StockItem& item, StockCells& cells);
  void AddExpanded(const StockItem& item, StockCells& cells);
  // Ends the row that begins at `first`; nothing when it has no places.
  void AddRow(StockRow row);
  bool Keep(const Figures& figures);

  std::vector<Warehouse> warehouses_;
  LevelRange levels_;
  std::int32_t showType_;
  bool showZero_;
  bool notShowMinus_;
  StockItems items_;
  std::vector<StockRow> rows_;
  std::vector<Placed> places_;
  std::vector<Figures> scratch_;  // one a warehouse
  bool droppedMinus_ = false;     // of the item that is being added
};

// The fields in front of the figures, and FSumSort: 0 on a row, the level on a subtotal, 101 on the total.
class InstantFields {
 public:
  InstantFields(const InstantStock& stock, platform::Recordset& rows);

  void SetRow(platform::RowAppender& to, const StockRow& row) const;
  void SetSum(platform::RowAppender& to, const SumRow& sum) const;

 private:
  LevelRange levels_;
  bool aux_;
  bool batches_;
  std::size_t sumSort_ = 0;
};

}  // namespace books::reports
