// A group's columns begin as the same value all over. A second value makes a column coded, too many of them
// plain; both copy at most one group's cells of one column. A column that has become so begins the next group
// as it ended this one, since columns keep their habits, and tries the smaller form anew every few groups.
#include "platform/rows/RowStore.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "platform/object/OperationTable.h"
#include "platform/value/Convert.h"

namespace platform {
namespace {

// A plain column is tried coded again every so many groups.
constexpr std::size_t kGroupsTillRetry = 8;

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
  const TextStore::Id emptyId = IsTextType(field.type) ? texts_->Keep({}) : 0;
  columns_.push_back({.type = field.type,
                      .width = field.width,
                      .cellBytes = CellBytes(field.type),
                      .emptyId = emptyId,
                      .lastText = {},
                      .lastId = emptyId});
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
  const std::size_t mask = nameBuckets_.size() - 1;
  std::size_t bucket = detail::NameHash(name) & mask;
  for (; nameBuckets_[bucket] != 0; bucket = (bucket + 1) & mask) {
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
  auto group = std::make_unique<Chunk[]>(columns_.size());
  const bool retries = groups_.size() % kGroupsTillRetry == 0;
  for (std::size_t column = 0; column < columns_.size() && !groups_.empty(); ++column) {
    const ChunkKind before = groups_.back()[column].kind;
    if (before == ChunkKind::kSame) continue;
    if (before == ChunkKind::kPlain && !retries) {
      BeginPlain(column, group[column]);
    } else {
      MakeCoded(group[column]);
    }
  }
  groups_.push_back(std::move(group));
}

void RowStore::DropGroup() {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    const Chunk& chunk = groups_.back()[column];
    if (chunk.cells != nullptr) blocks_.Give(chunk.cells, BlockBytes(column, chunk.kind));
  }
  groups_.pop_back();
}

void RowStore::KeepTextsIn(std::shared_ptr<TextStore> texts) {
  if (rowCount_ > 0) {
    throw Error(ErrorNumber::kInvalidCall, "Recordset", "the texts of rows stay where they are");
  }
  texts_ = std::move(texts);
  for (Column& column : columns_) {
    if (!IsTextType(column.type)) continue;
    column.emptyId = column.lastId = texts_->Keep({});
    column.lastText = {};
  }
}

void RowStore::MarkPresent(std::byte* bits, std::size_t from, std::size_t to) {
  auto mark = [bits](std::size_t place) { bits[place / 8] |= std::byte{1} << (place % 8); };
  for (; from < to && from % 8 != 0; ++from) mark(from);
  for (; from + 8 <= to; from += 8) bits[from / 8] = std::byte{0xFF};
  for (; from < to; ++from) mark(from);
}

std::size_t RowStore::BlockBytes(std::size_t column, ChunkKind kind) const {
  return kind == ChunkKind::kCoded ? kCodedBytes : kRowsPerGroup * columns_[column].cellBytes + kPresentBytes;
}

void RowStore::MakeCoded(Chunk& chunk) {
  std::byte* const block = blocks_.Take(kCodedBytes);
  const std::size_t held = chunk.count;
  std::memset(block, 1, held);
  std::memset(block + held, 0, kRowsPerGroup - held);
  chunk.cells = block;
  chunk.kind = ChunkKind::kCoded;
  chunk.count = 1;
  chunk.last = 0;
  std::memcpy(CodedValue(chunk, 0), &chunk.value, sizeof chunk.value);
}

// Without a cell that holds a value.
void RowStore::BeginPlain(std::size_t column, Chunk& chunk) {
  chunk.cells = blocks_.Take(BlockBytes(column, ChunkKind::kPlain));
  chunk.kind = ChunkKind::kPlain;
  std::memset(PresentBits(column, chunk), 0, kPresentBytes);
}

void RowStore::MakePlain(std::size_t column, Chunk& chunk) {
  const Chunk coded = chunk;
  const std::size_t size = columns_[column].cellBytes;
  BeginPlain(column, chunk);
  std::byte* const present = PresentBits(column, chunk);
  for (std::size_t place = 0; place < kRowsPerGroup; ++place) {
    const auto code = static_cast<std::size_t>(coded.cells[place]);
    if (code == 0) continue;
    std::memcpy(chunk.cells + place * size, CodedValue(coded, code - 1), size);
    present[place / 8] |= std::byte{1} << (place % 8);
  }
  blocks_.Give(coded.cells, kCodedBytes);
}

// The code of a value in a coded column; kMostCoded when it is not among them and there is no room for it.
std::size_t RowStore::CodeOf(std::size_t column, Chunk& chunk, std::uint64_t bits) {
  auto is = [&](std::size_t code) { return CodedBits(chunk, code) == bits; };
  std::uint8_t& hint = columns_[column].hints[HintOf(bits)];
  if (hint < chunk.count && is(hint)) return hint;
  std::size_t code = 0;
  while (code < chunk.count && !is(code)) ++code;
  if (code == kMostCoded) return code;
  if (code == chunk.count) {
    ++chunk.count;
    std::memcpy(CodedValue(chunk, code), &bits, sizeof bits);
  }
  hint = static_cast<std::uint8_t>(code);
  return code;
}

// The value is not the one that the column's rows hold so far, or was written last.
void RowStore::SetBits(std::size_t column, Chunk& chunk, std::size_t place, std::uint64_t bits) {
  if (chunk.kind == ChunkKind::kSame) {
    if (chunk.count == 0 && place == 0) {
      chunk.value = bits;
      chunk.count = 1;
      return;
    }
    if (chunk.count == 0) chunk.value = bits;
    MakeCoded(chunk);
  }
  if (const std::size_t code = CodeOf(column, chunk, bits); code < kMostCoded) {
    chunk.last = static_cast<std::uint8_t>(code);
    chunk.cells[place] = static_cast<std::byte>(code + 1);
    return;
  }
  MakePlain(column, chunk);
  const std::size_t size = columns_[column].cellBytes;
  std::memcpy(chunk.cells + place * size, &bits, size);
  PresentBits(column, chunk)[place / 8] |= std::byte{1} << (place % 8);
}

// A value in the rows of a group from one place to another.
void RowStore::FillBits(std::size_t column, Chunk& chunk, std::size_t from, std::size_t to,
                        std::uint64_t bits) {
  if (chunk.kind == ChunkKind::kSame) {
    if (from == 0 && chunk.count <= to) {
      chunk.value = bits;
      chunk.count = static_cast<std::uint16_t>(to);
      return;
    }
    if (from == chunk.count && chunk.value == bits) {
      chunk.count = static_cast<std::uint16_t>(to);
      return;
    }
    SetBits(column, chunk, from, bits);
  }
  if (chunk.kind == ChunkKind::kCoded) {
    if (const std::size_t code = CodeOf(column, chunk, bits); code < kMostCoded) {
      std::memset(chunk.cells + from, static_cast<int>(code + 1), to - from);
      return;
    }
    MakePlain(column, chunk);
  }
  const std::size_t size = columns_[column].cellBytes;
  for (std::size_t place = from; place < to; ++place) std::memcpy(chunk.cells + place * size, &bits, size);
  MarkPresent(PresentBits(column, chunk), from, to);
}

bool RowStore::IsNull(std::size_t column, Place at) const {
  const Chunk& chunk = at.group[column];
  switch (chunk.kind) {
    case ChunkKind::kSame:
      return at.offset >= chunk.count;
    case ChunkKind::kCoded:
      return chunk.cells[at.offset] == std::byte{0};
    case ChunkKind::kPlain:
      break;
  }
  return !IsPresent(column, chunk, at.offset);
}

void RowStore::SetNull(std::size_t column, Place at) {
  Chunk& chunk = at.group[column];
  if (chunk.kind == ChunkKind::kSame) {
    if (at.offset >= chunk.count) return;
    if (at.offset + 1U == chunk.count) {
      --chunk.count;
      return;
    }
    MakeCoded(chunk);
  }
  if (chunk.kind == ChunkKind::kCoded) {
    chunk.cells[at.offset] = std::byte{0};
  } else {
    PresentBits(column, chunk)[at.offset / 8] &= ~(std::byte{1} << (at.offset % 8));
  }
}

void RowStore::DropTail() {
  for (std::size_t column = 0; column < columns_.size(); ++column) SetNull(column, At(rowCount_));
}

void RowStore::TruncateTo(std::size_t rowCount) {
  if (rowCount >= rowCount_) return;
  while (groups_.size() > rowCount / kRowsPerGroup + 1) DropGroup();
  const std::size_t last = std::min(rowCount_, groups_.size() * kRowsPerGroup);
  for (std::size_t row = last; row > rowCount; --row) {
    for (std::size_t column = 0; column < columns_.size(); ++column) SetNull(column, At(row - 1));
  }
  rowCount_ = rowCount;
  ++removals_;
}

TextStore::Id RowStore::KeepText(std::size_t column, std::string_view text) {
  Column& target = columns_[column];
  if (target.width != 0 && text.size() > target.width && CharacterCount(text) > target.width) {
    throw Error(ErrorNumber::kOverflow, "Recordset",
                "field " + fields_[column].name + ": the text has " + std::to_string(CharacterCount(text)) +
                    " characters, the field holds " + std::to_string(target.width));
  }
  target.lastId = texts_->Keep(text);
  target.lastText = texts_->Text(target.lastId);
  return target.lastId;
}

void RowStore::FillText(std::size_t column, std::size_t firstRow, std::size_t pastRow,
                        std::string_view text) {
  if (firstRow >= pastRow) return;
  if (!IsTextType(Type(column))) {
    for (std::size_t row = firstRow; row < pastRow; ++row) SetValue(column, At(row), text);
    return;
  }
  const TextStore::Id id = IdOf(column, text);
  while (firstRow < pastRow) {
    const Place at = At(firstRow);
    const std::size_t to = std::min(kRowsPerGroup, at.offset + (pastRow - firstRow));
    FillBits(column, at.group[column], at.offset, to, id);
    firstRow += to - at.offset;
  }
}

void RowStore::SetValue(std::size_t column, Place at, const Variant& value) {
  if (value.IsNull()) return SetNull(column, at);
  if (IsTextType(Type(column)) && value.IsText()) return SetText(column, at, *value.As<std::string>());
  try {
    SetConverted(column, at, value);
  } catch (const Error& error) {
    throw Error(error.Number(), "Recordset", "field " + fields_[column].name + ": " + error.Description());
  }
}

void RowStore::SetConverted(std::size_t column, Place at, const Variant& value) {
  switch (Type(column)) {
    case FieldType::kText:
    case FieldType::kWideText:
      return SetText(column, at, ToText(value));
    case FieldType::kInt16:
      return Write(column, at, ToInt16(value));
    case FieldType::kInt32:
      return Write(column, at, ToInt32(value));
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return Write(column, at, ToDouble(value));
    case FieldType::kCurrency:
      return Write(column, at, ToCurrency(value));
    case FieldType::kDate:
      return Write(column, at, ToDate(value));
    case FieldType::kBoolean:
      return Write(column, at, ToBoolean(value));
  }
}

Variant RowStore::Value(std::size_t column, Place at) const {
  auto read = [&]<class T>(T value) -> Variant {
    if (!Read(column, at, value)) return Null{};
    return value;
  };
  switch (Type(column)) {
    case FieldType::kText:
    case FieldType::kWideText:
      return IsNull(column, at) ? Variant(Null{}) : Variant(Text(column, at));
    case FieldType::kInt16:
      return read(std::int16_t{});
    case FieldType::kInt32:
      return read(std::int32_t{});
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return read(double{});
    case FieldType::kCurrency:
      return read(Currency());
    case FieldType::kDate:
      return read(Date());
    case FieldType::kBoolean:
      return read(bool{});
  }
  return {};
}

std::size_t RowStore::Bytes() const {
  return blocks_.Bytes() + groups_.size() * columns_.size() * sizeof(Chunk) +
         groups_.capacity() * sizeof(groups_[0]) + texts_->Bytes();
}

}  // namespace platform
