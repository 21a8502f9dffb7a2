#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"

namespace exports {

enum class Alignment { kLeft, kRight };

// One column as it is shown: the caption language of the heading resolved.
struct GridColumn {
  std::string group;  // stands over `groupSpan` columns, this one first; empty without a group
  std::size_t groupSpan = 0;
  std::string caption;  // of this column alone
  std::string second;   // second heading line
  std::string type;     // the column type's code: "1" text, "2" quantity, "4" price, "5" packages, "6" amount
  std::string field;
  Alignment alignment = Alignment::kLeft;
};

// A report's heading and rows as a rectangle of shown columns. Columns that start hidden or may not be shown
// are left out. Borrows the recordset.
class Grid {
 public:
  // Raises kUnknownField for a heading that names a field which the rows have not got.
  Grid(const platform::Vector& header, const platform::Recordset& rows);

  const std::vector<GridColumn>& Columns() const { return columns_; }
  std::size_t RowCount() const { return rows_.ViewCount(); }
  // As a reader wants it: amounts with two decimals, quantities and prices with at most four.
  std::string Cell(std::size_t column, std::size_t row) const;
  // As another program wants it: every figure exact.
  std::string ExactCell(std::size_t column, std::size_t row) const;
  // The cell's figure; nothing for texts, dates and empty cells.
  std::optional<double> Number(std::size_t column, std::size_t row) const;
  // Rows that sum up others carry FSumSort above 0.
  bool IsSummary(std::size_t row) const;
  bool HasSecondLine() const;

 private:
  const platform::Recordset& rows_;
  std::vector<GridColumn> columns_;
  std::vector<std::size_t> fields_;  // of each column, in the recordset
  std::optional<std::size_t> sumSort_;
};

}  // namespace exports
