// The caption language: "text$" heads one column; "text+|+|" stands over its own column and one more for each
// mark; an empty caption is a later column of a group; any other text is a plain two-line heading.
#include "exports/Grid.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "platform/rows/Dictionary.h"
#include "platform/value/Convert.h"

namespace exports {
namespace {

using platform::Dictionary;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

constexpr std::string_view kGroupMark = "+|";

std::string Text(const Dictionary& column, std::string_view key) {
  return platform::ToText(column.Value(key));
}

struct Caption {
  std::string text;
  std::size_t marks = 0;
};

Caption ReadCaption(std::string caption) {
  Caption read;
  while (caption.ends_with(kGroupMark)) {
    caption.erase(caption.size() - kGroupMark.size());
    ++read.marks;
  }
  if (read.marks == 0 && caption.ends_with('$')) caption.pop_back();
  read.text = std::move(caption);
  return read;
}

// At most `decimals` decimals, without zeros at the end.
std::string Rounded(double value, int decimals) {
  std::array<char, 400> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
  std::string text(buffer.data(), result.ptr);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string TwoDecimals(double value) {
  std::array<char, 400> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 2);
  return {buffer.data(), result.ptr};
}

// A decimal number with exactly so many decimals, halves away from zero, and thousands separators. A number
// that is rounded to zero has no sign.
std::string Separated(std::string_view decimal, std::size_t places) {
  const bool negative = decimal.starts_with('-');
  if (negative) decimal.remove_prefix(1);
  const std::size_t point = std::min(decimal.find('.'), decimal.size());
  const std::string_view rest = decimal.substr(std::min(point + 1, decimal.size()));
  std::string digits(decimal.substr(0, point));
  digits += rest.substr(0, places);
  digits.resize(point + places, '0');
  bool carry = rest.size() > places && rest[places] >= '5';
  for (std::size_t i = digits.size(); carry && i > 0; --i) {
    carry = digits[i - 1] == '9';
    digits[i - 1] = carry ? '0' : static_cast<char>(digits[i - 1] + 1);
  }
  if (carry) digits.insert(0, 1, '1');
  const std::size_t whole = digits.size() - places;
  std::string text;
  if (negative && digits.find_first_not_of('0') != std::string::npos) text += '-';
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i == whole) text += '.';
    if (i > 0 && i < whole && (whole - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

// Without an exponent.
std::string PlainDecimal(double value) {
  std::array<char, 400> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return {buffer.data(), result.ptr};
}

bool IsNumber(const Variant& value) { return !value.IsText() && platform::IsNumeric(value); }

}  // namespace

struct Grid::Heading {
  GridColumn column;
  std::string groupText;
  std::size_t group = 0;  // by number, 0 for none
  bool visible = false;
  bool forbidden = false;
};

std::vector<Grid::Heading> Grid::ReadHeadings(const platform::Vector& header) {
  std::vector<Heading> headings;
  std::string groupText;    // of the group that still waits for its columns
  std::size_t waiting = 0;  // columns that it still spans, hidden ones included
  std::size_t groups = 0;
  for (const Variant& item : header.Items()) {
    const Ref<Dictionary> description = item.AsRef<Dictionary>();
    if (!description) continue;
    Caption caption = ReadCaption(Text(*description, "FColCaption"));
    if (caption.marks > 0) {
      groupText = std::exchange(caption.text, {});
      waiting = caption.marks + 1;
      ++groups;
    }
    // A caption of blanks says as little as none.
    const bool inGroup = waiting > 0 && platform::TrimBlanks(caption.text).empty();
    waiting = inGroup ? waiting - 1 : 0;
    GridColumn column{.caption = inGroup ? std::string() : std::move(caption.text),
                      .second = Text(*description, "FHeadSecond"),
                      .type = Text(*description, "FColType"),
                      .field = Text(*description, "FColName")};
    column.alignment = column.type == "1" || column.type == "5" ? Alignment::kLeft : Alignment::kRight;
    headings.push_back({.column = std::move(column),
                        .groupText = inGroup ? groupText : std::string(),
                        .group = inGroup ? groups : 0,
                        .visible = platform::ToInt32(description->Value("FVisible")) != 0,
                        .forbidden = platform::ToBoolean(description->Value("FForceHide"))});
  }
  return headings;
}

void Grid::Show(const Heading& heading, std::optional<std::size_t> field) {
  const bool goesOn = heading.group != 0 && !groups_.empty() && groups_.back() == heading.group;
  columns_.push_back(heading.column);
  groups_.push_back(heading.group);
  fields_.push_back(field);
  if (heading.group == 0) return;
  std::size_t first = columns_.size() - 1;
  if (goesOn) {
    while (columns_[first].groupSpan == 0) --first;
  }
  columns_[first].group = heading.groupText;
  ++columns_[first].groupSpan;
}

Grid::Grid(const platform::Vector& header, const Recordset& rows)
    : rows_(rows), sumSort_(rows.FindField("FSumSort")) {
  for (const Heading& heading : ReadHeadings(header)) {
    if (heading.visible && !heading.forbidden) Show(heading, rows.FieldIndex(heading.column.field));
  }
}

Grid::Grid(const platform::Vector& header, const Recordset& rows, Arrangement arrangement)
    : rows_(rows), arranged_(std::move(arrangement)), sumSort_(rows.FindField("FSumSort")) {
  const std::vector<Heading> headings = ReadHeadings(header);
  for (const std::string& field : arranged_->fields) {
    const auto heading =
        std::ranges::find(headings, field, [](const Heading& known) { return known.column.field; });
    if (heading != headings.end() && !heading->forbidden) Show(*heading, rows.FindField(field));
  }
}

bool Grid::HasSecondLine() const {
  return std::ranges::any_of(columns_, [](const GridColumn& column) { return !column.second.empty(); });
}

std::optional<int> Grid::DecimalsOf(std::size_t column) const {
  if (!arranged_) return std::nullopt;
  const std::string& type = columns_[column].type;
  if (type == "2") return arranged_->decimals.quantity;
  if (type == "4") return arranged_->decimals.price;
  if (type == "6") return arranged_->decimals.amount;
  return std::nullopt;
}

Variant Grid::ValueAt(std::size_t column, std::size_t row) const {
  return fields_[column] ? rows_.ValueAt(*fields_[column], RowAt(row)) : Variant(platform::Null{});
}

std::string Grid::OnScreen(std::size_t column, const Variant& value) const {
  const double* number = value.As<double>();
  if (number != nullptr && !std::isfinite(*number)) return {};
  const std::optional<int> decimals = DecimalsOf(column);
  if (!decimals || !IsNumber(value)) return platform::ToText(value);
  if (arranged_->emptyForZero && platform::ToDouble(value) == 0) return {};
  return Separated(number != nullptr ? PlainDecimal(*number) : platform::ToText(value),
                   static_cast<std::size_t>(*decimals));
}

std::string Grid::Cell(std::size_t column, std::size_t row) const {
  return Shown(column, ValueAt(column, row));
}

std::string Grid::Shown(std::size_t column, const Variant& value) const {
  if (value.IsNull() || value.IsEmpty()) return {};
  if (arranged_) return OnScreen(column, value);
  const std::string& type = columns_[column].type;
  if (IsNumber(value) && type == "6") return TwoDecimals(platform::ToDouble(value));
  if (value.As<double>() != nullptr) return Rounded(*value.As<double>(), 4);
  return platform::ToText(value);
}

std::string Grid::ExactCell(std::size_t column, std::size_t row) const {
  const Variant value = ValueAt(column, row);
  return value.IsNull() ? std::string() : platform::ToText(value);
}

std::optional<double> Grid::Number(std::size_t column, std::size_t row) const {
  const Variant value = ValueAt(column, row);
  if (columns_[column].type == "1" || value.IsNull() || value.IsEmpty() || !IsNumber(value)) return {};
  return platform::ToDouble(value);
}

bool Grid::StandsOut(std::size_t column, std::size_t row) const {
  if (columns_[column].alignment != Alignment::kRight) return false;
  const double figure = Number(column, row).value_or(0);
  return columns_[column].field == "Overdays" ? figure > 0 : figure < 0;
}

bool Grid::IsSummary(std::size_t row) const {
  if (!sumSort_) return false;
  const Variant value = rows_.ValueAt(*sumSort_, RowAt(row));
  return IsNumber(value) && platform::ToDouble(value) > 0;
}

}  // namespace exports
