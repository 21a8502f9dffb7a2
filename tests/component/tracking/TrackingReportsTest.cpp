// What the reports on linked bills and on serial numbers head, restrict, refuse and add.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/tracking/Rpt10403.h"
#include "component/tracking/Rpt10418.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"

namespace component {
namespace {

using platform::Date;
using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using platform::Vector;

class TrackingReports : public ComponentTest {
 protected:
  TrackingReports() {
    ServeFilterControls(desk);
    desk.profile = Keys({{"IC/CurrentYear", 2024}, {"IC/CurrentPeriod", 3}});
    desk.AnswerSql("FStartDate", TextRows({"FStartDate", "FEndDate"}, {{"2024-01-01", "2024-01-31"}}));
    desk.Answer("TOVEBCGLView.GLView", "ItemLookUp", nullptr);
    desk.Answer("TOVMStockRpt.Data", "GetRpt10403Data", nullptr);
    desk.Answer("TOVMStockRpt.Data10418", "GetRpt10418Data", nullptr);
  }

  void RestrictUsers() {
    desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
    desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "1,5,8");
  }
  static void Fetch(Object& report, const Ref<Dictionary>& filter) {
    report.Put("Filter", Variant(filter));
    report.Call("GetReportData");
  }
  template <class R>
  Ref<Dictionary> ShowWith(const FakeScreen::Script& script) {
    const Ref<Object> report = MakeReport<R>();
    desk.screen.scripts.push_back(script);
    report->Call("ShowFilter");
    return report->Get("Filter").AsRef<Dictionary>();
  }
  static std::vector<std::string> Columns(Object& report, const char* key) {
    std::vector<std::string> texts;
    for (const Variant& item : report.Get("Header").AsRef<Vector>()->Items()) {
      texts.push_back(platform::ToText(item.AsRef<Dictionary>()->Value(key)));
    }
    return texts;
  }
  static std::string Right(Object& report, const char* key) {
    return platform::ToText(report.Get("Filter").AsRef<Dictionary>()->Value(key));
  }
  // How often base data of a type was looked up; of any type for "".
  auto Lookups(const std::string& type) { return desk.Lines("ItemLookUp(" + type).size(); }
  static std::string Value(Form& form, const char* id) { return Spell(form.Find(id)->Value()); }
  static bool IsEnabled(Form& form, const char* id) { return form.Find(id)->Enabled(); }
  static SchemeControl& Control(Form& form) { return FilterControl::In<SchemeControl>(form); }
};

const char* const kCustomerClause = " (CharIndex('12',tog.FRightUserID)>0 OR ISNULL(tog.FItemID,0)=0) ";
const char* const kSupplierClause = " (CharIndex('12',ts.FRightUserID)>0 OR ISNULL(ts.FItemID,0)=0) ";

TEST_F(TrackingReports, TheLinkedItemDecidesWhatIsRestricted) {
  struct Row {
    const char* name;
    Variant linkedBy;
    bool customers;
    bool suppliers;
  };
  const Row rows[] = {
      {"customer", 0, true, false},
      {"supplier", 1, false, true},
      {"matched customer", 2, true, true},
      {"matched supplier", 3, true, true},
      {"department", 4, true, true},
      {"employee", 5, true, true},
      {"no entry chosen", -1, true, true},
      {"as text", "1", false, true},
      {"a filter without it", {}, true, false},
  };
  RestrictUsers();
  const Ref<Object> report = MakeReport<Rpt10403>();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fetch(*report, Keys({{"InvoiceStyle", row.linkedBy}}));
    const std::string right = Right(*report, "DataRightWhere");
    EXPECT_EQ(right.find(kCustomerClause) != std::string::npos, row.customers) << right;
    EXPECT_EQ(right.find(kSupplierClause) != std::string::npos, row.suppliers) << right;
  }
}

