// Serial numbers on the tracking book, whose bills TrackingBook.cpp tells.
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

class SerialNumbers : public testing::Test {
 protected:
  platform::Ref<platform::Recordset> Fetch(const FilterEntries& filter) const {
    return books::test::Fetch(book_, "TOVMStockRpt.Data10418", "GetRpt10418Data", filter);
  }

  books::test::BookFile file_{books::test::WriteTrackingBook};
  books::Book book_ = file_.Open();
};

struct Case {
  std::string name;
  FilterEntries filter;
  Lines lines;
};

const Lines kNumber = {"FSerialNo", "FStockName", "FSerialNoStatus", "FSerialNoNote"};
const std::string kSold = "SN-1 '' 已出库 ''";
const std::string kKept = "SN-2 分仓库 在库 样机";

const std::vector<Case> kNumbers = {
    {"all that ever moved", {}, {kSold, kKept}},
    {"all, chosen", {{"cboSerialNoStatus", "0"}}, {kSold, kKept}},
    {"in stock", {{"cboSerialNoStatus", "1"}}, {kKept}},
    {"issued", {{"cboSerialNoStatus", "2"}}, {kSold}},
    {"one number", {{"BSerialNo", "sn-2"}, {"ESerialNo", "sn-2"}}, {kKept}},
    {"up to a number", {{"ESerialNo", "SN-1"}}, {kSold}},
    {"items", {{"BItemNumber", "02.002"}, {"EItemNumber", "02.002"}}, {kSold, kKept}},
    {"other items", {{"BItemNumber", "02.003"}}, {}},
    {"a warehouse: what was issued stands in none", {{"BStockNumber", "02"}}, {kKept}},
    {"a warehouse that it left", {{"BStockNumber", "01"}, {"EStockNumber", "01"}}, {}},
    {"a part of the model", {{"Model", "m-02.0"}}, {kSold, kKept}},
    {"a part of no model", {{"Model", "%"}}, {}},
    {"a part of the note", {{"SerialNoNote", "样"}}, {kKept}},
    {"a supplier: both came from him", {{"ESupplyNumber", "01"}}, {kSold, kKept}},
    {"a supplier who brought none", {{"BSupplyNumber", "02"}}, {}},
    {"a customer", {{"BCustNumber", "01"}, {"ECustNumber", "01"}}, {kSold}},
    {"days on which one moved", {{"BDate", "2025-02-01"}, {"EDate", "2025-02-28"}}, {kKept}},
    {"days before", {{"EDate", "2025-01-04"}}, {}},
    {"by number, downwards", {{"cboSort", "2"}, {"OptSortD", "True"}}, {kKept, kSold}},
    {"by number, upwards", {{"cboSort", "2"}, {"OptSortD", "False"}, {"OptSortA", "True"}}, {kSold, kKept}},
    {"the warehouse where it stands", {{"DataRightWhereStock", RightsOf("12", "t4")}}, {kSold, kKept}},
    {"a warehouse that the user may not see", {{"DataRightWhereStock", RightsOf("7", "t4")}}, {kSold}},
    // User 12 sees the customer's bill and the one without partner, not the supplier's.
    {"partners", {{"DataRightWhere", RightsOf("12", "t7") + " And " + RightsOf("12", "t8")}}, {kSold, kKept}},
    {"a user who sees no partner",
     {{"DataRightWhere", RightsOf("99", "t7") + " And " + RightsOf("99", "t8")}},
     {kKept}},
};

TEST_F(SerialNumbers, WhereTheyStand) {
  for (const Case& each : kNumbers) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*Fetch(each.filter), kNumber), each.lines);
  }
}

const Lines kBill = {"FSerialNo", "FBillNo", "FBillType", "FDate", "FSuppOrgName", "FShowPrice"};

const std::vector<Case> kHistories = {
    {"whole",
     {},
     {"SN-1 CG-1 采购收货 2025-01-05 鲜果供应商 400", "'' XS-1 销售发货 2025-01-10 街角商店 650",
      "SN-2 CG-1 采购收货 2025-01-05 鲜果供应商 400", "'' DB-3 调拨 2025-02-03 '' 0"}},
    {"with the number in every row",
     {{"chkAllDetailShow", "1"}, {"BSerialNo", "SN-2"}},
     {"SN-2 CG-1 采购收货 2025-01-05 鲜果供应商 400", "SN-2 DB-3 调拨 2025-02-03 '' 0"}},
    {"downwards, each in its own order",
     {{"cboSort", 2}, {"OptSortD", true}},
     {"SN-2 CG-1 采购收货 2025-01-05 鲜果供应商 400", "'' DB-3 调拨 2025-02-03 '' 0",
      "SN-1 CG-1 采购收货 2025-01-05 鲜果供应商 400", "'' XS-1 销售发货 2025-01-10 街角商店 650"}},
    {"the first row of the days carries the number",
     {{"BDate", "2025-01-06"}},
     {"SN-1 XS-1 销售发货 2025-01-10 街角商店 650", "SN-2 DB-3 调拨 2025-02-03 '' 0"}},
    {"a customer's bills", {{"BCustNumber", "01"}}, {"SN-1 XS-1 销售发货 2025-01-10 街角商店 650"}},
    {"without the supplier that the user may not see",
     {{"DataRightWhere", RightsOf("12", "t7") + " And " + RightsOf("12", "t8")}},
     {"SN-1 XS-1 销售发货 2025-01-10 街角商店 650", "SN-2 DB-3 调拨 2025-02-03 '' 0"}},
};

TEST_F(SerialNumbers, Histories) {
  for (const Case& each : kHistories) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(LinesOf(*Fetch(books::test::With({{"chkDetail", "1"}}, each.filter)), kBill), each.lines);
  }
}

// Without bills the columns of bills are there and empty, so that the heading may change before the rows do.
TEST_F(SerialNumbers, Fields) {
  const auto rows = Fetch({});
  Lines names;
  for (const platform::Field& field : rows->Fields()) names.push_back(field.name);
  EXPECT_THAT(names, testing::ElementsAre("FItemNumber", "FItemName", "FModel", "FSerialNo", "FStockName",
                                          "FAuxPropName", "FSerialNoStatus", "FSerialNoNote", "FBillNo",
                                          "FBillType", "FDate", "FSuppOrgName", "FShowPrice", "FEntryNote"));
  EXPECT_EQ(LinesOf(*rows, names).front(), "02.002 扫描枪 M-02.002 SN-1 '' '' 已出库 '' '' '' - '' - ''");
}

TEST_F(SerialNumbers, Refuses) {
  const std::vector<FilterEntries::value_type> refused = {
      {"cboSerialNoStatus", 3},
      {"cboSort", "3"},
      {"chkDetail", "是"},
      {"EDate", "明天"},
      {"DataRightWhere", "t4.FItemID=1"},
      {"DataRightWhereStock", "t7.FItemID=1"},
  };
  for (const auto& entry : refused) {
    EXPECT_THAT(books::test::RefusalOf([&] { Fetch({entry}); }), testing::HasSubstr(entry.first));
  }
}

}  // namespace
