// Tape is sold out in February: beside what the tiny book tells of it, two boxes of three rolls come on 02-26
// under a number that a purchase has too, and three boxes go on 02-27. So 8 + 6 rolls come for 24.00 + 18.00,
// 5 + 9 go for 15.00 + 27.00, and nothing is left.
#include <string>
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
using Lines = std::vector<std::string>;
namespace tiny = books::test::tiny;

void PostBoxes(Connection& connection, BillClass billClass, const char* number, int day, int boxes,
               const char* note) {
  books::posting::Document document;
  document.billClass = billClass;
  document.number = number;
  document.date = platform::Date::Of(2025, 2, day);
  document.explanation = "清仓";
  books::posting::Entry entry;
  entry.itemId = tiny::kTape;
  entry.warehouseId = tiny::kMain;
  entry.unitId = tiny::kBox;
  entry.unitQuantity = Quantity::FromInteger(boxes);
  entry.quantity = Quantity::FromInteger(3 * boxes);
  entry.amount = platform::Currency::FromText("18");
  entry.note = note;
  document.entries.push_back(entry);
  books::posting::Post(connection, document);
}

void WriteSoldOutBook(Connection& connection) {
  books::test::WriteTinyBook(connection);
  connection.Execute("INSERT INTO item_unit (item_id, unit_id, factor) VALUES (?, ?, ?)", tiny::kTape,
                     tiny::kBox, Quantity::FromInteger(3));
  PostBoxes(connection, BillClass::kOtherReceipt, "CG-4", 26, 2, "补货");
  PostBoxes(connection, BillClass::kOtherIssue, "QC-2", 27, 3, "");
}

const FilterEntries kFebruary = {{"BDate", "2025-02-01"}, {"EDate", "2025-02-28"}};
const FilterEntries kHardware = With(kFebruary, {{"BItemNumber", "02"}});
const FilterEntries kTape = With(kFebruary, {{"BItemNumber", "02.003"}});

struct Case {
  std::string name;
  std::string component;
  std::string method;
  FilterEntries filter;
  Lines fields;
  Lines lines;
};

void Check(const std::vector<Case>& cases) {
  const books::test::BookFile file(WriteSoldOutBook);
  const books::Book book = file.Open();
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(LinesOf(*Fetch(book, row.component, row.method, row.filter), row.fields), row.lines);
  }
}

const std::string kData = "TOVMStockRpt.Data";

// Screwdrivers: 20 for 110.01, 12 sold for 62.002, one found for 6.001. The total adds up what is shown.
TEST(SoldOut, SummariesLeaveOutWhatEndsWithNothing) {
  const Lines figures = {"FItemNumber", "FInQty", "FInAmount", "FOutQty", "FOutAmount", "FEndQty", "FEndBal"};
  const Lines business = {"FItemNumber",     "FInQtyTotal", "FInAmountTotal", "FOutQtyTotal",
                          "FOutAmountTotal", "FBalQty",     "FBalAmount"};
  const std::string screwdriver = "02.001 1 6.001 12 62.002 9 54.009";
  const std::string scanner = "02.002 0 0 0 0 1 400";
  const std::string tape = "02.003 14 42 14 42 0 0";
  const Lines all = {screwdriver, scanner, tape, "合计 15 48.001 26 104.002 10 454.009"};
  const Lines left = {screwdriver, scanner, "合计 1 6.001 12 62.002 10 454.009"};
  const FilterEntries hides = {{"chkNoBal", 1}};
  const FilterEntries balance = {{"Balance", 1}};
  const auto placed = [](const Lines& lines) {
    Lines result = lines;
    result.insert(result.end() - 1, "小计" + lines.back().substr(std::string("合计").size()));
    return result;
  };
  Lines byWarehouse = placed(left);
  byWarehouse.back().replace(0, std::string("合计").size(), "-");
  Check({
      {"movement summary, all", kData, "GetRpt10412Data", kHardware, figures, all},
      {"movement summary, what is left", kData, "GetRpt10412Data", With(kHardware, hides), figures, left},
      {"business summary, all", kData + "1040101", "GetRptData", kHardware, business, all},
      {"business summary, what is left", kData + "1040101", "GetRptData", With(kHardware, balance), business,
       left},
      {"by warehouse", kData + "1040102", "GetRptData", With(kHardware, balance), business, byWarehouse},
      {"by batch, whose items have their sums", kData + "1040104", "GetRptData", With(kTape, balance),
       business, Lines()},
  });
}

