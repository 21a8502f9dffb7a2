#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

// 即时库存表 and 即时库存行式查询 on the tiny book, whose bills and costs stand in TinyBook.cpp.
namespace {

using books::database::Connection;
using books::test::BookFile;
using books::test::FetchBands;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::RightsOf;
using books::test::With;
using platform::Date;
using testing::ElementsAre;
using Lines = std::vector<std::string>;

const Lines kSums = {"FItemNumber", "FQtySum", "FBalSum", "FSumSort"};
const Lines kByRows = {"FItemNumber", "FStockName", "FQty", "FBal", "FSumSort"};

platform::Ref<platform::Recordset> FetchRows(const books::Book& book, const FilterEntries& filter) {
  return books::test::Fetch(book, "tovmstockrpt.data332", "GetRptData", filter);
}

FilterEntries Now(const FilterEntries& others = {}) {
  return With({{"OnTime", 1},
               {"EDate", Date::Of(2025, 2, 28)},
               {"CheckItem", 0},
               {"ShareAbnormalAmt", 0},
               {"ASC", true},
               {"DESC", false},
               {"StockType", 0},
               {"ShowType", 0},
               {"Sort", 0},
               {"ContainBills", 0},
               {"ShowZero", 0},
               {"NotShowMinus", 0},
               {"ShowDeletedItem", 0},
               {"MultiLevel", 0},
               {"MultiLevelBegin", 0},
               {"MultiLevelEnd", 0},
               {"BItemClass", ""},
               {"InvoiceStyle", 0},
               {"ShowTypeValue", ""},
               {"OrderBy", ""},
               {"RptID", 10422},
               {"DataRightWhere", ""}},
              others);
}

FilterEntries At(int month, int day) { return Now({{"OnTime", 0}, {"EDate", Date::Of(2025, month, day)}}); }

TEST(Data302, Bands) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::test::Bands bands = FetchBands(tiny.Open(), Now());
  EXPECT_EQ(bands.fields, "S501,S502,S503");
  EXPECT_EQ(bands.names, "主仓库,分仓库,赠品仓库");
  EXPECT_EQ(bands.types, "500,500,501");
  // 50 bottles for 111.0575 in the main warehouse, 17 for 40.9425 in the branch, 10 gifts without an amount;
  // a box holds 12. The 67 bottles that have a value cost 152.00 ÷ 67 = 2.268657 each.
  EXPECT_EQ(
      LinesOf(*bands.rows, {"FItemNumber", "FItemName", "FModel", "FBarCode", "FUnitName", "FSecUnitName",
                            "FQtySum", "FComplexQtyDisSum", "FSecQtySum", "FAvgBalSum", "FBalSum"})[0],
      "01.01.001 苹果汁 M-01.01.001 690411 瓶 '' 77 6箱5瓶 - 2.268657 152");
  EXPECT_EQ(LinesOf(*bands.rows, {"S501FQty", "S501FComplexQtyDis", "S501FSecQty", "S501FAvgBal", "S501FBal",
                                  "S502FQty", "S502FComplexQtyDis", "S502FAvgBal", "S502FBal"})[0],
            "50 4箱2瓶 - 2.22115 111.0575 17 1箱5瓶 2.408382 40.9425");
  EXPECT_EQ(LinesOf(*bands.rows, {"S503FQty", "S503FComplexQtyDis", "S503FAvgBal", "S503FBal"})[0],
            "10 10瓶 ? ?");
  // Candy lies in the main warehouse alone: the other bands stay empty.
  EXPECT_EQ(LinesOf(*bands.rows, {"FItemNumber", "S501FQty", "S501FComplexQtyDis", "S502FQty", "S502FBal",
                                  "S503FComplexQtyDis"})[2],
            "01.02 70 70个 - - -");
  // Yogurt: 15 of A for 45.00 and 6 of B for 24.00. In all 152 + 69 + 70 + 64 + 54.009 + 400 + 9.
  EXPECT_THAT(LinesOf(*bands.rows, kSums),
              ElementsAre("01.01.001 77 152 0", "01.01.002 21 69 0", "01.02 70 70 0", "01.03 16 64 0",
                          "02.001 9 54.009 0", "02.002 1 400 0", "02.003 3 9 0", "合计 197 818.009 101"));
  EXPECT_EQ(LinesOf(*bands.rows, {"FItemNumber", "FItemName", "S501FQty", "S501FComplexQtyDis", "S501FAvgBal",
                                  "S501FBal", "S503FQty"})[7],
            "合计 - 170 - - 777.0665 10");
}

