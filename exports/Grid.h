#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "platform/value/Variant.h"

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

// Decimals by the kind of a figure.
struct Decimals {
  int quantity = 2;
  int price = 4;
  int amount = 2;
};

// What a reader has made of a report on the screen.
struct Arrangement {
  std::vector<std::string> fields;  // of the columns shown, in their order
  std::vector<std::uint32_t> rows;  // numbers of the rows shown, in their order
  Decimals decimals;                // of every figure, which has thousands separators too
  bool emptyForZero = false;
};

// A report's heading and rows as a rectangle of shown columns. Columns that may not be shown are left out,
// and without an arrangement those that start hidden. Borrows the recordset.
class Grid {
 public:
  // Raises kUnknownField for a heading that names a field which the rows have not got.
  Grid(const platform::Vector& header, const platform::Recordset& rows);
  // As it was arranged. A field without a heading is left out; one that the rows have not got stays empty. A
  // group stands over each run of its columns.
  Grid(const platform::Vector& header, const platform::Recordset& rows, Arrangement arrangement);

  const std::vector<GridColumn>& Columns() const { return columns_; }
  std::size_t RowCount() const { return arranged_ ? arranged_->rows.size() : rows_.ViewCount(); }
  // As a reader wants it: as on his screen, or amounts with two decimals, quantities and prices with at most
  // four.
  std::string Cell(std::size_t column, std::size_t row) const;
  // A value that is none of the rows', as it would stand in a column.
  std::string Shown(std::size_t column, const platform::Variant& value) const;
  // As another program wants it: every figure exact.
  std::string ExactCell(std::size_t column, std::size_t row) const;
  // The cell's figure; nothing for texts, dates and empty cells.
  std::optional<double> Number(std::size_t column, std::size_t row) const;
  // Whether a figure is one to look at: below zero, or, of days past a due date, above.
  bool StandsOut(std::size_t column, std::size_t row) const;
  // Rows that sum up others carry FSumSort above 0.
  bool IsSummary(std::size_t row) const;
  bool HasSecondLine() const;
  // The decimals of a column's figures where they are given; nothing for texts.
  std::optional<int> DecimalsOf(std::size_t column) const;
  bool IsEmptyForZero() const { return arranged_ && arranged_->emptyForZero; }

 private:
  struct Heading;  // a column of the heading, shown or not

  static std::vector<Heading> ReadHeadings(const platform::Vector& header);
  void Show(const Heading& heading, std::optional<std::size_t> field);
  std::size_t RowAt(std::size_t row) const { return arranged_ ? arranged_->rows[row] : rows_.RowAt(row); }
  // Null where there is no such field.
  platform::Variant ValueAt(std::size_t column, std::size_t row) const;
  std::string OnScreen(std::size_t column, const platform::Variant& value) const;

  const platform::Recordset& rows_;
  std::optional<Arrangement> arranged_;
  std::vector<GridColumn> columns_;
  std::vector<std::size_t> groups_;                 // of each column by number; 0 for none
  std::vector<std::optional<std::size_t>> fields_;  // of each column, in the recordset
  std::optional<std::size_t> sumSort_;
};

}  // namespace exports
