#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rows/Recordset.h"

namespace browser {

struct SortKey {
  std::size_t column = 0;
  bool descending = false;
};

struct Found {
  std::size_t position = 0;
  std::size_t column = 0;
};

struct ColumnSum {
  std::size_t count = 0;  // of the cells that hold a number
  std::string sum;        // exact for money
  double average = 0;
};

// A report's rows in the order and choice of its reader. A summary row closes the block of rows before it:
// sorting moves rows within their block only, and filtering drops a summary row whose block is empty.
// Positions count the rows of the view, from 0.
class View {
 public:
  explicit View(platform::Ref<platform::Recordset> rows);

  const platform::Recordset& Rows() const { return *rows_; }
  std::size_t Count() const { return inOrder_ ? rows_->ViewCount() : order_.size(); }
  // The row number of a position, for the recordset's readers.
  std::size_t RowAt(std::size_t position) const {
    return inOrder_ ? rows_->RowAt(position) : order_[position];
  }
  // All of them in order, whatever becomes of the view.
  std::vector<std::uint32_t> RowNumbers() const;
  bool IsSummary(std::size_t row) const;

  // Without sort keys and text the report's own order. The text is looked for in the columns named, letters
  // of any case.
  void Set(const std::vector<SortKey>& sort, std::string_view text, const std::vector<std::size_t>& columns);
  std::optional<Found> Find(std::string_view text, std::size_t start, bool back,
                            const std::vector<std::size_t>& columns) const;
  // Of `count` rows from `start`; rows past the end do not count. A sum of money that does not fit raises.
  ColumnSum Sum(std::size_t column, std::size_t start, std::size_t count) const;

 private:
  bool Matches(std::size_t row, const std::string& text, const std::vector<std::size_t>& columns,
               std::size_t* column) const;
  std::vector<std::uint32_t> Chosen(const std::string& text, const std::vector<std::size_t>& columns) const;
  void SortBlocks(const std::vector<SortKey>& sort);
  int Compare(std::size_t column, std::size_t left, std::size_t right) const;

  platform::Ref<platform::Recordset> rows_;
  std::optional<std::size_t> summaryField_;
  bool inOrder_ = true;
  std::vector<std::uint32_t> order_;
};

}  // namespace browser
