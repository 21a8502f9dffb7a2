#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/rows/Recordset.h"

namespace exports {

// The rows of many items one after the other, as a ledger hands out all its items at once: each item begins a
// new page under the title lines that its rows carry (FTitle1, FTitle2, …). Borrows the rows, which are shown
// all of them and in their order. Items are counted from 0.
class ItemPages {
 public:
  // `ends` holds for each item how many rows there are when it is finished, as RowBreakRs does. Ends that do
  // not rise, or lie behind the last row, end nothing.
  ItemPages(const platform::Recordset& rows, const std::vector<std::int32_t>& ends);

  std::size_t Count() const { return ends_.size(); }
  const std::vector<std::size_t>& Ends() const { return ends_; }
  std::size_t Begin(std::size_t item) const { return item == 0 ? 0 : ends_[item - 1]; }
  std::size_t End(std::size_t item) const { return ends_[item]; }
  std::vector<std::string> TitleLines(std::size_t item) const;
  const platform::Recordset& Rows() const { return rows_; }

 private:
  const platform::Recordset& rows_;
  std::vector<std::size_t> ends_;
  std::vector<std::size_t> titleFields_;
};

}  // namespace exports