TEST(SoldOut, DetailsLeaveOutWhatEndsWithNothing) {
  const Lines fields = {"FItemNumber", "FBillNo", "FInQty", "FOutQty", "FStockQty"};
  const std::string method = "GetRpt10413Data";
  Check({
      {"one list of what is left, whose balances nobody sees", kData + "10413", method,
       With(kHardware, {{"chkNoBal", 1}}), fields,
       Lines{"02.001 XS-4 - 12 -", "02.001 PY-1 1 - -", "- - 1 12 -"}},
      {"item by item", kData + "10413", method,
       With(kHardware, {{"chkNoBal", 1}, {"chkGroupByGood", 1}, {"chkOnlyTotal", 1}}), fields,
       Lines{"02.001 XS-4 - 12 8", "02.001 PY-1 1 - 9", "- - 1 12 10"}},
      {"an item that has gone is listed where it may be", kData + "10413", method,
       With(kTape, {{"chkGroupByGood", 1}}), fields,
       Lines{"02.003 - - - 0", "02.003 XS-4 - 5 -5", "02.003 CG-4 8 - 3", "02.003 CG-4 6 - 9",
             "02.003 QC-2 - 9 0", "02.003 - 14 14 0", "- - 14 14 0"}},
  });
}

// Bills of two classes may share a number: they keep the order in which they cost.
TEST(SoldOut, DetailsSortByWhatIsAskedFor) {
  const Lines fields = {"FDate", "FBillNo", "FBillType"};
  const std::string bought = "2025-02-06 CG-4 采购收货";
  const std::string brought = "2025-02-26 CG-4 其他入库";
  const std::string scrapped = "2025-02-27 QC-2 其他出库";
  const std::string sold = "2025-02-05 XS-4 销售发货";
  const std::string total = "- - 合计";
  const auto by = [&](const char* name, const char* order, const Lines& lines) {
    return Case{name, kData + "10413", "GetRpt10413Data", With(kTape, {{"OrderBy", order}}), fields, lines};
  };
  Check({
      by("number", "T1.FBillNo ASC ", {bought, brought, scrapped, sold, total}),
      by("number, descending", "T1.FBillNo DESC ", {sold, scrapped, bought, brought, total}),
      by("date, descending", "T1.FDate DESC ", {scrapped, brought, bought, sold, total}),
      // By bytes: 其 is below 采 and 销, 入 below 出.
      by("kind", "T1.FBillType ASC ", {brought, scrapped, bought, sold, total}),
  });
}

// The balance behind a movement is told in the unit of its bill: 9 rolls are three boxes.
TEST(SoldOut, DetailsTellTheBillsOwnUnitsAndWords) {
  const Lines fields = {"FBillNo",     "FShowUnitName", "FShowInQty",   "FShowInPrice",
                        "FShowOutQty", "FShowStockQty", "FExplanation", "FNote"};
  Check({
      {"item by item", kData + "10413", "GetRpt10413Data",
       With(kTape, {{"BDate", "2025-02-06"}, {"chkGroupByGood", 1}, {"chkOnlyTotal", 1}}), fields,
       Lines{"CG-4 个 8 3 - 3 '' ''", "CG-4 箱 2 9 - 3 清仓 补货", "QC-2 箱 - - 3 0 清仓 ''",
             "- - 14 3 9 0 - -"}},
      {"one list of all items", kData + "10413", "GetRpt10413Data",
       With(kFebruary, {{"BDate", "2025-02-26"}}), fields,
       Lines{"CG-4 箱 2 9 - - 清仓 补货", "QC-2 箱 - - 3 - 清仓 ''", "- - 6 3 9 - - -"}},
  });
}

}  // namespace
