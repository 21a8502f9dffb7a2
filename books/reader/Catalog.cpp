#include "books/reader/Catalog.h"

#include <algorithm>
#include <array>

#include "platform/value/Convert.h"

namespace books::reader {
namespace {

using enum platform::FieldType;

constexpr std::array kBaseData = {
    Column{"FItemID", kInt32},  Column{"FItemClassID", kInt32}, Column{"FParentID", kInt32},
    Column{"FNumber", kText},   Column{"FShortNumber", kText},  Column{"FFullNumber", kText},
    Column{"FName", kText},     Column{"FLevel", kInt32},       Column{"FDetail", kInt32},
    Column{"FDeleted", kInt32}, Column{"FRightUserID", kText},
};
constexpr std::array kItemClass = {Column{"FItemClassID", kInt32}, Column{"FName", kText}};
constexpr std::array kStock = {
    Column{"FItemID", kInt32}, Column{"FNumber", kText},      Column{"FShortNumber", kText},
    Column{"FName", kText},    Column{"FRightUserID", kText},
};
constexpr std::array kSystemProfile = {Column{"FCategory", kText}, Column{"FKey", kText},
                                       Column{"FValue", kText}};
constexpr std::array kPeriodDate = {Column{"FYear", kInt32}, Column{"FPeriod", kInt32},
                                    Column{"FStartDate", kDate}, Column{"FEndDate", kDate}};
constexpr std::array kBatchStock = {
    Column{"FItemID", kInt32}, Column{"FStockID", kInt32},      Column{"FBatchNo", kText},
    Column{"FKFDate", kDate},  Column{"FStockPlaceID", kInt32}, Column{"FAuxPropID", kInt32},
    Column{"FQty", kDouble},
};

constexpr Table kTables[] = {
    {.name = "t_Item", .columns = kBaseData},
    {.name = "t_ItemClass", .columns = kItemClass},
    {.name = "t_Stock", .columns = kStock},
    {.name = "t_SystemProfile", .columns = kSystemProfile},
    {.name = "t_PeriodDate", .columns = kPeriodDate},
    // Whether it has a row is all that anybody asks.
    {.name = "ICCalFlag", .columns = {}},
};
constexpr Table kBatchStockTable = {.name = "batch stock", .columns = kBatchStock};

}  // namespace

const Column* Table::Find(std::string_view column) const {
  const auto found = std::ranges::find_if(
      columns, [&](const Column& each) { return platform::EqualsIgnoreCase(each.name, column); });
  return found == columns.end() ? nullptr : &*found;
}

const Table* FindTable(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      kTables, [&](const Table& each) { return platform::EqualsIgnoreCase(each.name, name); });
  return found == std::end(kTables) ? nullptr : found;
}

const Table& BaseDataTable() { return *FindTable("t_Item"); }
const Table& BatchStockTable() { return kBatchStockTable; }

}  // namespace books::reader
