// The goods and batch movement details on the tiny book, whose bills and figures TinyBook.cpp reckons
// through.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

namespace {

using books::test::Fetch;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::With;
using Lines = std::vector<std::string>;

const FilterEntries kJanuary = {{"BDate", "2025-01-01"}, {"EDate", "2025-01-31"}};
const FilterEntries kJuice = With(kJanuary, {{"BItemNumber", "01.01.001"}, {"EItemNumber", "01.01.001"}});
const FilterEntries kJuiceByItem = With(kJuice, {{"chkGroupByGood", 1}});

const Lines kFigures = {"FSumSort", "FBillType",  "FBillNo",   "FInQty",      "FInAmount",
                        "FOutQty",  "FOutAmount", "FStockQty", "FStockAmount"};
const std::string kOpening = "1 期初结存 - - - - - 100 200";
const std::string kBought = "0 采购收货 CG-1 50 130 - - 150 330";
const std::string kSold = "0 销售发货 XS-1 - - 60 132 90 198";
// To the branch at its cost of 2.20, and from there on as if nothing had happened.
const Lines kMoved = {"0 调拨 DB-1 - - 30 66 60 132", "0 调拨 DB-1 30 66 - - 90 198"};
// Among the gifts goods have no amount: 22.00 are gone.
const Lines kGiven = {"0 调拨 DB-2 - - 10 22 80 176", "0 调拨 DB-2 10 0 - - 90 176"};
const std::string kItemSum = "100 本期合计 - 90 196 100 220 90 176";
const std::string kTotal = "101 合计 - 90 196 100 220 90 176";
const std::string kFlatTotal = "101 合计 - 90 196 100 220 - -";

struct Case {
  std::string name;
  FilterEntries filter;
  Lines fields;
  Lines lines;
};

void Check(const std::string& number, const std::vector<Case>& cases) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LinesOf(*Fetch(book, "TOVMStockRpt.Data" + number, "GetRpt" + number + "Data", row.filter),
                      row.fields),
              row.lines);
  }
}

TEST(Data10413, ItemByItem) {
  Check("10413",
        {
            {"a month of juice",
             kJuiceByItem,
             kFigures,
             {kOpening, kBought, kSold, kMoved[0], kMoved[1], kGiven[0], kGiven[1], kItemSum, kTotal}},
            {"without opening and closing figures",
             With(kJuiceByItem, {{"chkOnlyTotal", 1}}),
             kFigures,
             {kBought, kSold, kMoved[0], kMoved[1], kGiven[0], kGiven[1], kTotal}},
            // 90 less in and out by the 30 that only went to the branch.
            {"without transfers at the same price",
             With(kJuiceByItem, {{"chkNoDB", 1}, {"chkShowTran", 1}}),
             kFigures,
             {kOpening, kBought, kSold, kGiven[0], kGiven[1], "100 本期合计 - 60 130 70 154 90 176",
              "101 合计 - 60 130 70 154 90 176"}},
            {"as the summary hands it down",
             With(kJuiceByItem, {{"chkShowTran", 0}, {"chkOnlyTotal", "0"}}),
             {"FSumSort", "FBillNo"},
             {"1 -", "0 CG-1", "0 XS-1", "0 DB-2", "0 DB-2", "100 -", "101 -"}},
            {"latest first: balances stay behind their movements",
             With(kJuiceByItem, {{"OrderBy", "T1.FDate DESC "}, {"chkNoDB", 1}}),
             kFigures,
             {kOpening, kGiven[0], kGiven[1], kSold, kBought, "100 本期合计 - 60 130 70 154 90 176",
              "101 合计 - 60 130 70 154 90 176"}},
            {"the branch alone",
             With(kJuiceByItem, {{"BStockNumber", "02"}, {"EStockNumber", "02"}, {"chkNoDB", 1}}),
             kFigures,
             {"1 期初结存 - - - - - 0 0", "0 调拨 DB-1 30 66 - - 30 66", "100 本期合计 - 30 66 0 0 30 66",
              "101 合计 - 30 66 0 0 30 66"}},
            {"from the middle of a month",
             With(kJuiceByItem, {{"BDate", "2025-02-08"}, {"EDate", "2025-02-10"}}),
             kFigures,
             // 90 + 7 bottles for 176.00 + 20.00, then 20 sold for 45.0575.
             {"1 期初结存 - - - - - 97 196", "0 销售发货 XS-2 - - 20 45.0575 77 150.9425",
              "100 本期合计 - 0 0 20 45.0575 77 150.9425", "101 合计 - 0 0 20 45.0575 77 150.9425"}},
        });
}

