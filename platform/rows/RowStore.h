#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/rows/BlockPool.h"
#include "platform/rows/Field.h"
#include "platform/rows/RowText.h"
#include "platform/rows/TextStore.h"
#include "platform/value/Variant.h"

namespace platform {

// The rows that a recordset and its clones share: typed columns in groups of rows, so that a growing store
// never copies a group, and texts as ids into one TextStore. A cell that was never written is null. Rows are
// counted from 0 and keep their number. The row after the last one (the tail) may be written before it
// counts: AppendTail makes it a row, DropTail clears it.
//
// A column takes the room that its values need, group by group: none while all rows hold the same value, a
// byte a row while there are few different ones, and only then an array of cells. A reader is told nothing of
// it.
class RowStore {
  struct Chunk;

 public:
  static constexpr std::size_t kRowsPerGroup = 512;

  void AppendField(Field field);
  const std::vector<Field>& Fields() const { return fields_; }
  // Without regard to case; the number of fields when there is none of this name.
  std::size_t FindField(std::string_view name) const;

  // The texts of all columns, which other tables may share. Only a table without rows takes them elsewhere;
  // raises kInvalidCall otherwise.
  const std::shared_ptr<TextStore>& Texts() const { return texts_; }
  void KeepTextsIn(std::shared_ptr<TextStore> texts);

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

  // Where a row's cells are, for a writer or a reader of many of them. Good for as long as the row is there.
  struct Place {
    Chunk* group = nullptr;  // its columns in their order
    std::size_t offset = 0;  // within the group
  };
  Place At(std::size_t row) const {
    return {.group = groups_[row / kRowsPerGroup].get(), .offset = row % kRowsPerGroup};
  }

  // The stored cell; the caller has checked the column's type. False for a null.
  template <class T>
  bool Read(std::size_t column, Place at, T& value) const {
    const Chunk& chunk = at.group[column];
    const void* cell = &chunk.value;
    switch (chunk.kind) {
      case ChunkKind::kSame:
        if (at.offset >= chunk.count) return false;
        break;
      case ChunkKind::kCoded: {
        const auto code = static_cast<std::size_t>(chunk.cells[at.offset]);
        if (code == 0) return false;
        cell = CodedValue(chunk, code - 1);
        break;
      }
      case ChunkKind::kPlain:
        if (!IsPresent(column, chunk, at.offset)) return false;
        cell = chunk.cells + at.offset * sizeof(T);
        break;
    }
    std::memcpy(&value, cell, sizeof(T));
    return true;
  }
  // The same, with T's own first value for a null.
  template <class T>
  T Cell(std::size_t column, Place at) const {
    T value{};
    Read(column, at, value);
    return value;
  }
  template <class T>
  void Write(std::size_t column, Place at, T value) {
    static_assert(sizeof(T) <= sizeof(std::uint64_t));
    Chunk& chunk = at.group[column];
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof(T));
    switch (chunk.kind) {
      case ChunkKind::kSame:
        if (at.offset > chunk.count || chunk.count == 0 || bits != chunk.value) break;
        if (at.offset == chunk.count) ++chunk.count;
        return;
      case ChunkKind::kCoded:
        if (CodedBits(chunk, chunk.last) != bits) break;
        chunk.cells[at.offset] = static_cast<std::byte>(chunk.last + 1);
        return;
      case ChunkKind::kPlain:
        std::memcpy(chunk.cells + at.offset * sizeof(T), &bits, sizeof(T));
        PresentBits(column, chunk)[at.offset / 8] |= std::byte{1} << (at.offset % 8);
        return;
    }
    SetBits(column, chunk, at.offset, bits);
  }

  FieldType Type(std::size_t column) const { return columns_[column].type; }

  // Checked writes of one kind; a column of another type takes the value converted. Errors name the field.
  void SetText(std::size_t column, Place at, std::string_view text) {
    if (!IsTextType(Type(column))) return SetValue(column, at, text);
    Write(column, at, IdOf(column, text));
  }
  void SetInteger(std::size_t column, Place at, std::int32_t number) {
    if (Type(column) == FieldType::kInt32) return Write(column, at, number);
    if (Type(column) == FieldType::kInt16 && number == static_cast<std::int16_t>(number)) {
      return Write(column, at, static_cast<std::int16_t>(number));
    }
    SetValue(column, at, number);
  }
  void SetDouble(std::size_t column, Place at, double number) {
    if (Type(column) == FieldType::kDouble || Type(column) == FieldType::kNumeric) {
      return Write(column, at, number);
    }
    SetValue(column, at, number);
  }
  void SetCurrency(std::size_t column, Place at, Currency amount) {
    if (Type(column) == FieldType::kCurrency) return Write(column, at, amount);
    SetValue(column, at, amount);
  }
  void SetDate(std::size_t column, Place at, Date date) {
    if (Type(column) == FieldType::kDate) return Write(column, at, date);
    SetValue(column, at, date);
  }
  void SetBoolean(std::size_t column, Place at, bool flag) {
    if (Type(column) == FieldType::kBoolean) return Write(column, at, flag);
    SetValue(column, at, flag);
  }
  void SetValue(std::size_t column, Place at, const Variant& value);
  void SetNull(std::size_t column, Place at);
  // One column of a stretch of rows that are there: `value(i)` is what row `firstRow` + i holds from now on,
  // and may be asked for twice. The column's type is a quick way; another one takes the values converted.
  // RowStretches.h defines it.
  template <class ValueOf>
  void Fill(std::size_t column, std::size_t firstRow, std::size_t count, ValueOf value);
  // One text in a stretch of rows, whatever they held.
  void FillText(std::size_t column, std::size_t firstRow, std::size_t pastRow, std::string_view text);

