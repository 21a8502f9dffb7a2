#pragma once

#include <cstddef>
#include <string_view>

#include "platform/rows/TextStore.h"

namespace platform {

// A text on its way into a row: a view, or one that a text store keeps and that has not been read. Rows that
// share the store take the second kind by its id. It holds as long as the text, or the store, behind it.
class RowText {
 public:
  RowText() = default;
  // NOLINTNEXTLINE(google-explicit-constructor): whoever has a text gives it as it is
  RowText(std::string_view text) : at_(text.data()), number_(text.size() << 1U) {}
  // NOLINTNEXTLINE(google-explicit-constructor): the same
  RowText(const char* text) : RowText(std::string_view(text)) {}
  RowText(const TextStore& store, TextStore::Id id) : at_(&store), number_(std::size_t{id} << 1U | kKept) {}

  std::string_view View() const {
    if (IsKept()) return static_cast<const TextStore*>(at_)->Text(Id());
    return {static_cast<const char*>(at_), number_ >> 1U};
  }
  bool IsKeptIn(const TextStore& store) const { return at_ == &store && IsKept(); }
  // A view of nothing, as it is in the beginning; an empty text that a store keeps is none.
  bool IsEmptyView() const { return number_ == 0; }
  // Of a text that a store keeps.
  TextStore::Id Id() const { return static_cast<TextStore::Id>(number_ >> 1U); }

 private:
  static constexpr std::size_t kKept = 1;

  bool IsKept() const { return (number_ & kKept) != 0; }

  const void* at_ = nullptr;  // the text, or the store that keeps it
  std::size_t number_ = 0;    // the text's size or its id, twice, and one more for one that is kept
};

}  // namespace platform
