#include "books/reports/ReportFilter.h"

#include <algorithm>

#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::reports {
namespace {

using platform::Error;
using platform::ErrorNumber;

[[noreturn]] void Refuse(std::string_view key, std::string_view reason) {
  throw Error(ErrorNumber::kBadArgument, "books::reports",
              "过滤条件 " + std::string(key) + " " + std::string(reason));
}

}  // namespace

ReportFilter::ReportFilter(const platform::Variant& filter) : filter_(filter.AsRef<platform::Dictionary>()) {
  const bool none = filter.IsEmpty() || filter.IsMissing() || filter.IsNull() || filter.IsNothing();
  if (!filter_ && !none) {
    throw Error(
        ErrorNumber::kBadArgument, "books::reports",
        "过滤条件应为字典（Dictionary），收到的是 " + std::string(platform::ToString(filter.GetKind())));
  }
}

std::string ReportFilter::Text(std::string_view key) const {
  const platform::Variant* value = filter_ ? filter_->Find(key) : nullptr;
  if (value == nullptr || value->IsEmpty() || value->IsNull() || value->IsMissing()) return {};
  if (value->IsObject()) Refuse(key, "应为文本，收到的是对象");
  return std::string(platform::TrimBlanks(platform::ToText(*value)));
}

Range ReportFilter::NumberRange(std::string_view name) const {
  return {.from = Text("B" + std::string(name)), .to = Text("E" + std::string(name))};
}

reader::SqlText ReportFilter::Rights(std::span<const reader::ConditionAlias> aliases,
                                     std::string_view key) const {
  try {
    return reader::ReadConditionText(Text(key), aliases);
  } catch (const Error& error) {
    Refuse(key, "（数据权限）无法识别，报表没有取数：" + error.Description());
  }
}

std::string ReportFilter::OrderBy(std::span<const SortField> fields, std::string_view last) const {
  const std::string text = Text("OrderBy");
  if (text.empty()) return std::string(last);
  const std::size_t blank = std::min(text.find_first_of(" \t"), text.size());
  const std::string_view name = std::string_view(text).substr(0, blank);
  const std::string_view direction = platform::TrimBlanks(std::string_view(text).substr(blank));
  const auto field = std::ranges::find_if(
      fields, [&](const SortField& each) { return platform::EqualsIgnoreCase(each.name, name); });
  if (field == fields.end()) Refuse("OrderBy", "中的排序字段不能识别：" + text);
  const bool descending = platform::EqualsIgnoreCase(direction, "DESC");
  if (!descending && !direction.empty() && !platform::EqualsIgnoreCase(direction, "ASC")) {
    Refuse("OrderBy", "的排序方向应为 ASC 或 DESC：" + text);
  }
  return std::string(field->sql) + (descending ? " DESC, " : " ASC, ") + std::string(last);
}

void Conditions::Add(const reader::SqlText& condition) {
  if (condition.sql.empty()) return;
  if (!sql_.empty()) sql_ += " AND ";
  sql_ += condition.sql;
  parameters_.insert(parameters_.end(), condition.parameters.begin(), condition.parameters.end());
}

void Conditions::AddRange(std::string_view column, const Range& range) {
  if (!range.from.empty()) Add({.sql = std::string(column) + " >= ?", .parameters = {range.from}});
  if (!range.to.empty()) Add({.sql = std::string(column) + " <= ?", .parameters = {range.to}});
}

}  // namespace books::reports
