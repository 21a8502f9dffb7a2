// The business summary on the tiny book, whose bills and figures TinyBook.cpp reckons through.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "books/posting/Posting.h"
#include "books/schema/Codes.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/StockBook.h"

namespace {

using books::database::Connection;
using books::database::Quantity;
using books::schema::BillClass;
using books::test::Fetch;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::With;
using platform::Currency;
using platform::Date;
using Lines = std::vector<std::string>;

const FilterEntries kJanuary = {{"BDate", "2025-01-01"}, {"EDate", "2025-01-31"}};
const FilterEntries kFebruary = {{"BDate", "2025-02-01"}, {"EDate", "2025-02-28"}};

struct Case {
  std::string name;
  std::string component;
  FilterEntries filter;
  Lines fields;
  Lines lines;
};

void Check(const books::Book& book, const std::vector<Case>& cases) {
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LinesOf(*Fetch(book, row.component, "GetRptData", row.filter), row.fields), row.lines);
  }
}

const std::string kByItem = "TOVMStockRpt.Data1040101";
const std::string kByWarehouse = "TOVMStockRpt.Data1040102";
const std::string kByBatch = "TOVMStockRpt.Data1040104";

TEST(Data10401, GroupsOfBills) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const FilterEntries juice = {{"EItemNumber", "01.01.001"}};
  const Lines totals = {"FItemNumber",  "FBegQty",         "FBegAmount", "FInQtyTotal", "FInAmountTotal",
                        "FOutQtyTotal", "FOutAmountTotal", "FBalQty",    "FBalAmount"};
  Check(file.Open(),
        {
            // 50 bought; 30 to the branch with 66.00 and 10 to the gifts, which arrive with nothing and
            // leave 22.00.
            {"a month of juice: buying, selling, moving",
             kByItem,
             With(kJanuary, juice),
             {"FItemNumber", "FQty1020002", "FAmount1020002", "FInQty1040007", "FInAmount1040007",
              "FQty1030002", "FAmount1030002", "FOutQty1040007", "FOutAmount1040007"},
             {"01.01.001 50 130 40 66 60 132 40 88", "合计 50 130 40 66 60 132 40 88"}},
            {"its totals",
             kByItem,
             With(kJanuary, juice),
             totals,
             {"01.01.001 100 200 90 196 100 220 90 176", "合计 100 200 90 196 100 220 90 176"}},
            // A change of price is a receipt of money alone: 20.00 + 1.0575.
            {"the change of price in February",
             kByItem,
             With(kFebruary, juice),
             {"FAmount1020002", "FAmount1040008", "FInQtyTotal", "FInAmountTotal", "FBalAmount"},
             {"20 1.0575 7 21.0575 152", "20 1.0575 7 21.0575 152"}},
            {"assembly on both sides",
             kByItem,
             With(kJanuary, {{"BItemNumber", "01.02"}, {"EItemNumber", "01.03"}}),
             {"FItemNumber", "FInQty1040005", "FInAmount1040005", "FOutQty1040005", "FOutAmount1040005"},
             {"01.02 0 0 30 30", "01.03 10 30 0 0", "合计 10 30 30 30"}},
            {"other issues and findings",
             kByItem,
             With(kFebruary, {{"BItemNumber", "02.001"}, {"EItemNumber", "02.001"}}),
             {"FQty1040003", "FAmount1040003", "FQty1030002", "FAmount1030002", "FSumSort"},
             {"1 6.001 12 62.002 0", "1 6.001 12 62.002 101"}},
            {"nothing without movement",
             kByItem,
             With(kFebruary, {{"ShowNoHappen", 1}}),
             {"FItemNumber"},
             {"01.01.001", "02.001", "02.003", "合计"}},
            {"all with a balance or a movement",
             kByItem,
             With(kFebruary, {{"ShowNoHappen", 0}}),
             {"FItemNumber"},
             {"01.01.001", "01.01.002", "01.02", "01.03", "02.001", "02.002", "02.003", "合计"}},
            {"only sums",
             kByItem,
             With(kJanuary, {{"OnlyTotal", 1}}),
             totals,
             {"合计 200 300 162 1286.01 144 697 218 889.01"}},
            {"descending",
             kByItem,
             With(kJanuary, {{"OrderBy", "FItemNumber DESC "}, {"BItemNumber", "02"}}),
             {"FItemNumber"},
             {"02.002", "02.001", "合计"}},
            {"another department's bills: openings stay",
             kByItem,
             With(kJanuary, With(juice, {{"BDeptNumber", "02"}})),
             totals,
             {"01.01.001 100 200 0 0 0 0 100 200", "合计 100 200 0 0 0 0 100 200"}},
            {"nobody's bills",
             kByItem,
             With(kJanuary, With(juice, {{"EEmpNumber", "00"}})),
             totals,
             {"01.01.001 100 200 0 0 0 0 100 200", "合计 100 200 0 0 0 0 100 200"}},
            {"the employee's",
             kByItem,
             With(kJanuary, With(juice, {{"BEmpNumber", "01"}, {"EEmpNumber", "01"}})),
             totals,
             {"01.01.001 100 200 90 196 100 220 90 176", "合计 100 200 90 196 100 220 90 176"}},
            {"a batch",
             kByItem,
             With(kJanuary, {{"BBatchNo", "A"}, {"EBatchNo", "A"}}),
             totals,
             {"01.01.002 0 0 20 60 5 15 15 45", "合计 0 0 20 60 5 15 15 45"}},
            {"the order is told by OrderBy alone",
             kByItem,
             With(kJanuary, {{"SortItem", 3}, {"Desc", true}, {"BItemNumber", "02"}}),
             {"FItemNumber"},
             {"02.001", "02.002", "合计"}},
        });
}

