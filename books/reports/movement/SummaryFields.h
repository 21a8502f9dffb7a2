#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "books/reports/movement/MovementSummary.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {

// The fields in front of a summary's figures: its levels, its warehouse, its item, its batch.
//
// A sum names what its rows have in common; 小计 stands in the next column behind that, of the item's own sum
// in that of the batch. 合计 stands in the first column. Package texts and units belong to rows, and to sums
// over one item.
class SummaryFields {
 public:
  // Adds them to rows that are not open yet. `warehouseName` is what the report calls the warehouse's column.
  SummaryFields(const SummaryShape& shape, std::string_view warehouseName, platform::Recordset& rows);

  void Set(platform::RowAppender& to, const SummaryLine& line, std::string_view supplier) const;

 private:
  std::string_view Caption(const SummaryLine& line) const;
  std::size_t CaptionColumn(const SummaryLine& line) const;

  std::size_t levels_ = 0;
  bool byWarehouse_ = false;
};

// A quantity, its auxiliary quantity and its amount among the fields of a report.
struct FigureColumns {
  std::size_t quantity = 0;
  std::size_t auxQuantity = 0;
  std::size_t amount = 0;
};
// The auxiliary quantity of an item without an auxiliary unit is null.
void SetFigures(platform::RowAppender& to, const FigureColumns& columns, const SummaryLine& line,
                const Sums& sums);

}  // namespace books::reports
