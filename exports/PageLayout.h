#pragma once

#include <cstddef>
#include <vector>

namespace exports {

// A column on paper. Widths in points.
struct PaperColumn {
  double width = 0;
  std::size_t groupSpan = 0;  // columns under the group that begins here, 0 for none
  bool key = false;           // says what a row is about: repeated on every page across
};

// The columns of one page across, in order, keys first.
using PageColumns = std::vector<std::size_t>;

// Parts columns that are too wide for one page into pages across. The keys come again on each of them as long
// as they leave half of the page free; a group stays together unless it is wider than a page. A column that
// is wider than the page has a page for itself.
std::vector<PageColumns> SplitColumns(const std::vector<PaperColumn>& columns, double pageWidth);

}  // namespace exports
