// The goods and batch movement summaries on the tiny book, whose bills and figures TinyBook.cpp reckons
// through.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/posting/Posting.h"
#include "books/schema/Codes.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

namespace {

using books::test::Fetch;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::With;
using Lines = std::vector<std::string>;

const FilterEntries kJanuary = {{"BDate", "2025-01-01"}, {"EDate", "2025-01-31"}, {"chkShowTran", 1}};
const FilterEntries kFebruary = {{"BDate", "2025-02-01"}, {"EDate", "2025-02-28"}, {"chkShowTran", 1}};

// Quantity and amount: opening, in, out, closing.
const Lines kFigures = {"FItemNumber", "FBegQty",    "FBegBal", "FInQty", "FInAmount",
                        "FOutQty",     "FOutAmount", "FEndQty", "FEndBal"};

// In: 50 bought for 130.00, 30 moved to the branch at 66.00, 10 to the gifts without an amount. Out: 60 sold
// for 132.00, and the same 30 and 10, whose cost of 22.00 is left behind.
const std::string kJuice = "01.01.001 100 200 90 196 100 220 90 176";
// 20 of A for 60.00 and 10 of B for 40.00 in; 5 of A for 15.00 and 4 of B for 16.00 out.
const std::string kYogurt = "01.01.002 0 0 30 100 9 31 21 69";
// 30 pieces go into gift boxes.
const std::string kCandy = "01.02 100 100 0 0 30 30 70 70";
// 10 made of candy for 30.00, 10 bought for 50.00, 4 sold at 4.00.
const std::string kGiftBox = "01.03 0 0 20 80 4 16 16 64";
const std::string kScrewdriver = "02.001 0 0 20 110.01 0 0 20 110.01";
const std::string kScanner = "02.002 0 0 2 800 1 400 1 400";
// Amounts: 300.00 + 1286.01 - 697.00 = 889.01; quantities: 200 + 162 - 144 = 218.
const std::string kTotal = "合计 200 300 162 1286.01 144 697 218 889.01";

struct Case {
  std::string name;
  FilterEntries filter;
  Lines fields;
  Lines lines;
};

void Check(const char* method, const std::vector<Case>& cases) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LinesOf(*Fetch(book, "TOVMStockRpt.Data", method, row.filter), row.fields), row.lines);
  }
}