  bool IsNull(std::size_t column, Place at) const;
  Variant Value(std::size_t column, Place at) const;
  // Empty for a null.
  std::string_view Text(std::size_t column, Place at) const {
    TextStore::Id id = 0;
    return Read(column, at, id) ? texts_->Text(id) : std::string_view();
  }
  // What a null text reads as, by its id.
  TextStore::Id EmptyId(std::size_t column) const { return columns_[column].emptyId; }

  // What rows, texts and indexes take from the heap.
  std::size_t Bytes() const;

 private:
  enum class ChunkKind : std::uint8_t { kSame, kCoded, kPlain };

  // One column in one group. The same: the first `count` rows hold `value`, the others are null. Coded: a
  // code a row, 0 for null, and behind the codes `count` values. Plain: cells, and behind them a bit a row
  // that is 1 for a cell that holds a value.
  struct Chunk {
    std::byte* cells = nullptr;
    std::uint64_t value = 0;
    std::uint16_t count = 0;
    ChunkKind kind = ChunkKind::kSame;
    std::uint8_t last = 0;  // coded: the value that was written last
  };
  static constexpr std::size_t kMostCoded = 32;
  static constexpr std::size_t kHints = 64;
  static constexpr std::size_t kCodedBytes = kRowsPerGroup + kMostCoded * sizeof(std::uint64_t);
  static constexpr std::size_t kPresentBytes = kRowsPerGroup / 8;

  struct Column {
    FieldType type = FieldType::kText;
    std::size_t width = 0;
    std::size_t cellBytes = 0;  // of one cell
    TextStore::Id emptyId = 0;
    std::string_view lastText;  // the text written last, and its id
    TextStore::Id lastId = 0;
    // Where a coded value was found last, by a hash of it.
    std::array<std::uint8_t, kHints> hints{};
  };

  bool IsPresent(std::size_t column, const Chunk& chunk, std::size_t place) const {
    return ((PresentBits(column, chunk)[place / 8] >> (place % 8)) & std::byte{1}) != std::byte{0};
  }
  static std::byte* CodedValue(const Chunk& chunk, std::size_t code) {
    return chunk.cells + kRowsPerGroup + code * sizeof(std::uint64_t);
  }
  static std::uint64_t CodedBits(const Chunk& chunk, std::size_t code) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, CodedValue(chunk, code), sizeof bits);
    return bits;
  }
  static std::size_t HintOf(std::uint64_t bits) { return (bits * 0x9E3779B97F4A7C15U) >> 58U; }
  std::byte* PresentBits(std::size_t column, const Chunk& chunk) const {
    return chunk.cells + kRowsPerGroup * columns_[column].cellBytes;
  }
  static void MarkPresent(std::byte* bits, std::size_t from, std::size_t to);
  std::size_t BlockBytes(std::size_t column, ChunkKind kind) const;

  template <class T>
  static constexpr bool Holds(FieldType type);
  // visit(place, from, count) for the parts of a stretch of rows that lie in one group each.
  template <class Visit>
  void EachPart(std::size_t firstRow, std::size_t count, Visit visit) const;
  template <class T, class ValueOf>
  void WritePart(std::size_t column, Place at, std::size_t count, ValueOf value);
  // Sets a cell of a column that is not plain to what the column holds all over, or to one of its coded
  // values that is found at once; false when it is neither.
  bool Repeats(std::size_t column, Chunk& chunk, std::size_t place, std::uint64_t bits) {
    if (chunk.kind == ChunkKind::kSame) {
      if (place != chunk.count || place == 0 || bits != chunk.value) return false;
      ++chunk.count;
      return true;
    }
    if (CodedBits(chunk, chunk.last) != bits) {
      const std::uint8_t hint = columns_[column].hints[HintOf(bits)];
      if (hint >= chunk.count || CodedBits(chunk, hint) != bits) return false;
      chunk.last = hint;
    }
    chunk.cells[place] = static_cast<std::byte>(chunk.last + 1);
    return true;
  }

  void AddGroup();
  void DropGroup();
  void MakeCoded(Chunk& chunk);
  void MakePlain(std::size_t column, Chunk& chunk);
  void BeginPlain(std::size_t column, Chunk& chunk);
  void SetBits(std::size_t column, Chunk& chunk, std::size_t place, std::uint64_t bits);
  std::size_t CodeOf(std::size_t column, Chunk& chunk, std::uint64_t bits);
  void FillBits(std::size_t column, Chunk& chunk, std::size_t from, std::size_t to, std::uint64_t bits);
  // Neighbouring rows often repeat a text, and then it is known to fit as well.
  TextStore::Id IdOf(std::size_t column, std::string_view text) {
    const Column& known = columns_[column];
    if (text.empty()) return known.emptyId;
    return SameText(text, known.lastText) ? known.lastId : KeepText(column, text);
  }
  TextStore::Id KeepText(std::size_t column, std::string_view text);
  void SetConverted(std::size_t column, Place at, const Variant& value);

  std::vector<Field> fields_;
  std::vector<Column> columns_;
  std::vector<std::uint16_t> nameBuckets_;  // positions plus 1 by hashed name
  std::vector<std::unique_ptr<Chunk[]>> groups_;
  BlockPool blocks_;
  std::size_t rowCount_ = 0;
  std::size_t removals_ = 0;
  bool tailClaimed_ = false;
  std::shared_ptr<TextStore> texts_ = std::make_shared<TextStore>();
};

}  // namespace platform
