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

// How rows go on from page to page.
struct PageRoom {
  std::size_t lines = 1;  // that a page has for rows
  // A page that goes on gives its last line to what is carried to the next one, which begins with it.
  bool carries = false;
};

// The rows of the next page, of so many that are left; 0 only when none are.
std::size_t RowsOfPage(const PageRoom& room, std::size_t left, bool isFirst);
// The pages that so many rows take, at least one.
std::size_t PagesOfRows(const PageRoom& room, std::size_t rows);

// Short texts side by side, as many in a line as fit: the texts' widths, and where each line ends (behind its
// last text).
std::vector<std::size_t> FlowTexts(const std::vector<double>& widths, double gap, double lineWidth);

}  // namespace exports