TEST(Data10412, ByItem) {
  Check(
      "GetRpt10412Data",
      {
          {"a month",
           kJanuary,
           kFigures,
           {kJuice, kYogurt, kCandy, kGiftBox, kScrewdriver, kScanner, kTotal}},
          {"items from 01.02 to 02.001",
           With(kJanuary, {{"BItemNumber", "01.02"}, {"EItemNumber", "02.001"}}),
           kFigures,
           {kCandy, kGiftBox, kScrewdriver, "合计 100 100 40 190.01 34 46 106 244.01"}},
          {"descending",
           With(kJanuary, {{"EItemNumber", "01.01.002"}, {"OrderBy", "FItemNumber DESC "}}),
           kFigures,
           {kYogurt, kJuice, "合计 100 200 120 296 109 251 111 245"}},
          // Opening on 02-10: 90 + 7 - 20 bottles for 176.00 + 20.00 - 45.0575; then the price of 1.0575.
          {"from the middle of a month",
           {{"BDate", "2025-02-10"}, {"EDate", "2025-02-20"}, {"EItemNumber", "01.01.001"}},
           kFigures,
           {"01.01.001 77 150.9425 0 1.0575 0 0 77 152", "合计 77 150.9425 0 1.0575 0 0 77 152"}},
          {"beyond the last balance",
           {{"BDate", "2031-05-05"}, {"EItemNumber", "01.01.001"}},
           kFigures,
           {"01.01.001 77 152 0 0 0 0 77 152", "合计 77 152 0 0 0 0 77 152"}},
          {"without days",
           {{"EItemNumber", "01.01.001"}},
           kFigures,
           // Everything: 90 + 7 in for 196.00 + 20.00 + 1.0575; 100 + 20 out for 220.00 + 45.0575.
           {"01.01.001 100 200 97 217.0575 120 265.0575 77 152",
            "合计 100 200 97 217.0575 120 265.0575 77 152"}},
          // The 30 that went to the branch changed nothing; the 10 gifts lost their cost and stay.
          {"without transfers at the same price",
           With(kJanuary, {{"EItemNumber", "01.01.001"}, {"chkShowTran", 0}}),
           kFigures,
           {"01.01.001 100 200 60 130 70 154 90 176", "合计 100 200 60 130 70 154 90 176"}},
          {"one warehouse keeps its half of such a transfer",
           With(kJanuary, {{"BStockNumber", "02"}, {"EStockNumber", "02"}, {"chkShowTran", 0}}),
           kFigures,
           {"01.01.001 0 0 30 66 0 0 30 66", "合计 0 0 30 66 0 0 30 66"}},
          // Candy and scanners lie still in February; the total counts what is shown.
          {"nothing without movement",
           With(kFebruary, {{"chkNoAmt", 1}, {"BItemNumber", "01.02"}}),
           kFigures,
           // 12 sold for 62.002, one found for 6.001; tape came and went.
           {"02.001 20 110.01 1 6.001 12 62.002 9 54.009", "02.003 0 0 8 24 5 15 3 9",
            "合计 20 110.01 9 30.001 17 77.002 12 63.009"}},
          // On the day of the sale five rolls are missing, before any cost is known: 15.00 follows from CG-4.
          {"an item below zero",
           {{"BDate", "2025-02-05"}, {"EDate", "2025-02-05"}, {"BItemNumber", "02.003"}},
           kFigures,
           {"02.003 0 0 0 0 5 15 -5 -15", "合计 0 0 0 0 5 15 -5 -15"}},
          {"only sums", With(kJanuary, {{"chkOnlyTotal", 1}}), kFigures, {kTotal}},
          {"nobody's bills: openings stay",
           With(kJanuary, {{"BEmpNumber", "02"}, {"EItemNumber", "01.02"}}),
           kFigures,
           {"01.01.001 100 200 0 0 0 0 100 200", "01.02 100 100 0 0 0 0 100 100",
            "合计 200 300 0 0 0 0 200 300"}},
          {"a department's bills",
           With(kJanuary, {{"BDeptNumber", "01"}, {"EDeptNumber", "01"}}),
           kFigures,
           {kJuice, kYogurt, kCandy, kGiftBox, kScrewdriver, kScanner, kTotal}},
          {"a batch",
           With(kJanuary, {{"BBatchNo", "A"}, {"EBatchNo", "A"}}),
           kFigures,
           {"01.01.002 0 0 20 60 5 15 15 45", "合计 0 0 20 60 5 15 15 45"}},
          {"no rights to any warehouse",
           With(kJanuary, {{"DataRightWhere", books::test::RightsOf("31", "t4")}}),
           kFigures,
           {}},
          {"base data, packages and prices",
           With(kJanuary, {{"EItemNumber", "01.01.001"}}),
           {"FSumSort", "FItemName", "FModel", "FBarCode", "FUnitName", "FSecUnitName", "FSource",
            "FCommonID", "FComplexQtyDisBeg", "FComplexQtyDisIn", "FComplexQtyDisOut", "FComplexQtyDisEnd",
            "FBegPrice", "FOutPrice", "FBegSecQty"},
           {"0 苹果汁 M-01.01.001 690411 瓶 '' 鲜果供应商 0 8箱4瓶 7箱6瓶 8箱4瓶 7箱6瓶 2 2.2 -",
            "101 - - - - - - 0 - - - - 2 2.2 0"}},
      });
}

TEST(Data10412, ByWarehouse) {
  const Lines fields = {"FSumSort", "FCommonName", "FCommonID", "FItemNumber", "FBegQty",
                        "FInQty",   "FOutQty",     "FEndQty",   "FEndBal"};
  const FilterEntries filter = With(kJanuary, {{"cmbGroup", 1}, {"EItemNumber", "01.01.002"}});
  // Out of the main warehouse: 60 sold, 30 and 10 moved; 20 + 10 - 5 - 4 yogurts.
  const Lines main = {"0 主仓库 501 01.01.001 100 50 100 50 110", "0 主仓库 501 01.01.002 0 30 9 21 69",
                      "100 主仓库 501 小计 100 80 109 71 179"};
  const Lines branch = {"0 分仓库 502 01.01.001 0 30 0 30 66", "100 分仓库 502 小计 0 30 0 30 66"};
  const Lines gifts = {"0 赠品仓库 503 01.01.001 0 10 0 10 0", "100 赠品仓库 503 小计 0 10 0 10 0"};
  const Lines total = {"101 合计 0 - 100 120 109 111 245"};
  const auto join = [](const std::vector<Lines>& parts) {
    Lines all;
    for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  };
  Check("GetRpt10412Data",
        {
            {"rows under their warehouses", filter, fields, join({main, branch, gifts, total})},
            {"transfers change a warehouse at any price", With(filter, {{"chkShowTran", 0}}), fields,
             join({main, branch, gifts, total})},
            // By bytes, 赠 is above 分 and 主.
            {"by name, descending", With(filter, {{"OrderBy", "FCommonName DESC "}}), fields,
             join({gifts, branch, main, total})},
            {"only sums",
             With(filter, {{"chkOnlyTotal", 1}}),
             fields,
             {main.back(), branch.back(), gifts.back(), total.back()}},
        });
}