TEST(Data10413, WhichItemsAreShown) {
  const FilterEntries february = {{"BDate", "2025-02-01"}, {"EDate", "2025-02-04"}, {"chkGroupByGood", 1}};
  const Lines fields = {"FItemNumber", "FBillType", "FStockQty"};
  const Lines juice = {"01.01.001 期初结存 90", "01.01.001 采购收货 97", "01.01.001 本期合计 97"};
  const auto still = [](const std::string& item, const std::string& quantity) {
    return Lines{item + " 期初结存 " + quantity, item + " 本期合计 " + quantity};
  };
  const auto join = [](const std::vector<Lines>& parts) {
    Lines all;
    for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  };
  const Lines candy = still("01.02", "70");
  const Lines tape = still("02.003", "0");
  Check("10413",
        {
            {"goods that moved", With(february, {{"EItemNumber", "01.01.001"}}), fields,
             join({juice, {"- 合计 97"}})},
            {"goods that lie still", With(february, {{"BItemNumber", "01.02"}, {"EItemNumber", "01.02"}}),
             fields, join({candy, {"- 合计 70"}})},
            {"nothing without movement", With(february, {{"chkNoAmt", 1}}), fields,
             join({juice, {"- 合计 97"}})},
            {"goods that there are none of", With(february, {{"BItemNumber", "02.003"}}), fields,
             join({tape, {"- 合计 0"}})},
            {"nothing without a closing balance",
             With(february, {{"BItemNumber", "02.003"}, {"chkNoBal", 1}}),
             fields,
             {}},
            {"nothing without movement and balance",
             With(february, {{"BItemNumber", "02.003"}, {"chkNoZero", 1}}),
             fields,
             {}},
            {"nothing where no warehouse may be seen",
             With(february, {{"DataRightWhere", books::test::RightsOf("31", "t4")}}),
             fields,
             {}},
        });
}

TEST(Data10413, OneList) {
  const FilterEntries day = {{"BDate", "2025-01-10"}, {"EDate", "2025-01-12"}, {"chkNoDB", 1}};
  const Lines fields = {"FDate", "FBillType", "FBillNo", "FItemNumber", "FInQty", "FOutQty", "FStockQty"};
  const std::string juice = "2025-01-10 销售发货 XS-1 01.01.001 - 60 -";
  const std::string yogurt = "2025-01-10 销售发货 XS-1 01.01.002 - 4 -";
  const std::string candy = "2025-01-10 组装 ZZ-1 01.02 - 30 -";
  const std::string made = "2025-01-10 组装 ZZ-1 01.03 10 - -";
  const std::string boxes = "2025-01-12 销售发货 XS-3 01.03 - 4 -";
  const std::string scanner = "2025-01-10 销售发货 XS-1 02.002 - 1 -";
  const std::string total = "- 合计 - - 10 99 -";
  Check("10413", {
                     {"by date",
                      With(day, {{"OrderBy", " T1.FDate ASC "}}),
                      fields,
                      {juice, yogurt, candy, made, scanner, boxes, total}},
                     {"no order asked for", day, fields, {juice, yogurt, candy, made, scanner, boxes, total}},
                     {"latest first",
                      With(day, {{"OrderBy", "T1.FDate DESC "}}),
                      fields,
                      {boxes, juice, yogurt, candy, made, scanner, total}},
                     {"by bill number",
                      With(day, {{"OrderBy", "T1.FBillNo ASC "}}),
                      fields,
                      {juice, yogurt, scanner, boxes, candy, made, total}},
                     {"by item, descending",
                      With(day, {{"OrderBy", "T2.FNumber DESC "}}),
                      fields,
                      {scanner, made, boxes, candy, yogurt, juice, total}},
                     // By bytes: 销 is above 组.
                     {"by kind of bill, descending",
                      With(day, {{"OrderBy", "T1.FBillType DESC "}}),
                      fields,
                      {juice, yogurt, boxes, scanner, candy, made, total}},
                     {"by day",
                      With(day, {{"cmbGroup", 1}}),
                      fields,
                      {juice, yogurt, candy, made, scanner, "- 2025-01-10 小计 - - 10 95 -", boxes,
                       "- 2025-01-12 小计 - - 0 4 -", total}},
                     {"another department's", With(day, {{"BDeptNumber", "02"}}), fields, {}},
                     {"the employee's",
                      With(day, {{"BEmpNumber", "01"}, {"EEmpNumber", "01"}, {"EItemNumber", "01.01.001"}}),
                      fields,
                      {juice, "- 合计 - - 0 60 -"}},
                     {"goods without a property lie in no range of them",
                      With(day, {{"BAuxPropNumber", "0"}}),
                      fields,
                      {}},
                     {"by warehouse",
                      With(kJuice, {{"cmbGroup", 2}}),
                      {"FBillType", "FBillNo", "FInQty", "FOutQty"},
                      {"采购收货 CG-1 50 -", "销售发货 XS-1 - 60", "调拨 DB-1 - 30", "调拨 DB-2 - 10",
                       "主仓库 小计 - 50 100", "调拨 DB-1 30 -", "分仓库 小计 - 30 0", "调拨 DB-2 10 -",
                       "赠品仓库 小计 - 10 0", "合计 - 90 100"}},
                 });
}

