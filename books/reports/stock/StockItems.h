#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "books/reports/WholeAndLoose.h"
#include "books/reports/stock/StockFilter.h"
#include "books/services/Store.h"

namespace books::reports {

// A group of the item tree.
struct Category {
  std::int64_t parent = 0;
  std::int32_t level = 1;
  std::string number;  // as users of the book write it, full or short
  std::string name;
  std::int32_t rank = 0;  // by full number, from 1: a group comes before what is in it
};

struct StockItem {
  std::int64_t id = 0;
  std::string number;  // as users of the book write it
  std::string name;
  std::string model;
  std::string barcode;
  std::string unit;
  std::string auxUnit;  // "" for none
  bool disabled = false;
  std::vector<Package> packages;       // largest first
  std::vector<const Category*> above;  // one a level asked for; null where the item stands higher
};

// The items of a report with what all stock reports show of them.
class StockItems {
 public:
  // `where` and `order` speak of b (the item's base data) and i (the item). With levels the items come by
  // their categories first, in the direction of the order.
  StockItems(services::Store& store, const Conditions& where, const ItemSort& order, LevelRange levels);

  const std::vector<StockItem>& All() const { return items_; }

 private:
  void ReadUnits(services::Store& store);
  void ReadItems(services::Store& store, const Conditions& where, const ItemSort& order);
  void ReadPackages(services::Store& store);
  void ReadCategories(services::Store& store, LevelRange levels);
  void SortByCategory(bool descending);

  bool shortNumbers_;
  std::unordered_map<std::int64_t, std::string> units_;  // their names
  std::vector<StockItem> items_;
  std::vector<std::int64_t> parents_;  // of the items, beside them
  std::unordered_map<std::int64_t, Category> categories_;
};

}  // namespace books::reports
