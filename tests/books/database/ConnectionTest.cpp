#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/database/Connection.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"

namespace {

using books::database::Access;
using books::database::Connection;
using books::database::Quantity;
using books::database::Statement;
using books::database::Transaction;
using platform::Currency;
using platform::Date;
using platform::Error;
namespace schema = books::schema;

class BookFile : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::path(testing::TempDir()) /
              ("book_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    file_ = folder_ / "账套.stk";
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string FailureOf(const std::function<void()>& action) const {
    try {
      action();
    } catch (const Error& error) {
      std::string text = error.Description();
      const std::string folder = folder_.string() + "/";
      for (auto at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
        text.erase(at, folder.size());
      }
      return text;
    }
    return "opened";
  }
  void Write(const std::string& content) const { std::ofstream(file_, std::ios::binary) << content; }

  std::filesystem::path folder_;
  std::filesystem::path file_;
};

struct OpenCase {
  std::string name;
  std::function<void()> prepare;
  std::string failure;
};

TEST_F(BookFile, Opening) {
  const auto makeBook = [&] { schema::CreateBook(file_); };
  const std::vector<OpenCase> cases = {
      {"a book", makeBook, "opened"},
      {"no file", [] {}, "there is no file 账套.stk; check the path, or make a book there first"},
      {"a folder", [&] { std::filesystem::create_directory(file_); },
       "账套.stk is a folder, not a stock book"},
      {"a text", [&] { Write(std::string(5000, 'x')); },
       "账套.stk is not a database, so it is no stock book"},
      {"an empty file", [&] { Write(""); }, "账套.stk is a database, but no stock book"},
      {"another program's database",
       [&] {
         Connection other = Connection::Open(file_, Access::kCreate);
         other.RunScript("CREATE TABLE a (b); PRAGMA user_version = 1");
       },
       "账套.stk is a database, but no stock book"},
      {"a newer book",
       [&] {
         makeBook();
         Connection::Open(file_, Access::kReadWrite).WriteIdentity({schema::kApplication, 99});
       },
       "账套.stk was written by a newer version of this program (book version 99, this program knows up to " +
           std::to_string(schema::NewestVersion()) + "); use that version"},
      {"a damaged book",
       [&] {
         makeBook();
         std::fstream damaged(file_, std::ios::binary | std::ios::in | std::ios::out);
         damaged.seekp(100);
         damaged << std::string(3000, '\x7f');
       },
       "账套.stk is damaged (database disk image is malformed); restore it from a backup"},
      {"half a book",
       [&] {
         makeBook();
         std::filesystem::resize_file(file_, std::filesystem::file_size(file_) / 2);
       },
       "账套.stk is damaged (database disk image is malformed); restore it from a backup"},
  };
  for (const OpenCase& each : cases) {
    for (const Access access : {Access::kReadOnly, Access::kReadWrite}) {
      SCOPED_TRACE(each.name + (access == Access::kReadOnly ? ", to read" : ", to write"));
      std::filesystem::remove_all(folder_);
      std::filesystem::create_directories(folder_);
      each.prepare();
      EXPECT_EQ(FailureOf([&] { schema::OpenBook(file_, access); }), each.failure);
    }
  }
}

TEST_F(BookFile, CreatingLeavesAnExistingFileAlone) {
  Write("diary");
  EXPECT_EQ(FailureOf([&] { schema::CreateBook(file_); }),
            "账套.stk exists already; choose another file or remove it");
  EXPECT_EQ(std::filesystem::file_size(file_), 5U);
}

TEST_F(BookFile, ALockedBookSaysSo) {
  schema::CreateBook(file_);
  Connection writer = schema::OpenBook(file_, Access::kReadWrite);
  Connection other = schema::OpenBook(file_, Access::kReadWrite, {.busyMilliseconds = 10});
  const Transaction writing(writer);
  EXPECT_EQ(FailureOf([&] { const Transaction waiting(other); }),
            "账套.stk is locked: another program is writing to it; try again when that has finished");
}

TEST_F(BookFile, ReadingGoesOnWhileSomethingWrites) {
  schema::CreateBook(file_);
  Connection writer = schema::OpenBook(file_, Access::kReadWrite);
  Transaction writing(writer);
  writer.Execute("INSERT INTO unit (id, name) VALUES (1, '个')");
  Connection reader = schema::OpenBook(file_, Access::kReadOnly);
  Transaction picture(reader, Transaction::Kind::kRead);
  const auto units = [&] {
    Statement rows = reader.Query("SELECT COUNT(*) FROM unit");
    rows.Step();
    return rows.Integer(0);
  };
  EXPECT_EQ(units(), 0);
  writing.Commit();
  EXPECT_EQ(units(), 0);  // still the picture that the scope began with
  picture.Commit();
  EXPECT_EQ(units(), 1);
}

TEST_F(BookFile, ReadersCannotWrite) {
  schema::CreateBook(file_);
  Connection reader = schema::OpenBook(file_, Access::kReadOnly);
  const std::vector<std::string> allowed = {
      "SELECT COUNT(*) FROM t_Item",
      "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3) SELECT MAX(i) FROM n",
  };
  for (const std::string& sql : allowed) {
    SCOPED_TRACE(sql);
    EXPECT_TRUE(reader.Query(sql).Step());
  }
  const std::vector<std::string> refused = {
      "INSERT INTO unit (id, name) VALUES (1, '个')",
      "UPDATE bill_class SET name = ''",
      "DELETE FROM base_class",
      "DROP TABLE unit",
      "CREATE TABLE mine (a)",
      "CREATE TEMP TABLE mine (a)",
      "CREATE VIEW mine AS SELECT 1",
      "ALTER TABLE unit RENAME TO mine",
      "ATTACH DATABASE ':memory:' AS mine",
      "VACUUM",
      "REINDEX",
      "PRAGMA user_version = 7",
      "PRAGMA journal_mode = DELETE",
      "PRAGMA query_only = OFF",
      "PRAGMA table_info('unit')",
  };
  for (const std::string& sql : refused) {
    SCOPED_TRACE(sql);
    EXPECT_THAT(FailureOf([&] { reader.Execute(sql); }), testing::HasSubstr("open for reading only"));
  }
}

TEST(Connection, KeepsValuesAsTheyAre) {
  Connection connection = Connection::OpenInMemory();
  connection.RunScript(
      "CREATE TABLE v (a INTEGER, b INTEGER, c INTEGER, d REAL, e TEXT, f TEXT, g INTEGER, h TEXT)");
  connection.Execute("INSERT INTO v VALUES (?, ?, ?, ?, ?, ?, ?, ?)", Currency::FromText("-12.3456"),
                     Quantity::FromDouble(0.1), Date::Of(2026, 11, 21, 13), 2.5, "汉字 ' ; --", std::string(),
                     true, std::optional<std::string>());
  Statement row = connection.Query("SELECT a, b, c, d, e, f, g, h FROM v");
  ASSERT_TRUE(row.Step());
  EXPECT_EQ(row.Amount(0), Currency::FromText("-12.3456"));
  EXPECT_EQ(row.GetQuantity(1), Quantity::FromUnits(100000));
  EXPECT_EQ(row.GetDate(2), Date::Of(2026, 11, 21));
  EXPECT_EQ(row.Real(3), 2.5);
  EXPECT_EQ(row.Text(4), "汉字 ' ; --");
  EXPECT_FALSE(row.IsNull(5));
  EXPECT_EQ(row.Text(5), "");
  EXPECT_TRUE(row.Boolean(6));
  EXPECT_TRUE(row.IsNull(7));
  EXPECT_FALSE(row.Step());
}

TEST(Connection, BindsEveryKindOfVariant) {
  Connection connection = Connection::OpenInMemory();
  const std::vector<std::pair<platform::Variant, std::string>> cases = {
      {platform::Null(), "null"},
      {true, "integer 1"},
      {std::int16_t{7}, "integer 7"},
      {std::int64_t{1} << 40, "integer 1099511627776"},
      {1.5, "real 1.5"},
      {Currency::FromText("2.5"), "integer 25000"},
      {Date::FromDays(9), "integer 9"},
      {"text", "text text"},
  };
  for (const auto& [value, expected] : cases) {
    SCOPED_TRACE(expected);
    Statement row = connection.Query("SELECT TYPEOF(?1) || COALESCE(' ' || ?1, '')", value);
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), expected);
  }
  EXPECT_THROW(connection.Query("SELECT ?", platform::Variant()), Error);
  EXPECT_THROW(connection.Query("SELECT ?", platform::Variant(platform::Ref<platform::Object>())), Error);
}