TEST(Data10413, TextsAndUnits) {
  const Lines texts = {"FItemName", "FModel",    "FBussinessName", "FBussinessNumber", "FBatchNo1",
                       "FBarCode",  "FUnitName", "FShowUnitName",  "FTranType"};
  Check("10413",
        {
            {"partners and batches",
             With(kJanuary, {{"BItemNumber", "01.01.002"}, {"EItemNumber", "01.01.002"}, {"BBatchNo", "B"}}),
             texts,
             {"酸奶 M-01.01.002 鲜果供应商 01 B 690412 瓶 瓶 1020002",
              "酸奶 M-01.01.002 街角商店 01 B 690412 瓶 瓶 1030002", "- - - - - - - - -"}},
            {"packages and prices",
             With(kJuiceByItem, {{"EDate", "2025-01-05"}}),
             {"FInPrice", "FShowInQty", "FComplexQtyDisIn", "FShowInPrice", "FAuxInQty", "FStockPrice",
              "FShowStockQty", "FComplexQtyDis", "FShowStockPrice"},
             {"- - - - - 2 100 8箱4瓶 2", "2.6 50 4箱2瓶 2.6 - 2.2 150 12箱6瓶 2.2",
              "2.6 50 4箱2瓶 2.6 - 2.2 150 12箱6瓶 2.2", "2.6 50 - 2.6 0 2.2 150 - 2.2"}},
        });
}

// All that the headings can name, for every kind of application and grouping.
TEST(Data10413, HasEveryColumn) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  const Lines fields = {"FDate",
                        "FBillType",
                        "FBillNo",
                        "FExplanation",
                        "FItemNumber",
                        "FItemName",
                        "FModel",
                        "FBussinessName",
                        "FBussinessNumber",
                        "FAuxProp",
                        "FBatchNo1",
                        "FBarCode",
                        "FUnitName",
                        "FShowUnitName",
                        "FAuxUnitName",
                        "FInQty",
                        "FInPrice",
                        "FShowInQty",
                        "FComplexQtyDisIn",
                        "FShowInPrice",
                        "FAuxInQty",
                        "FInAmount",
                        "FOutQty",
                        "FOutPrice",
                        "FShowOutQty",
                        "FComplexQtyDisOut",
                        "FShowOutPrice",
                        "FAuxOutQty",
                        "FOutAmount",
                        "FStockQty",
                        "FStockPrice",
                        "FShowStockQty",
                        "FComplexQtyDis",
                        "FShowStockPrice",
                        "FAuxStockQty",
                        "FStockAmount",
                        "FNote"};
  for (const std::string number : {"10413", "10417"}) {
    const auto rows = Fetch(book, "TOVMStockRpt.Data" + number, "GetRpt" + number + "Data", {});
    for (const std::string& field : fields) {
      EXPECT_TRUE(rows->FindField(field).has_value()) << number << " lacks " << field;
    }
  }
}

TEST(Data10417, BatchManagedItemsOnly) {
  const Lines fields = {"FItemNumber", "FBatchNo1", "FBillNo", "FInQty", "FOutQty", "FStockQty"};
  Check("10417", {
                     {"one list",
                      kJanuary,
                      fields,
                      {"01.01.002 A CG-1 20 - -", "01.01.002 B CG-1 10 - -", "01.01.002 B XS-1 - 4 -",
                       "01.01.002 A QC-1 - 5 -", "- - - 30 9 -"}},
                     {"a batch, item by item",
                      With(kJanuary, {{"BBatchNo", "B"}, {"EBatchNo", "B"}, {"chkGroupByGood", 1}}),
                      fields,
                      {"01.01.002 - - - - 0", "01.01.002 B CG-1 10 - 10", "01.01.002 B XS-1 - 4 6",
                       "01.01.002 - - 10 4 6", "- - - 10 4 6"}},
                 });
}

}  // namespace
