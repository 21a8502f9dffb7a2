#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"

namespace component {

// What a column holds; the browser chooses its number formats by it. There is no kind 3.
enum class ColumnType : std::uint8_t {
  kText = 1,      // codes, names, dates shown as text, states
  kQuantity = 2,  // also counts of days
  kPrice = 4,
  kPackages = 5,  // whole and loose packages
  kAmount = 6,    // also percentages
};

// Masks of the application types that show a column.
inline constexpr std::int16_t kEveryAppType = 7;
inline constexpr std::int16_t kWithAuxiliaryUnits = 6;

// One row of a report's column table. A caption ends in "$" over a single column, in "+|" as often as further
// columns follow under a group, and is empty for those further columns, which show `second`.
struct Column {
  std::string_view caption;
  std::string_view second;
  ColumnType type = ColumnType::kText;
  std::string_view field;
  bool visible = true;
  std::int16_t mask = kEveryAppType;
};

// Appends a column description to the shared heading. A visible argument other than 0 shows the column; a
// mask without the application type forces it hidden, and it stays in the list so that positions are the
// same for every application type. Without a shared heading a new one is made that no report owns.
void AddColumn(const std::string& caption, const std::string& second, const std::string& type,
               const std::string& field, std::int16_t visible, std::int16_t mask);
// AddColumn for each row of a table, captions and second headings through ResString.
void AddColumns(std::span<const Column> columns);

// The category levels by which a filter wants rows summed up.
struct LevelRange {
  bool on = false;
  std::int32_t begin = 0;
  std::int32_t end = 0;

  // How many columns the levels take; below 0 for a range that ends before it begins, as the frozen block
  // counts it.
  std::int32_t Count() const { return on ? end - begin + 1 : 0; }
};
// From "MultiLevel", "MultiLevelBegin" and "MultiLevelEnd"; what cannot be read raises.
LevelRange ReadLevelRange(const platform::Dictionary& filter);
// One text column a level, from the lowest to the highest; none when the levels are not asked for.
void AddLevelColumns(const LevelRange& levels);

// Points the shared heading at `heading`; nothing clears it.
void SetHeadVector(const platform::Ref<platform::Vector>& heading);

// The lines that the browser prints above the grid, each a dictionary "FCaption", "FIndex". A filter of
// nothing reads as one that asks for all items and all warehouses. `property` is made when it is nothing, and
// its "ShowInPreview" set to 1. Never raises: a value that cannot be read leaves the text before it.
platform::Ref<platform::Vector> BuildTitle(const platform::Ref<platform::Dictionary>& filter,
                                           platform::Ref<platform::Dictionary>& property);

// A base table that a report reads and that users may be restricted on.
struct DataRight {
  std::string_view table;      // "t_stock", without regard to case
  std::string_view alias;      // its alias in the data component's SQL
  std::string_view itemClass;  // its base data class
};

// The entries as the data right routine takes them: dictionaries "DataTable", "DataTableAs", "ItemClassType".
platform::Ref<platform::Vector> DataRightEntries(std::span<const DataRight> rights);
// Extends `clause` by the user's restriction on each entry. Answers whether users are restricted at all.
bool MakeDataRightWhere(const platform::Ref<platform::Vector>& entries, std::string& clause);
// Whether this user is restricted; a failure of the security service means no.
bool GetNeedAuthrize();
// The base data classes that restrictions apply to, as text such as "1,5,8".
std::string GetAuthrizeItemClassList();

// A batch that makes the temporary table #ItemLevel: for each item the number and name of its ancestors at
// each level of the range. Numbers compare on the full or the short number as IsLongNumber says.
struct ItemLevelRange {
  std::int32_t classId = 0;
  std::string_view likeNumber;
  std::string_view beginNumber;
  std::string_view endNumber;
  std::int32_t beginLevel = 1;
  std::int32_t endLevel = 1;
  std::int32_t showNumber = 0;  // 1 shows names as [01]name
};
std::string BuildItemLevelSql(const ItemLevelRange& range);

}  // namespace component
