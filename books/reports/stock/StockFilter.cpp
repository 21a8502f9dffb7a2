#include "books/reports/stock/StockFilter.h"

#include <array>
#include <cmath>

#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::reports {

using platform::Date;
using platform::EqualsIgnoreCase;

void RefuseFilter(std::string_view key, std::string_view reason) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books::reports",
                        "过滤条件 " + std::string(key) + " " + std::string(reason));
}

bool FlagOf(const ReportFilter& filter, std::string_view key, bool otherwise) {
  const std::string text = filter.Text(key);
  if (text.empty()) return otherwise;
  if (EqualsIgnoreCase(text, "True")) return true;
  if (EqualsIgnoreCase(text, "False")) return false;
  if (!platform::IsNumeric(text)) RefuseFilter(key, "应为 0 或 1：" + text);
  return platform::ToDouble(text) != 0;
}

std::int32_t ChoiceOf(const ReportFilter& filter, std::string_view key, std::int32_t count) {
  const std::string text = filter.Text(key);
  if (text.empty()) return 0;
  const double number = platform::IsNumeric(text) ? platform::ToDouble(text) : -1;
  if (number < 0 || number >= count || std::floor(number) != number) {
    RefuseFilter(key, "应为 0 至 " + std::to_string(count - 1) + " 的整数：" + text);
  }
  return static_cast<std::int32_t>(number);
}

std::optional<Date> DayOf(const ReportFilter& filter, std::string_view key) {
  const std::string text = filter.Text(key);
  if (text.empty()) return std::nullopt;
  const std::optional<Date> date = Date::FromText(text);
  if (!date) RefuseFilter(key, "不是日期，应为 YYYY-MM-DD：" + text);
  return date->DayOnly();
}

LevelRange LevelsOf(const ReportFilter& filter) {
  if (!FlagOf(filter, "MultiLevel")) return {};
  constexpr std::int32_t kDeepest = 100;
  const LevelRange levels{.begin = ChoiceOf(filter, "MultiLevelBegin", kDeepest),
                          .end = ChoiceOf(filter, "MultiLevelEnd", kDeepest)};
  return levels.end < levels.begin ? LevelRange() : levels;
}

ItemSort ItemSortOf(const ReportFilter& filter) {
  static constexpr std::array<std::string_view, 3> kColumns = {"b.number", "i.model", "b.name"};
  ItemSort sort;
  sort.descending = FlagOf(filter, "DESC");
  const std::string_view direction = sort.descending ? " DESC" : " ASC";
  const auto chosen = static_cast<std::size_t>(ChoiceOf(filter, "Sort", kColumns.size()));
  sort.sql = std::string(kColumns.at(chosen)) + std::string(direction);
  sort.sql += ", b.number" + std::string(direction) + ", b.id";
  return sort;
}

void AddContained(Conditions& conditions, std::string_view column, std::string_view part) {
  if (part.empty()) return;
  std::string pattern = "%";
  for (const char letter : part) {
    if (letter == '%' || letter == '_' || letter == '\\') pattern += '\\';
    pattern += letter;
  }
  pattern += '%';
  conditions.Add({.sql = std::string(column) + " LIKE ? ESCAPE '\\'", .parameters = {pattern}});
}

Conditions ItemConditions(const ReportFilter& filter, bool shortNumbers) {
  Conditions items;
  items.AddRange(shortNumbers ? "b.short_number" : "b.number", filter.NumberRange("ItemNumber"));
  AddContained(items, "b.name", filter.Text("ItemName"));
  AddContained(items, "i.model", filter.Text("Model"));
  return items;
}

}  // namespace books::reports
