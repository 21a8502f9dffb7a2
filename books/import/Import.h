#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "books/import/Findings.h"

namespace books {

struct ImportOptions {
  bool dryRun = false;            // everything is read and checked, and the book stays as it is
  std::size_t keptErrors = 1000;  // how many errors the report keeps
  std::function<void(const ImportError&)> onError;  // is told every error as it is found
};

// What became of the rows of one file.
struct ImportCount {
  std::string file;
  std::int64_t rows = 0;
  std::int64_t added = 0;
  std::int64_t known = 0;  // were in the book already; base data and orders took the values that are given
};

struct ImportReport {
  std::vector<ImportError> errors;  // the first of them, in the order in which they were found
  std::int64_t errorCount = 0;
  std::vector<ImportCount> counts;  // of the files that have rows
  bool created = false;             // the book is a new one
  bool written = false;             // false after errors and after a dry run

  // One line a file, and what became of the whole.
  std::string ToText() const;
};

// Brings a folder of CSV files into a book; docs/import.md describes them. A file that does not exist becomes
// a new book. All rows are checked and all that is wrong is reported; with one error nothing is written. It
// is one transaction (a new book appears under its name when it is complete), so that nothing is left half
// done when the program is killed. Bills that the book has are recognised by class and number, base data by
// number, so that the same folder can be imported again and more can be added.
//
// Raises platform::Error when the folder cannot be read, when the file is no book, or when it is locked.
ImportReport Import(const std::filesystem::path& file, const std::filesystem::path& folder,
                    const ImportOptions& options = {});

}  // namespace books
