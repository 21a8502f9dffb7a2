#pragma once

// How a RowStore writes and reads stretches of rows. Of each column the form of a group is looked at once,
// and what is left to do for a cell of a plain column is to copy it.

#include <algorithm>
#include <type_traits>

#include "platform/rows/RowStore.h"

namespace platform {

template <class T>
constexpr bool RowStore::Holds(FieldType type) {
  if constexpr (std::is_same_v<T, RowText>) {
    return IsTextType(type);
  } else if constexpr (std::is_same_v<T, std::int16_t>) {
    return type == FieldType::kInt16;
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return type == FieldType::kInt32;
  } else if constexpr (std::is_same_v<T, double>) {
    return type == FieldType::kDouble || type == FieldType::kNumeric;
  } else if constexpr (std::is_same_v<T, Currency>) {
    return type == FieldType::kCurrency;
  } else {
    static_assert(std::is_same_v<T, Date>, "no column holds such values");
    return type == FieldType::kDate;
  }
}

template <class Visit>
void RowStore::EachPart(std::size_t firstRow, std::size_t count, Visit visit) const {
  for (std::size_t from = 0; from < count;) {
    const Place at = At(firstRow + from);
    const std::size_t part = std::min(kRowsPerGroup - at.offset, count - from);
    visit(at, from, part);
    from += part;
  }
}

template <class ValueOf>
void RowStore::Fill(std::size_t column, std::size_t firstRow, std::size_t count, ValueOf value) {
  using T = std::invoke_result_t<ValueOf, std::size_t>;
  if (!Holds<T>(Type(column))) {
    for (std::size_t i = 0; i < count; ++i) {
      if constexpr (std::is_same_v<T, RowText>) {
        SetValue(column, At(firstRow + i), value(i).View());
      } else {
        SetValue(column, At(firstRow + i), value(i));
      }
    }
    return;
  }
  if constexpr (std::is_same_v<T, RowText>) {
    // Texts of the same store go by their ids, unless one may be too wide.
    const std::size_t width = columns_[column].width;
    const bool allFit = width == 0 || texts_->Longest() <= width;
    auto idOf = [&](std::size_t i) {
      const RowText text = value(i);
      return allFit && text.IsKeptIn(*texts_) ? text.Id() : IdOf(column, text.View());
    };
    EachPart(firstRow, count, [&](Place at, std::size_t from, std::size_t part) {
      WritePart<TextStore::Id>(column, at, part, [&](std::size_t i) { return idOf(from + i); });
    });
  } else {
    EachPart(firstRow, count, [&](Place at, std::size_t from, std::size_t part) {
      WritePart<T>(column, at, part, [&](std::size_t i) { return value(from + i); });
    });
  }
}

template <class T, class Take>
void RowStore::Each(std::size_t column, std::size_t firstRow, std::size_t count, T forNull, Take take) const {
  EachPart(firstRow, count, [&](Place at, std::size_t from, std::size_t part) {
    ReadPart<T>(column, at, part, forNull, [&](std::size_t i, T value) { take(from + i, value); });
  });
}

// A column may turn plain on the way, and stays so.
template <class T, class ValueOf>
void RowStore::WritePart(std::size_t column, Place at, std::size_t count, ValueOf value) {
  Chunk& chunk = at.group[column];
  std::size_t i = 0;
  for (; i < count && chunk.kind != ChunkKind::kPlain; ++i) {
    const T each = value(i);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &each, sizeof(T));
    if (!Repeats(column, chunk, at.offset + i, bits)) SetBits(column, chunk, at.offset + i, bits);
  }
  if (i == count) return;
  const std::size_t from = at.offset + i;
  for (; i < count; ++i) {
    const T each = value(i);
    std::memcpy(chunk.cells + (at.offset + i) * sizeof(T), &each, sizeof(T));
  }
  MarkPresent(PresentBits(column, chunk), from, at.offset + count);
}

template <class T, class Take>
void RowStore::ReadPart(std::size_t column, Place at, std::size_t count, T forNull, Take take) const {
  const Chunk& chunk = at.group[column];
  const void* const same = &chunk.value;
  T value{};
  switch (chunk.kind) {
    case ChunkKind::kSame:
      std::memcpy(&value, same, sizeof(T));
      for (std::size_t i = 0; i < count; ++i) take(i, at.offset + i < chunk.count ? value : forNull);
      return;
    case ChunkKind::kCoded:
      for (std::size_t i = 0; i < count; ++i) {
        const auto code = static_cast<std::size_t>(chunk.cells[at.offset + i]);
        if (code != 0) std::memcpy(&value, CodedValue(chunk, code - 1), sizeof(T));
        take(i, code != 0 ? value : forNull);
      }
      return;
    case ChunkKind::kPlain:
      for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(&value, chunk.cells + (at.offset + i) * sizeof(T), sizeof(T));
        take(i, IsPresent(column, chunk, at.offset + i) ? value : forNull);
      }
      return;
  }
}

}  // namespace platform
