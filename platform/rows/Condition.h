#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rows/RowStore.h"

namespace platform {

// A condition of Find or Filter, read once and then asked row by row:
//   condition  = comparison { AND comparison }
//   comparison = field ( = | < | > | <= | >= | <> | LIKE ) value
//   field      = a name, or [a name with blanks]
//   value      = 'text, quotes doubled' | number | #date# | TRUE | FALSE
// Texts compare without regard to the case of ASCII letters. In a LIKE pattern * and % stand for any number
// of characters. A null meets no comparison, not even <>.
class Condition {
 public:
  // Raises kBadArgument with the place for a text that is no condition, kUnknownField for a field that
  // `rows` does not have, kTypeMismatch for a value that the field's type cannot be compared with.
  static Condition Parse(std::string_view text, const RowStore& rows);

  std::size_t ComparisonCount() const { return comparisons_.size(); }
  bool Matches(const RowStore& rows, std::size_t row) const;

 private:
  friend class ConditionReader;

  enum class Operator { kEqual, kLess, kGreater, kLessOrEqual, kGreaterOrEqual, kNotEqual, kLike };
  enum class CompareAs { kText, kNumber, kCurrency, kDate, kBoolean };

  struct Comparison {
    std::size_t column = 0;
    Operator op = Operator::kEqual;
    CompareAs as = CompareAs::kText;
    std::string text;  // upper case
    double number = 0;
    Currency amount;
    Date date;
    bool flag = false;
  };

  static bool Meets(const Comparison& comparison, const RowStore& rows, RowStore::Place at);

  std::vector<Comparison> comparisons_;
};

}  // namespace platform
