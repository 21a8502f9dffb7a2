#include "exports/PageLayout.h"

#include <algorithm>

namespace exports {
namespace {

double WidthOf(const std::vector<PaperColumn>& columns, std::size_t first, std::size_t count) {
  double width = 0;
  for (std::size_t i = first; i < first + count; ++i) width += columns[i].width;
  return width;
}

// Key columns from the left, as many as leave half of the page free.
std::size_t RepeatedKeys(const std::vector<PaperColumn>& columns, double pageWidth) {
  std::size_t keys = 0;
  double width = 0;
  while (keys < columns.size() && columns[keys].key && width + columns[keys].width <= pageWidth / 2) {
    width += columns[keys++].width;
  }
  return keys;
}

}  // namespace

std::vector<PageColumns> SplitColumns(const std::vector<PaperColumn>& columns, double pageWidth) {
  const std::size_t keys = RepeatedKeys(columns, pageWidth);
  PageColumns begun;
  for (std::size_t i = 0; i < keys; ++i) begun.push_back(i);
  const double keyWidth = WidthOf(columns, 0, keys);

  std::vector<PageColumns> pages;
  PageColumns page = begun;
  double used = keyWidth;
  const auto turn = [&] {
    if (page.size() > keys) pages.push_back(page);
    page = begun;
    used = keyWidth;
  };
  for (std::size_t i = keys; i < columns.size();) {
    const std::size_t group = std::clamp<std::size_t>(columns[i].groupSpan, 1, columns.size() - i);
    const bool whole = keyWidth + WidthOf(columns, i, group) <= pageWidth;
    const std::size_t block = whole ? group : 1;
    if (used + WidthOf(columns, i, block) > pageWidth) turn();
    for (const std::size_t end = i + block; i < end; ++i) {
      page.push_back(i);
      used += columns[i].width;
    }
  }
  if (page.size() > keys || pages.empty()) pages.push_back(page);
  return pages;
}

std::size_t RowsOfPage(const PageRoom& room, std::size_t left, bool isFirst) {
  const std::size_t carried = room.carries ? 1 : 0;
  const std::size_t lines = room.lines - std::min(isFirst ? 0 : carried, room.lines - 1);
  if (left <= lines) return left;
  return lines - std::min(carried, lines - 1);
}

std::size_t PagesOfRows(const PageRoom& room, std::size_t rows) {
  std::size_t pages = 1;
  for (std::size_t left = rows - RowsOfPage(room, rows, true); left > 0; ++pages) {
    left -= RowsOfPage(room, left, false);
  }
  return pages;
}

std::vector<std::size_t> FlowTexts(const std::vector<double>& widths, double gap, double lineWidth) {
  std::vector<std::size_t> ends;
  double used = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const bool begins = ends.empty() || used + gap + widths[i] > lineWidth;
    if (begins) ends.push_back(i);
    used = begins ? widths[i] : used + gap + widths[i];
    ends.back() = i + 1;
  }
  return ends;
}

}  // namespace exports
