#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <typeindex>

#include "books/database/Connection.h"
#include "books/reader/SqlReader.h"
#include "books/services/Rows.h"

namespace books::services {

// An open book as the services and data components share it: one connection for reading, which cannot write,
// and one for writing whenever something is to be written.
class Store {
 public:
  explicit Store(std::filesystem::path file);

  database::Connection& Reading() { return reading_; }
  // For the moment of a write; an open one would keep other programs from taking the book away.
  database::Connection OpenForWriting() const;

  platform::Ref<platform::Recordset> Fetch(const reader::SqlText& text, std::span<const RowField> fields);

  std::optional<std::string> Profile(std::string_view category, std::string_view key);
  // Whether users of this book speak of numbers in their short form. The profile's name says the opposite of
  // what it means: UseShortNumber 1, and also none, stands for full numbers.
  bool UsesShortNumbers();

  // What a data component keeps between its objects, of which every call may have a new one: one T a book,
  // made from the store on its first use.
  template <class T>
  T& Kept() {
    std::shared_ptr<void>& kept = kept_[typeid(T)];
    if (!kept) kept = std::make_shared<T>(*this);
    return *static_cast<T*>(kept.get());
  }

 private:
  std::filesystem::path file_;
  database::Connection reading_;
  std::map<std::type_index, std::shared_ptr<void>> kept_;  // may hold statements of the connection
};

}  // namespace books::services
