#pragma once

// How a RowStore writes stretches of rows. Of each column the form of a group is looked at once, and what is
// left to do for a cell of a plain column is to copy it.

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
    // Texts of the same store go by their ids, and are looked at only where one may be too wide.
    const std::size_t width = columns_[column].width;
    const bool allFit = width == 0 || texts_->Longest() <= width;
    auto idOf = [&](std::size_t i) {
      const RowText text = value(i);
      if (text.IsKeptIn(*texts_) && (allFit || text.View().size() <= width)) return text.Id();
      return IdOf(column, text.View());
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

// What a cell of a column that is not plain is compared with is held in variables of its own: the compiler
// must take it that a byte of the cells which is written might be part of anything else.
template <class T, class ValueOf>
void RowStore::WritePart(std::size_t column, Place at, std::size_t count, ValueOf value) {
  Chunk& chunk = at.group[column];
  auto bitsOf = [&](std::size_t i) {
    const T each = value(i);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &each, sizeof(T));
    return bits;
  };
  std::size_t i = 0;
  if (chunk.kind == ChunkKind::kSame && chunk.count == at.offset && at.offset > 0) {
    const std::uint64_t same = chunk.value;
    while (i < count && bitsOf(i) == same) ++i;
    chunk.count = static_cast<std::uint16_t>(at.offset + i);
  }
  std::byte* repeated = nullptr;  // cells of a coded column, while the last value comes again
  std::byte code{};
  std::uint64_t last = 0;
  for (; i < count && chunk.kind != ChunkKind::kPlain; ++i) {
    const std::uint64_t bits = bitsOf(i);
    if (repeated != nullptr && bits == last) {
      repeated[at.offset + i] = code;
      continue;
    }
    if (!Repeats(column, chunk, at.offset + i, bits)) SetBits(column, chunk, at.offset + i, bits);
    if (chunk.kind != ChunkKind::kCoded) continue;
    repeated = chunk.cells;
    code = static_cast<std::byte>(chunk.last + 1);
    last = bits;
  }
  if (i == count) return;
  const std::size_t from = at.offset + i;
  std::byte* const cells = chunk.cells + at.offset * sizeof(T);
  for (; i < count; ++i) {
    const T each = value(i);
    std::memcpy(cells + i * sizeof(T), &each, sizeof(T));
  }
  MarkPresent(PresentBits(column, chunk), from, at.offset + count);
}

}  // namespace platform
