// Reading goes from left to right, one comparison after the other; the value is brought to the field's type
// at once, so that asking a row is one comparison of like with like.
#include "platform/rows/Condition.h"

#include <algorithm>
#include <compare>
#include <functional>

#include "platform/value/Convert.h"

namespace platform {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEndsName = " \t\r\n=<>'#";

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

// `pattern` is in upper case; * and % stand for any number of characters. A failed match goes back to the
// last wildcard and lets it take one more character.
bool IsLike(std::string_view text, std::string_view pattern) {
  auto isWildcard = [](char c) { return c == '*' || c == '%'; };
  std::size_t t = 0;
  std::size_t p = 0;
  std::size_t wildcard = std::string_view::npos;
  std::size_t taken = 0;
  while (t < text.size()) {
    if (p < pattern.size() && isWildcard(pattern[p])) {
      wildcard = p++;
      taken = t;
    } else if (p < pattern.size() && Upper(text[t]) == pattern[p]) {
      ++t;
      ++p;
    } else if (wildcard != std::string_view::npos) {
      p = wildcard + 1;
      t = ++taken;
    } else {
      return false;
    }
  }
  return std::all_of(pattern.begin() + static_cast<std::ptrdiff_t>(p), pattern.end(), isWildcard);
}

std::weak_ordering CompareText(std::string_view text, std::string_view upper) {
  const std::size_t shorter = std::min(text.size(), upper.size());
  for (std::size_t i = 0; i < shorter; ++i) {
    const auto left = static_cast<unsigned char>(Upper(text[i]));
    const auto right = static_cast<unsigned char>(upper[i]);
    if (left != right) return left <=> right;
  }
  return text.size() <=> upper.size();
}

double NumberCell(const RowStore& rows, std::size_t column, RowStore::Place at) {
  switch (rows.Type(column)) {
    case FieldType::kInt16:
      return rows.Cell<std::int16_t>(column, at);
    case FieldType::kInt32:
      return rows.Cell<std::int32_t>(column, at);
    case FieldType::kCurrency:
      return rows.Cell<Currency>(column, at).ToDouble();
    default:
      return rows.Cell<double>(column, at);
  }
}

}  // namespace

class ConditionReader {
 public:
  ConditionReader(std::string_view text, const RowStore& rows) : text_(text), rest_(text), rows_(rows) {}

  Condition Read() {
    Condition condition;
    do {
      condition.comparisons_.push_back(ReadComparison());
    } while (TakeWord("AND"));
    SkipBlanks();
    if (!rest_.empty()) Fail("AND or the end");
    return condition;
  }

 private:
  using Operator = Condition::Operator;
  using CompareAs = Condition::CompareAs;
  enum class Kind { kQuoted, kNumber, kDate, kWord };

  [[noreturn]] void Fail(std::string_view expected) const {
    throw Error(ErrorNumber::kBadArgument, "Recordset",
                "condition '" + std::string(text_) + "': expected " + std::string(expected) +
                    " at character " +
                    std::to_string(CharacterCount(text_.substr(0, text_.size() - rest_.size())) + 1));
  }
  [[noreturn]] void Mismatch(std::size_t column, std::string_view detail) const {
    throw Error(ErrorNumber::kTypeMismatch, "Recordset",
                "condition '" + std::string(text_) + "': field " + rows_.Fields()[column].name + " (" +
                    std::string(ToString(rows_.Type(column))) + "): " + std::string(detail));
  }

