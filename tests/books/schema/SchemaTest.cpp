#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/check/Check.h"
#include "books/schema/Codes.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"
#include "tests/books/TinyBook.h"

namespace {

using books::database::Connection;
using books::schema::UpgradeStep;
using books::test::Rows;
namespace schema = books::schema;

constexpr std::array<std::string_view, 1> kAddsAColumn = {
    "ALTER TABLE unit ADD COLUMN symbol TEXT NOT NULL DEFAULT ''"};
constexpr std::array<std::string_view, 2> kFailsHalfway = {"CREATE TABLE half (a INTEGER) STRICT",
                                                           "INSERT INTO nowhere VALUES (1)"};

// The real steps and one that follows them.
std::vector<UpgradeStep> StepsWith(std::span<const std::string_view> scripts) {
  std::vector<UpgradeStep> steps(schema::Steps().begin(), schema::Steps().end());
  steps.push_back({.version = schema::NewestVersion() + 1, .scripts = scripts});
  return steps;
}

TEST(Schema, StepsAreNumberedWithoutGaps) {
  std::int64_t expected = 1;
  for (const UpgradeStep& step : schema::Steps()) EXPECT_EQ(step.version, expected++);
}

TEST(Schema, UpgradeKeepsTheBook) {
  Connection book = books::test::MakeTinyBook();
  schema::Upgrade(book, StepsWith(kAddsAColumn));
  EXPECT_EQ(book.ReadIdentity().version, schema::NewestVersion() + 1);
  EXPECT_EQ(Rows(book, "SELECT id, name, symbol FROM unit WHERE id = 1"), "1 瓶 ");
  EXPECT_TRUE(books::check::Check(book).empty());
  schema::Upgrade(book, StepsWith(kAddsAColumn));  // a second time there is nothing to do
  EXPECT_EQ(book.ReadIdentity().version, schema::NewestVersion() + 1);
}

TEST(Schema, AFailedUpgradeLeavesTheBookAsItWas) {
  Connection book = books::test::MakeTinyBook();
  EXPECT_THROW(schema::Upgrade(book, StepsWith(kFailsHalfway)), platform::Error);
  EXPECT_EQ(book.ReadIdentity().version, schema::NewestVersion());
  EXPECT_EQ(Rows(book, "SELECT COUNT(*) FROM sqlite_schema WHERE name = 'half'"), "0");
  EXPECT_TRUE(books::check::Check(book).empty());
}

// What report components ask by these very names.
TEST(Schema, NamesOfReportComponents) {
  struct NameCase {
    std::string sql;
    std::string expected;
  };
  const std::vector<NameCase> cases = {
      {"SELECT FItemID, FItemClassID, FNumber, FShortNumber, FFullNumber, FName, FLevel, FDetail, FParentID, "
       "FDeleted, FRightUserID FROM t_Item WHERE FItemID = 411",
       "411 4 01.01.001 001 01.01.001 苹果汁 3 1 402 0 "},
      {"SELECT MAX(FLevel) - 1 FROM t_Item, t_ItemClass WHERE t_Item.FItemClassID = t_ItemClass.FItemClassID "
       "AND "
       "t_ItemClass.FItemClassID = 4",
       "2"},
      {"SELECT FNumber FROM t_Stock WHERE FItemID = 502", "02"},
      {"SELECT COUNT(*) FROM t_Stock", "3"},
      {"SELECT FValue FROM t_SystemProfile WHERE FCategory = 'ic' AND FKey = 'STARTYEAR'", "2025"},
      {"SELECT FStartDate, FEndDate FROM t_PeriodDate WHERE FYear = 2025 AND FPeriod = 2", "45689 45716"},
      {"SELECT 1 FROM ICCalFlag", ""},
  };
  Connection book = books::test::MakeTinyBook();
  for (const NameCase& each : cases) {
    SCOPED_TRACE(each.sql);
    EXPECT_EQ(Rows(book, each.sql), each.expected);
  }
}

TEST(Schema, PeriodsHaveRealDays) {
  Connection book = schema::CreateBookInMemory();
  schema::AddCalendarYears(book, 2023, 2024);
  schema::AddCalendarYears(book, 2024, 2024);
  EXPECT_EQ(Rows(book, "SELECT COUNT(*), SUM(last_day - first_day + 1) FROM accounting_period"), "24 731");
  const std::int32_t february = schema::PeriodOf(2024, 2);
  EXPECT_EQ(schema::YearOf(february), 2024);
  EXPECT_EQ(schema::NumberOf(february), 2);
  EXPECT_EQ(
      Rows(book, "SELECT last_day - first_day + 1 FROM accounting_period WHERE year = 2024 AND number = 2"),
      "29");
}

struct TreeCase {
  std::string name;
  std::string fault;
  std::string failure;
};

TEST(Schema, TreesThatAreNone) {
  const std::vector<TreeCase> cases = {
      {"a circle of two", "UPDATE base_data SET parent_id = 402 WHERE id = 401",
       "base data 01 is its own ancestor"},
      {"its own parent", "UPDATE base_data SET parent_id = 403 WHERE id = 403",
       "base data 02 is its own ancestor"},
      {"a parent of another class", "UPDATE base_data SET parent_id = 401 WHERE id = 501",
       "base data 01 has a parent of another class, 01"},
  };
  for (const TreeCase& each : cases) {
    SCOPED_TRACE(each.name);
    Connection book = books::test::MakeTinyBook();
    book.RunScript(each.fault);
    try {
      schema::RebuildTrees(book);
      ADD_FAILURE() << "was taken for a tree";
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.Description(), each.failure);
    }
  }
}

}  // namespace
