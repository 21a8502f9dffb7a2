// What the dialogs of the structure, availability, shelf life and purchase price reports refuse, put right
// and add.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/Rpt10411.h"
#include "component/stock/Rpt10415.h"
#include "component/stock/Rpt10424.h"
#include "component/stock/Rpt303.h"
#include "component/stock/frmFirter10424.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using platform::Date;
using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;
using platform::Variant;

class StockDialogs : public StockTest {
 protected:
  StockDialogs() {
    desk.profile = Keys({{"IC/CurrentYear", 2024}, {"IC/CurrentPeriod", 3}});
    const Variant first = Date::Of(2024, 1, 1);
    desk.AnswerSql("FStartDate", TextRows({"FStartDate", "FEndDate"}, {{"2024-01-01", "2024-01-31"}}));
    desk.Answer("TOVEBCGLView.GLData", "GLGetPeriodDate", first);
  }

  template <class R>
  Ref<Dictionary> ShowWith(const FakeScreen::Script& script) {
    const Ref<Object> report = MakeReport<R>();
    desk.screen.scripts.push_back(script);
    report->Call("ShowFilter");
    return report->Get("Filter").AsRef<Dictionary>();
  }
  static std::string Value(Form& form, const char* id) { return Spell(form.Find(id)->Value()); }
  static SchemeControl& Control(Form& form) { return FilterControl::In<SchemeControl>(form); }
};

TEST_F(StockDialogs, StructureOpensWithoutSummary) {
  const Ref<Dictionary> filter = ShowWith<Rpt303>([](Form&, UserInput& user) { user.Click("cmdOK"); });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("cmbtype")), "'3'");
  EXPECT_EQ(Spell(filter->Value("InvoiceStyle")), "3");
  EXPECT_EQ(Spell(filter->Value("SumBy")), "'不汇总'");
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "'FItemNumber ASC '");
  EXPECT_FALSE(filter->Exists("RptID"));
}

TEST_F(StockDialogs, ASummaryThatTheApplicationDoesNotOfferStaysUnchosen) {
  store->Set("AppType", 1);
  ShowWith<Rpt303>([](Form& form, UserInput&) {
    const auto& summary = dynamic_cast<platform::ComboBox&>(*form.Find("cmbtype"));
    EXPECT_EQ(summary.EntryCount(), 3);
    Control(form).scheme->Set("cmbtype", "1");
    Control(form).events.RaiseWith("LoadScheme", "default");
    EXPECT_EQ(summary.ListIndex(), -1);
    Control(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(summary.Text(), "不汇总");
  });
}

TEST_F(StockDialogs, ADueDateBeforeTheAccountIsPutRightAndPassesNextTime) {
  const Ref<Dictionary> filter = ShowWith<Rpt10411>([&](Form& form, UserInput& user) {
    EXPECT_EQ(Value(form, "DtpEDate"), "2024-01-01") << "it opens at the account's first period";
    user.Set("DtpEDate", Date::Of(2023, 12, 31));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(Value(form, "DtpEDate"), "2024-01-01");
    user.Click("cmdOK");
    EXPECT_FALSE(form.IsVisible());
  });
  EXPECT_EQ(desk.Count("ask '[到期日]不能小于账套启用日期。' '摩文提示'"), 1);
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("EDate")), "'2024-01-01'");
}

TEST_F(StockDialogs, ShelfLifeSortsByTheChosenField) {
  const Ref<Dictionary> filter = ShowWith<Rpt10411>([](Form& form, UserInput& user) {
    user.Click("chkHideForbiddenGood");
    Control(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Value(form, "DtpEDate"), "2024-03-31");
    user.Set("cboSort", 3);
    user.Click("OptSortA");
    user.Set("cmbGroup", 2);
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "'Overdays DESC '");
  EXPECT_EQ(Spell(filter->Value("InvoiceStyle")), "2");
  EXPECT_EQ(Spell(filter->Value("chkHideForbiddenGood")), "'1'") << "a reset leaves it";
}

TEST_F(StockDialogs, PurchaseDatesThatCrossArePulledTogether) {
  const Ref<Dictionary> filter = ShowWith<Rpt10415>([](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 4, 2));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-03-31");
    user.Click("cmdOK");  // equal dates pass
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("InvoiceStyle")), "-1") << "nothing fills the groups";
  EXPECT_EQ(Spell(filter->Value("cboSort")), "'-1'");
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "''");
  EXPECT_EQ(Spell(filter->Value("chkNoDB")), "'1'");
}

TEST_F(StockDialogs, AResetClearsAHiddenPurchaseCondition) {
  const Ref<Dictionary> filter = ShowWith<Rpt10415>([](Form& form, UserInput& user) {
    Control(form).events.RaiseWith("ResetFields");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("chkNoDB")), "'0'");
  EXPECT_EQ(Spell(filter->Value("BDate")), "'2024-03-01'");
}

TEST_F(StockDialogs, GroupsWouldBringTheirSorts) {
  ShowWith<Rpt10415>([](Form& form, UserInput&) {
    auto& group = dynamic_cast<platform::ComboBox&>(*form.Find("cmbGroup"));
    const auto& sort = dynamic_cast<platform::ComboBox&>(*form.Find("cboSort"));
    for (int i = 0; i < 5; ++i) group.AddEntry("group");
    const char* expected[] = {"", "业务员代码", "部门代码", "仓库代码", ""};
    for (int i = 0; i < 5; ++i) {
      group.SetListIndex(i);
      EXPECT_EQ(sort.EntryCount(), *expected[i] == '\0' ? 1 : 2);
      EXPECT_TRUE(
          sort.ItemText(sort.EntryCount() - 1).starts_with(*expected[i] == '\0' ? "商品代码" : expected[i]));
      EXPECT_EQ(sort.ListIndex(), 0);
    }
  });
}

TEST_F(StockDialogs, AClosingDateBeforeTheAccountIsRefused) {
  const Ref<Dictionary> filter = ShowWith<Rpt10424>([&](Form& form, UserInput& user) {
    EXPECT_EQ(Value(form, "chkitem(4)"), "0") << "no tick until a scheme or a reset";
    Control(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Value(form, "chkitem(4)"), "1");
    user.Click("chkitem(0)");
    user.Set("DtpDate(0)", Date::Of(2023, 12, 31));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(desk.Count("截止日期不能小于账套启用日期"), 1);
    user.Set("DtpDate(0)", Date::Of(2024, 1, 1));
    user.Click("chkitem(4)");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("StartDate")), "2024-01-01");
  for (const char* term : {"chkInv", "chkCGBook", "chkXSBook", "chkLmtQ"})
    EXPECT_EQ(Spell(filter->Value(term)), "'0'") << "a sum of nothing is not refused";
}

TEST_F(StockDialogs, GetItemRightStopsAtAnError) {
  const Ref<Object> dialog = platform::MakeRef<frmFirter10424>();
  const Ref<Dictionary> empty = Keys({{"FStockID", ""}});
  dialog->Call("GetItemRight", empty);
  EXPECT_EQ(Spell(Variant(empty)), "{FStockID: '', sShowList: '', strStock: ''}");
  desk.Fail("TOVebsglitem.ItemInfo", "GetList", "no list");
  const Ref<Dictionary> failing = Keys({{"FStockID", "(1)"}});
  EXPECT_EQ(Raised([&] { dialog->Call("GetItemRight", failing); }), "nothing raised");
  EXPECT_EQ(Spell(Variant(failing)), "{FStockID: '(1)'}");
}

}  // namespace
}  // namespace component