  void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size())); }
  std::string_view Take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  bool TakeWord(std::string_view word) {
    SkipBlanks();
    if (!EqualsIgnoreCase(rest_.substr(0, word.size()), word)) return false;
    if (rest_.substr(word.size()).find_first_not_of(kBlanks) == 0 && rest_[word.size()] != '[') return false;
    Take(word.size());
    return true;
  }

  Condition::Comparison ReadComparison() {
    Condition::Comparison comparison;
    comparison.column = ReadField();
    comparison.op = ReadOperator();
    ReadValue(comparison);
    return comparison;
  }

  std::size_t ReadField() {
    SkipBlanks();
    std::string_view name;
    if (!rest_.empty() && rest_.front() == '[') {
      const std::size_t end = rest_.find(']');
      if (end == std::string_view::npos) Fail("a field name with its closing ]");
      name = Take(end + 1).substr(1, end - 1);
    } else {
      name = Take(std::min(rest_.find_first_of(kEndsName), rest_.size()));
    }
    if (name.empty()) Fail("a field name");
    const std::size_t column = rows_.FindField(name);
    if (column == rows_.Fields().size()) {
      throw Error(ErrorNumber::kUnknownField, "Recordset",
                  "condition '" + std::string(text_) + "': there is no field " + std::string(name));
    }
    return column;
  }

  Operator ReadOperator() {
    struct Sign {
      std::string_view text;
      Operator op;
    };
    constexpr Sign kSigns[] = {{"<=", Operator::kLessOrEqual}, {">=", Operator::kGreaterOrEqual},
                               {"<>", Operator::kNotEqual},    {"=", Operator::kEqual},
                               {"<", Operator::kLess},         {">", Operator::kGreater}};
    SkipBlanks();
    for (const Sign& sign : kSigns) {
      if (!rest_.starts_with(sign.text)) continue;
      Take(sign.text.size());
      return sign.op;
    }
    if (!EqualsIgnoreCase(rest_.substr(0, 4), "like")) Fail("one of = < > <= >= <> LIKE");
    Take(4);
    return Operator::kLike;
  }

  void ReadValue(Condition::Comparison& comparison) {
    SkipBlanks();
    if (rest_.empty()) Fail("a value");
    Kind kind = Kind::kWord;
    std::string literal;
    if (rest_.front() == '\'') {
      kind = Kind::kQuoted;
      literal = ReadQuoted();
    } else if (rest_.front() == '#') {
      const std::size_t end = rest_.find('#', 1);
      if (end == std::string_view::npos) Fail("a date with its closing #");
      kind = Kind::kDate;
      literal = Take(end + 1).substr(1, end - 1);
    } else {
      literal = Take(std::min(rest_.find_first_of(kBlanks), rest_.size()));
      if (IsNumeric(literal)) kind = Kind::kNumber;
    }
    if (kind == Kind::kWord && !EqualsIgnoreCase(literal, "true") && !EqualsIgnoreCase(literal, "false")) {
      rest_ = text_.substr(text_.size() - rest_.size() - literal.size());
      Fail("'text', a number, #date#, TRUE or FALSE");
    }
    RequireComparable(comparison, kind, literal);
    try {
      SetValue(comparison, rows_.Type(comparison.column), literal);
    } catch (const Error& error) {
      Mismatch(comparison.column, error.Description());
    }
  }

  std::string ReadQuoted() {
    std::string literal;
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      if (rest_[i] != '\'') {
        literal += rest_[i];
      } else if (i + 1 < rest_.size() && rest_[i + 1] == '\'') {
        literal += rest_[i++];
      } else {
        Take(i + 1);
        return literal;
      }
    }
    Fail("a text with its closing '");
  }

  void RequireComparable(const Condition::Comparison& comparison, Kind kind,
                         const std::string& literal) const {
    const std::size_t column = comparison.column;
    const FieldType type = rows_.Type(column);
    if (comparison.op == Operator::kLike && !(IsTextType(type) && kind == Kind::kQuoted)) {
      Mismatch(column, "LIKE compares a text field with a quoted text");
    }
    const bool ordered = comparison.op != Operator::kEqual && comparison.op != Operator::kNotEqual;
    if (type == FieldType::kBoolean && ordered) Mismatch(column, "a boolean is equal or not, nothing else");
    const bool unfit = (kind == Kind::kDate && type != FieldType::kDate) ||
                       (kind == Kind::kNumber && type == FieldType::kDate) ||
                       (kind == Kind::kWord && type != FieldType::kBoolean);
    if (unfit) Mismatch(column, "cannot be compared with " + literal);
  }

  static void SetValue(Condition::Comparison& comparison, FieldType type, const std::string& literal) {
    if (IsTextType(type)) {
      comparison.text = ToUpperAscii(literal);
    } else if (type == FieldType::kDate) {
      comparison.as = CompareAs::kDate;
      comparison.date = ToDate(literal);
    } else if (type == FieldType::kBoolean) {
      comparison.as = CompareAs::kBoolean;
      comparison.flag = ToBoolean(literal);
    } else {
      comparison.as = CompareAs::kNumber;
      comparison.number = ToDouble(literal);
      // An amount compares exactly with whatever it can be equal to.
      const std::size_t point = literal.find('.');
      const bool fourDecimals = point == std::string::npos || literal.size() - point <= 5;
      if (type == FieldType::kCurrency && fourDecimals && literal.find_first_of("eE") == std::string::npos) {
        comparison.as = CompareAs::kCurrency;
        comparison.amount = ToCurrency(literal);
      }
    }
  }

  std::string_view text_;
  std::string_view rest_;
  const RowStore& rows_;
};

Condition Condition::Parse(std::string_view text, const RowStore& rows) {
  return ConditionReader(text, rows).Read();
}

bool Condition::Matches(const RowStore& rows, std::size_t row) const {
  const RowStore::Place at = rows.At(row);
  return std::ranges::all_of(comparisons_, [&](const Comparison& one) { return Meets(one, rows, at); });
}

bool Condition::Meets(const Comparison& comparison, const RowStore& rows, RowStore::Place at) {
  const std::size_t column = comparison.column;
  if (rows.IsNull(column, at)) return false;
  auto order = [&]() -> std::partial_ordering {
    switch (comparison.as) {
      case CompareAs::kText:
        return CompareText(rows.Text(column, at), comparison.text);
      case CompareAs::kNumber:
        return NumberCell(rows, column, at) <=> comparison.number;
      case CompareAs::kCurrency:
        return rows.Cell<Currency>(column, at) <=> comparison.amount;
      case CompareAs::kDate:
        return rows.Cell<Date>(column, at) <=> comparison.date;
      case CompareAs::kBoolean:
        return rows.Cell<bool>(column, at) <=> comparison.flag;
    }
    return std::partial_ordering::unordered;
  };
  switch (comparison.op) {
    case Operator::kEqual:
      return std::is_eq(order());
    case Operator::kLess:
      return std::is_lt(order());
    case Operator::kGreater:
      return std::is_gt(order());
    case Operator::kLessOrEqual:
      return std::is_lteq(order());
    case Operator::kGreaterOrEqual:
      return std::is_gteq(order());
    case Operator::kNotEqual:
      return std::is_neq(order());
    case Operator::kLike:
      return IsLike(rows.Text(column, at), comparison.text);
  }
  return false;
}

}  // namespace platform
