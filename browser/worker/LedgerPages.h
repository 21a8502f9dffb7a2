#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "exports/ItemPages.h"
#include "exports/LedgerTotals.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"

namespace browser {

// The pages of all items as a report made them in one recordset: which rows are whose, and what stands over
// them. Rows are numbered within the whole; pages count from 0.
class LedgerPages {
 public:
  // `ends` holds the number of rows up to the end of each page (FBreakRow). Raises kUnknownField without it.
  LedgerPages(platform::Ref<platform::Recordset> rows, const platform::Recordset& ends,
              platform::Ref<platform::Vector> header);

  const platform::Recordset& Rows() const { return *rows_; }
  const platform::Vector& Header() const { return *header_; }
  // Where each of them begins and ends, and its title lines.
  const exports::ItemPages& Items() const { return items_; }
  bool IsSummary(std::size_t row) const;
  // The next page from `start` on, then from the first, whose item has this number, or else whose title has
  // this text, letters of any case.
  std::optional<std::size_t> Find(std::string_view text, std::size_t start) const;
  // As it stands before row `row` of the page; both ends of a page have none.
  std::optional<exports::LedgerTotals> CarriedTo(std::size_t page, std::size_t row) const;

 private:
  bool HoldsText(std::size_t page, std::string_view text) const;

  platform::Ref<platform::Recordset> rows_;
  platform::Ref<platform::Vector> header_;
  exports::ItemPages items_;
  std::optional<std::size_t> summaryField_;
};

}  // namespace browser
