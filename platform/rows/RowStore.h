#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/rows/Field.h"
#include "platform/rows/TextStore.h"
#include "platform/value/Variant.h"

namespace platform {

// The rows that a recordset and its clones share: typed column arrays in groups of rows, so that a growing
// store never copies a cell, and texts as ids into one TextStore. A cell that was never written is null.
// Rows are counted from 0 and keep their number. The row after the last one (the tail) may be written before
// it counts: AppendTail makes it a row, DropTail clears it.
class RowStore {
 public:
  static constexpr std::size_t kRowsPerGroup = 512;

  void AppendField(Field field);
  const std::vector<Field>& Fields() const { return fields_; }
  // Without regard to case; the number of fields when there is none of this name.
  std::size_t FindField(std::string_view name) const;

  std::size_t RowCount() const { return rowCount_; }
  // Counts the times that rows were removed, for views that hold row numbers.
  std::size_t Removals() const { return removals_; }

  // Only one writer may fill the tail. Raises kInvalidCall while another one does. Makes room for the row.
  std::size_t ClaimTail();
  void ReleaseTail() { tailClaimed_ = false; }
  void AppendTail() {
    if ((rowCount_ + 1) % kRowsPerGroup == 0) AddGroup();
    ++rowCount_;
  }
  void DropTail();
  void TruncateTo(std::size_t rowCount);

  bool IsNull(std::size_t column, std::size_t row) const {
    const std::size_t bit = row % kRowsPerGroup;
    return ((PresentBits(column, row)[bit / 8] >> (bit % 8)) & std::byte{1}) == std::byte{0};
  }
  void SetNull(std::size_t column, std::size_t row) {
    const std::size_t bit = row % kRowsPerGroup;
    PresentBits(column, row)[bit / 8] &= ~(std::byte{1} << (bit % 8));
  }

  // The stored cell; the caller has checked the column's type. Undefined for a null.
  template <class T>
  T Cell(std::size_t column, std::size_t row) const {
    T value;
    std::memcpy(&value, Cells(column, row) + (row % kRowsPerGroup) * sizeof(T), sizeof(T));
    return value;
  }
  template <class T>
  void SetCell(std::size_t column, std::size_t row, T value) {
    std::memcpy(Cells(column, row) + (row % kRowsPerGroup) * sizeof(T), &value, sizeof(T));
    const std::size_t bit = row % kRowsPerGroup;
    PresentBits(column, row)[bit / 8] |= std::byte{1} << (bit % 8);
  }

  FieldType Type(std::size_t column) const { return columns_[column].type; }

  // Checked writes of one kind; a column of another type takes the value converted. Errors name the field.
  void SetText(std::size_t column, std::size_t row, std::string_view text);
  void SetInteger(std::size_t column, std::size_t row, std::int32_t number) {
    if (Type(column) == FieldType::kInt32) return SetCell(column, row, number);
    if (Type(column) == FieldType::kInt16 && number == static_cast<std::int16_t>(number)) {
      return SetCell(column, row, static_cast<std::int16_t>(number));
    }
    SetValue(column, row, number);
  }
  void SetDouble(std::size_t column, std::size_t row, double number) {
    if (Type(column) == FieldType::kDouble || Type(column) == FieldType::kNumeric) {
      return SetCell(column, row, number);
    }
    SetValue(column, row, number);
  }
  void SetCurrency(std::size_t column, std::size_t row, Currency amount) {
    if (Type(column) == FieldType::kCurrency) return SetCell(column, row, amount);
    SetValue(column, row, amount);
  }
  void SetDate(std::size_t column, std::size_t row, Date date) {
    if (Type(column) == FieldType::kDate) return SetCell(column, row, date);
    SetValue(column, row, date);
  }
  void SetBoolean(std::size_t column, std::size_t row, bool flag) {
    if (Type(column) == FieldType::kBoolean) return SetCell(column, row, flag);
    SetValue(column, row, flag);
  }
  void SetValue(std::size_t column, std::size_t row, const Variant& value);

  Variant Value(std::size_t column, std::size_t row) const;
  std::string_view Text(std::size_t column, std::size_t row) const {
    return texts_.Text(Cell<TextStore::Id>(column, row));
  }

  // What rows, texts and indexes take from the heap.
  std::size_t Bytes() const;

 private:
  struct Column {
    FieldType type = FieldType::kText;
    std::size_t width = 0;
    std::size_t cells = 0;      // where the column starts in a group
    std::size_t present = 0;    // where its bits start: 1 for a cell that holds a value
    std::string_view lastText;  // the text written last, and its id
    TextStore::Id lastId = 0;
  };

  const std::byte* Group(std::size_t row) const { return groups_[row / kRowsPerGroup].get(); }
  std::byte* Group(std::size_t row) { return groups_[row / kRowsPerGroup].get(); }
  const std::byte* Cells(std::size_t column, std::size_t row) const {
    return Group(row) + columns_[column].cells;
  }
  std::byte* Cells(std::size_t column, std::size_t row) { return Group(row) + columns_[column].cells; }
  const std::byte* PresentBits(std::size_t column, std::size_t row) const {
    return Group(row) + columns_[column].present;
  }
  std::byte* PresentBits(std::size_t column, std::size_t row) {
    return Group(row) + columns_[column].present;
  }

  void AddGroup();
  void SetConverted(std::size_t column, std::size_t row, const Variant& value);

  std::vector<Field> fields_;
  std::vector<Column> columns_;
  std::vector<std::uint16_t> nameBuckets_;  // positions plus 1 by hashed name
  std::vector<std::unique_ptr<std::byte[]>> groups_;
  std::size_t groupBytes_ = 0;
  std::size_t rowCount_ = 0;
  std::size_t removals_ = 0;
  bool tailClaimed_ = false;
  TextStore texts_;
};

}  // namespace platform
