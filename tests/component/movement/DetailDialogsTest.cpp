// The dialogs of both movement details.
#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/movement/Rpt10413.h"
#include "component/movement/Rpt10417.h"
#include "tests/component/FetchTest.h"

namespace component {
namespace {

using platform::ComboBox;
using platform::Date;
using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;
using platform::Variant;
using ::testing::ElementsAre;

class DetailDialogs : public FetchTest {
 protected:
  DetailDialogs() {
    desk.AnswerSql("FStartDate", TextRows({"FStartDate", "FEndDate"}, {{"2024-01-01", "2024-01-31"}}));
    desk.Answer("TOVMClass.ClassInfo", "GetData", nullptr);
  }

  template <class R>
  Ref<Dictionary> ShowWith(const FakeScreen::Script& script) {
    const Ref<Object> report = MakeReport<R>();
    desk.screen.scripts.push_back(script);
    report->Call("ShowFilter");
    return report->Get("Filter").AsRef<Dictionary>();
  }
  static ComboBox& Combo(Form& form, const char* id) { return dynamic_cast<ComboBox&>(*form.Find(id)); }
  static std::vector<std::string> Entries(Form& form, const char* id) {
    std::vector<std::string> texts;
    for (const ComboBox::Entry& entry : Combo(form, id).Entries()) {
      const std::size_t bar = entry.text.find('|');
      texts.push_back(bar == std::string::npos ? entry.text : entry.text.substr(bar + 1));
    }
    return texts;
  }
  static std::string Value(Form& form, const char* id) { return Spell(form.Find(id)->Value()); }
  static ReportControl& Control(Form& form) { return FilterControl::In<ReportControl>(form); }
  static SchemeControl& Schemes(Form& form) { return FilterControl::In<SchemeControl>(form); }
  static std::vector<std::string> Tail(const Dictionary& filter, std::size_t from) {
    std::vector<std::string> keys;
    for (std::size_t i = from; i < filter.Entries().size(); ++i) keys.push_back(filter.Entries()[i].key);
    return keys;
  }
};

TEST_F(DetailDialogs, KeysComeInTheirOrder) {
  const Ref<Dictionary> goods = ShowWith<Rpt10413>([](Form& form, UserInput&) { Control(form).Ok(); });
  EXPECT_THAT(Tail(*goods, 12),
              ElementsAre("BAuxPropNumber", "EAuxPropNumber", "cmbGroup", "chkOnlyTotal", "chkNoAmt",
                          "chkNoBal", "chkNoDB", "cboSort", "OptSortD", "OptSortA", "chkGroupByGood",
                          "chkNoZero", "OrderBy", "ShowTypeValue", "InvoiceStyle", "chkShowTran", "OK"));
  EXPECT_EQ(Spell(goods->Value("chkShowTran")), "1");
  EXPECT_EQ(Spell(goods->Value("chkNoDB")), "1");
  EXPECT_EQ(Spell(goods->Value("OrderBy")), "'T1.FDate ASC '");
  EXPECT_FALSE(goods->Exists("RptID"));
  const Ref<Dictionary> batches = ShowWith<Rpt10417>([](Form&, UserInput& user) { user.Click("cmdOK"); });
  EXPECT_THAT(
      Tail(*batches, 12),
      ElementsAre("BAuxPropNumber", "EAuxPropNumber", "cmbGroup", "chkOnlyTotal", "chkNoAmt", "chkNoBal",
                  "chkNoDB", "cboSort", "OptSortD", "OptSortA", "chkGroupByGood", "chkNoZero", "UserID", "OK",
                  "InvoiceStyle", "ShowTypeValue", "OrderBy", "RptID", "chkShowTran"));
  EXPECT_EQ(Spell(batches->Value("RptID")), "10413s") << "not this report's own number";
  EXPECT_EQ(Spell(batches->Value("chkShowTran")), "1");
}

TEST_F(DetailDialogs, WhatTheUserCanChangeFollowsTheForm) {
  struct Row {
    const char* control;
    bool goods;
    bool batches;
  };
  const Row rows[] = {
      {"cmbGroup", false, false},  {"chkOnlyTotal", false, false}, {"chkGroupByGood", true, false},
      {"chkNoZero", true, true},   {"chkNoDB", true, true},        {"cboSort", true, true},
      {"txtItem(10)", true, true},
  };
  ShowWith<Rpt10413>([&](Form& form, UserInput&) {
    for (const Row& row : rows) EXPECT_EQ(form.Find(row.control)->IsUsable(), row.goods) << row.control;
  });
  EXPECT_EQ(desk.Count("new TOVMClass.ClassInfo"), 1);
  EXPECT_EQ(desk.Count("end TOVMClass.ClassInfo"), 1);
  ShowWith<Rpt10417>([&](Form& form, UserInput&) {
    for (const Row& row : rows) EXPECT_EQ(form.Find(row.control)->IsUsable(), row.batches) << row.control;
  });
  EXPECT_EQ(desk.Count("new TOVMClass.ClassInfo"), 1) << "only the detail of goods asks for it";
}

TEST_F(DetailDialogs, TheSmallestApplicationSeesLess) {
  struct Row {
    const char* control;
    bool goods;
    bool batches;
  };
  const Row rows[] = {
      {"txtItem(2)", false, true},      {"cmdItem(3)", false, true},   {"lbl_txtItem(2)", false, true},
      {"txtItem(10)", false, false},    {"cmdItem(11)", false, false}, {"lbl_txtItem(10)", false, false},
      {"chkGroupByGood", false, false}, {"chkNoZero", false, false},   {"txtItem(8)", true, true},
      {"chkNoDB", true, true},          {"cboSort", true, true},
  };
  for (const int appType : {1, 2, 4}) {
    SCOPED_TRACE(appType);
    store->Set("AppType", appType);
    ShowWith<Rpt10413>([&](Form& form, UserInput&) {
      for (const Row& row : rows) {
        EXPECT_EQ(form.Find(row.control)->IsShown(), appType != 1 || row.goods) << row.control;
      }
      EXPECT_EQ(form.Find("Frame1")->Visible(), appType != 1);
    });
    ShowWith<Rpt10417>([&](Form& form, UserInput&) {
      for (const Row& row : rows) {
        EXPECT_EQ(form.Find(row.control)->IsShown(), appType != 1 || row.batches) << row.control;
      }
    });
  }
}

TEST_F(DetailDialogs, TheSortsDoNotFollowTheGroup) {
  const auto check = [](Form& form, UserInput&) {
    EXPECT_THAT(Entries(form, "cmbGroup"), ElementsAre("不分组", "按日期", "按仓库", "辅助属性"));
    for (int group = 0; group < 4; ++group) {
      Combo(form, "cboSort").SetListIndex(4);
      Combo(form, "cmbGroup").SetListIndex(group);
      EXPECT_THAT(Entries(form, "cboSort"),
                  ElementsAre("T1.FDate", "T1.FBillNo", "T1.FBillType", "T2.FNumber", "T2.FName"));
      EXPECT_EQ(Combo(form, "cboSort").ListIndex(), 0) << "a change of the group starts anew";
    }
  };
  ShowWith<Rpt10413>(check);
  ShowWith<Rpt10417>(check);
}

TEST_F(DetailDialogs, LoadingFallsBackOnItsDefaults) {
  struct Row {
    const char* control;
    const char* value;
  };
  ShowWith<Rpt10413>([](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 2, 2));
    user.Set("txtItem(11)", "P");
    user.Click("chkNoDB");
    user.Click("chkGroupByGood");
    Control(form).events.RaiseWith("LoadFields", Keys({{"cmbGroup", 2}, {"cboSort", 3}}));
    for (const Row& row : {Row{"DtpBDate", "2024-02-02"}, Row{"txtItem(11)", "''"}, Row{"chkNoDB", "1"},
                           Row{"chkGroupByGood", "0"}, Row{"OptSortD", "False"}, Row{"OptSortA", "True"},
                           Row{"cmbGroup", "'按仓库'"}}) {
      EXPECT_EQ(Value(form, row.control), row.value) << row.control;
    }
    EXPECT_EQ(Combo(form, "cboSort").ListIndex(), 3) << "the group is set first";
  });
}

