#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "books/schema/Schema.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/value/Convert.h"
#include "tests/books/TinyBook.h"
#include "tests/books/services/SmallBook.h"

// 商品超储短缺表 on the small book, whose stock and levels stand in SmallBook.h.
namespace {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

using Entries = std::vector<std::pair<std::string, Variant>>;

Variant FilterOf(const Entries& entries) {
  const auto filter = platform::MakeRef<platform::Dictionary>();
  for (const auto& [key, value] : entries) filter->Set(key, value);
  return Variant(filter);
}

Ref<Recordset> Fetch(const books::Book& book, Variant filter) {
  const Ref<platform::Object> data = book.CreateComponent("tovmstockrpt.data10414");
  return data->Call("GetRpt10414Data", "UserID=7;", filter).AsRef<Recordset>();
}

// A line a row: number, lowest, highest, quantity, status, surplus.
std::vector<std::string> LinesOf(const Recordset& rows) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < rows.ViewCount(); ++i) {
    std::string line;
    for (const char* field : {"FItemNumber", "FLowerQty", "FMostQty", "FQty", "FStatus", "FOverQty"}) {
      line += platform::ToText(rows.ValueAt(rows.FieldIndex(field), rows.RowAt(i))) + " ";
    }
    line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

struct Case {
  std::string name;
  Variant filter;
  std::vector<std::string> lines;
};

// 60 + 30 + 5 bottles are 5 below the 100 wanted.
const std::string kBeer = "01.001 100 500 95 短缺 -5";
// 30.5 and 20 in the gift warehouse are half a bottle above 50; a lowest level of 0 is none.
const std::string kWater = "01.002 0 50 50.5 超储 0.5";
// Without levels of its own: 10 + 5 lowest, 20 + none highest of the two warehouses; 25 + 3 lie there.
const std::string kBiscuits = "01.003 15 20 28 超储 8";
// Nothing of it anywhere, 10 wanted in the whole book.
const std::string kBrush = "02.005 10 0 0 短缺 -10";

const std::vector<Case> kAccepted = {
    {"no filter", Variant(nullptr), {kBeer, kWater, kBiscuits, kBrush}},
    {"no conditions", FilterOf({}), {kBeer, kWater, kBiscuits, kBrush}},
    {"what the dialog sends",
     FilterOf({{"BItemNumber", ""},
               {"EItemNumber", ""},
               {"BStockNumber", ""},
               {"EStockNumber", ""},
               {"cboSort", 0},
               {"OptSortD", true},
               {"OptSortA", false},
               {"UserID", 7},
               {"OK", true},
               {"InvoiceStyle", 0},
               {"ShowTypeValue", ""},
               {"OrderBy", "FItemNumber ASC "},
               {"RptID", 10414},
               {"DataRightWhere", ""}}),
     {kBeer, kWater, kBiscuits, kBrush}},
    {"from an item", FilterOf({{"BItemNumber", "01.003"}}), {kBiscuits, kBrush}},
    {"to an item", FilterOf({{"EItemNumber", " 01.002 "}}), {kBeer, kWater}},
    {"one item", FilterOf({{"BItemNumber", "01.002"}, {"EItemNumber", "01.002"}}), {kWater}},
    {"from above to", FilterOf({{"BItemNumber", "02"}, {"EItemNumber", "01"}}), {}},
    // Beer has no levels by warehouse, so 60 in 上海仓 stand against its own 100. Biscuits: 25 against 10 –
    // 20 of 上海仓. Brushes have levels in 杭州仓 alone, so that their own count here.
    {"one warehouse",
     FilterOf({{"BStockNumber", "01.01"}, {"EStockNumber", "01.01"}}),
     {"01.001 100 500 60 短缺 -40", "01.003 10 20 25 超储 5", "02.005 10 0 0 短缺 -10"}},
    // Biscuits: 3 against the 5 of 北京仓. Towels, basins and buckets lie in 上海仓 only.
    {"from a warehouse",
     FilterOf({{"BStockNumber", "02"}, {"EItemNumber", "02.001"}}),
     {"01.001 100 500 5 短缺 -95", "01.003 5 0 3 短缺 -2", "02.001 10 20 0 短缺 -10"}},
    // The levels of 杭州仓 stand for the brushes' own.
    {"a warehouse with levels",
     FilterOf({{"BStockNumber", "01.02"}, {"EStockNumber", "01.02"}, {"BItemNumber", "02.005"}}),
     {"02.005 4 8 0 短缺 -4"}},
    {"all warehouses by a range",
     FilterOf({{"BStockNumber", "01"}, {"EStockNumber", "03"}}),
     {kBeer, kWater, kBiscuits, kBrush}},
    {"no warehouse", FilterOf({{"BStockNumber", "9"}, {"EItemNumber", "01.003"}}), {}},
    {"a user who may see no warehouse",
     FilterOf({{"DataRightWhere", " (CharIndex('77',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) "}}),
     {}},
    // User 12 sees 杭州仓 alone: 30 bottles, and no biscuits.
    {"rights",
     FilterOf({{"DataRightWhere", " (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) "},
               {"EItemNumber", "01.003"}}),
     {"01.001 100 500 30 短缺 -70"}},
    // The id is looked for as a plain text: 2 stands in "2,7" and in "12".
    {"rights by a part of an id",
     FilterOf({{"DataRightWhere", " (CharIndex('2',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) "},
               {"EItemNumber", "01.001"}}),
     {"01.001 100 500 90 短缺 -10"}},
    {"by surplus, largest first",
     FilterOf({{"OrderBy", "FOverQty DESC "}}),
     {kBiscuits, kWater, kBeer, kBrush}},
    {"by highest level, equal ones by number",
     FilterOf({{"OrderBy", "fmostqty asc"}}),
     {kBrush, kBiscuits, kWater, kBeer}},
    {"by quantity", FilterOf({{"OrderBy", "FQty ASC "}}), {kBrush, kBiscuits, kWater, kBeer}},
    {"a number that is SQL", FilterOf({{"BItemNumber", "' OR 1=1 --"}, {"EItemNumber", "''"}}), {}},
};

TEST(Data10414, Rows) {
  const books::test::SmallBook small;
  const books::Book book = books::Book::Open(small.File());
  for (const Case& each : kAccepted) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*Fetch(book, each.filter)), each.lines);
  }
}

