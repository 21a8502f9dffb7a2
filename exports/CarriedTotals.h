#pragma once

#include <cstddef>
#include <string>

#include "exports/Grid.h"
#include "exports/ItemPages.h"
#include "exports/LedgerTotals.h"

namespace exports {

// The lines 过次页 and 承前页 of a ledger's sheets, cell by cell as they are shown.
class CarriedTotals {
 public:
  CarriedTotals(const ItemPages& pages, const Grid& grid);

  bool Carries() const { return totals_.Carries(); }
  void BeginItem() { totals_.Begin(); }
  // The next row of the item.
  void Add(std::size_t position) { totals_.Add(pages_.Rows().RowAt(position)); }
  // A column's cell in the line that is headed by `caption`.
  std::string Cell(std::size_t column, const std::string& caption) const;

 private:
  const ItemPages& pages_;
  const Grid& grid_;
  LedgerTotals totals_;
  std::size_t captionColumn_ = 0;  // of the grid
};

}  // namespace exports