TEST_F(TrackingReports, LinkedBillsShowBothSidesOfTheStock) {
  const Ref<Object> report = MakeReport<Rpt10403>();
  store->Set("AppType", 1);
  Fetch(*report, Keys({{"InvoiceStyle", 0}}));
  const std::vector<std::string> names = Columns(*report, "FColName");
  ASSERT_EQ(names.size(), 32U);
  EXPECT_EQ(names.front(), "FDate");
  EXPECT_EQ(names[19], "FInQty");
  EXPECT_EQ(names[30], "FOutAmount");
  EXPECT_EQ(names.back(), "FNote");
  EXPECT_EQ(Columns(*report, "FColCaption")[19], "入库+|+|+|+|+|");
  EXPECT_THAT(Columns(*report, "FForceHide"), testing::Each("False")) << "no application type loses a column";
}

TEST_F(TrackingReports, AFetchWithoutAFilterSaysSo) {
  for (const Ref<Object>& report : {MakeReport<Rpt10403>(), MakeReport<Rpt10418>()}) {
    SCOPED_TRACE(report->ClassName());
    report->Call("Refresh");
    const Ref<Dictionary> result = report->Get("Result").AsRef<Dictionary>();
    EXPECT_EQ(Spell(result->Value("OK")), "False");
    EXPECT_EQ(platform::ToText(result->Value("Error")), "the report has no filter");
  }
}

TEST_F(TrackingReports, SerialNumbersShowTheirBillsOnDemand) {
  struct Row {
    const char* name;
    Variant detail;
    std::size_t columns;
  };
  const Row rows[] = {{"asked for", "1", 14},       {"asked for by a number", 1, 14},
                      {"not asked for", "0", 8},    {"absent", {}, 8},
                      {"a text that is 2", "2", 8}, {"a text that is none", "yes", 8}};
  const Ref<Object> report = MakeReport<Rpt10418>();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fetch(*report, Keys({{"chkDetail", row.detail}}));
    EXPECT_EQ(Columns(*report, "FColName").size(), row.columns);
  }
  Fetch(*report, Keys({{"chkDetail", "1"}}));
  const std::vector<std::string> types = Columns(*report, "FColType");
  EXPECT_EQ(std::count(types.begin(), types.end(), "4"), 1) << "the price alone is no text";
  EXPECT_EQ(Columns(*report, "FColName")[12], "FShowPrice");
}

TEST_F(TrackingReports, SerialNumbersAreRestrictedByTwoClauses) {
  RestrictUsers();
  const Ref<Object> report = MakeReport<Rpt10418>();
  Fetch(*report, Keys({}));
  EXPECT_EQ(Right(*report, "DataRightWhere"),
            " (CharIndex('12',t7.FRightUserID)>0 OR ISNULL(t7.FItemID,0)=0)  And "
            " (CharIndex('12',t8.FRightUserID)>0 OR ISNULL(t8.FItemID,0)=0) ");
  EXPECT_EQ(Right(*report, "DataRightWhereStock"),
            " (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ");
}

TEST_F(TrackingReports, ByDepartmentOrEmployeeThePartnerIsOutOfUse) {
  struct Row {
    const char* name;
    int linkedBy;
    bool hasPartner;
  };
  const Row rows[] = {{"supplier", 1, true},  {"department", 4, false},      {"customer", 0, true},
                      {"employee", 5, false}, {"matched supplier", 3, true}, {"matched customer", 2, true}};
  ShowWith<Rpt10403>([&](Form& form, UserInput& user) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      form.Find("txtItem(6)")->SetValue("C09");
      form.Find("txtItem(7)")->SetValue("C01");
      user.Set("cboByItem", row.linkedBy);
      for (const char* id : {"txtItem(6)", "txtItem(7)", "cmdItem(6)", "cmdItem(7)"}) {
        EXPECT_EQ(IsEnabled(form, id), row.hasPartner) << id;
      }
      EXPECT_EQ(Value(form, "txtItem(6)"), "''");
      EXPECT_EQ(Value(form, "txtItem(7)"), "''");
    }
  });
}