// All items of the tiny book have the levels 20 and 60. Its stock: juice 50 + 17 + 10 in the gift warehouse,
// yogurt 15 + 6 in two batches (within its levels), candy 70, gift boxes 16, screwdrivers 9, one scanner and
// 3 tapes. The bill that is not audited, 5 bottles of juice, counts for nothing.
TEST(Data10414, TinyBook) {
  const books::test::SmallBook folder;
  const std::filesystem::path file = folder.File().parent_path() / "tiny.book";
  {
    books::database::Connection connection = books::schema::CreateBook(file);
    books::test::WriteTinyBook(connection);
  }
  const books::Book book = books::Book::Open(file);
  EXPECT_EQ(LinesOf(*Fetch(book, Variant(nullptr))),
            (std::vector<std::string>{"01.01.001 20 60 77 超储 17", "01.02 20 60 70 超储 10",
                                      "01.03 20 60 16 短缺 -4", "02.001 20 60 9 短缺 -11",
                                      "02.002 20 60 1 短缺 -19", "02.003 20 60 3 短缺 -17"}));
  // The branch holds 17 bottles of juice and nothing else.
  EXPECT_EQ(LinesOf(*Fetch(
                book, FilterOf({{"BStockNumber", "02"}, {"EStockNumber", "02"}, {"EItemNumber", "01.02"}}))),
            (std::vector<std::string>{"01.01.001 20 60 17 短缺 -3", "01.01.002 20 60 0 短缺 -20",
                                      "01.02 20 60 0 短缺 -20"}));
}

