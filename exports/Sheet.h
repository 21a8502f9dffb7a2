#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exports/Grid.h"
#include "exports/ItemPages.h"

// A report's content as a file: for spreadsheets and for paper.
namespace exports {

// What is exported is what is seen: the grid's columns in their order. Borrows the grid and the items.
struct Sheet {
  std::string name;                     // of the report
  std::vector<std::string> titleLines;  // over the heading
  const Grid& grid;
  std::optional<std::size_t> limit;  // the most rows; all without one
  const ItemPages* items = nullptr;  // where each begins a page of its own; its title lines replace these

  std::size_t RowCount() const { return std::min(grid.RowCount(), limit.value_or(grid.RowCount())); }
};

// Told how many rows of how many are written; false stops the export.
using Progress = std::function<bool(std::size_t done, std::size_t all)>;

// Asks `progress` every thousand rows.
class ProgressSteps {
 public:
  ProgressSteps(const Progress& progress, std::size_t all) : progress_(progress), all_(all) {}

  bool GoesOn(std::size_t done) const { return !progress_ || done % 1000 != 0 || progress_(done, all_); }

 private:
  const Progress& progress_;
  std::size_t all_;
};

}  // namespace exports
