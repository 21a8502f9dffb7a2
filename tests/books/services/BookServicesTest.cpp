#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/database/Connection.h"
#include "platform/rows/Picture.h"
#include "platform/rows/Vector.h"
#include "platform/value/Clock.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"
#include "tests/books/services/SmallBook.h"

// The services of a book, on the small book whose rows stand in SmallBook.h.
namespace {

using books::BaseDataQuery;
using books::BatchQuery;
using books::Book;
using books::test::SmallBook;
using platform::Date;
using platform::Null;
using platform::Variant;

// "01.001 青岛啤酒, …", a group in brackets, a disabled row with a star.
std::string NamesOf(const std::vector<books::BaseDataRow>& rows) {
  std::string names;
  for (const books::BaseDataRow& row : rows) {
    if (!names.empty()) names += ", ";
    const std::string name = row.number + " " + row.name + (row.deleted ? "*" : "");
    names += row.detail ? name : "[" + name + "]";
  }
  return names;
}

TEST(BookServices, Profile) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  EXPECT_EQ(book.Profile("IC", "StartYear"), Variant("2025"));
  EXPECT_EQ(book.Profile("ic", "startyear"), Variant("2025"));
  EXPECT_EQ(book.Profile("IC", "NoSuchKey"), Variant(Null{}));
  EXPECT_EQ(book.Profile("IC' OR '1'='1", "StartYear"), Variant(Null{}));
}

TEST(BookServices, Periods) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  EXPECT_EQ(book.PeriodFirstDay(2026, 11), Date::Of(2026, 11, 1));
  EXPECT_EQ(book.PeriodFirstDay(2024, 12), std::nullopt);
  EXPECT_EQ(book.PeriodFirstDay(2026, 13), std::nullopt);
}

TEST(BookServices, UsersAndRights) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  struct Case {
    std::string name;
    std::int32_t user;
    bool restricted;
  };
  for (const Case& each : std::vector<Case>{{"without restriction", 1, false},
                                            {"restricted", 2, true},
                                            {"nobody", 0, false},
                                            {"disabled", 9, true},
                                            {"unknown", 99, true}}) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(book.NeedRight(each.user), each.restricted);
  }
  // Rights are given in warehouses only.
  EXPECT_EQ(book.RightClasses(), "5");
  small.Write().Execute("UPDATE base_data SET right_users = '2' WHERE id = 41");
  EXPECT_EQ(book.RightClasses(), "4,5");

  std::string users;
  for (const books::BookUser& user : book.Users()) users += std::to_string(user.id) + " " + user.name + "; ";
  EXPECT_EQ(users, "1 admin; 2 张三; 7 李四; 12 王五; ");
}

TEST(BookServices, BaseData) {
  struct Case {
    std::string name;
    BaseDataQuery query;
    std::string rows;
  };
  const std::vector<Case> cases = {
      {"a class", {.dataType = 8}, "01 青岛啤酒厂"},
      {"a class without rows", {.dataType = 10}, ""},
      {"an unknown class", {.dataType = 1121}, ""},
      {"by the beginning of a number",
       {.search = "01."},
       "01.001 青岛啤酒, 01.002 矿泉水, 01.003 饼干, 01.004 停售糖果*"},
      {"by a part of the name", {.search = "啤"}, "01.001 青岛啤酒"},
      {"by the short number", {.search = "009"}, "02.005 牙刷"},
      {"by the model, in any case", {.search = "ML"}, "01.001 青岛啤酒"},
      {"by the barcode", {.search = "6901"}, "01.001 青岛啤酒"},
      {"a percent sign is itself", {.search = "%"}, "02.005 牙刷"},
      {"an underscore is itself", {.search = "_"}, ""},
      {"SQL finds nothing", {.search = "' OR 1=1 --"}, ""},
      {"enabled ones",
       {.search = "01.", .filter = " t1.FDeleted=0 "},
       "01.001 青岛啤酒, 01.002 矿泉水, 01.003 饼干"},
      {"with a filter", {.filter = "t1.FItemID>47 And  1=1 "}, "02.004 水桶, 02.005 牙刷"},
      {"as many as wanted", {.limit = 2}, "01.001 青岛啤酒, 01.002 矿泉水"},
      {"groups too",
       {.dataType = 5, .detailOnly = false},
       "[01 华东], 01.01 上海仓, 01.02 杭州仓, 02 北京仓, 03 赠品仓*"},
      {"nobody's right is needed",
       {.dataType = 5, .userId = 1},
       "01.01 上海仓, 01.02 杭州仓, 02 北京仓, 03 赠品仓*"},
      {"what a user may see, with the groups above",
       {.dataType = 5, .userId = 7, .detailOnly = false},
       "[01 华东], 01.01 上海仓, 02 北京仓"},
      {"2 is a part of 12 too", {.dataType = 5, .userId = 2}, "01.01 上海仓, 01.02 杭州仓"},
      {"an unknown user", {.dataType = 5, .userId = 99, .detailOnly = false}, ""},
      {"a class without rights is open", {.dataType = 8, .userId = 7}, "01 青岛啤酒厂"},
  };
  const SmallBook small;
  const Book book = Book::Open(small.File());
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(NamesOf(book.BaseData(each.query)), each.rows);
  }
  EXPECT_THROW(book.BaseData({.filter = "t1.FDeleted=0; DELETE FROM t_Item"}), platform::Error);
  EXPECT_THROW(book.BaseData({.filter = "t2.FDeleted=0"}), platform::Error);
}