TEST(Data332, Rows) {
  const BookFile tiny(books::test::WriteTinyBook);
  const auto rows = FetchRows(tiny.Open(), Now());
  EXPECT_THAT(LinesOf(*rows, kByRows),
              ElementsAre("01.01.001 主仓库 50 111.0575 0", "01.01.001 分仓库 17 40.9425 0",
                          "01.01.001 赠品仓库 10 0 0", "01.01.002 主仓库 21 69 0", "01.02 主仓库 70 70 0",
                          "01.03 主仓库 16 64 0", "02.001 主仓库 9 54.009 0", "02.002 主仓库 1 400 0",
                          "02.003 主仓库 3 9 0", "合计 - 197 818.009 101"));
  EXPECT_EQ(LinesOf(*rows, {"FItemName", "FModel", "FBarCode", "FUnitName", "FComplexQtyDis", "FSecQty",
                            "FAvgBal"})[1],
            "苹果汁 M-01.01.001 690411 瓶 1箱5瓶 - 2.408382");
  EXPECT_EQ(LinesOf(*rows, {"FItemName", "FAvgBal"})[2], "苹果汁 -");
}

struct Case {
  std::string name;
  FilterEntries filter;
  Lines bands;
  Lines rows;  // of 332
};

const std::string kJuice = "01.01.001 77 152 0";
const std::string kTapeRow = "02.003 主仓库 3 9 0";