TEST_F(TrackingReports, TheLinkedItemDecidesWhatIsLookedUp) {
  struct Row {
    const char* name;
    int linkedBy;
    const char* field;
    const char* type;  // of the item lookup; empty: none is offered
  };
  const Row rows[] = {{"customer", 0, "txtItem(7)", "1"},
                      {"supplier", 1, "txtItem(6)", "8"},
                      {"matched customer", 2, "txtItem(7)", "1"},
                      {"matched supplier", 3, "txtItem(6)", "8"},
                      {"department beside a customer", 0, "txtItem(4)", "2"},
                      {"linked department", 4, "txtItem(4)", "2"},
                      {"linked employee", 5, "txtItem(8)", "3"},
                      {"property", 0, "txtItem(10)", "10"},
                      {"no partner by department", 4, "txtItem(7)", ""}};
  ShowWith<Rpt10403>([&](Form&, UserInput& user) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      user.Set("cboByItem", row.linkedBy);
      const std::string type = row.type[0] == '\0' ? "" : row.type + std::string(",");
      const auto before = Lookups(type);
      user.PressKey(row.field, "F7");
      EXPECT_EQ(Lookups(type) - before, type.empty() ? 0U : 1U);
    }
  });
}

TEST_F(TrackingReports, AStoredPartnerRangeSurvivesItsLinkedItem) {
  const Ref<Dictionary> filter = ShowWith<Rpt10403>([](Form& form, UserInput& user) {
    auto& scheme = *Control(form).scheme;
    scheme.Set("BCustNumber", "S01");
    scheme.Set("ECustNumber", "S09");
    scheme.Set("cboByItem", "1");
    Control(form).events.RaiseWith("LoadScheme", "default");
    EXPECT_EQ(Value(form, "txtItem(7)"), "'S01'");
    EXPECT_EQ(Value(form, "txtItem(6)"), "'S09'");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("InvoiceStyle")), "1");
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "0") << "a number, no clause";
  EXPECT_EQ(Spell(filter->Value("chkShowTran")), "1");
}

TEST_F(TrackingReports, AResetLeavesTheLinkedItem) {
  ShowWith<Rpt10403>([](Form& form, UserInput& user) {
    user.Set("cboByItem", 2);
    user.Click("chkShowItem");
    user.Set("cboSort", 3);
    user.Click("OptSortA");
    user.Set("txtItem(0)", "01");
    Control(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Value(form, "cboByItem"), "'匹配客户'");
    EXPECT_EQ(Value(form, "chkShowItem"), "1");
    EXPECT_EQ(Value(form, "cboSort"), "'单据日期'");
    EXPECT_EQ(Value(form, "OptSortD"), "True");
    EXPECT_EQ(Value(form, "txtItem(0)"), "''");
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-01-01");
  });
}

TEST_F(TrackingReports, SmallApplicationsHaveNoProperties) {
  for (const int appType : {1, 2, 4}) {
    SCOPED_TRACE(appType);
    store->Set("AppType", appType);
    ShowWith<Rpt10403>([&](Form& form, UserInput&) {
      for (const char* id : {"lbl_txtItem(10)", "txtItem(10)", "cmdItem(10)", "lbl_txtItem(11)",
                             "txtItem(11)", "cmdItem(11)"}) {
        EXPECT_EQ(form.Find(id)->Visible(), appType != 1) << id;
      }
    });
  }
}

TEST_F(TrackingReports, TheSortOptionsOfSerialNumbersStandTheirOwnWay) {
  const Ref<Dictionary> filter = ShowWith<Rpt10418>([](Form& form, UserInput& user) {
    EXPECT_EQ(form.Find("OptSortD")->Caption(), "降序");
    EXPECT_EQ(form.Find("OptSortA")->Caption(), "升序");
    EXPECT_EQ(Value(form, "OptSortD"), "True");
    user.Click("OptSortA");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("OptSortA")), "'True'");
  for (const char* key : {"OrderBy", "InvoiceStyle", "ShowTypeValue"})
    EXPECT_FALSE(filter->Exists(key)) << key;
  EXPECT_EQ(Spell(filter->Value("RptID")), "10418s");
}

TEST_F(TrackingReports, DatesThatCrossArePulledTogether) {
  const auto cross = [](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 4, 2));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-03-31");
    user.Click("cmdOK");  // equal dates pass
    EXPECT_FALSE(form.IsVisible());
  };
  ShowWith<Rpt10403>(cross);
  ShowWith<Rpt10418>(cross);
  EXPECT_EQ(desk.Count("ask '起始日期不能大于截止日期!' '摩文提示'"), 2);
}

}  // namespace
}  // namespace component