TEST_F(DetailDialogs, AResetSetsWhatItSets) {
  const Ref<Dictionary> goods = ShowWith<Rpt10413>([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Click("chkNoDB");
    user.Click("chkNoAmt");
    user.Set("cboSort", 3);
    Control(form).events.RaiseWith("ResetFields");
    Control(form).Ok();
  });
  EXPECT_EQ(Spell(goods->Value("BDate")), "2024-01-01");
  EXPECT_EQ(Spell(goods->Value("cboSort")), "0");
  EXPECT_EQ(Spell(goods->Value("chkNoDB")), "1");
  EXPECT_EQ(Spell(goods->Value("chkNoAmt")), "1") << "the rest stays";
  EXPECT_EQ(Spell(goods->Value("BItemNumber")), "'01'");
  const Ref<Dictionary> batches = ShowWith<Rpt10417>([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Click("chkNoDB");
    user.Click("chkNoAmt");
    user.Click("chkNoZero");
    user.Set("cboSort", 3);
    user.Click("OptSortA");
    Schemes(form).events.RaiseWith("ResetFields");
    user.Click("cmdOK");
  });
  EXPECT_EQ(Spell(batches->Value("BDate")), "'2024-01-01'");
  EXPECT_EQ(Spell(batches->Value("OrderBy")), "'T1.FDate ASC '");
  EXPECT_EQ(Spell(batches->Value("chkNoDB")), "'1'");
  EXPECT_EQ(Spell(batches->Value("chkNoAmt")), "'0'");
  EXPECT_EQ(Spell(batches->Value("chkNoZero")), "'1'") << "a reset leaves it";
  EXPECT_EQ(Spell(batches->Value("BItemNumber")), "''");
}