TEST(Data10412, ByBatch) {
  const Lines fields = {"FSumSort", "FItemNumber", "FBatchNo", "FBegQty",
                        "FInQty",   "FOutQty",     "FEndQty",  "FEndBal"};
  const FilterEntries filter =
      With(kJanuary, {{"cmbGroup", 2}, {"BItemNumber", "01.01.002"}, {"EItemNumber", "01.02"}});
  Check("GetRpt10412Data",
        {{"batches under their item",
          filter,
          fields,
          {"0 01.01.002 A 0 20 5 15 45", "0 01.01.002 B 0 10 4 6 24", "100 01.01.002 小计 0 30 9 21 69",
           "0 01.02 '' 100 0 30 70 70", "100 01.02 小计 100 0 30 70 70", "101 合计 - 100 30 39 91 139"}}});
  Check("GetRpt10416Data", {
                               {"batch-managed items only, by batch",
                                kJanuary,
                                fields,
                                {"0 01.01.002 A 0 20 5 15 45", "0 01.01.002 B 0 10 4 6 24",
                                 "100 01.01.002 小计 0 30 9 21 69", "101 合计 - 0 30 9 21 69"}},
                               {"unless a scheme groups otherwise",
                                With(kJanuary, {{"cmbGroup", 0}}),
                                fields,
                                {"0 01.01.002 '' 0 30 9 21 69", "101 合计 - 0 30 9 21 69"}},
                           });
}

TEST(Data10412, ByLevels) {
  const Lines fields = {"FSumSort",    "FItemLevel01Name", "FItemLevel02Name",
                        "FItemNumber", "FEndQty",          "FEndBal"};
  const FilterEntries filter =
      With(kJanuary, {{"MultiLevel", 1}, {"MultiLevelBegin", "1"}, {"MultiLevelEnd", "2"}});
  // Candy and gift boxes stand in 食品 itself: they have no second level.
  const Lines lines = {"0 食品 - 01.02 70 70",         "0 食品 - 01.03 16 64",
                       "0 食品 饮料 01.01.001 90 176", "0 食品 饮料 01.01.002 21 69",
                       "2 食品 饮料 小计 111 245",     "1 食品 小计 - 197 379",
                       "0 五金 - 02.001 20 110.01",    "0 五金 - 02.002 1 400",
                       "1 五金 小计 - 21 510.01",      "101 合计 - - 218 889.01"};
  Check("GetRpt10412Data",
        {
            {"two levels", filter, fields, lines},
            {"only sums",
             With(filter, {{"chkOnlyTotal", 1}}),
             fields,
             {lines[4], lines[5], lines[8], lines[9]}},
            // The heading has a column for it all the same.
            {"no goods have a level 0",
             With(filter, {{"MultiLevelBegin", "0"}, {"MultiLevelEnd", "1"}, {"BItemNumber", "02.002"}}),
             {"FSumSort", "FItemLevel00Name", "FItemLevel01Name", "FItemNumber"},
             {"0 - 五金 02.002", "1 - 五金 小计", "101 合计 - -"}},
            {"levels that begin above their end are none",
             With(filter, {{"MultiLevelBegin", "3"}}),
             {"FItemLevel01Name", "FItemNumber"},
             {"? 01.01.001", "? 01.01.002", "? 01.02", "? 01.03", "? 02.001", "? 02.002", "? 合计"}},
        });
}