TEST(BookServices, ItemList) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  const std::string head =
      "FItemID integer | FParentID integer | FNumber text | FShortNumber text | FName text | FDetail integer "
      "| "
      "FDeleted integer\n";
  EXPECT_EQ(platform::Picture(*book.ItemList(5)), head +
                                                      "> 50 | 0 | '01' | '01' | '华东' | 0 | 0\n"
                                                      "  51 | 50 | '01.01' | 'S1' | '上海仓' | 1 | 0\n"
                                                      "  52 | 50 | '01.02' | 'S2' | '杭州仓' | 1 | 0\n"
                                                      "  53 | 0 | '02' | 'S3' | '北京仓' | 1 | 0\n"
                                                      "  54 | 0 | '03' | 'S4' | '赠品仓' | 1 | 1\n"
                                                      "position 1 of 5\n");
  EXPECT_EQ(platform::Picture(*book.ItemList(5, "FItemID in (50,52) And FItemID not in(50)")),
            head + "> 52 | 50 | '01.02' | 'S2' | '杭州仓' | 1 | 0\nposition 1 of 1\n");
  EXPECT_EQ(platform::Picture(*book.ItemList(5, "", 12)),
            head +
                "> 50 | 0 | '01' | '01' | '华东' | 0 | 0\n"
                "  52 | 50 | '01.02' | 'S2' | '杭州仓' | 1 | 0\nposition 1 of 2\n");
  EXPECT_THROW(book.ItemList(5, "FItemID in (select 1 from t_Item)"), platform::Error);
}

// "B001 in 51: 40, …"
std::string BatchesOf(const Book& book, const BatchQuery& query) {
  const platform::Ref<platform::Recordset> rows = book.Batches(query);
  std::string batches;
  for (std::size_t i = 0; i < rows->ViewCount(); ++i) {
    if (!batches.empty()) batches += ", ";
    batches += std::string(rows->TextAt(rows->FieldIndex("FBatchNo"), i)) + " in " +
               std::to_string(rows->IntegerAt(rows->FieldIndex("FStockID"), i)) + ": " +
               platform::NumberToText(rows->DoubleAt(rows->FieldIndex("FQty"), i));
  }
  return batches;
}

TEST(BookServices, Batches) {
  struct Case {
    std::string name;
    BatchQuery query;
    std::string rows;
  };
  const std::vector<Case> cases = {
      {"all", {}, "B001 in 51: 40, B001 in 52: 30, B002 in 51: 20, B002 in 53: 5, B010 in 0: 0"},
      {"by number", {.keyWord = "b01"}, "B010 in 0: 0"},
      {"of a goods range",
       {.filter = "t3.FNumber >='01.001' And t3.FNumber <='01.002'", .keyWord = "B001"},
       "B001 in 51: 40, B001 in 52: 30"},
      {"of other goods", {.filter = "t3.FNumber >='02'"}, ""},
      {"in stock",
       {.filterItem = "( FQty<>0 )", .keyWord = "0"},
       "B001 in 51: 40, B001 in 52: 30, B002 in 51: 20, B002 in 53: 5"},
      {"of warehouses that the user may see", {.userId = 12}, "B001 in 52: 30, B010 in 0: 0"},
      {"as many as wanted", {.limit = 1}, "B001 in 51: 40"},
  };
  const SmallBook small;
  const Book book = Book::Open(small.File());
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(BatchesOf(book, each.query), each.rows);
  }
  EXPECT_THROW(book.Batches({.filter = "t3.FNumber >='O'Brien'"}), platform::Error);

  const platform::Ref<platform::Recordset> rows = book.Batches({});
  EXPECT_EQ(rows->Value("FKFDate"), Variant(Date::Of(2026, 1, 5)));
  EXPECT_EQ(rows->Value("FKFPeriod"), Variant(365));
  EXPECT_EQ(rows->Value("FStockPlaceID"), Variant(0));
  EXPECT_EQ(rows->Value("FAuxPropID"), Variant(0));
  EXPECT_EQ(rows->Value("FItemNumber"), Variant("01.001"));
  EXPECT_EQ(rows->Value("FItemName"), Variant("青岛啤酒"));
}