TEST_F(DetailDialogs, BatchDatesThatCrossArePulledTogether) {
  const Ref<Dictionary> filter = ShowWith<Rpt10417>([&](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 4, 2));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(desk.Lines("ask ").back(), "ask '起始日期不能大于截止日期!' '摩文提示' ok information ok -> ok")
        << "another title than its sibling's";
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("BDate")), "'2024-03-31'");
}

TEST_F(DetailDialogs, TransfersAreFetchedWhateverTheControlDelivers) {
  const Ref<Dictionary> filter = ShowWith<Rpt10413>([](Form& form, UserInput&) {
    Control(form).filterResult = Variant(Keys({{"BDate", "2024-03-01"}}));
    Control(form).Ok();
  });
  EXPECT_EQ(Spell(Variant(filter)), "{BDate: '2024-03-01', OK: True, chkShowTran: 1}");
}

TEST_F(DetailDialogs, ABatchComesFromTheBatchList) {
  desk.Answer("TOVBaseList.BaseList", "Show", TextRows({"FBatchNo"}, {{"B1"}}));
  ShowWith<Rpt10417>([](Form& form, UserInput& user) {
    user.Click("cmdItem(2)");
    EXPECT_EQ(Value(form, "txtItem(2)"), "'B1'");
  });
}

TEST_F(DetailDialogs, CodesOfGoodsAreLookedUpByTheirKind) {
  const int types[] = {4, 21, 2, 5, 3, 10};
  ShowWith<Rpt10413>([&](Form& form, UserInput&) {
    for (int index = 0; index < 12; ++index) {
      const std::string id = "txtItem(" + std::to_string(index) + ")";
      std::array<Variant, 4> arguments{Variant(Ref<Object>(form.Find(id))), 0, "", ""};
      Control(form).events.Raise("GetDataType", arguments);
      EXPECT_EQ(platform::ToInt32(arguments[1]), types[index / 2]) << index;
    }
  });
}

}  // namespace
}  // namespace component
