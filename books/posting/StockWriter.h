#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "books/database/Connection.h"
#include "books/database/IntegerRows.h"
#include "books/posting/StockReader.h"
#include "books/posting/Valuation.h"

namespace books::posting {

// Reads the movements of items, has them valued, and writes amounts, balances and instant stock. Single bills
// and whole imports go through here. Used inside a transaction; statements stay prepared while it lives, and
// the balances must already reach every period that has movements.
class StockWriter {
 public:
  explicit StockWriter(database::Connection& connection);

  // Works out the movements' amounts, then as WriteFigures. The items are a whole group: nothing outside it
  // is tied to them by an assembly.
  void Value(std::span<const Id> items);
  // The same for items that have no rows in any stock table yet; their movements, sorted by item and then in
  // the order of their key, are written too.
  void ValueNew(std::span<const Id> items, std::vector<Movement> movements);
  // Balances and instant stock from the movements as they stand.
  void WriteFigures(std::span<const Id> items);
  // What was written stands in the tables only after this.
  void Finish();

 private:
  // Figures of one cell: warehouse, batch and auxiliary property of an item.
  struct Figures {
    database::Quantity quantity;
    database::Quantity auxQuantity;
    platform::Currency amount;

    friend bool operator==(const Figures&, const Figures&) = default;
  };

  void Load(std::span<const Id> items);
  void WriteAmounts();
  void Clear(Id item);
  void WriteItems(std::span<const Id> items);
  void WriteItem(Id item, std::span<const Movement> movements, std::span<const OpeningStock> openings);

  StockReader reader_;
  std::int32_t start_ = 0;
  std::int32_t until_ = 0;
  database::Statement writeAmount_;
  database::Statement deleteBalances_;
  database::Statement deleteStock_;
  database::IntegerRows movements_;
  database::IntegerRows balances_;
  database::IntegerRows stock_;

  ItemGroup group_;                         // the one at hand
  std::vector<platform::Currency> stored_;  // its movements' amounts in the book
};

}  // namespace books::posting
