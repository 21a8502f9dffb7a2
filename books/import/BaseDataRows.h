#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "books/import/Run.h"

// What items and warehouses have beside their place in a tree.
namespace books::importer {

// A row of any base data file. The last two groups are read for warehouses and for items.
struct BaseRow {
  std::string_view number;
  std::string_view name;
  std::string_view shortNumber;
  std::optional<bool> group;
  std::optional<bool> disabled;

  std::string_view type;

  std::string_view model;
  std::string_view barcode;
  Reference unit;
  Reference auxUnit;
  Reference supplier;
  std::string_view valuation;
  std::optional<bool> batchManaged;
  std::optional<bool> serialManaged;
  std::optional<std::int32_t> shelfLifeDays;
  std::optional<database::Quantity> minQuantity;
  std::optional<database::Quantity> maxQuantity;
  std::optional<std::int32_t> quantityDecimals;
  std::optional<std::int32_t> priceDecimals;
};

const std::vector<Column<BaseRow>>& BaseColumns(schema::BaseClass baseClass);

// The words of a row as the book keeps them.
struct BaseCodes {
  std::optional<std::int32_t> type;
  std::optional<std::int32_t> valuation;
};

// Where a row stands: `id` is 0 when the book does not have it yet.
struct BaseState {
  schema::BaseClass baseClass{};
  std::int64_t id = 0;
  bool group = false;
};

// Reports what does not fit together in a row whose cells are sound, and what the book does not let change;
// nothing then.
std::optional<BaseCodes> CheckBaseFacts(Run& run, const Place& place, const BaseRow& row,
                                        const BaseState& state);
// Writes the rows of `item` and `warehouse`; values that are not given leave those in the book.
void InsertBaseFacts(Run& run, const BaseRow& row, const BaseState& state, const BaseCodes& codes);
void UpdateBaseFacts(Run& run, const BaseRow& row, const BaseState& state);

}  // namespace books::importer
