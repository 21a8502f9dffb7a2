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
  RowText(std::string_view text) : text_(text.data()), number_(text.size()) {}
  // NOLINTNEXTLINE(google-explicit-constructor): the same
  RowText(const char* text) : RowText(std::string_view(text)) {}
  RowText(const TextStore& store, TextStore::Id id) : store_(&store), number_(id) {}

  std::string_view View() const {
    return store_ == nullptr ? std::string_view(text_, number_) : store_->Text(Id());
  }
  bool IsKeptIn(const TextStore& store) const { return store_ == &store; }
  // Of a text that a store keeps.
  TextStore::Id Id() const { return static_cast<TextStore::Id>(number_); }

 private:
  const TextStore* store_ = nullptr;
  const char* text_ = nullptr;
  std::size_t number_ = 0;  // the view's size, or the id
};

}  // namespace platform
