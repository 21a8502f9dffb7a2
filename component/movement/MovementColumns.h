#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "component/frame/MRpt.h"

namespace component {

// The two varieties of a movement report: for all goods with all figures, and for goods kept in batches with
// quantities only. What is for every variety stands in both.
enum class Variety : std::uint8_t { kEvery, kGoods, kBatches };

// What summary rows stand for, as the filters number it; -1 is none of these.
enum RowGroup : std::int32_t { kNoGroup = -1, kByItem = 0, kByStock = 1, kByBatch = 2 };

// A column left of the figures, and where it exists.
struct LeadingColumn {
  Column column;
  RowGroup group = kNoGroup;              // only in rows by this, or in all
  Variety variety = Variety::kEvery;      // only in this variety
  std::int16_t appTypes = kEveryAppType;  // elsewhere it is left out, not hidden
};
void AddLeadingColumns(std::span<const LeadingColumn> columns, Variety variety, RowGroup group = kNoGroup);

// The row fields of one group of figures; a group has those that its layout names.
struct FigureFields {
  std::string_view baseQty;
  std::string_view basePrice;
  std::string_view qty;
  std::string_view packages;
  std::string_view price;
  std::string_view secQty;
  std::string_view amount;
};

// One column of a layout that all groups of a report share.
struct FigureColumn {
  std::string_view FigureFields::*field = nullptr;
  std::string_view second;
  ColumnType type = ColumnType::kQuantity;
  std::string_view caption = {};  // of a column after the group's first
  bool visible = true;
  std::int16_t mask = kEveryAppType;
};

struct FigureGroup {
  std::string_view name;
  FigureFields fields;
  std::int16_t mask = kEveryAppType;  // narrows the masks of the layout
};

// The columns of one group, its name over the first. For batches there are no packages, and prices and
// amounts are there but never shown.
void AddFigureGroup(const FigureGroup& group, std::span<const FigureColumn> layout,
                    Variety variety = Variety::kGoods);

// A number that a filter holds as a number or as a text; 0 for one that it has not got.
double FilterNumber(const platform::Dictionary& filter, std::string_view key);
// What such a number asks rows to stand for.
RowGroup FilterGroup(const platform::Dictionary& filter, std::string_view key);

// The warehouses that users are restricted on, in all reports of items that moved.
inline constexpr DataRight kMovementRights[] = {{.table = "t_stock", .alias = "t4", .itemClass = "5"}};

}  // namespace component
