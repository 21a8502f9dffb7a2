#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "books/Book.h"
#include "books/database/Connection.h"
#include "platform/rows/Recordset.h"

// Books as files for the tests of the stock reports, and their answers as lines of text.
namespace books::test {

// A book in a folder of its own, gone with this object.
class BookFile {
 public:
  explicit BookFile(const std::function<void(database::Connection&)>& write);
  ~BookFile();
  BookFile(const BookFile&) = delete;
  BookFile& operator=(const BookFile&) = delete;

  database::Connection Write() const;
  Book Open() const { return Book::Open(file_); }

 private:
  std::filesystem::path folder_;
  std::filesystem::path file_;
};

using FilterEntries = std::vector<std::pair<std::string, platform::Variant>>;
platform::Variant FilterOf(const FilterEntries& entries);
// The entries, and after them others, which win.
FilterEntries With(FilterEntries entries, const FilterEntries& others);

// What a data component answers: a recordset, or the one in its vector.
platform::Ref<platform::Recordset> Fetch(const Book& book, std::string_view component,
                                         std::string_view method, const FilterEntries& filter);

struct Bands {
  platform::Ref<platform::Recordset> rows;
  std::string fields, names, types;
};
Bands FetchBands(const Book& book, const FilterEntries& filter);

// A line a row: the fields' values divided by blanks, a null as "-", an empty text as "''", a number with six
// decimals at most. A field that the rows do not have reads as "?".
std::vector<std::string> LinesOf(const platform::Recordset& rows, const std::vector<std::string>& fields);
// Of one row.
std::string LineOf(const platform::Recordset& rows, std::size_t row, const std::vector<std::string>& fields);

// The clause that a report sends for a user's rights to warehouses.
std::string RightsOf(std::string_view user, std::string_view alias = "d");

// The description of the bad argument that a fetch raises; a failure of the test when it raises none.
std::string RefusalOf(const std::function<void()>& fetch);

}  // namespace books::test
