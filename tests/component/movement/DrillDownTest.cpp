// From a row of a summary to the bills behind it: the detail's filter, the silent cases and the error box.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/movement/Rpt10412.h"
#include "component/movement/Rpt10413.h"
#include "component/movement/Rpt10416.h"
#include "component/movement/Rpt10417.h"
#include "tests/component/FetchTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DrillDownTest : public FetchTest {
 protected:
  DrillDownTest() {
    desk.Serve("TOVStockRpt.Rpt10413", [] { return MakeReport<Rpt10413>(); });
    desk.Serve("TOVStockRpt.Rpt10417", [] { return MakeReport<Rpt10417>(); });
    desk.Answer("TOVMStockRpt.Data10413", "GetRpt10413Data", TextRows({"FDate"}, {{"2024-03-05"}}));
    desk.Answer("TOVMStockRpt.Data10417", "GetRpt10417Data", TextRows({"FDate"}, {{"2024-03-05"}}));
    desk.AnswerSql("Fitemid=7", TextRows({"FNumber"}, {{"02"}}));
    desk.AnswerSql("Fitemid=8", TextRows({"FNumber"}, {}));
    desk.AnswerSql("Fitemid=9", TextRows({"FNumber"}, {{platform::Null()}}));
  }

  static Ref<Recordset> SummaryRows() {
    return TextRows({"FSumSort", "FItemNumber", "FBatchNo", "FCommonID"},
                    {{"0", "01.01", "B1", "7"},
                     {"1", "小计", "", "7"},
                     {"0", "01.02", "B2", "8"},
                     {platform::Null(), "01.03", "B3", "9"},
                     {"0", "01.04", "B4", "10"},
                     {"0", "01.05", "B5", "主仓"}});
  }
  // A summary of the class with these rows, fetched.
  template <class R>
  Ref<Object> Summary(const Variant& group, const Variant& rows) {
    for (const char* method : {"GetRpt10412Data", "GetRpt10416Data"}) {
      desk.Answer("TOVMStockRpt.Data", method, rows);
    }
    const Ref<Object> report = MakeReport<R>();
    Fetch(*report, Keys({{"BDate", "2024-03-01"},
                         {"EDate", "2024-03-31"},
                         {"BItemNumber", "00"},
                         {"EItemNumber", "99"},
                         {"BBatchNo", "A"},
                         {"EBatchNo", "Z"},
                         {"BDeptNumber", "D1"},
                         {"EDeptNumber", "D2"},
                         {"BStockNumber", "S1"},
                         {"EStockNumber", "S2"},
                         {"BEmpNumber", "E1"},
                         {"EEmpNumber", "E2"},
                         {"chkShowTran", 1},
                         {"chkNoAmt", 0},
                         {"chkNoBal", 1},
                         {"cmbGroup", group}}));
    desk.journal.clear();
    desk.sqlTexts.clear();
    return report;
  }
  static Ref<Object> Detail(Object& report, int row) {
    return report.Call("GetDetailReport", row).AsRef<Object>();
  }
  static Ref<Dictionary> FilterOf(Object& report) { return report.Get("Filter").AsRef<Dictionary>(); }
};

TEST_F(DrillDownTest, TheFilterIsCompleteAndInOrder) {
  const Ref<Object> report = Summary<Rpt10412>(0, SummaryRows());
  const Ref<Object> detail = Detail(*report, 0);
  ASSERT_TRUE(detail);
  EXPECT_EQ(detail->ClassName(), "TOVStockRpt.Rpt10413");
  EXPECT_EQ(
      Spell(detail->Get("Filter")),
      "{BDate: '2024-03-01', EDate: '2024-03-31', BItemNumber: '01.01', EItemNumber: '01.01', BBatchNo: "
      "'A', EBatchNo: 'Z', BDeptNumber: 'D1', EDeptNumber: 'D2', BStockNumber: 'S1', EStockNumber: "
      "'S2', BEmpNumber: 'E1', EEmpNumber: 'E2', BAuxPropNumber: '', EAuxPropNumber: '', chkOnlyTotal: "
      "'0', chkShowTran: 1, chkGroupByGood: 1, chkNoZero: 0, chkNoAmt: 0, chkNoBal: 1, OrderBy: ' "
      "T1.FDate ASC ', DataRightWhere: ''}");
  EXPECT_EQ(Spell(detail->Get("RptID")), "10413");
  EXPECT_EQ(Spell(detail->Get("Result").AsRef<Dictionary>()->Value("OK")), "True");
  EXPECT_EQ(desk.Count("show "), 0) << "its dialog is not shown";
  EXPECT_EQ(Spell(FilterOf(*report)->Value("BItemNumber")), "'00'") << "the summary's own stays";
}