const std::vector<Case> kCases = {
    // 90 bottles at 2.20; yogurt 20 of A for 60.00 and 6 of B for 24.00; ten boxes made of 30.00 of candy.
    {"at the end of a day",
     At(1, 10),
     {"01.01.001 90 198 0", "01.01.002 26 84 0", "01.02 70 70 0", "01.03 10 30 0", "02.001 10 50 0",
      "02.002 1 400 0", "合计 207 832 101"},
     {"01.01.001 主仓库 90 198 0", "01.01.002 主仓库 26 84 0", "01.02 主仓库 70 70 0", "01.03 主仓库 10 30 0",
      "02.001 主仓库 10 50 0", "02.002 主仓库 1 400 0", "合计 - 207 832 101"}},
    // At January's cost of 2.20: 50 for 110.00 and 30 for 66.00, with the 10 gifts.
    {"at the end of a period",
     With(At(1, 31), {{"EItemNumber", "01.01.001"}}),
     {"01.01.001 90 176 0", "合计 90 176 101"},
     {"01.01.001 主仓库 50 110 0", "01.01.001 分仓库 30 66 0", "01.01.001 赠品仓库 10 0 0",
      "合计 - 90 176 101"}},
    {"before accounting began the opening stock",
     At(1, 1),
     {"01.01.001 100 200 0", "01.02 100 100 0", "合计 200 300 101"},
     {"01.01.001 主仓库 100 200 0", "01.02 主仓库 100 100 0", "合计 - 200 300 101"}},
    {"long after the last movement",
     With(Now({{"OnTime", 0}, {"EDate", "2031-05-05"}}), {{"EItemNumber", "01.01.001"}}),
     {kJuice, "合计 77 152 101"},
     {"01.01.001 主仓库 50 111.0575 0", "01.01.001 分仓库 17 40.9425 0", "01.01.001 赠品仓库 10 0 0",
      "合计 - 77 152 101"}},
    // XS-9, not audited, takes 5 bottles.
    {"with unaudited bills",
     Now({{"ContainBills", 1}, {"EItemNumber", "01.01.001"}}),
     {"01.01.001 72 152 0", "合计 72 152 101"},
     {"01.01.001 主仓库 45 111.0575 0", "01.01.001 分仓库 17 40.9425 0", "01.01.001 赠品仓库 10 0 0",
      "合计 - 72 152 101"}},
    {"unaudited bills count only now",
     With(At(2, 28), {{"ContainBills", 1}, {"EItemNumber", "01.01.001"}}),
     {kJuice, "合计 77 152 101"},
     {"01.01.001 主仓库 50 111.0575 0", "01.01.001 分仓库 17 40.9425 0", "01.01.001 赠品仓库 10 0 0",
      "合计 - 77 152 101"}},
    {"items from and to",
     Now({{"BItemNumber", "02.003"}, {"EItemNumber", " 02.003 "}}),
     {"02.003 3 9 0", "合计 3 9 101"},
     {kTapeRow, "合计 - 3 9 101"}},
    {"a part of the name",
     Now({{"ItemName", "胶"}}),
     {"02.003 3 9 0", "合计 3 9 101"},
     {kTapeRow, "合计 - 3 9 101"}},
    {"a part of the model, in any case",
     Now({{"Model", "m-02.003"}}),
     {"02.003 3 9 0", "合计 3 9 101"},
     {kTapeRow, "合计 - 3 9 101"}},
    {"a percent sign is itself", Now({{"Model", "%"}}), {}, {}},
    {"one warehouse",
     Now({{"BStockNumber", "02"}, {"EStockNumber", "02"}}),
     {"01.01.001 17 40.9425 0", "合计 17 40.9425 101"},
     {"01.01.001 分仓库 17 40.9425 0", "合计 - 17 40.9425 101"}},
    {"gift warehouses",
     Now({{"StockType", 2}}),
     {"01.01.001 10 0 0", "合计 10 0 101"},
     {"01.01.001 赠品仓库 10 0 0", "合计 - 10 0 101"}},
    {"ordinary warehouses",
     Now({{"StockType", "1"}, {"EItemNumber", "01.01.001"}}),
     {"01.01.001 67 152 0", "合计 67 152 101"},
     {"01.01.001 主仓库 50 111.0575 0", "01.01.001 分仓库 17 40.9425 0", "合计 - 67 152 101"}},
    {"batches from and to",
     Now({{"BBatchNo", "b"}, {"EBatchNo", "B"}}),
     {"01.01.002 6 24 0", "合计 6 24 101"},
     {"01.01.002 主仓库 6 24 0", "合计 - 6 24 101"}},
    {"no such auxiliary property", Now({{"BAuxNumber", "01"}}), {}, {}},
    {"no such item", Now({{"BItemNumber", "9"}}), {}, {}},
    // Only juice lies in the branch.
    {"zero stock",
     Now({{"BStockNumber", "02"}, {"EStockNumber", "02"}, {"ShowZero", 1}, {"EItemNumber", "01.02"}}),
     {"01.01.001 17 40.9425 0", "01.01.002 0 0 0", "01.02 0 0 0", "合计 17 40.9425 101"},
     {"01.01.001 分仓库 17 40.9425 0", "01.01.002 '' 0 0 0", "01.02 '' 0 0 0", "合计 - 17 40.9425 101"}},
    {"zero stock is never listed by batch",
     Now({{"BStockNumber", "02"}, {"EStockNumber", "02"}, {"ShowZero", 1}, {"ShowType", 2}}),
     {"01.01.001 17 40.9425 0", "合计 17 40.9425 101"},
     {"01.01.001 分仓库 17 40.9425 0", "合计 - 17 40.9425 101"}},
    // By name, backwards: 酸奶 苹果汁 水果糖 by their bytes.
    {"sorted by name, descending",
     Now({{"Sort", "2"}, {"DESC", "True"}, {"ASC", "False"}, {"EItemNumber", "01.02"}}),
     {"01.01.002 21 69 0", kJuice, "01.02 70 70 0", "合计 168 291 101"},
     {"01.01.002 主仓库 21 69 0", "01.01.001 主仓库 50 111.0575 0", "01.01.001 分仓库 17 40.9425 0",
      "01.01.001 赠品仓库 10 0 0", "01.02 主仓库 70 70 0", "合计 - 168 291 101"}},
    {"sorted by model",
     Now({{"Sort", 1}, {"DESC", true}, {"BItemNumber", "02.002"}}),
     {"02.003 3 9 0", "02.002 1 400 0", "合计 4 409 101"},
     {kTapeRow, "02.002 主仓库 1 400 0", "合计 - 4 409 101"}},
};

TEST(Data302, Filters) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  for (const Case& each : kCases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*FetchBands(book, each.filter).rows, kSums), each.bands);
    EXPECT_EQ(LinesOf(*FetchRows(book, each.filter), kByRows), each.rows);
  }
}

TEST(Data302, NoFilterIsEverythingNow) {
  const BookFile tiny(books::test::WriteTinyBook);
  EXPECT_EQ(LinesOf(*FetchBands(tiny.Open(), {}).rows, kSums).back(), "合计 197 818.009 101");
}

// The price is that of the stock as the audited bills left it: 111.0575 ÷ 50.
TEST(Data302, UnauditedBillsDoNotChangeThePrice) {
  const BookFile tiny(books::test::WriteTinyBook);
  const auto rows = FetchRows(tiny.Open(), Now({{"ContainBills", 1}}));
  EXPECT_EQ(LinesOf(*rows, {"FQty", "FAvgBal"})[0], "45 2.22115");
}