TEST(BookServices, Schemes) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  const books::SchemeValues values = {{"BItemNumber", "01' --"},
                                      {"cboSort", std::int32_t{3}},
                                      {"OptSortD", true},
                                      {"OptSortA", false},
                                      {"EItemNumber", ""},
                                      {"Empty", Variant()},
                                      {"Null", Null{}},
                                      {"Price", 0.1},
                                      {"Small", std::int16_t{-1}},
                                      {"Amount", platform::Currency::FromText("12.34")},
                                      {"BDate", Date::Of(2026, 11, 21)}};
  EXPECT_TRUE(book.SchemeNames(7, "frmFirter10414").empty());
  book.SaveScheme(7, "frmFirter10414", "月末", values);
  book.SaveScheme(7, "frmFirter10414", "A", {});
  book.SaveScheme(12, "frmFirter10414", "月末", {{"cboSort", std::int32_t{1}}});
  EXPECT_EQ(book.SchemeNames(7, "frmFirter10414"), (std::vector<std::string>{"A", "月末"}));
  EXPECT_EQ(book.LoadScheme(7, "frmFirter10414", "月末"), values);
  EXPECT_EQ(book.LoadScheme(7, "frmFirter10414", "A"), books::SchemeValues());
  EXPECT_EQ(book.LoadScheme(7, "frmFirter302", "月末"), std::nullopt);

  book.SaveScheme(7, "frmFirter10414", "月末", {{"cboSort", std::int32_t{2}}});
  EXPECT_EQ(book.LoadScheme(7, "frmFirter10414", "月末"),
            (books::SchemeValues{{"cboSort", std::int32_t{2}}}));
  // A value that cannot be kept leaves the saved scheme as it was.
  EXPECT_THROW(
      book.SaveScheme(7, "frmFirter10414", "月末",
                      {{"cboSort", std::int32_t{9}}, {"X", Variant(platform::MakeRef<platform::Vector>())}}),
      platform::Error);
  EXPECT_EQ(book.LoadScheme(7, "frmFirter10414", "月末"),
            (books::SchemeValues{{"cboSort", std::int32_t{2}}}));

  EXPECT_TRUE(book.DeleteScheme(7, "frmFirter10414", "月末"));
  EXPECT_FALSE(book.DeleteScheme(7, "frmFirter10414", "月末"));
  EXPECT_EQ(book.LoadScheme(7, "frmFirter10414", "月末"), std::nullopt);
  EXPECT_TRUE(book.LoadScheme(12, "frmFirter10414", "月末").has_value());
}

TEST(BookServices, Usage) {
  const SmallBook small;
  const Book book = Book::Open(small.File());
  platform::Clock::Fix(Date::Of(2026, 11, 21, 13, 30, 5));
  book.WriteUsage(7, "C001C032", "RPT1042201");
  platform::Clock::Fix(std::nullopt);
  books::database::Connection connection = small.Write();
  books::database::Statement row =
      connection.Query("SELECT date, second_of_day, user_id, code, text FROM usage_record");
  ASSERT_TRUE(row.Step());
  EXPECT_EQ(row.GetDate(0), Date::Of(2026, 11, 21));
  EXPECT_EQ(row.Int32(1), 13 * 3600 + 30 * 60 + 5);
  EXPECT_EQ(row.Int32(2), 7);
  EXPECT_EQ(row.Text(3), "C001C032");
  EXPECT_EQ(row.Text(4), "RPT1042201");
  EXPECT_FALSE(row.Step());
}

TEST(BookServices, QuickCalculate) {
  const SmallBook small;
  small.Write().Execute("INSERT INTO waiting_item (item_id) VALUES (46)");
  const Book book = Book::Open(small.File());
  EXPECT_EQ(book.Execute("Select 1 From ICCalFlag")->RecordCount(), 1);
  book.QuickCalculate();
  EXPECT_EQ(book.Execute("Select 1 From ICCalFlag")->RecordCount(), 0);
}

TEST(BookServices, OpeningRefuses) {
  const SmallBook small;
  const auto messageOf = [](const std::filesystem::path& file) -> std::string {
    try {
      Book::Open(file);
      return "it was opened";
    } catch (const platform::Error& error) {
      return error.Description();
    }
  };
  const std::filesystem::path missing = small.File().parent_path() / "none.book";
  EXPECT_THAT(messageOf(missing), testing::HasSubstr("none.book"));
  EXPECT_FALSE(std::filesystem::exists(missing));
  const std::filesystem::path text = small.File().parent_path() / "text.book";
  std::ofstream(text) << std::string(5000, 'x');
  EXPECT_THAT(messageOf(text), testing::HasSubstr("text.book"));
}

}  // namespace
