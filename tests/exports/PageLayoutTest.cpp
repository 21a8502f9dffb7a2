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

}  // namespace