TEST(Connection, RefusesWrongUse) {
  Connection connection = Connection::OpenInMemory();
  EXPECT_THROW(connection.Query("SELECT ?"), Error);
  EXPECT_THROW(connection.Query("SELECT 1", 2), Error);
  EXPECT_THROW(connection.Prepare("SELECT 1; SELECT 2"), Error);
  EXPECT_THROW(connection.Prepare(""), Error);
  EXPECT_THROW(connection.Prepare("SELECT \"no such column\""), Error);
  EXPECT_NO_THROW(connection.Prepare("SELECT 1;  "));
}

TEST(Connection, GathersTheRowsOfAStatement) {
  Connection connection = Connection::OpenInMemory();
  std::vector<std::int64_t> values = {7};
  Statement rows = connection.Prepare(
      "SELECT gather(column1, column2) FROM (VALUES (1, 9223372036854775807), (-2, NULL), (3, '4')) "
      "WHERE column1 < ?");
  rows.Bind(3);
  rows.Gather(values);
  EXPECT_EQ(values, (std::vector<std::int64_t>{7, 1, INT64_MAX, -2, 0})) << "behind what is there";
  rows.Bind(4);
  rows.Gather(values);
  EXPECT_EQ(values.size(), 11U);
  rows.Bind(-9);
  rows.Gather(values);
  EXPECT_EQ(values.size(), 11U) << "no rows";
}

