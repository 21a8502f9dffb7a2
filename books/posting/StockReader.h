#pragma once

#include <span>
#include <unordered_map>
#include <vector>

#include "books/database/Connection.h"
#include "books/posting/Valuation.h"

namespace books::posting {

// What the valuation of a group of items needs, item after item in the order asked for, movements in the
// order of their key with their amounts as they stand in the book.
struct ItemGroup {
  std::vector<Movement> movements;
  std::vector<OpeningStock> openings;
  std::unordered_map<Id, schema::Valuation> methods;
};

// Statements stay prepared while it lives.
class StockReader {
 public:
  explicit StockReader(database::Connection& connection);

  const CostingRules& Rules() const { return rules_; }
  // Replaces what the group held before.
  void Load(std::span<const Id> items, ItemGroup& group);
  void LoadWithoutMovements(std::span<const Id> items, ItemGroup& group);

 private:
  void LoadFacts(Id item, ItemGroup& group);
  void LoadMovements(Id item, ItemGroup& group);

  CostingRules rules_;
  database::Statement method_;
  database::Statement openings_;
  database::Statement movements_;
};

}  // namespace books::posting
