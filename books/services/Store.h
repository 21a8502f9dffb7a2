#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

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

 private:
  std::filesystem::path file_;
  database::Connection reading_;
};

}  // namespace books::services