TEST(Data302, ByBatch) {
  const BookFile tiny(books::test::WriteTinyBook);
  const FilterEntries filter = Now({{"ShowType", 2}, {"BItemNumber", "01.01.002"}, {"EItemNumber", "01.02"}});
  const Lines fields = {"FItemNumber", "FBatchNo", "FQtySum", "FBalSum", "S501FAvgBal"};
  EXPECT_THAT(
      LinesOf(*FetchBands(tiny.Open(), filter).rows, fields),
      ElementsAre("01.01.002 A 15 45 3", "01.01.002 B 6 24 4", "01.02 '' 70 70 1", "合计 - 91 139 -"));
  EXPECT_THAT(LinesOf(*FetchRows(tiny.Open(), filter), {"FBatchNo", "FStockName", "FQty", "FAuxPropName"}),
              ElementsAre("A 主仓库 15 ?", "B 主仓库 6 ?", "'' 主仓库 70 ?", "- - 91 ?"));
}

// Tapes come in two colours; the rolls without one stand first.
void AddColours(Connection& connection) {
  connection.RunScript(
      "INSERT INTO base_data (id, class_id, number, short_number, name) VALUES "
      "(901, 10, '02', '02', '红'), (902, 10, '01', '01', '蓝');"
      "INSERT INTO stock VALUES (423, 501, 0, 901, 2000000, 0, 60000), (423, 502, 0, 902, 1000000, 0, "
      "40000)");
}

TEST(Data302, ByAuxiliaryProperty) {
  const BookFile tiny(books::test::WriteTinyBook);
  Connection connection = tiny.Write();
  AddColours(connection);
  const Lines fields = {"FAuxPropName", "FBatchNo", "FQtySum", "FBalSum"};
  const FilterEntries tape = Now({{"BItemNumber", "02.003"}});
  EXPECT_THAT(LinesOf(*FetchBands(tiny.Open(), With(tape, {{"ShowType", "1"}})).rows, fields),
              ElementsAre("'' ? 3 9", "蓝 ? 1 4", "红 ? 2 6", "- ? 6 19"));
  EXPECT_THAT(
      LinesOf(*FetchBands(tiny.Open(), With(tape, {{"ShowType", 3}, {"BAuxNumber", "02"}})).rows, fields),
      ElementsAre("红 '' 2 6", "- - 2 6"));
  EXPECT_THAT(LinesOf(*FetchBands(tiny.Open(), With(tape, {{"EAuxNumber", "01"}})).rows, kSums),
              ElementsAre("02.003 1 4 0", "合计 1 4 101"));
}

// Candy and gift boxes stand in 食品 itself, so they come before its 饮料.
TEST(Data302, ByLevels) {
  const BookFile tiny(books::test::WriteTinyBook);
  const FilterEntries filter = Now({{"MultiLevel", 1}, {"MultiLevelBegin", "1"}, {"MultiLevelEnd", "2"}});
  const Lines fields = {"FItemLevel01Name", "FItemLevel02Name", "FItemNumber",
                        "FQtySum",          "FBalSum",          "FSumSort"};
  EXPECT_THAT(LinesOf(*FetchBands(tiny.Open(), filter).rows, fields),
              ElementsAre("食品 '' 01.02 70 70 0", "食品 '' 01.03 16 64 0", "食品 饮料 01.01.001 77 152 0",
                          "食品 饮料 01.01.002 21 69 0", "食品 饮料 小计 98 221 2", "食品 '' 小计 184 355 1",
                          "五金 '' 02.001 9 54.009 0", "五金 '' 02.002 1 400 0", "五金 '' 02.003 3 9 0",
                          "五金 '' 小计 13 463.009 1", "'' '' 合计 197 818.009 101"));
  const FilterEntries second =
      With(filter, {{"MultiLevelBegin", "2"}, {"DESC", true}, {"EItemNumber", "01.02"}});
  EXPECT_THAT(
      LinesOf(*FetchRows(tiny.Open(), second), {"FItemLevel02Name", "FItemNumber", "FQty", "FSumSort"}),
      ElementsAre("饮料 01.01.002 21 0", "饮料 01.01.001 50 0", "饮料 01.01.001 17 0", "饮料 01.01.001 10 0",
                  "饮料 小计 98 2", "'' 01.02 70 0", "'' 合计 168 101"));
}

