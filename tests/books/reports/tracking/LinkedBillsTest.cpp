// The report on linked bills on the tracking book, whose bills TrackingBook.cpp reckons through.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/books/reports/stock/StockBook.h"
#include "tests/books/reports/tracking/TrackingBook.h"

namespace {

using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::RightsOf;
using Lines = std::vector<std::string>;

class LinkedBills : public testing::Test {
 protected:
  platform::Ref<platform::Recordset> Fetch(const FilterEntries& filter) const {
    return books::test::Fetch(book_, "TOVMStockRpt.Data", "GetRpt10403Data", filter);
  }

  books::test::BookFile file_{books::test::WriteTrackingBook};
  books::Book book_ = file_.Open();
};

struct Case {
  std::string name;
  FilterEntries filter;
  Lines lines;
};

// Customer, supplier, item; quantity and cost in and out.
const Lines kShown = {"FBillNo", "FCustNumber", "FSupplyNumber", "FItemNumber",
                      "FInQty",  "FInAmount",   "FOutQty",       "FOutAmount"};

const std::string kSamples = "QR-1 '' 02 02.003 10 35 - -";
const std::string kCandies = "QC-2 01 '' 01.02 - - 7 7";
const std::string kJuiceBox = "QC-2 01 '' 01.01.001 - - 12 27.0345";
const std::string kDrivers = "QC-3 02 '' 02.001 - - 2 12.002";
const std::string kRedCandies = "QR-2 '' 01 01.02 5 4 - -";
const std::string kMoreCandies = "QC-5 01 '' 01.02 - - 3 2.9559";
const std::string kYogurt = "QC-1 '' '' 01.01.002 - - 5 15";

// The matched firm stands on both sides, whichever the bill names.
const std::string kDriversMatched = "QC-3 02 01 02.001 - - 2 12.002";
const std::string kRedCandiesMatched = "QR-2 02 01 01.02 5 4 - -";

const std::vector<Case> kByLink = {
    // 7 + 12 + 2 + 3 pieces; 7.00 + 27.0345 + 12.002 + 2.9559
    {"customers",
     {{"InvoiceStyle", 0}},
     {kCandies, kJuiceBox, kDrivers, kMoreCandies, "- - - - 0 0 24 48.9924"}},
    {"no kind is customers", {}, {kCandies, kJuiceBox, kDrivers, kMoreCandies, "- - - - 0 0 24 48.9924"}},
    {"suppliers", {{"InvoiceStyle", "1"}}, {kSamples, kRedCandies, "- - - - 15 39 0 0"}},
    {"matched customers",
     {{"InvoiceStyle", 2}},
     {kDriversMatched, kRedCandiesMatched, "- - - - 5 4 2 12.002"}},
    {"matched suppliers",
     {{"InvoiceStyle", 3}},
     {kDriversMatched, kRedCandiesMatched, "- - - - 5 4 2 12.002"}},
    // Every bill has a department, the one without a partner too: 24 + 5 out, 48.9924 + 15.00.
    {"departments",
     {{"InvoiceStyle", 4}},
     {kYogurt, kSamples, kCandies, kJuiceBox, kDrivers, kRedCandies, kMoreCandies,
      "- - - - 15 39 29 63.9924"}},
    {"employees in January", {{"InvoiceStyle", 5}, {"EDate", "2025-01-31"}}, {kYogurt, "- - - - 0 0 5 15"}},
};

const std::vector<Case> kByRange = {
    {"one day", {{"BDate", "2025-02-13"}, {"EDate", "2025-02-13"}}, {kDrivers, "- - - - 0 0 2 12.002"}},
    {"items from 01.02",
     {{"BItemNumber", "01.02"}, {"EItemNumber", "01.02"}},
     {kCandies, kMoreCandies, "- - - - 0 0 10 9.9559"}},
    {"a batch", {{"InvoiceStyle", 5}, {"BBatchNo", "a"}, {"EBatchNo", "a"}}, {kYogurt, "- - - - 0 0 5 15"}},
    {"a department", {{"InvoiceStyle", 4}, {"BDeptNumber", "02"}}, {kSamples, "- - - - 10 35 0 0"}},
    {"an employee", {{"InvoiceStyle", 1}, {"BEmpNumber", "02"}}, {kSamples, "- - - - 10 35 0 0"}},
    {"a property",
     {{"InvoiceStyle", 1}, {"BAuxPropNumber", "01"}, {"EAuxPropNumber", "01"}},
     {kRedCandies, "- - - - 5 4 0 0"}},
    {"a customer", {{"InvoiceStyle", 0}, {"BCustNumber", "02"}}, {kDrivers, "- - - - 0 0 2 12.002"}},
    {"a supplier under the same key",
     {{"InvoiceStyle", 1}, {"BCustNumber", "02"}},
     {kSamples, "- - - - 10 35 0 0"}},
    {"a matched customer by his own number",
     {{"InvoiceStyle", 2}, {"BCustNumber", "02"}, {"BDate", "2025-02-14"}},
     {kRedCandiesMatched, "- - - - 5 4 0 0"}},
    {"a matched supplier by its own number", {{"InvoiceStyle", 3}, {"BCustNumber", "02"}}, {}},
    {"departments have no partner range",
     {{"InvoiceStyle", 4}, {"BCustNumber", "99"}, {"EDate", "2025-01-31"}},
     {kYogurt, "- - - - 0 0 5 15"}},
    {"nothing", {{"BItemNumber", "09"}}, {}},
    {"a number that is SQL", {{"BItemNumber", "' OR 1=1 --"}, {"EItemNumber", "''"}}, {}},
};

const std::vector<Case> kByRight = {
    {"customers that the user sees",
     {{"DataRightWhere", RightsOf("12", "tog")}, {"BItemNumber", "02"}},
     {kDrivers, "- - - - 0 0 2 12.002"}},
    {"customers that the user does not see", {{"DataRightWhere", RightsOf("7", "tog")}}, {}},
    {"suppliers",
     {{"InvoiceStyle", 1}, {"DataRightWhere", RightsOf("12", "ts")}},
     {kSamples, "- - - - 10 35 0 0"}},
    {"a matched firm of which the user may see one side only",
     {{"InvoiceStyle", 2}, {"DataRightWhere", RightsOf("12", "tog") + " And " + RightsOf("12", "ts")}},
     {}},
    {"by department a bill without partner is for everybody",
     {{"InvoiceStyle", 4}, {"DataRightWhere", RightsOf("99", "tog") + " And " + RightsOf("99", "ts")}},
     {kYogurt, "- - - - 0 0 5 15"}},
};

TEST_F(LinkedBills, Rows) {
  for (const auto* cases : {&kByLink, &kByRange, &kByRight}) {
    for (const Case& each : *cases) {
      SCOPED_TRACE(each.name);
      EXPECT_EQ(LinesOf(*Fetch(each.filter), kShown), each.lines);
    }
  }
}

// Of all bills by department: the dialog's sorts, equal rows by day and bill.
TEST_F(LinkedBills, SortsByPosition) {
  struct Row {
    std::string name;
    int order;
    const char* ascending;
    Lines bills;
  };
  const std::vector<Row> rows = {
      {"day", 0, "True", {"QC-1", "QR-1", "QC-2", "QC-2", "QC-3", "QR-2", "QC-5"}},
      {"day, downwards", 0, "False", {"QC-5", "QR-2", "QC-3", "QC-2", "QC-2", "QR-1", "QC-1"}},
      {"type: receipts first", 1, "True", {"QR-1", "QR-2", "QC-1", "QC-2", "QC-2", "QC-3", "QC-5"}},
      {"number", 2, "True", {"QC-1", "QC-2", "QC-2", "QC-3", "QC-5", "QR-1", "QR-2"}},
      {"customer: none first", 3, "True", {"QC-1", "QR-1", "QR-2", "QC-2", "QC-2", "QC-5", "QC-3"}},
      {"supplier", 4, "False", {"QR-1", "QR-2", "QC-1", "QC-2", "QC-2", "QC-3", "QC-5"}},
      {"department", 5, "False", {"QR-1", "QC-1", "QC-2", "QC-2", "QC-3", "QR-2", "QC-5"}},
      {"employee", 6, "True", {"QC-1", "QC-2", "QC-2", "QC-3", "QR-2", "QC-5", "QR-1"}},
      {"item", 7, "True", {"QC-2", "QC-1", "QC-2", "QR-2", "QC-5", "QC-3", "QR-1"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Lines bills = LinesOf(*Fetch({{"InvoiceStyle", 4}, {"OrderBy", row.order}, {"OptSortD", row.ascending}}),
                          {"FBillNo"});
    ASSERT_EQ(bills.back(), "-") << "the total stays last";
    bills.pop_back();
    EXPECT_EQ(bills, row.bills);
  }
}

// A box is shown as a box: 1 for 27.0345, 12 bottles for 27.0345 ÷ 12 each.
TEST_F(LinkedBills, ShowsUnitsAndPrices) {
  EXPECT_THAT(LinesOf(*Fetch({{"EItemNumber", "01.01.001"}}),
                      {"FDate", "FBillType", "FCustName", "FDeptName", "FEmpName", "FItemName", "FModel",
                       "FUnit", "FShowUnit", "FSecUnit", "FOutQty", "FOutPrice", "FOutShowQty",
                       "FOutShowPrice", "FOutSecQty", "FInShowQty", "FSumSort"}),
              testing::ElementsAre("2025-02-12 其他出库 街角商店 业务部 王芳 苹果汁 M-01.01.001 瓶 箱 '' 12 "
                                   "2.252875 1 27.0345 - - 0",
                                   "- 合计 - - - - - - - - 12 - - - 0 - 1"));
  EXPECT_THAT(LinesOf(*Fetch({{"InvoiceStyle", 1}, {"BEmpNumber", "02"}}),
                      {"FSupplyName", "FDeptNumber", "FEmpNumber", "FEmpName", "FInShowPrice", "FNote"}),
              testing::ElementsAre("五金供应商 02 02 李强 3.5 样品", "- - - - - -"));
  EXPECT_EQ(LinesOf(*Fetch({{"InvoiceStyle", 1}, {"EItemNumber", "01.02"}}), {"FAuxName"}).front(), "红色");
  EXPECT_EQ(LinesOf(*Fetch({{"InvoiceStyle", 4}, {"EDate", "2025-01-31"}}), {"FBatchNo"}).front(), "A");
}

// By account item and goods: the corner shop's 7 and 3 candies are 10 for 9.9559.
TEST_F(LinkedBills, SumsUpByAccountItemAndGoods) {
  const Lines shown = {"FBillNo",     "FCustName", "FSupplyName", "FDeptName",
                       "FItemNumber", "FOutQty",   "FOutPrice",   "FOutAmount"};
  EXPECT_THAT(LinesOf(*Fetch({{"InvoiceStyle", 0}, {"chkShowItem", "1"}, {"OrderBy", 3}}), shown),
              testing::ElementsAre("'' 街角商店 '' '' 01.01.001 12 2.252875 27.0345",
                                   "'' 街角商店 '' '' 01.02 10 0.99559 9.9559",
                                   "'' 鲜果门市 '' '' 02.001 2 6.001 12.002", "- - - - - 24 - 48.9924"));
  EXPECT_THAT(
      LinesOf(*Fetch({{"InvoiceStyle", 2}, {"chkShowItem", "1"}, {"BItemNumber", "02"}}), shown),
      testing::ElementsAre("'' 鲜果门市 鲜果供应商 '' 02.001 2 6.001 12.002", "- - - - - 2 - 12.002"));
}

TEST_F(LinkedBills, SpeaksShortNumbers) {
  file_.Write().Execute(
      "INSERT INTO system_profile (category, key, value) VALUES ('IC', 'UseShortNumber', '0')");
  const books::Book book = file_.Open();
  const auto rows = books::test::Fetch(book, "TOVMStockRpt.Data", "GetRpt10403Data",
                                       {{"BItemNumber", "001"}, {"EItemNumber", "001"}});
  EXPECT_THAT(LinesOf(*rows, {"FBillNo", "FItemNumber"}),
              testing::ElementsAre("QC-2 001", "QC-3 001", "- -"));
}

TEST_F(LinkedBills, Refuses) {
  const std::vector<FilterEntries::value_type> refused = {
      {"InvoiceStyle", 6},
      {"InvoiceStyle", "客户"},
      {"OrderBy", 8},
      {"OrderBy", "FDate ASC "},
      {"OptSortD", "升序"},
      {"BDate", "2025-02-30"},
      {"DataRightWhere", "t4.FItemID=1"},
      {"DataRightWhere", "tog.FItemID in (select 1)"},
  };
  for (const auto& entry : refused) {
    EXPECT_THAT(books::test::RefusalOf([&] { Fetch({entry}); }), testing::HasSubstr(entry.first));
  }
}

}  // namespace
