#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "books/reader/SqlReader.h"
#include "platform/rows/Dictionary.h"

// What the data components make of the filter that a report sends: texts, number ranges, rights, sort order.
namespace books::reports {

// Both ends belong to it; an empty end is open.
struct Range {
  std::string from;
  std::string to;
};

// A field that a report may be sorted by, as the filter names it, and what it is in the report's SQL.
struct SortField {
  std::string_view name;
  std::string_view sql;
};

// Unknown keys are never looked at. A value that cannot be used raises kBadArgument with the key's name; the
// text is for the user.
class ReportFilter {
 public:
  // Nothing, or no value at all, is a filter without conditions; anything but a dictionary raises.
  explicit ReportFilter(const platform::Variant& filter);

  // The value without blanks around it, "" for a key that is not set.
  std::string Text(std::string_view key) const;
  // The keys "B" and "E" followed by the name: "ItemNumber".
  Range NumberRange(std::string_view name) const;
  // The clause "DataRightWhere", or that of another key, over the aliases that the report's SQL uses. A
  // clause that is not understood raises: the report is refused rather than shown without the restriction.
  reader::SqlText Rights(std::span<const reader::ConditionAlias> aliases,
                         std::string_view key = "DataRightWhere") const;
  // "OrderBy" (a field, then ASC or DESC) as what follows ORDER BY; `last` settles the order of equal rows
  // and stands alone when the filter asks for no order.
  std::string OrderBy(std::span<const SortField> fields, std::string_view last) const;

 private:
  platform::Ref<platform::Dictionary> filter_;  // null for no conditions
};

// Conditions joined with AND, with the values bound to their marks in order.
class Conditions {
 public:
  void Add(const reader::SqlText& condition);
  void AddRange(std::string_view column, const Range& range);

  bool IsEmpty() const { return sql_.empty(); }
  // "a AND b", or 1 when there is no condition.
  std::string Sql() const { return sql_.empty() ? "1" : sql_; }
  const std::vector<platform::Variant>& Parameters() const { return parameters_; }

 private:
  std::string sql_;
  std::vector<platform::Variant> parameters_;
};

}  // namespace books::reports