// The heading has a column for every level from the first to the last, whether there is such a level or not.
TEST(Data302, LevelsThatThereAreNone) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  const auto levels = [](int begin, int end) {
    return Now({{"MultiLevel", 1},
                {"MultiLevelBegin", begin},
                {"MultiLevelEnd", end},
                {"BItemNumber", "02.002"},
                {"EItemNumber", "02.002"}});
  };
  const Lines names = {"FItemLevel00Name", "FItemLevel01Name", "FItemLevel03Name", "FItemNumber", "FSumSort"};
  EXPECT_THAT(LinesOf(*FetchBands(book, levels(0, 1)).rows, names),
              ElementsAre("'' 五金 ? 02.002 0", "'' 五金 ? 小计 1", "'' '' ? 合计 101"));
  EXPECT_THAT(LinesOf(*FetchRows(book, levels(0, 0)), names),
              ElementsAre("'' ? ? 02.002 0", "'' ? ? 合计 101"));
  EXPECT_THAT(LinesOf(*FetchBands(book, levels(3, 3)).rows, names),
              ElementsAre("? ? '' 02.002 0", "? ? '' 合计 101"));
  EXPECT_THAT(LinesOf(*FetchBands(book, levels(3, 2)).rows, names),
              ElementsAre("? ? ? 02.002 0", "? ? ? 合计 101"));
}

// The instant stock has drifted: the movements still say 3 rolls for 9.00.
TEST(Data302, ChecksInstantStockAgainstMovements) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().Execute("UPDATE stock SET quantity = 4000000, amount = 130000 WHERE item_id = 423");
  const FilterEntries tape = Now({{"BItemNumber", "02.003"}});
  EXPECT_EQ(LinesOf(*FetchBands(tiny.Open(), tape).rows, kSums)[0], "02.003 4 13 0");
  EXPECT_EQ(LinesOf(*FetchBands(tiny.Open(), With(tape, {{"CheckItem", 1}})).rows, kSums)[0], "02.003 3 9 0");
  EXPECT_EQ(LinesOf(*FetchRows(tiny.Open(), With(tape, {{"CheckItem", 1}})), kByRows)[0], kTapeRow);
}

// 7.00 of candy stand in the branch without candies: the 70 in the main warehouse take them, and a choice of
// the branch alone has nobody to take them.
TEST(Data302, SharesOddAmounts) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().Execute("INSERT INTO opening_stock VALUES (413, 502, 0, 0, 0, 0, 70000)");
  const FilterEntries candy = Now({{"BItemNumber", "01.02"}, {"EItemNumber", "01.02"}, {"CheckItem", 1}});
  EXPECT_THAT(LinesOf(*FetchRows(tiny.Open(), candy), kByRows),
              ElementsAre("01.02 主仓库 70 70 0", "01.02 分仓库 0 7 0", "合计 - 70 77 101"));
  const FilterEntries shared = With(candy, {{"ShareAbnormalAmt", 1}});
  EXPECT_THAT(LinesOf(*FetchRows(tiny.Open(), shared), kByRows),
              ElementsAre("01.02 主仓库 70 77 0", "合计 - 70 77 101"));
  EXPECT_THAT(LinesOf(*FetchRows(tiny.Open(), With(shared, {{"BStockNumber", "02"}})), kByRows),
              ElementsAre("01.02 分仓库 0 7 0", "合计 - 0 7 101"));
  // Without the check the key has no meaning.
  EXPECT_EQ(LinesOf(*FetchRows(tiny.Open(), With(shared, {{"CheckItem", 0}})), kByRows)[0],
            "01.02 主仓库 70 70 0");
}

TEST(Data302, NegativeStock) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "INSERT INTO stock VALUES (423, 502, 0, 0, -2000000, 0, -60000);"
      "INSERT INTO stock VALUES (421, 502, 0, 0, -14000000, 0, 0)");
  const FilterEntries tools = Now({{"BItemNumber", "02.001"}, {"EItemNumber", "02.001"}});
  EXPECT_EQ(LinesOf(*FetchRows(tiny.Open(), tools), {"FQty", "FComplexQtyDis"})[1], "-14 -1箱2个");
  const FilterEntries hidden = Now({{"BItemNumber", "02"}, {"NotShowMinus", 1}, {"ShowZero", 1}});
  EXPECT_THAT(LinesOf(*FetchBands(tiny.Open(), hidden).rows, kSums),
              ElementsAre("02.001 9 54.009 0", "02.002 1 400 0", "02.003 3 9 0", "合计 13 463.009 101"));
  // What is below zero everywhere is not listed as zero either.
  const FilterEntries branch = With(hidden, {{"BStockNumber", "02"}, {"EStockNumber", "02"}});
  EXPECT_THAT(LinesOf(*FetchRows(tiny.Open(), branch), kByRows),
              ElementsAre("02.002 '' 0 0 0", "合计 - 0 0 101"));
}

