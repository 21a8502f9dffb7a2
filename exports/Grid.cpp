// The caption language: "text$" heads one column; "text+|+|" stands over its own column and one more for each
// mark; an empty caption is a later column of a group; any other text is a plain two-line heading.
#include "exports/Grid.h"

#include <array>
#include <charconv>

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

bool IsShown(const Dictionary& column) {
  return platform::ToInt32(column.Value("FVisible")) != 0 && !platform::ToBoolean(column.Value("FForceHide"));
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

bool IsNumber(const Variant& value) { return !value.IsText() && platform::IsNumeric(value); }

}  // namespace

Grid::Grid(const platform::Vector& header, const Recordset& rows)
    : rows_(rows), sumSort_(rows.FindField("FSumSort")) {
  std::string group;        // the group that still waits for its columns
  std::size_t waiting = 0;  // columns that it still spans, hidden ones included
  std::size_t first = 0;    // position of the group's first shown column
  for (const Variant& item : header.Items()) {
    const Ref<Dictionary> description = item.AsRef<Dictionary>();
    if (!description) continue;
    const Caption caption = ReadCaption(Text(*description, "FColCaption"));
    bool inGroup = waiting > 0;
    if (caption.marks > 0) {
      group = caption.text;
      waiting = caption.marks + 1;
      first = columns_.size();
      inGroup = true;
    }
    if (waiting > 0) --waiting;
    if (!IsShown(*description)) continue;
    GridColumn column{.caption = inGroup ? std::string() : caption.text,
                      .second = Text(*description, "FHeadSecond"),
                      .type = Text(*description, "FColType"),
                      .field = Text(*description, "FColName")};
    column.alignment = column.type == "1" || column.type == "5" ? Alignment::kLeft : Alignment::kRight;
    columns_.push_back(std::move(column));
    fields_.push_back(rows_.FieldIndex(columns_.back().field));
    if (inGroup) {
      columns_[first].group = group;
      ++columns_[first].groupSpan;
    }
  }
}

bool Grid::HasSecondLine() const {
  for (const GridColumn& column : columns_) {
    if (!column.second.empty()) return true;
  }
  return false;
}

std::string Grid::Cell(std::size_t column, std::size_t row) const {
  const Variant value = rows_.ValueAt(fields_[column], rows_.RowAt(row));
  if (value.IsNull() || value.IsEmpty()) return {};
  const std::string& type = columns_[column].type;
  if (IsNumber(value) && type == "6") return TwoDecimals(platform::ToDouble(value));
  if (value.As<double>() != nullptr) return Rounded(*value.As<double>(), 4);
  return platform::ToText(value);
}

std::string Grid::ExactCell(std::size_t column, std::size_t row) const {
  const Variant value = rows_.ValueAt(fields_[column], rows_.RowAt(row));
  return value.IsNull() ? std::string() : platform::ToText(value);
}

std::optional<double> Grid::Number(std::size_t column, std::size_t row) const {
  const Variant value = rows_.ValueAt(fields_[column], rows_.RowAt(row));
  if (columns_[column].type == "1" || value.IsNull() || value.IsEmpty() || !IsNumber(value)) return {};
  return platform::ToDouble(value);
}

bool Grid::IsSummary(std::size_t row) const {
  if (!sumSort_) return false;
  const Variant value = rows_.ValueAt(*sumSort_, rows_.RowAt(row));
  return IsNumber(value) && platform::ToDouble(value) > 0;
}

}  // namespace exports
