#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "books/reports/ReportFilter.h"
#include "platform/value/Date.h"

// The values that the dialogs of the stock reports write, read strictly: a check box or a choice arrives as a
// number, a boolean or the text of either, and a value that is none of them refuses the report.
namespace books::reports {

[[noreturn]] void RefuseFilter(std::string_view key, std::string_view reason);

// A check box or an option; `otherwise` for a key that is not set.
bool FlagOf(const ReportFilter& filter, std::string_view key, bool otherwise = false);
// One of the entries 0 to count − 1 of a list; 0 for a key that is not set.
std::int32_t ChoiceOf(const ReportFilter& filter, std::string_view key, std::int32_t count);
std::optional<platform::Date> DayOf(const ReportFilter& filter, std::string_view key);

// MultiLevel, MultiLevelBegin, MultiLevelEnd: the category levels of a summary by levels. Headings have a
// column for each of them, so a level that no goods have, 0 among them, is a field without names; levels that
// begin above their end are none.
struct LevelRange {
  std::int32_t begin = 1;
  std::int32_t end = 0;  // below `begin` without such a summary

  std::int32_t Count() const { return end < begin ? 0 : end - begin + 1; }
};
LevelRange LevelsOf(const ReportFilter& filter);

// Sort (商品代码, 规格型号, 商品名称) with ASC and DESC, as an order over b (the item's base data) and i (the
// item); equal rows by number.
struct ItemSort {
  std::string sql;
  bool descending = false;
};
ItemSort ItemSortOf(const ReportFilter& filter);

// The column contains the text, without regard to the case of ASCII letters; nothing for the empty text.
void AddContained(Conditions& conditions, std::string_view column, std::string_view part);

// The conditions on items that the dialogs share: BItemNumber, EItemNumber, ItemName, Model over b and i.
Conditions ItemConditions(const ReportFilter& filter, bool shortNumbers);

}  // namespace books::reports