// Two batches under one shared cost: A comes cheaper than B, and leaves at the average of both. What it takes
// away too much stays behind as an amount without goods.
TEST(Data10412, ABatchThatIsGoneMayLeaveAnAmount) {
  const books::test::BookFile file([](books::database::Connection& connection) {
    books::test::WriteTinyBook(connection);
    connection.Execute("UPDATE item SET valuation = 78 WHERE id = ?", books::test::tiny::kYogurt);
    const auto post = [&](books::schema::BillClass billClass, int day, books::posting::Id batch,
                          const char* amount) {
      books::posting::Document document;
      document.billClass = billClass;
      document.number = "P-" + std::to_string(day);
      document.date = platform::Date::Of(2025, 3, day);
      books::posting::Entry entry;
      entry.itemId = books::test::tiny::kYogurt;
      entry.warehouseId = books::test::tiny::kBranch;
      entry.batchId = batch;
      entry.unitId = books::test::tiny::kBottle;
      entry.quantity = books::database::Quantity::FromInteger(10);
      entry.unitQuantity = entry.quantity;
      entry.amount = platform::Currency::FromText(amount);
      document.entries.push_back(entry);
      books::posting::Post(connection, document);
    };
    post(books::schema::BillClass::kPurchaseReceipt, 1, books::test::tiny::kBatchA, "10");
    post(books::schema::BillClass::kPurchaseReceipt, 2, books::test::tiny::kBatchB, "30");
    post(books::schema::BillClass::kSalesIssue, 3, books::test::tiny::kBatchA, "0");
  });
  const books::Book book = file.Open();
  const FilterEntries later = {{"BDate", "2025-03-10"},      {"cmbGroup", 2},
                               {"BStockNumber", "02"},       {"EStockNumber", "02"},
                               {"BItemNumber", "01.01.002"}, {"EItemNumber", "01.01.002"}};
  const auto goods = Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data", later);
  const auto batches = Fetch(book, "TOVMStockRpt.Data", "GetRpt10416Data", later);
  EXPECT_EQ(LinesOf(*goods, {"FBatchNo", "FEndQty"}), (Lines{"A 0", "B 10", "小计 10", "- 10"}));
  EXPECT_EQ(LinesOf(*batches, {"FBatchNo", "FEndQty"}), (Lines{"B 10", "小计 10", "- 10"}));
}

// All that the headings can name, for every kind of application and grouping, and what the drill-down reads.
TEST(Data10412, HasEveryColumn) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  Lines fields = {"FItemLevel01Name", "FItemLevel02Name", "FCommonName", "FCommonID", "FItemNumber",
                  "FItemName",        "FModel",           "FBatchNo",    "FSource",   "FBarCode",
                  "FUnitName",        "FSecUnitName",     "FSumSort",    "FBegBal",   "FInAmount",
                  "FOutAmount",       "FEndBal"};
  for (const std::string group : {"Beg", "In", "Out", "End"}) {
    fields.push_back("FComplexQtyDis" + group);
    for (const char* figure : {"Qty", "SecQty", "Price"}) fields.push_back("F" + group + figure);
  }
  for (const std::string method : {"GetRpt10412Data", "GetRpt10416Data"}) {
    for (int group = 0; group <= 2; ++group) {
      const auto rows =
          Fetch(book, "TOVMStockRpt.Data", method,
                {{"MultiLevel", true}, {"MultiLevelBegin", 1}, {"MultiLevelEnd", 2}, {"cmbGroup", group}});
      for (const std::string& field : fields) {
        EXPECT_TRUE(rows->FindField(field).has_value()) << method << " lacks " << field;
      }
      const std::size_t row = rows->RowAt(0);
      EXPECT_FALSE(rows->IsNullAt(rows->FieldIndex("FCommonID"), row));
    }
  }
}

TEST(Data10412, RefusesWhatItCannotRead) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  const std::vector<std::pair<FilterEntries, std::string>> refused = {
      {{{"BDate", "soon"}}, "BDate"},
      {{{"cmbGroup", 3}}, "cmbGroup"},
      {{{"OrderBy", "FColour ASC "}}, "OrderBy"},
      {{{"chkNoBal", "maybe"}}, "chkNoBal"},
      {{{"DataRightWhere", "t9.FItemID=1"}}, "DataRightWhere"},
  };
  for (const auto& [filter, key] : refused) {
    SCOPED_TRACE(key);
    const FilterEntries& asked = filter;
    EXPECT_THAT(books::test::RefusalOf([&] { Fetch(book, "TOVMStockRpt.Data", "GetRpt10412Data", asked); }),
                testing::HasSubstr(key));
  }
}

}  // namespace