TEST(Data10401, ByWarehouseAndByBatch) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const FilterEntries juice = With(kJanuary, {{"EItemNumber", "01.01.001"}});
  const Lines placed = {"FStockName",  "FItemNumber",    "FBegQty", "FQty1020002", "FInQty1040007",
                        "FQty1030002", "FOutQty1040007", "FBalQty", "FBalAmount"};
  Check(
      file.Open(),
      {
          {"by warehouse",
           kByWarehouse,
           juice,
           placed,
           {"主仓库 01.01.001 100 50 0 60 40 50 110", "主仓库 小计 100 50 0 60 40 50 110",
            "分仓库 01.01.001 0 0 30 0 0 30 66", "分仓库 小计 0 0 30 0 0 30 66",
            "赠品仓库 01.01.001 0 0 10 0 0 10 0", "赠品仓库 小计 0 0 10 0 0 10 0",
            "合计 - 100 50 40 60 40 90 176"}},
          {"of one warehouse",
           kByWarehouse,
           With(juice, {{"BStockNumber", "02"}, {"EStockNumber", "02"}}),
           placed,
           {"分仓库 01.01.001 0 0 30 0 0 30 66", "分仓库 小计 0 0 30 0 0 30 66", "合计 - 0 0 30 0 0 30 66"}},
          {"of warehouses that the user may see: none",
           kByWarehouse,
           With(juice, {{"DataRightWhere", books::test::RightsOf("31", "ts")}}),
           placed,
           {}},
          {"by batch",
           kByBatch,
           With(kJanuary, {{"BItemNumber", "01.01.002"}, {"EItemNumber", "01.01.002"}}),
           {"FItemNumber", "FBatchNo", "FQty1020002", "FQty1030002", "FQty1040002", "FBalQty", "FBalAmount"},
           {"01.01.002 A 20 0 5 15 45", "01.01.002 B 10 4 0 6 24", "01.01.002 小计 30 4 5 21 69",
            "合计 - 30 4 5 21 69"}},
      });
}

