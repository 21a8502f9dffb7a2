// A group is one block of memory: column after column its cells, and behind each column's cells its presence
// bits. The bits also stagger the columns, so that the same row of all columns does not fall on the same
// lines of the processor's cache.
#include "platform/rows/RowStore.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "platform/object/OperationTable.h"
#include "platform/value/Convert.h"

namespace platform {
namespace {

constexpr std::size_t kPresentBytes = RowStore::kRowsPerGroup / 8;

std::size_t CellBytes(FieldType type) {
  switch (type) {
    case FieldType::kText:
    case FieldType::kWideText:
      return sizeof(TextStore::Id);
    case FieldType::kInt16:
      return sizeof(std::int16_t);
    case FieldType::kInt32:
      return sizeof(std::int32_t);
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return sizeof(double);
    case FieldType::kCurrency:
      return sizeof(Currency);
    case FieldType::kDate:
      return sizeof(Date);
    case FieldType::kBoolean:
      return sizeof(bool);
  }
  return 0;
}

}  // namespace

void RowStore::AppendField(Field field) {
  const Column column{.type = field.type,
                      .width = field.width,
                      .cells = groupBytes_,
                      .present = groupBytes_ + CellBytes(field.type) * kRowsPerGroup,
                      .lastText = {},
                      .lastId = IsTextType(field.type) ? texts_.Keep({}) : 0};
  groupBytes_ = column.present + kPresentBytes;
  columns_.push_back(column);
  fields_.push_back(std::move(field));

  nameBuckets_.assign(std::bit_ceil(fields_.size() * 2 + 1), 0);
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    std::size_t bucket = detail::NameHash(fields_[i].name) % nameBuckets_.size();
    while (nameBuckets_[bucket] != 0) bucket = (bucket + 1) % nameBuckets_.size();
    nameBuckets_[bucket] = static_cast<std::uint16_t>(i + 1);
  }
}

std::size_t RowStore::FindField(std::string_view name) const {
  if (fields_.empty()) return 0;
  std::size_t bucket = detail::NameHash(name) % nameBuckets_.size();
  for (; nameBuckets_[bucket] != 0; bucket = (bucket + 1) % nameBuckets_.size()) {
    const std::size_t column = nameBuckets_[bucket] - 1U;
    if (EqualsIgnoreCase(fields_[column].name, name)) return column;
  }
  return fields_.size();
}

std::size_t RowStore::ClaimTail() {
  if (tailClaimed_) {
    throw Error(ErrorNumber::kInvalidCall, "Recordset",
                "a row is already being added to this recordset or a clone");
  }
  if (groups_.size() * kRowsPerGroup == rowCount_) AddGroup();
  tailClaimed_ = true;
  return rowCount_;
}

void RowStore::AddGroup() {
  if (groups_.size() >= std::numeric_limits<std::int32_t>::max() / kRowsPerGroup) {
    throw Error(ErrorNumber::kOverflow, "Recordset", "overflow: a recordset holds at most 2147483647 rows");
  }
  auto group = std::make_unique_for_overwrite<std::byte[]>(groupBytes_);
  for (const Column& column : columns_) std::memset(group.get() + column.present, 0, kPresentBytes);
  groups_.push_back(std::move(group));
}

void RowStore::DropTail() {
  for (std::size_t column = 0; column < columns_.size(); ++column) SetNull(column, rowCount_);
}

void RowStore::TruncateTo(std::size_t rowCount) {
  if (rowCount >= rowCount_) return;
  const std::size_t groupEnd = (rowCount / kRowsPerGroup + 1) * kRowsPerGroup;
  for (std::size_t row = rowCount; row < std::min(rowCount_, groupEnd); ++row) {
    for (std::size_t column = 0; column < columns_.size(); ++column) SetNull(column, row);
  }
  groups_.resize(groupEnd / kRowsPerGroup);
  rowCount_ = rowCount;
  ++removals_;
}

void RowStore::SetText(std::size_t column, std::size_t row, std::string_view text) {
  Column& target = columns_[column];
  if (!IsTextType(target.type)) return SetValue(column, row, text);
  // Neighbouring rows often repeat a text, and then it is known to fit as well.
  if (text != target.lastText) {
    if (target.width != 0 && text.size() > target.width && CharacterCount(text) > target.width) {
      throw Error(ErrorNumber::kOverflow, "Recordset",
                  "field " + fields_[column].name + ": the text has " + std::to_string(CharacterCount(text)) +
                      " characters, the field holds " + std::to_string(target.width));
    }
    target.lastId = texts_.Keep(text);
    target.lastText = texts_.Text(target.lastId);
  }
  SetCell(column, row, target.lastId);
}

void RowStore::SetValue(std::size_t column, std::size_t row, const Variant& value) {
  if (value.IsNull()) return SetNull(column, row);
  if (IsTextType(Type(column)) && value.IsText()) return SetText(column, row, *value.As<std::string>());
  try {
    SetConverted(column, row, value);
  } catch (const Error& error) {
    throw Error(error.Number(), "Recordset", "field " + fields_[column].name + ": " + error.Description());
  }
}

void RowStore::SetConverted(std::size_t column, std::size_t row, const Variant& value) {
  switch (Type(column)) {
    case FieldType::kText:
    case FieldType::kWideText:
      return SetText(column, row, ToText(value));
    case FieldType::kInt16:
      return SetCell(column, row, ToInt16(value));
    case FieldType::kInt32:
      return SetCell(column, row, ToInt32(value));
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return SetCell(column, row, ToDouble(value));
    case FieldType::kCurrency:
      return SetCell(column, row, ToCurrency(value));
    case FieldType::kDate:
      return SetCell(column, row, ToDate(value));
    case FieldType::kBoolean:
      return SetCell(column, row, ToBoolean(value));
  }
}

Variant RowStore::Value(std::size_t column, std::size_t row) const {
  if (IsNull(column, row)) return Null{};
  switch (Type(column)) {
    case FieldType::kText:
    case FieldType::kWideText:
      return Text(column, row);
    case FieldType::kInt16:
      return Cell<std::int16_t>(column, row);
    case FieldType::kInt32:
      return Cell<std::int32_t>(column, row);
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return Cell<double>(column, row);
    case FieldType::kCurrency:
      return Cell<Currency>(column, row);
    case FieldType::kDate:
      return Cell<Date>(column, row);
    case FieldType::kBoolean:
      return Cell<bool>(column, row);
  }
  return {};
}

std::size_t RowStore::Bytes() const {
  return groups_.size() * groupBytes_ + groups_.capacity() * sizeof(groups_[0]) + texts_.Bytes();
}

}  // namespace platform
