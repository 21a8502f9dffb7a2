#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
  const std::vector<std::size_t>& Ends() const { return ends_; }
  std::size_t Count() const { return ends_.size(); }
  std::size_t Begin(std::size_t page) const { return page == 0 ? 0 : ends_[page - 1]; }
  std::size_t End(std::size_t page) const { return ends_[page]; }
  bool IsSummary(std::size_t row) const;
  // The title lines that the page's rows carry, empty ones left out.
  std::vector<std::string> Title(std::size_t page) const;
  // The next page from `start` on, then from the first, whose item has this number, or else whose title has
  // this text, letters of any case.
  std::optional<std::size_t> Find(std::string_view text, std::size_t start) const;
  // As it stands before row `row` of the page; both ends of a page have none.
  std::optional<exports::LedgerTotals> CarriedTo(std::size_t page, std::size_t row) const;

 private:
  bool HoldsText(std::size_t page, std::string_view text) const;

  platform::Ref<platform::Recordset> rows_;
  platform::Ref<platform::Vector> header_;
  std::vector<std::size_t> ends_;
  std::vector<std::size_t> titleFields_;
  std::optional<std::size_t> summaryField_;
};

}  // namespace browser
