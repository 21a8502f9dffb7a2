#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exports/PageLayout.h"

namespace {

using exports::PageColumns;
using exports::PaperColumn;

PaperColumn Key(double width) { return {.width = width, .key = true}; }
PaperColumn Plain(double width) { return {.width = width}; }
PaperColumn Group(double width, std::size_t span) { return {.width = width, .groupSpan = span}; }

TEST(PageLayout, PartsColumnsIntoPagesAcross) {
  struct Case {
    const char* name;
    std::vector<PaperColumn> columns;
    std::vector<PageColumns> pages;
  };
  const Case kCases[] = {
      {"what fits stays on one page", {Key(30), Plain(40), Plain(30)}, {{0, 1, 2}}},
      {"keys come again on each page", {Key(20), Key(20), Plain(40), Plain(40)}, {{0, 1, 2}, {0, 1, 3}}},
      {"a key that would take more than half is not repeated",
       {Key(30), Key(30), Plain(40), Plain(40)},
       {{0, 1, 2}, {0, 3}}},
      {"a group stays together", {Key(20), Plain(40), Group(30, 2), Plain(30)}, {{0, 1}, {0, 2, 3}}},
      {"a group wider than the page is parted",
       {Key(20), Group(40, 3), Plain(40), Plain(40)},
       {{0, 1, 2}, {0, 3}}},
      {"a column wider than the page has its own", {Plain(50), Plain(120), Plain(50)}, {{0}, {1}, {2}}},
      {"a span beyond the last column ends there", {Plain(50), Group(30, 9)}, {{0, 1}}},
      {"only keys", {Key(20), Key(20)}, {{0, 1}}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(exports::SplitColumns(c.columns, 100), c.pages);
  }
}

TEST(PageLayout, BreaksRowsIntoPages) {
  struct Case {
    const char* name;
    exports::PageRoom room;
    std::size_t rows;
    std::vector<std::size_t> pages;
  };
  const Case kCases[] = {
      {"no rows", {.lines = 5}, 0, {0}},
      {"a full page", {.lines = 5}, 5, {5}},
      {"one more", {.lines = 5}, 6, {5, 1}},
      {"what fits carries nothing", {.lines = 5, .carries = true}, 5, {5}},
      {"a page that goes on has a line less", {.lines = 5, .carries = true}, 6, {4, 2}},
      {"the next one too, and one in the middle two", {.lines = 5, .carries = true}, 12, {4, 3, 3, 2}},
      {"a last page that is just full", {.lines = 5, .carries = true}, 8, {4, 4}},
      {"a page for a single line", {.lines = 1, .carries = true}, 2, {1, 1}},
  };
  for (const Case& c : kCases) {
    std::vector<std::size_t> pages;
    std::size_t left = c.rows;
    do {
      pages.push_back(exports::RowsOfPage(c.room, left, pages.empty()));
      left -= pages.back();
    } while (left > 0);
    EXPECT_EQ(pages, c.pages) << c.name;
    EXPECT_EQ(exports::PagesOfRows(c.room, c.rows), c.pages.size()) << c.name;
  }
}

TEST(PageLayout, PutsShortTextsSideBySide) {
  struct Case {
    const char* name;
    std::vector<double> widths;
    std::vector<std::size_t> ends;
  };
  const Case kCases[] = {
      {"none", {}, {}},
      {"as many as fit", {40, 50, 20}, {2, 3}},
      {"one that fills a line", {100, 10}, {1, 2}},
      {"one that is too wide stands alone", {10, 300, 10}, {1, 2, 3}},
  };
  for (const Case& c : kCases) EXPECT_EQ(exports::FlowTexts(c.widths, 10, 100), c.ends) << c.name;
}

}  // namespace