// One bill of every class that the tiny book lacks, of tape: 3 for 9.00 before.
void WriteEveryClass(Connection& connection) {
  books::test::WriteTinyBook(connection);
  struct Row {
    BillClass billClass;
    int pieces;
    const char* amount;
  };
  constexpr Row kRows[] = {
      {BillClass::kEstimatedReceipt, 2, "8"},
      {BillClass::kPurchaseRebateGoods, 1, "0"},
      {BillClass::kPurchaseRebateMoney, 0, "-2"},
      {BillClass::kOtherReceipt, 4, "12"},
      {BillClass::kConsignment, 1, "0"},
      {BillClass::kSalesRebateGoods, 1, "0"},
      {BillClass::kCountLoss, 2, "0"},
  };
  for (const Row& row : kRows) {
    books::posting::Document document;
    document.billClass = row.billClass;
    document.number = "K-" + std::to_string(static_cast<int>(row.billClass));
    document.date = Date::Of(2025, 2, 26);
    document.audited = true;
    books::posting::Entry entry;
    entry.itemId = books::test::tiny::kTape;
    entry.warehouseId = books::test::tiny::kMain;
    entry.unitId = books::test::tiny::kPiece;
    entry.quantity = Quantity::FromInteger(row.pieces);
    entry.unitQuantity = entry.quantity;
    entry.amount = Currency::FromText(row.amount);
    document.entries.push_back(entry);
    books::posting::Post(connection, document);
  }
}

TEST(Data10401, EveryClassHasItsGroup) {
  const books::test::BookFile file(WriteEveryClass);
  const FilterEntries day = {{"BDate", "2025-02-26"}, {"EDate", "2025-02-26"}, {"BItemNumber", "02.003"}};
  const std::vector<Case> cases = {
      {"receipts",
       kByItem,
       day,
       {"FBegQty", "FBegAmount", "FQty1020003", "FAmount1020003", "FQty1020004", "FAmount1020004",
        "FRebateAmount", "FQty1040001", "FAmount1040001", "FInQtyTotal", "FInAmountTotal"},
       // 2 + 1 + 4 pieces for 8.00 + 0.00 - 2.00 + 12.00.
       {"3 9 2 8 1 0 -2 4 12 7 18", "3 9 2 8 1 0 -2 4 12 7 18"}},
      // 10 pieces for 27.00: 2.70 each.
      {"issues",
       kByItem,
       day,
       {"FQty1030003", "FAmount1030003", "FQty1030004", "FAmount1030004", "FQty1040004", "FAmount1040004",
        "FOutQtyTotal", "FOutAmountTotal", "FBalQty", "FBalAmount"},
       {"1 2.7 1 2.7 2 5.4 4 10.8 6 16.2", "1 2.7 1 2.7 2 5.4 4 10.8 6 16.2"}},
  };
  Check(file.Open(), cases);
}

// All that the heading can name, for every kind of application.
TEST(Data10401, HasEveryColumn) {
  const books::test::BookFile file(books::test::WriteTinyBook);
  const books::Book book = file.Open();
  for (const std::string& component : {kByItem, kByWarehouse, kByBatch}) {
    Lines fields = {"FItemLevel01Name", "FItemLevel02Name", "FItemNumber", "FItemName",
                    "FModel",           "FBarCode",         "FUnitName",   "FSecUnitName",
                    "FRebateAmount",    "FAmount1040008"};
    if (component == kByWarehouse) fields.emplace_back("FStockName");
    if (component == kByBatch) fields.emplace_back("FBatchNo");
    for (const char* figure : {"Qty", "SecQty", "Amount"}) {
      const std::string name(figure);
      for (const char* plain : {"1020002", "1020003", "1040001", "1020004", "1040003", "1030002", "1030003",
                                "1040002", "1030004", "1040004"}) {
        fields.push_back("F" + name + plain);
      }
      for (const char* side : {"FIn", "FOut"}) {
        fields.push_back(side + name + "1040005");
        fields.push_back(side + name + "1040007");
        fields.push_back(side + name + "Total");
      }
      fields.push_back("FIn" + name + "1040006");
      fields.push_back("FBeg" + name);
      fields.push_back("FBal" + name);
    }
    fields.emplace_back("FOutQty1040006");
    fields.emplace_back(component == kByWarehouse ? "FOutSevQty1040006" : "FOutSecQty1040006");
    fields.emplace_back("FOutAmount1040006");
    const auto rows = Fetch(book, component, "GetRptData",
                            {{"MultiLevel", true}, {"MultiLevelBegin", 1}, {"MultiLevelEnd", 2}});
    for (const std::string& field : fields) {
      EXPECT_TRUE(rows->FindField(field).has_value()) << component << " lacks " << field;
    }
    EXPECT_EQ(rows->FindField("FOutSecQty1040006").has_value(), component != kByWarehouse);
  }
}

}  // namespace