TEST(Data10414, Fields) {
  const books::test::SmallBook small;
  const Ref<Recordset> rows = Fetch(books::Book::Open(small.File()), Variant(nullptr));
  std::string fields;
  for (const platform::Field& field : rows->Fields()) {
    fields += field.name + " " + std::string(platform::ToString(field.type)) + "\n";
  }
  EXPECT_EQ(
      fields,
      "FItemNumber text\nFItemName text\nFModel text\nFUnitName text\nFLowerQty double\nFMostQty double\n"
      "FQty double\nFStatus text\nFOverQty double\nFSecUnitName text\nFSecQty double\n");
  EXPECT_EQ(rows->Value("FItemName"), Variant("青岛啤酒"));
  EXPECT_EQ(rows->Value("FModel"), Variant("500ml"));
  EXPECT_EQ(rows->Value("FUnitName"), Variant("瓶"));
  EXPECT_EQ(rows->Value("FSecUnitName"), Variant("箱"));
  // 3.333333 + 1.666667 + 2.5 + 0.416667 cases
  EXPECT_EQ(rows->Value("FSecQty"), Variant(7.916667));
  rows->MoveNext();
  EXPECT_EQ(rows->Value("FSecUnitName"), Variant(""));
  EXPECT_TRUE(rows->Value("FSecQty").IsNull());
}

TEST(Data10414, ShortNumbers) {
  const books::test::SmallBook small;
  small.Write().Execute(
      "INSERT INTO system_profile (category, key, value) VALUES ('IC', 'UseShortNumber', '0')");
  const books::Book book = books::Book::Open(small.File());
  EXPECT_EQ(LinesOf(*Fetch(book, FilterOf({{"BItemNumber", "002"}, {"EItemNumber", "003"}}))),
            (std::vector<std::string>{"002 0 50 50.5 超储 0.5", "003 15 20 28 超储 8"}));
  // S3 and S4: 北京仓 and 赠品仓
  EXPECT_EQ(LinesOf(*Fetch(book, FilterOf({{"BStockNumber", "s3"}, {"EItemNumber", "003"}}))),
            (std::vector<std::string>{"001 100 500 5 短缺 -95", "003 5 0 3 短缺 -2"}));
}

struct RefusedCase {
  std::string name;
  Variant filter;
  std::string message;
};

TEST(Data10414, Refuses) {
  const books::test::SmallBook small;
  const books::Book book = books::Book::Open(small.File());
  const std::vector<RefusedCase> cases = {
      {"a filter that is a text", Variant("BItemNumber=1"), "过滤条件应为字典"},
      {"a clause that is not understood", FilterOf({{"DataRightWhere", "t4.FItemID in (select 1)"}}),
       "过滤条件 DataRightWhere"},
      {"a clause on another table", FilterOf({{"DataRightWhere", "t1.FItemID=1"}}),
       "unknown table or alias t1"},
      {"a column that warehouses do not have", FilterOf({{"DataRightWhere", "t4.FLevel=1"}}),
       "t4 has no column FLevel"},
      {"an unknown sort field", FilterOf({{"OrderBy", "1; DROP TABLE stock ASC "}}), "过滤条件 OrderBy"},
      {"an object for a number", FilterOf({{"BItemNumber", FilterOf({})}}), "过滤条件 BItemNumber"},
  };
  for (const RefusedCase& each : cases) {
    SCOPED_TRACE(each.name);
    try {
      Fetch(book, each.filter);
      ADD_FAILURE() << "it was accepted";
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
      EXPECT_THAT(error.Description(), testing::HasSubstr(each.message));
    }
  }
}

TEST(Data10414, OutlivesTheBook) {
  const books::test::SmallBook small;
  Ref<platform::Object> data;
  {
    const books::Book book = books::Book::Open(small.File());
    data = book.CreateComponent("TOVMStockRpt.Data10414");
    EXPECT_FALSE(book.CreateComponent("TOVMStockRpt.Data999"));
  }
  Variant none(nullptr);
  EXPECT_EQ(data->Call("GetRpt10414Data", "", none).AsRef<Recordset>()->RecordCount(), 4);
}

}  // namespace
