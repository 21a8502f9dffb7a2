#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string_view>

#include "books/import/Findings.h"

namespace books::importer {

// A row of a CSV file. Blanks around values are cut, whether they stand in quotes or not.
struct CsvRow {
  std::int64_t line = 0;  // where it begins, from 1
  std::span<const std::string_view> cells;
};

// No field that a book can hold comes near it; a quote that is never closed does.
inline constexpr std::size_t kLongestField = std::size_t{64} * 1024;

// Hands the rows of a file to `take`, one after the other, in bounded memory; lines without any value are
// skipped. A row that is no CSV is reported and left out, and reading goes on in the next line; a field that
// is too long ends the reading. False when nothing can be read, which is reported. `name` is the file's name
// in reports. A row's cells are valid during the call.
bool ReadCsv(const std::filesystem::path& path, std::string_view name, Findings& findings,
             const std::function<void(const CsvRow&)>& take);

}  // namespace books::importer