TEST(Data302, DisabledItems) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().Execute("UPDATE base_data SET disabled = 1 WHERE id = 423");
  const FilterEntries tape = Now({{"BItemNumber", "02.003"}});
  EXPECT_TRUE(LinesOf(*FetchBands(tiny.Open(), tape).rows, kSums).empty());
  EXPECT_EQ(LinesOf(*FetchRows(tiny.Open(), With(tape, {{"ShowDeletedItem", "1"}})), kByRows)[0], kTapeRow);
}

TEST(Data302, Rights) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "UPDATE base_data SET right_users = '7' WHERE id = 502; UPDATE base_data SET right_users = '12' WHERE "
      "id = 501");
  const books::test::Bands some = FetchBands(tiny.Open(), Now({{"DataRightWhere", RightsOf("7")}}));
  EXPECT_EQ(some.fields, "S502");
  EXPECT_THAT(LinesOf(*some.rows, kSums), ElementsAre("01.01.001 17 40.9425 0", "合计 17 40.9425 101"));
  const FilterEntries none = Now({{"DataRightWhere", RightsOf("9")}, {"ShowZero", 1}});
  EXPECT_EQ(FetchBands(tiny.Open(), none).fields, "");
  EXPECT_EQ(FetchBands(tiny.Open(), none).rows->RecordCount(), 0);
  EXPECT_EQ(FetchRows(tiny.Open(), none)->RecordCount(), 0);
}

TEST(Data302, ShortNumbersAndCommas) {
  const BookFile tiny(books::test::WriteTinyBook);
  tiny.Write().RunScript(
      "INSERT INTO system_profile (category, key, value) VALUES ('IC', 'UseShortNumber', '0');"
      "UPDATE base_data SET name = '分库,东' WHERE id = 502");
  const books::test::Bands bands =
      FetchBands(tiny.Open(), Now({{"BItemNumber", "001"}, {"EItemNumber", "001"}}));
  EXPECT_EQ(bands.names, "主仓库,分库，东,赠品仓库");
  EXPECT_THAT(LinesOf(*bands.rows, kSums),
              ElementsAre("001 77 152 0", "001 9 54.009 0", "合计 86 206.009 101"));
}

struct RefusedCase {
  std::string name;
  FilterEntries filter;
  std::string message;
};

TEST(Data302, Refuses) {
  const BookFile tiny(books::test::WriteTinyBook);
  const books::Book book = tiny.Open();
  const std::vector<RefusedCase> cases = {
      {"no date for a past day", {{"OnTime", 0}}, "过滤条件 EDate 是必需的"},
      {"a day that does not exist", {{"OnTime", 0}, {"EDate", "2025-02-30"}}, "过滤条件 EDate 不是日期"},
      {"an unknown display", {{"ShowType", 4}}, "过滤条件 ShowType 应为 0 至 3 的整数：4"},
      {"half a display", {{"ShowType", 0.5}}, "过滤条件 ShowType"},
      {"an unknown kind of warehouse", {{"StockType", -1}}, "过滤条件 StockType"},
      {"an unknown order", {{"Sort", "FQty"}}, "过滤条件 Sort"},
      {"a word for a check box", {{"ShowZero", "yes"}}, "过滤条件 ShowZero 应为 0 或 1：yes"},
      {"a level below any", {{"MultiLevel", 1}, {"MultiLevelBegin", -1}}, "过滤条件 MultiLevelBegin"},
      {"half a level", {{"MultiLevel", 1}, {"MultiLevelEnd", 1.5}}, "过滤条件 MultiLevelEnd"},
      {"rights on another alias", {{"DataRightWhere", RightsOf("7", "t4")}}, "过滤条件 DataRightWhere"},
      {"an object for a number", {{"BItemNumber", books::test::FilterOf({})}}, "过滤条件 BItemNumber"},
  };
  for (const RefusedCase& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_THAT(books::test::RefusalOf([&] { FetchBands(book, each.filter); }),
                testing::HasSubstr(each.message));
    EXPECT_THAT(books::test::RefusalOf([&] { FetchRows(book, each.filter); }),
                testing::HasSubstr(each.message));
  }
}

}  // namespace
