#include <cstdint>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/check/Check.h"
#include "books/database/Connection.h"
#include "books/schema/Schema.h"
#include "platform/value/Clock.h"
#include "platform/value/Error.h"

namespace {

using books::DemoOptions;
using books::DemoSize;
using books::database::Connection;
using books::database::Statement;
using platform::Date;

// A file name of its own that is gone, with what stands beside it, when the test ends.
class DemoFile {
 public:
  explicit DemoFile(const std::string& name)
      : path_(std::filesystem::temp_directory_path() /
              (name + "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".db")) {
    Remove();
  }
  ~DemoFile() { Remove(); }
  DemoFile(const DemoFile&) = delete;
  DemoFile& operator=(const DemoFile&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  Connection Read() const { return books::schema::OpenBook(path_, books::database::Access::kReadOnly); }

 private:
  void Remove() const {
    for (const char* ending : {"", "-wal", "-shm", ".making"}) {
      std::filesystem::path part = path_;
      part += ending;
      std::filesystem::remove_all(part);
    }
  }

  std::filesystem::path path_;
};

DemoOptions Small(std::uint64_t seed = 1) {
  return {.size = DemoSize::kSmall, .seed = seed, .today = Date::Of(2026, 11, 21)};
}

DemoOptions Tiny(std::uint64_t seed = 1) {
  DemoOptions options = Small(seed);
  options.items = 24;
  options.months = 3;
  return options;
}

std::int64_t Number(Connection& connection, std::string_view sql) {
  Statement row = connection.Prepare(sql);
  return row.Step() ? row.Integer(0) : -1;
}

// Every value of every table, in the order in which the rows lie.
std::uint64_t DumpHash(Connection& connection) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  const auto mix = [&](std::string_view text) {
    for (const char letter : text) hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
    hash = (hash ^ 0xFFU) * 0x100000001B3U;
  };
  std::vector<std::string> tables;
  Statement names = connection.Prepare("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name");
  while (names.Step()) tables.push_back(names.Text(0));
  for (const std::string& table : tables) {
    mix(table);
    Statement rows = connection.Prepare("SELECT * FROM " + table);
    while (rows.Step()) {
      for (int column = 0; column < rows.ColumnCount(); ++column) mix(rows.TextView(column));
    }
  }
  return hash;
}

struct Bounds {
  const char* what;
  const char* sql;
  std::int64_t least;
  std::int64_t most;
};

constexpr Bounds kSmallBook[] = {
    {"the company's name",
     "SELECT COUNT(*) FROM system_profile WHERE category = 'Base' AND key = 'CompanyName' AND value <> ''", 1,
     1},
    {"items", "SELECT COUNT(*) FROM item", 200, 200},
    {"three levels of categories above every item",
     "SELECT COUNT(*) FROM base_data WHERE class_id = 4 AND detail = 1 AND level <> 4", 0, 0},
    {"disabled items", "SELECT COUNT(*) FROM base_data WHERE class_id = 4 AND disabled = 1", 1, 5},
    {"disabled items sold in the last two months",
     "SELECT COUNT(*) FROM movement m JOIN base_data b ON b.id = m.item_id WHERE b.disabled = 1 "
     "AND m.bill_class = 1030002 AND m.quantity > 0 AND m.date > 46347 - 59",
     0, 0},
    {"warehouses", "SELECT COUNT(*) FROM warehouse", 5, 5},
    {"gift warehouses", "SELECT COUNT(*) FROM warehouse WHERE type_code = 501", 1, 1},
    {"disabled warehouses", "SELECT COUNT(*) FROM base_data WHERE class_id = 5 AND disabled = 1", 1, 1},
    {"entries", "SELECT COUNT(*) FROM bill_entry", 9'800, 10'200},
    {"sales among them",
     "SELECT COUNT(*) FROM bill b JOIN bill_entry e ON e.bill_id = b.id WHERE b.bill_class = 1030002", 4'000,
     7'000},
    {"bill classes in use", "SELECT COUNT(DISTINCT bill_class) FROM bill", 15, 15},
    {"months with bills", "SELECT COUNT(DISTINCT period) FROM bill", 24, 24},
    {"bills after today", "SELECT COUNT(*) FROM bill WHERE date > 46347", 0, 0},
    {"bills that wait for their audit", "SELECT COUNT(*) FROM bill WHERE audited = 0", 2, 30},
    {"orders still to be delivered",
     "SELECT COUNT(*) FROM order_entry WHERE closed = 0 AND delivered_quantity < quantity", 20, 400},
    {"orders partly delivered",
     "SELECT COUNT(*) FROM order_entry WHERE delivered_quantity > 0 AND delivered_quantity < quantity", 10,
     400},
    {"orders delivered beyond their quantity",
     "SELECT COUNT(*) FROM order_entry WHERE delivered_quantity > quantity", 0, 0},
    {"items below their lowest stock",
     "SELECT COUNT(*) FROM item i WHERE i.min_quantity > (SELECT COALESCE(SUM(s.quantity), 0) FROM stock s "
     "WHERE s.item_id = i.id)",
     6, 50},
    {"items above their highest stock",
     "SELECT COUNT(*) FROM item i WHERE i.max_quantity > 0 AND i.max_quantity < "
     "(SELECT COALESCE(SUM(s.quantity), 0) FROM stock s WHERE s.item_id = i.id)",
     6, 50},
    {"batches in stock that have expired",
     "SELECT COUNT(*) FROM stock s JOIN batch b ON b.id = s.batch_id WHERE s.quantity > 0 "
     "AND b.expiry_date < 46347",
     5, 120},
    {"batches in stock that expire within a month",
     "SELECT COUNT(*) FROM stock s JOIN batch b ON b.id = s.batch_id WHERE s.quantity > 0 "
     "AND b.expiry_date BETWEEN 46347 AND 46377",
     5, 150},
    {"negative stock", "SELECT COUNT(*) FROM stock WHERE quantity < 0", 1, 5},
    {"bills booked after a later one of their class", "SELECT COUNT(*) FROM bill WHERE explanation = '补录'",
     1, 60},
    {"serial numbers in stock", "SELECT COUNT(*) FROM serial WHERE state = 1", 50, 2'000},
    {"serial numbers issued", "SELECT COUNT(*) FROM serial WHERE state = 2", 50, 5'000},
    {"valuation methods", "SELECT COUNT(DISTINCT valuation) FROM item", 4, 4},
    {"items with an auxiliary unit", "SELECT COUNT(*) FROM item WHERE aux_unit_id IS NOT NULL", 5, 60},
    {"items sold in whole packages", "SELECT COUNT(*) FROM item_unit WHERE package = 1", 80, 199},
    {"entries with an auxiliary property", "SELECT COUNT(*) FROM bill_entry WHERE aux_id IS NOT NULL", 100,
     3'000},
    {"goods in the gift warehouse that carry an amount",
     "SELECT COUNT(*) FROM stock s JOIN warehouse w ON w.id = s.warehouse_id WHERE w.type_code = 501 "
     "AND s.amount <> 0",
     0, 0},
    {"goods left in the disabled warehouse",
     "SELECT COUNT(*) FROM stock s JOIN base_data b ON b.id = s.warehouse_id WHERE b.disabled = 1 "
     "AND s.quantity <> 0",
     0, 0},
    {"users", "SELECT COUNT(*) FROM book_user", 3, 3},
    {"warehouses that the manager may see", "SELECT COUNT(*) FROM t_Stock WHERE FRightUserID LIKE '%205%'", 1,
     3},
    {"warehouses that the trainee may see", "SELECT COUNT(*) FROM t_Stock WHERE FRightUserID LIKE '%309%'", 0,
     0},
    {"the current period is the last month",
     "SELECT COUNT(*) FROM system_profile WHERE (key = 'CurrentYear' AND value = '2026') "
     "OR (key = 'CurrentPeriod' AND value = '11')",
     2, 2},
    {"business that waits for its cost", "SELECT COUNT(*) FROM waiting_item", 0, 0},
    {"sales at a loss on the whole",
     "SELECT COUNT(*) FROM (SELECT SUM(e.amount) AS sold, SUM(m.amount) AS cost FROM bill b "
     "JOIN bill_entry e ON e.bill_id = b.id JOIN movement m ON m.item_id = e.item_id AND m.bill_id = b.id "
     "AND m.line = e.line WHERE b.bill_class = 1030002) WHERE cost >= sold",
     0, 0},
};

TEST(Demo, TheSmallBookIsABelievableCompany) {
  const DemoFile file("demo");
  books::MakeDemoBook(file.Path(), Small());
  Connection book = file.Read();
  for (const Bounds& row : kSmallBook) {
    SCOPED_TRACE(row.what);
    const std::int64_t found = Number(book, row.sql);
    EXPECT_GE(found, row.least);
    EXPECT_LE(found, row.most);
  }
  for (const auto& violation : books::check::Check(book, 5)) {
    ADD_FAILURE() << violation.rule << ": " << violation.description;
  }
}

TEST(Demo, TheSameSeedMakesTheSameBook) {
  const DemoFile first("first");
  const DemoFile second("second");
  const DemoFile other("other");
  books::MakeDemoBook(first.Path(), Tiny(7));
  books::MakeDemoBook(second.Path(), Tiny(7));
  books::MakeDemoBook(other.Path(), Tiny(8));
  Connection firstBook = first.Read();
  Connection secondBook = second.Read();
  Connection otherBook = other.Read();
  const std::uint64_t hash = DumpHash(firstBook);
  EXPECT_EQ(hash, DumpHash(secondBook));
  EXPECT_NE(hash, DumpHash(otherBook));
}

struct Scaled {
  const char* name;
  std::int32_t items;
  std::int32_t months;
  Date today;
};

// Entries are 10,000 for 200 items and 24 months, and in proportion.
TEST(Demo, ItemsAndMonthsSetTheScaleAndEveryBookIsSound) {
  const Scaled rows[] = {
      {"a single item in a single month", 1, 1, Date::Of(2026, 3, 31)},
      {"fewer items than families", 24, 3, Date::Of(2026, 11, 21)},
      {"the first day of a month", 60, 6, Date::Of(2026, 1, 1)},
      {"a leap day", 40, 13, Date::Of(2024, 2, 29)},
      {"many items for few months", 700, 2, Date::Of(2026, 7, 15)},
  };
  for (const Scaled& row : rows) {
    SCOPED_TRACE(row.name);
    const DemoFile file("scaled");
    DemoOptions options = Small();
    options.items = row.items;
    options.months = row.months;
    options.today = row.today;
    books::MakeDemoBook(file.Path(), options);
    Connection book = file.Read();
    EXPECT_EQ(Number(book, "SELECT COUNT(*) FROM item"), row.items);
    EXPECT_EQ(Number(book, "SELECT MAX(date) FROM bill") <= row.today.Days(), true);
    EXPECT_EQ(Number(book, "SELECT COUNT(*) FROM base_data WHERE class_id = 4 AND detail = 1"), row.items);
    for (const auto& violation : books::check::Check(book, 5)) {
      ADD_FAILURE() << violation.rule << ": " << violation.description;
    }
  }
}

TEST(Demo, WithoutADayOfItsOwnTheBookEndsToday) {
  const DemoFile file("today");
  platform::Clock::Fix(Date::Of(2025, 6, 30, 12));
  DemoOptions options = Tiny();
  options.today.reset();
  books::MakeDemoBook(file.Path(), options);
  platform::Clock::Fix(std::nullopt);
  Connection book = file.Read();
  EXPECT_EQ(Number(book, "SELECT MAX(period) FROM bill"), (2025 * 12) + 5);
  EXPECT_EQ(Number(book, "SELECT MIN(period) FROM bill"), (2025 * 12) + 3);
}

TEST(Demo, ProgressGoesFromNothingToAll) {
  const DemoFile file("progress");
  std::vector<double> told;
  books::MakeDemoBook(file.Path(), Tiny(),
                      [&](std::string_view /*step*/, double done) { told.push_back(done); });
  ASSERT_GE(told.size(), 4U);
  EXPECT_EQ(told.front(), 0);
  EXPECT_EQ(told.back(), 1);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
}

TEST(Demo, AnExistingFileIsReplacedOnlyOnRequest) {
  const DemoFile file("existing");
  std::ofstream(file.Path()) << "a letter to the bank";
  try {
    books::MakeDemoBook(file.Path(), Tiny());
    FAIL() << "the file was overwritten";
  } catch (const platform::Error& error) {
    EXPECT_THAT(error.Description(), ::testing::HasSubstr("--force"));
    EXPECT_THAT(error.Description(), ::testing::HasSubstr(file.Path().filename().string()));
  }
  EXPECT_EQ(std::filesystem::file_size(file.Path()), 20U);

  DemoOptions options = Tiny();
  options.replace = true;
  books::MakeDemoBook(file.Path(), options);
  Connection book = file.Read();
  EXPECT_EQ(Number(book, "SELECT COUNT(*) FROM item"), 24);
  std::filesystem::path making = file.Path();
  making += ".making";
  EXPECT_FALSE(std::filesystem::exists(making));
}

struct Refused {
  const char* name;
  std::optional<std::int32_t> items;
  std::optional<std::int32_t> months;
  const char* remedy;
};

TEST(Demo, RefusesFiguresOutOfRangeAndPlacesThatDoNotExist) {
  const Refused rows[] = {
      {"no items", 0, 3, "1 to 100000"},
      {"too many items", 100'001, 3, "1 to 100000"},
      {"no months", 24, 0, "1 to 120"},
      {"too many months", 24, 121, "1 to 120"},
  };
  const DemoFile file("refused");
  for (const Refused& row : rows) {
    SCOPED_TRACE(row.name);
    DemoOptions options = Small();
    options.items = row.items;
    options.months = row.months;
    try {
      books::MakeDemoBook(file.Path(), options);
      ADD_FAILURE() << "was not refused";
    } catch (const platform::Error& error) {
      EXPECT_THAT(error.Description(), ::testing::HasSubstr(row.remedy));
    }
    EXPECT_FALSE(std::filesystem::exists(file.Path()));
  }
  EXPECT_THROW(books::MakeDemoBook(file.Path().parent_path() / "no-such-folder" / "demo.db", Tiny()),
               platform::Error);
  EXPECT_THROW(books::MakeDemoBook(file.Path().parent_path(), Tiny()), platform::Error);
}

TEST(Demo, KnowsTheWordsForItsSizes) {
  EXPECT_EQ(books::DemoSizeOf("small"), DemoSize::kSmall);
  EXPECT_EQ(books::DemoSizeOf("medium"), DemoSize::kMedium);
  EXPECT_EQ(books::DemoSizeOf("large"), DemoSize::kLarge);
  EXPECT_EQ(books::DemoSizeOf("huge"), std::nullopt);
}

}  // namespace