TEST_F(DrillDownTest, WhatIsTakenFromTheRowFollowsTheGroup) {
  struct Row {
    const char* name;
    Variant group;
    int row;
    const char* batch;
    const char* stock;
    const char* id;
  };
  const Row rows[] = {
      {"by item", 0, 0, "'A'", "'S1'", "7"},
      {"by warehouse", 1, 0, "'A'", "'02'", "7"},
      {"by warehouse, as a text", "1", 0, "'A'", "'02'", "7"},
      {"by batch", 2, 0, "'B1'", "'S1'", "7"},
      {"no such warehouse", 1, 2, "'A'", "''", "8"},
      {"a warehouse without a number", 1, 3, "'A'", "''", "9"},
      {"a lookup that fails", 1, 4, "'A'", "''", "10"},
      {"a lookup that fails and is not used", 0, 4, "'A'", "'S1'", "10"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Object> report = Summary<Rpt10412>(row.group, SummaryRows());
    const Ref<Object> detail = Detail(*report, row.row);
    ASSERT_TRUE(detail);
    for (const char* side : {"B", "E"}) {
      const Variant& batch = FilterOf(*detail)->Value(std::string(side) + "BatchNo");
      const Variant& stock = FilterOf(*detail)->Value(std::string(side) + "StockNumber");
      const std::string whole = *side == 'B' ? "A" : "Z";
      EXPECT_EQ(Spell(batch), std::string(row.batch) == "'A'" ? "'" + whole + "'" : row.batch);
      EXPECT_EQ(Spell(stock),
                std::string(row.stock) == "'S1'" ? (*side == 'B' ? "'S1'" : "'S2'") : row.stock);
    }
    const std::string sql = std::string("Select Fnumber from t_stock where Fitemid=") + row.id;
    EXPECT_THAT(desk.sqlTexts, ElementsAre(sql, sql)) << "once a key, in every grouping";
  }
}

TEST_F(DrillDownTest, BalancesAndZerosFollowTheApplication) {
  struct Row {
    int appType;
    const char* goodsByGood;
    const char* batchesNoZero;
  };
  for (const Row& row : {Row{1, "0", "0"}, Row{2, "1", "1"}, Row{4, "1", "1"}}) {
    SCOPED_TRACE(row.appType);
    store->Set("AppType", row.appType);
    const Ref<Object> goods = Detail(*Summary<Rpt10412>(0, SummaryRows()), 0);
    EXPECT_EQ(Spell(FilterOf(*goods)->Value("chkGroupByGood")), row.goodsByGood);
    EXPECT_EQ(Spell(FilterOf(*goods)->Value("chkNoZero")), "0");
    const Ref<Object> batches = Detail(*Summary<Rpt10416>("2", SummaryRows()), 0);
    EXPECT_EQ(batches->ClassName(), "TOVStockRpt.Rpt10417");
    EXPECT_EQ(Spell(batches->Get("RptID")), "10417");
    EXPECT_EQ(Spell(FilterOf(*batches)->Value("chkGroupByGood")), "1");
    EXPECT_EQ(Spell(FilterOf(*batches)->Value("chkNoZero")), row.batchesNoZero);
    EXPECT_EQ(Spell(FilterOf(*batches)->Value("BBatchNo")), "'B1'");
    EXPECT_FALSE(FilterOf(*batches)->Exists("RptID"));
  }
}

TEST_F(DrillDownTest, TheDetailOutlivesItsSummary) {
  Ref<Object> report = Summary<Rpt10412>(0, SummaryRows());
  const Ref<Object> detail = Detail(*report, 0);
  report = nullptr;
  EXPECT_EQ(Report::LiveCount(), 1);
  EXPECT_EQ(detail->Get("rs").AsRef<Recordset>()->RecordCount(), 1);
}

TEST_F(DrillDownTest, RowsWithoutADetailSayNothing) {
  struct Row {
    const char* name;
    Variant rows;
    int row;
    int position;  // afterwards
  };
  const Ref<Recordset> closed = TextRows({"FSumSort"}, {{"0"}});
  closed->Close();
  const Ref<Recordset> atEnd = SummaryRows();
  atEnd->MoveLast();
  atEnd->MoveNext();
  const Row rows[] = {
      {"a row that sums up others", SummaryRows(), 1, 2},
      {"no rows at all", TextRows({"FSumSort"}, {}), 0, -1},
      {"no recordset", nullptr, 0, 0},
      {"a closed one", closed, 0, 0},
      {"at its end", atEnd, 0, -1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Object> report = Summary<Rpt10412>(0, row.rows);
    EXPECT_FALSE(Detail(*report, row.row));
    EXPECT_THAT(desk.journal, IsEmpty()) << "no message, no pointer, no lookup";
    const Ref<Recordset> left = report->Get("rs").AsRef<Recordset>();
    if (row.position != 0) {
      EXPECT_EQ(left->AbsolutePosition(), row.position);
    }
  }
  const Ref<Object> unfetched = MakeReport<Rpt10416>();
  EXPECT_FALSE(Detail(*unfetched, 0));
}

TEST_F(DrillDownTest, TheRowsStayWhereTheDetailWasAsked) {
  const Ref<Object> report = Summary<Rpt10416>(2, SummaryRows());
  EXPECT_TRUE(Detail(*report, 3));
  EXPECT_EQ(report->Get("rs").AsRef<Recordset>()->AbsolutePosition(), 4);
  EXPECT_TRUE(Detail(*report, 0));
  EXPECT_EQ(report->Get("rs").AsRef<Recordset>()->AbsolutePosition(), 1);
}

TEST_F(DrillDownTest, FailuresAreToldInABox) {
  struct Row {
    const char* name;
    std::function<void(Desk&)> arrange;
    int row;
    const char* text;
  };
  const Row rows[] = {
      {"the data fail",
       [](Desk& other) { other.Fail("TOVMStockRpt.Data10413", "GetRpt10413Data", "数据库超时"); }, 0,
       "数据库超时"},
      {"no data component", [](Desk& other) { other.Withdraw("TOVMStockRpt.Data10413"); }, 0,
       "class not registered: TOVMStockRpt.Data10413"},
      {"no detail report", [](Desk& other) { other.Withdraw("TOVStockRpt.Rpt10413"); }, 0,
       "class not registered: TOVStockRpt.Rpt10413"},
      {"a row beyond the last", [](Desk&) {}, 6, "no current row"},
      {"a row far beyond the last", [](Desk&) {}, 600, "no current row"},
      {"a row before the first", [](Desk&) {}, -1, "no current row"},
      {"a warehouse that is no number", [](Desk&) {}, 5, "type mismatch"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Ref<Object> report = Summary<Rpt10412>(0, SummaryRows());
    row.arrange(desk);
    EXPECT_FALSE(Detail(*report, row.row));
    const std::vector<std::string> asked = desk.Lines("ask ");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_TRUE(asked[0].starts_with(std::string("ask '") + row.text)) << asked[0];
    EXPECT_TRUE(asked[0].ends_with("' '信息提示' ok information ok -> ok")) << asked[0];
    EXPECT_EQ(desk.Count("pointer default"), 1);
    EXPECT_EQ(Spell(report->Get("Result").AsRef<Dictionary>()->Value("OK")), "True")
        << "the summary has not failed";
    desk.Serve("TOVStockRpt.Rpt10413", [] { return MakeReport<Rpt10413>(); });
    desk.Answer("TOVMStockRpt.Data10413", "GetRpt10413Data", TextRows({"FDate"}, {}));
  }
}

TEST_F(DrillDownTest, ADetailThatFailsWithoutAWordIsSilent) {
  const Ref<Object> report = Summary<Rpt10412>(0, SummaryRows());
  desk.Fail("TOVEBCGLView.GLData", "AccessCheck", "no right");  // outside the trap that keeps texts
  EXPECT_FALSE(Detail(*report, 0));
  EXPECT_THAT(desk.Lines("ask "), IsEmpty());
  EXPECT_EQ(desk.Count("pointer default"), 1);
  EXPECT_EQ(Report::LiveCount(), 1) << "the detail is gone";
}

TEST_F(DrillDownTest, ADetailIsSetUpByItsMembers) {
  desk.Withdraw("TOVStockRpt.Rpt10413");
  desk.Answer("TOVStockRpt.Rpt10413", "GetReportData", {});
  desk.Answer("TOVStockRpt.Rpt10413", "Result", Keys({{"OK", true}, {"Error", ""}}));
  const Ref<Object> report = Summary<Rpt10412>(0, SummaryRows());
  EXPECT_TRUE(Detail(*report, 0));
  std::vector<std::string> members;
  for (const std::string& line : desk.Lines(" TOVStockRpt.Rpt10413")) {
    members.push_back(line.substr(0, line.find('(')));
  }
  EXPECT_THAT(members, ElementsAre("new TOVStockRpt.Rpt10413", "put TOVStockRpt.Rpt10413.RptID",
                                   "put TOVStockRpt.Rpt10413.Filter", "put TOVStockRpt.Rpt10413.ExtFirter",
                                   "call TOVStockRpt.Rpt10413.GetReportData",
                                   "get TOVStockRpt.Rpt10413.Result", "end TOVStockRpt.Rpt10413"));
}

}  // namespace
}  // namespace component