TEST(Connection, RefusesToGatherOtherwise) {
  Connection connection = Connection::OpenInMemory();
  EXPECT_THROW(connection.Query("SELECT gather(1)").Step(), Error) << "nobody takes the rows";
  connection.Execute("CREATE TABLE number (value INTEGER) STRICT");
  connection.Execute("CREATE TRIGGER t AFTER INSERT ON number BEGIN SELECT gather(1); END");
  EXPECT_THROW(connection.Execute("INSERT INTO number VALUES (1)"), Error) << "a book's own texts";
  std::vector<std::int64_t> values;
  Statement failing = connection.Prepare("SELECT gather(1, abs(?))");
  failing.Bind(INT64_MIN);
  EXPECT_THROW(failing.Gather(values), Error) << "an overflow in the middle";
  EXPECT_THROW(connection.Query("SELECT gather(2)").Step(), Error) << "and nobody takes them afterwards";
  failing.Bind(-5);
  values.clear();
  failing.Gather(values);
  EXPECT_EQ(values, (std::vector<std::int64_t>{1, 5}));
}

TEST(Connection, TheSameTextServesTwiceAtOnce) {
  Connection connection = Connection::OpenInMemory();
  const std::string sql = "SELECT 1 UNION ALL SELECT 2";
  Statement one = connection.Query(sql);
  Statement other = connection.Query(sql);
  EXPECT_TRUE(one.Step());
  EXPECT_TRUE(other.Step());
  EXPECT_TRUE(one.Step());
  EXPECT_EQ(one.Integer(0), 2);
  EXPECT_EQ(other.Integer(0), 1);
}

TEST(Connection, AStatementFromTheCacheForgetsItsValues) {
  Connection connection = Connection::OpenInMemory();
  EXPECT_TRUE(connection.Query("SELECT ?", 5).Step());
  Statement again = connection.Prepare("SELECT ?");
  ASSERT_TRUE(again.Step());
  EXPECT_TRUE(again.IsNull(0));
}

std::int64_t CountUnits(Connection& connection) {
  Statement rows = connection.Query("SELECT COUNT(*) FROM unit");
  rows.Step();
  return rows.Integer(0);
}

void AddUnit(Connection& connection, int id) {
  connection.Execute("INSERT INTO unit (id, name) VALUES (?, ?)", id, std::to_string(id));
}

TEST(Transaction, WritesWholeOrNotAtAll) {
  Connection connection = schema::CreateBookInMemory();
  {
    const Transaction given_up(connection);
    AddUnit(connection, 1);
  }
  EXPECT_EQ(CountUnits(connection), 0);
  {
    Transaction kept(connection);
    AddUnit(connection, 1);
    {
      Transaction inner(connection);
      AddUnit(connection, 2);
      inner.Commit();
    }
    kept.Commit();
  }
  EXPECT_EQ(CountUnits(connection), 2);
}

TEST(Transaction, AFailedPartDoomsTheWhole) {
  Connection connection = schema::CreateBookInMemory();
  {
    Transaction outer(connection);
    AddUnit(connection, 1);
    {
      const Transaction inner(connection);
      AddUnit(connection, 2);
    }
    EXPECT_THROW(outer.Commit(), Error);
  }
  EXPECT_EQ(CountUnits(connection), 0);
  Transaction next(connection);  // and the connection can go on
  AddUnit(connection, 3);
  next.Commit();
  EXPECT_EQ(CountUnits(connection), 1);
}

TEST(Quantity, TenTenthsAreOne) {
  Quantity sum;
  for (int i = 0; i < 10; ++i) sum += Quantity::FromDouble(0.1);
  EXPECT_EQ(sum, Quantity::FromInteger(1));
}

TEST(Quantity, FromDouble) {
  const std::vector<std::pair<double, std::int64_t>> cases = {
      {0, 0},
      {1.5, 1500000},
      {-1.5, -1500000},
      {1.0 / 3, 333333},
      {2.0 / 3, 666667},
      {4e12, 4000000000000000000},
  };
  for (const auto& [value, units] : cases) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Quantity::FromDouble(value).Units(), units);
  }
  for (const double refused :
       {5e12, -5e12, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    SCOPED_TRACE(refused);
    EXPECT_THROW(Quantity::FromDouble(refused), Error);
  }
}

}  // namespace
