#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "books/database/Statement.h"
#include "books/reports/ReportFilter.h"
#include "books/services/Store.h"
#include "platform/value/Date.h"

namespace books::reports {

struct Warehouse {
  std::int64_t id = 0;
  std::string number;
  std::string name;
  std::int32_t type = 0;

  bool IsOrdinary() const;  // goods in others are kept without an amount
};

// The warehouses that a filter selects and its user may see, in the order of their numbers: BStockNumber,
// EStockNumber, StockType (0 all, 1 ordinary, 2 gift), DataRightWhere on `alias`, and `more` on the same.
std::vector<Warehouse> ChooseWarehouses(services::Store& store, const ReportFilter& filter,
                                        std::string_view alias, const reader::SqlText& more = {});

// Quantities in millionths, amounts in ten-thousandths, as the book keeps them.
struct Figures {
  std::int64_t quantity = 0;
  std::int64_t auxQuantity = 0;
  std::int64_t amount = 0;
  // The part of the quantity that the amount stands for: what audited bills left in ordinary warehouses.
  std::int64_t valued = 0;

  Figures& operator+=(const Figures& other);
  bool IsZero() const { return quantity == 0 && auxQuantity == 0 && amount == 0; }
};

struct Cell {
  std::size_t warehouse = 0;  // place in the list of warehouses
  std::int64_t batch = 0;     // 0 for none
  std::int64_t aux = 0;
  Figures figures;
};

struct BatchFacts {
  std::string number;
  std::optional<platform::Date> produced;
  std::int32_t shelfLifeDays = 0;
  std::optional<platform::Date> expires;  // as entered, or from the production date and the shelf life
};

struct AuxFacts {
  std::string number;
  std::string name;
};

// What of the stock a report asks for.
struct CellsAsked {
  std::optional<platform::Date> atEndOf;  // nothing: now
  bool checked = false;        // now, but worked out of all movements instead of taken from the instant stock
  bool withUnaudited = false;  // quantities of bills that are not audited count too; they carry no amounts
  bool shareOddAmounts = false;
  bool onlyBatches = false;  // instant stock: goods of a batch that are there; reads the quicker for it
  Range batches;             // a set range leaves out what has no batch
  Range auxes;
  std::optional<platform::Date> goodOn;  // leaves out batches that have expired before this day

  bool KnowsBatches() const { return goodOn || !batches.from.empty() || !batches.to.empty(); }
};

// Stock, item by item: now, now as the movements give it, or at the end of a day as the balances of the
// periods and the movements since give it, with the value of that day.
//
// An odd amount is one that is left in a cell without goods: with one cost over all warehouses only the whole
// is meaningful. Shared out, it goes to the item's selected cells with goods, by their quantities; so the
// item's total stays as it is, whatever is selected. Without such a cell it stays where it is.
class StockCells {
 public:
  StockCells(services::Store& store, const std::vector<Warehouse>& warehouses, CellsAsked asked);

  // What lies of the item in the selected warehouses, one cell a warehouse, batch and auxiliary property,
  // without cells that are all zero. Good until the next call.
  const std::vector<Cell>& Of(std::int64_t item);

  // Of the item that was read last; empty facts for 0.
  const BatchFacts& Batch(std::int64_t id);
  const AuxFacts& Aux(std::int64_t id);

 private:
  struct Source {
    database::Statement rows;
    std::vector<std::int64_t> more;  // values behind the item
  };
  struct Loaded {
    std::int64_t item = 0;
    std::unordered_map<std::int64_t, BatchFacts> batches;
  };

  void ReadAuxFacts();
  void ReadUnaudited();
  void Append(database::Statement& rows);
  void Merge();
  void DropUnselected();
  bool IsSelected(const Cell& cell);
  void ShareOddAmounts();
  void ReadBatch(std::int64_t id, BatchFacts& facts);

  services::Store& store_;
  const std::vector<Warehouse>& warehouses_;
  CellsAsked asked_;
  std::unordered_map<std::int64_t, std::size_t> places_;  // of the warehouses by id
  std::vector<Source> sources_;
  std::unordered_map<std::int64_t, std::vector<Cell>> unaudited_;
  std::unordered_map<std::int64_t, AuxFacts> auxes_;
  std::unordered_map<std::int64_t, bool> auxSelected_;
  database::Statement batchRows_;
  Loaded loaded_;
  std::int64_t item_ = 0;
  std::vector<Cell> cells_;
};

}  // namespace books::reports
