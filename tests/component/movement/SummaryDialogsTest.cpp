// The dialogs of the business summary and of both movement summaries: what they open with, what a choice
// brings with it, and the keys that they hand over.
#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/movement/Rpt10401.h"
#include "component/movement/Rpt10412.h"
#include "component/movement/Rpt10416.h"
#include "component/movement/frmFirter10412.h"
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
using ::testing::IsEmpty;

class SummaryDialogs : public FetchTest {
 protected:
  SummaryDialogs() {
    desk.AnswerSql("MaxLevel", TextRows({"MaxLevel"}, {{"12"}}));
    desk.AnswerSql("FStartDate", TextRows({"FStartDate", "FEndDate"}, {{"2024-01-01", "2024-01-31"}}));
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
      texts.push_back(entry.text.substr(0, entry.text.find("  ")));
    }
    return texts;
  }
  static std::string Value(Form& form, const char* id) { return Spell(form.Find(id)->Value()); }
  static ReportControl& Control(Form& form) { return FilterControl::In<ReportControl>(form); }
  static SchemeControl& Schemes(Form& form) { return FilterControl::In<SchemeControl>(form); }
  static std::vector<std::string> Order(const Dictionary& filter) {
    std::vector<std::string> keys;
    for (const Dictionary::Entry& entry : filter.Entries()) keys.push_back(entry.key);
    return keys;
  }
};

TEST_F(SummaryDialogs, KeysComeInTheirOrder) {
  EXPECT_THAT(Order(*ShowWith<Rpt10401>([](Form& form, UserInput&) { Control(form).Ok(); })),
              ElementsAre("BDate", "EDate", "BItemNumber", "EItemNumber", "BDeptNumber", "EDeptNumber",
                          "BEmpNumber", "EEmpNumber", "BStockNumber", "EStockNumber", "BBatchNo", "EBatchNo",
                          "ShowNoHappen", "OnlyTotal", "Balance", "Asc", "Desc", "SumItem", "SortItem",
                          "MultiLevel", "MultiLevelBegin", "MultiLevelEnd", "BItemClass", "InvoiceStyle",
                          "ShowTypeValue", "OrderBy", "SumBy", "OK"));
  EXPECT_THAT(Order(*ShowWith<Rpt10412>([](Form& form, UserInput&) { Control(form).Ok(); })),
              ElementsAre("BDate", "EDate", "BItemNumber", "EItemNumber", "BBatchNo", "EBatchNo",
                          "BDeptNumber", "EDeptNumber", "BStockNumber", "EStockNumber", "BEmpNumber",
                          "EEmpNumber", "cmbGroup", "chkOnlyTotal", "chkNoAmt", "chkNoBal", "chkShowTran",
                          "cboSort", "OptSortD", "OptSortA", "OrderBy", "SumBy", "ShowTypeValue",
                          "InvoiceStyle", "MultiLevel", "MultiLevelBegin", "MultiLevelEnd", "OK"));
  EXPECT_THAT(Order(*ShowWith<Rpt10416>([](Form&, UserInput& user) { user.Click("cmdOK"); })),
              ElementsAre("BDate", "EDate", "BItemNumber", "EItemNumber", "BBatchNo", "EBatchNo",
                          "BDeptNumber", "EDeptNumber", "BStockNumber", "EStockNumber", "BEmpNumber",
                          "EEmpNumber", "cmbGroup", "chkOnlyTotal", "chkNoAmt", "chkNoBal", "chkShowTran",
                          "cboSort", "OptSortD", "OptSortA", "MultiLevel", "MultiLevelBegin", "MultiLevelEnd",
                          "UserID", "OK", "InvoiceStyle", "ShowTypeValue", "OrderBy", "SumBy"));
}

TEST_F(SummaryDialogs, TheSmallestApplicationKnowsNoBatches) {
  struct Row {
    int appType;
    std::vector<std::string> business;
    std::vector<std::string> goods;
    bool batchRow;
  };
  for (const Row& row : {Row{1, {"商品", "仓库"}, {"商品", "仓库"}, false},
                         Row{2, {"商品", "仓库", "商品批次"}, {"商品", "仓库", "商品批号"}, true},
                         Row{4, {"商品", "仓库", "商品批次"}, {"商品", "仓库", "商品批号"}, true}}) {
    SCOPED_TRACE(row.appType);
    store->Set("AppType", row.appType);
    const Ref<Dictionary> business = ShowWith<Rpt10401>([&](Form& form, UserInput&) {
      EXPECT_EQ(Entries(form, "cmbitem(0)"), row.business);
      EXPECT_THAT(Entries(form, "cmbitem(1)"), ElementsAre("商品", "业务员", "部门", "商品类别"));
      for (const char* part : {"lbl_txtItem(8)", "txtItem(8)", "cmdItem(8)", "txtItem(9)"}) {
        EXPECT_EQ(form.Find(part)->Visible(), row.batchRow) << part;
      }
      Control(form).Ok();
    });
    EXPECT_EQ(Spell(business->Value("BBatchNo")), "''") << "the key is there all the same";
    ShowWith<Rpt10412>([&](Form& form, UserInput&) {
      EXPECT_EQ(Entries(form, "cmbGroup"), row.goods);
      for (const char* part : {"lbl_txtItem(2)", "txtItem(2)", "cmdItem(2)", "txtItem(3)"}) {
        EXPECT_EQ(form.Find(part)->Visible(), row.batchRow) << part;
      }
    });
    ShowWith<Rpt10416>([&](Form& form, UserInput&) {
      EXPECT_THAT(Entries(form, "cmbGroup"), ElementsAre("商品", "仓库", "商品批号"));
      EXPECT_EQ(Combo(form, "cmbGroup").ListIndex(), 2);
      EXPECT_FALSE(form.Find("cmbGroup")->Enabled());
      EXPECT_TRUE(form.Find("txtItem(2)")->Visible());
    });
  }
}

TEST_F(SummaryDialogs, TheSortWishOfTheBusinessSummaryIsNeverHeard) {
  const Ref<Dictionary> filter = ShowWith<Rpt10401>([](Form& form, UserInput& user) {
    for (const char* control : {"cmbitem(1)", "optItem(0)", "optItem(1)", "chkNoDB"}) {
      EXPECT_FALSE(form.Find(control)->IsUsable()) << control;
    }
    EXPECT_EQ(form.Find("optItem(0)")->Tag(), "ASC");
    EXPECT_EQ(form.Find("optItem(1)")->Tag(), "DESC");
    EXPECT_EQ(Value(form, "chkNoDB"), "1");
    user.Set("txtItem(0)", " 01 ");
    Control(form).events.RaiseWith("LoadFields", Keys({{"SortItem", 3}, {"ASC", false}, {"DESC", true}}));
    Control(form).Ok();
  });
  EXPECT_EQ(Spell(filter->Value("SortItem")), "3");
  EXPECT_EQ(Spell(filter->Value("Desc")), "True") << "keys meet in any case";
  EXPECT_EQ(Spell(filter->Value("OrderBy")), "'FItemNumber ASC '");
  EXPECT_FALSE(filter->Exists("chkNoDB"));
}

TEST_F(SummaryDialogs, LoadingFallsBackOnItsDefaults) {
  struct Row {
    const char* control;
    const char* value;
  };
  ShowWith<Rpt10401>([](Form& form, UserInput& user) {
    user.Set("DtpDate(0)", Date::Of(2024, 2, 2));
    user.Set("txtItem(3)", "D");
    user.Click("chkitem(2)");
    user.Click("chkMultiLevel");
    user.Set("txtMultiLevelEnd", "3");
    form.Find("optItem(1)")->SetValue(true);
    Control(form).events.RaiseWith("LoadFields", Keys({{"EDate", "no date"}}));
    for (const Row& row :
         {Row{"DtpDate(0)", "2024-02-02"}, Row{"DtpDate(1)", "2024-03-31"}, Row{"txtItem(3)", "''"},
          Row{"chkitem(2)", "0"}, Row{"optItem(1)", "True"}, Row{"chkMultiLevel", "0"},
          Row{"txtMultiLevelBegin", "'1'"}, Row{"txtMultiLevelEnd", "'1'"}}) {
      EXPECT_EQ(Value(form, row.control), row.value) << row.control;
    }
  });
  ShowWith<Rpt10412>([](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 2, 2));
    user.Set("cmbGroup", 1);
    user.Click("chkNoAmt");
    Control(form).events.RaiseWith("LoadFields", Keys({{"EDate", "2024-02-30"}}));
    for (const Row& row : {Row{"DtpBDate", "2024-02-02"}, Row{"DtpEDate", "2024-03-31"}, Row{"chkNoAmt", "0"},
                           Row{"OptSortD", "False"}, Row{"OptSortA", "True"}, Row{"cmbGroup", "'商品'"}}) {
      EXPECT_EQ(Value(form, row.control), row.value) << row.control;
    }
  });
}

TEST_F(SummaryDialogs, AGroupBringsItsSortsAndLevels) {
  struct Row {
    int group;
    std::vector<std::string> sorts;
    const char* itemClass;
  };
  const Row rows[] = {
      {0, {"商品代码"}, "FItemClassID=4\n"},
      {1, {"商品代码", "业务员代码"}, "FItemClassID=5\n"},  // an older numbering of the groups
      {2, {"商品代码", "部门代码"}, "FItemClassID=4\n"},
  };
  ShowWith<Rpt10412>([&](Form& form, UserInput& user) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.group);
      user.Click("chkMultiLevel");
      if (form.Find("chkMultiLevel")->Value() == Variant(1)) user.Set("txtMultiLevelEnd", "3");
      desk.sqlTexts.clear();
      user.Set("cmbGroup", row.group);
      EXPECT_EQ(Entries(form, "cboSort"), row.sorts);
      EXPECT_EQ(Combo(form, "cboSort").ListIndex(), 0);
      ASSERT_EQ(desk.sqlTexts.size(), 1U);
      EXPECT_TRUE(desk.sqlTexts[0].ends_with(row.itemClass)) << desk.sqlTexts[0];
      EXPECT_EQ(Value(form, "txtMultiLevelBegin"), "'1'");
      EXPECT_EQ(Value(form, "txtMultiLevelEnd"), "'1'");
      EXPECT_TRUE(form.Find("chkMultiLevel")->Enabled());
    }
    user.Set("cmbGroup", 2);
    user.Set("cboSort", 1);
    EXPECT_TRUE(Combo(form, "cboSort").Text().ends_with("|FCommonName"));
  });
}

TEST_F(SummaryDialogs, GroupsThatNobodyOffersHaveTheirRulesAllTheSame) {
  struct Row {
    std::string entry;
    const char* itemClass;  // empty: nothing is read
    bool levels;
  };
  const Row rows[] = {
      {"商品+供应商", "=4\n", true},
      {"供应商", "=8\n", true},
      {"部门", "=2\n", true},
      {"业务员", "=3\n", true},
      {"商品类别", "", true},
      {"订单编号", "", true},
      {"订单编号" + std::string(50, ' ') + "|FBillNo", "", false},
  };
  ShowWith<Rpt10412>([&](Form& form, UserInput& user) {
    ComboBox& group = Combo(form, "cmbGroup");
    for (const Row& row : rows) {
      SCOPED_TRACE(row.entry);
      form.Find("chkMultiLevel")->SetValue(1);
      group.AddEntry(row.entry);
      desk.sqlTexts.clear();
      group.SetListIndex(group.EntryCount() - 1);
      if (*row.itemClass == '\0') {
        EXPECT_THAT(desk.sqlTexts, IsEmpty());
      } else {
        ASSERT_EQ(desk.sqlTexts.size(), 1U);
        EXPECT_TRUE(desk.sqlTexts[0].ends_with(row.itemClass)) << desk.sqlTexts[0];
      }
      EXPECT_EQ(form.Find("chkMultiLevel")->Enabled(), row.levels);
      EXPECT_EQ(Value(form, "chkMultiLevel"), row.levels ? "1" : "0");
      EXPECT_EQ(form.Find("frmMultiLevel")->Visible(), row.levels);
      if (!row.levels || *row.itemClass != '\0') continue;
      user.Set("txtMultiLevelEnd", "5");
      EXPECT_EQ(Value(form, "txtMultiLevelEnd"), "'1'") << "one level at most";
    }
  });
}

TEST_F(SummaryDialogs, LevelBoxesBoundEachOther) {
  struct Row {
    const char* name;
    const char* box;
    const char* typed;
    const char* begin;
    const char* end;
  };
  const Row rows[] = {
      {"up to the maximum", "txtMultiLevelEnd", "13", "1", "12"},
      {"a later begin", "txtMultiLevelBegin", "2", "2", "2"},  // "12" sorts before "2"
      {"an end behind it", "txtMultiLevelEnd", "3", "2", "3"},
      {"an end as a text", "txtMultiLevelEnd", "10", "10", "10"},
      {"no level at all", "txtMultiLevelBegin", "0", "1", "10"},
      {"below", "txtMultiLevelEnd", "-1", "1", "1"},
      {"no number", "txtMultiLevelBegin", "x", "x", "1"},
  };
  ShowWith<Rpt10412>([&](Form& form, UserInput& user) {
    EXPECT_FALSE(form.Find("txtMultiLevelBegin")->IsShown());
    user.Click("chkMultiLevel");
    EXPECT_TRUE(form.Find("txtMultiLevelBegin")->IsShown());
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      user.Set(row.box, row.typed);
      EXPECT_EQ(Value(form, "txtMultiLevelBegin"), "'" + std::string(row.begin) + "'");
      EXPECT_EQ(Value(form, "txtMultiLevelEnd"), "'" + std::string(row.end) + "'");
    }
    EXPECT_THAT(desk.Lines("ask "), IsEmpty());
  });
}

TEST_F(SummaryDialogs, AMaximumThatCannotBeReadIsOne) {
  for (const Ref<platform::Recordset>& rows :
       {Ref<platform::Recordset>(), TextRows({"MaxLevel"}, {}), TextRows({"MaxLevel"}, {{"0"}}),
        TextRows({"MaxLevel"}, {{platform::Null()}}), TextRows({"MaxLevel"}, {{"x"}})}) {
    ProcessState::Get() = {};
    Desk other;
    ServeFilterControls(other);
    other.AnswerSql("MaxLevel", rows);
    other.screen.scripts.push_back([&](Form& form, UserInput& user) {
      user.Click("chkMultiLevel");
      user.Set("txtMultiLevelEnd", "2");
      EXPECT_EQ(Value(form, "txtMultiLevelEnd"), "'1'");
    });
    MakeReport<Rpt10412>()->Call("ShowFilter");
    ProcessState::Get() = {};
  }
}

TEST_F(SummaryDialogs, LevelsThatAreOffAreZero) {
  const Ref<Dictionary> goods = ShowWith<Rpt10412>([](Form& form, UserInput& user) {
    user.Click("chkMultiLevel");
    user.Set("txtMultiLevelEnd", "3");
    user.Click("chkMultiLevel");
    Control(form).Ok();
  });
  const Ref<Dictionary> business = ShowWith<Rpt10401>([](Form& form, UserInput& user) {
    user.Click("chkMultiLevel");
    user.Set("txtMultiLevelEnd", "3");
    user.Click("chkMultiLevel");
    Control(form).Ok();
  });
  const Ref<Dictionary> batches = ShowWith<Rpt10416>([](Form&, UserInput& user) {
    user.Click("chkMultiLevel");
    user.Set("txtMultiLevelEnd", "3");
    user.Click("chkMultiLevel");
    user.Click("cmdOK");
  });
  for (const Ref<Dictionary>& filter : {goods, business, batches}) {
    for (const char* key : {"MultiLevel", "MultiLevelBegin", "MultiLevelEnd"}) {
      EXPECT_EQ(Spell(filter->Value(key)), "0") << key;
    }
  }
}

TEST_F(SummaryDialogs, AResetSetsWhatItSets) {
  const Ref<Dictionary> business = ShowWith<Rpt10401>([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Click("chkitem(1)");
    user.Set("cmbitem(0)", 2);
    user.Set("DtpDate(1)", Date::Of(2024, 2, 2));
    Control(form).events.RaiseWith("ResetFields");
    Control(form).Ok();
  });
  EXPECT_EQ(Spell(business->Value("BDate")), "2024-01-01");
  EXPECT_EQ(Spell(business->Value("EDate")), "2024-03-31");
  EXPECT_EQ(Spell(business->Value("SumItem")), "0");
  EXPECT_EQ(Spell(business->Value("BItemNumber")), "'01'") << "codes stay";
  EXPECT_EQ(Spell(business->Value("OnlyTotal")), "1");
  const Ref<Dictionary> goods = ShowWith<Rpt10412>([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Set("cmbGroup", 2);
    user.Set("cboSort", 1);
    user.Click("OptSortA");
    Control(form).events.RaiseWith("ResetFields");
    Control(form).Ok();
  });
  EXPECT_EQ(Spell(goods->Value("BDate")), "2024-01-01");
  EXPECT_EQ(Spell(goods->Value("cmbGroup")), "0");
  EXPECT_EQ(Spell(goods->Value("OrderBy")), "'FItemNumber DESC '") << "the direction stays";
  EXPECT_EQ(Spell(goods->Value("BItemNumber")), "'01'");
  const Ref<Dictionary> batches = ShowWith<Rpt10416>([](Form& form, UserInput& user) {
    user.Set("txtItem(0)", "01");
    user.Click("chkNoBal");
    user.Set("cboSort", 1);
    user.Click("OptSortA");
    Schemes(form).events.RaiseWith("ResetFields");
    user.Click("cmdOK");
  });
  EXPECT_EQ(Spell(batches->Value("BDate")), "'2024-01-01'");
  EXPECT_EQ(Spell(batches->Value("cmbGroup")), "'2'");
  EXPECT_EQ(Spell(batches->Value("chkNoBal")), "'0'");
  EXPECT_EQ(Spell(batches->Value("OrderBy")), "'FItemNumber ASC '");
  EXPECT_EQ(Spell(batches->Value("BItemNumber")), "''");
}

TEST_F(SummaryDialogs, AnAccountWithoutAStartKeepsTheDate) {
  Desk other;
  ServeFilterControls(other);
  other.screen.scripts.push_back([&](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 2, 2));
    Control(form).events.RaiseWith("ResetFields");
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-02-02");
  });
  MakeReport<Rpt10412>()->Call("ShowFilter");
  ProcessState::Get() = {};
}

TEST_F(SummaryDialogs, BatchDatesThatCrossArePulledTogether) {
  const Ref<Dictionary> filter = ShowWith<Rpt10416>([&](Form& form, UserInput& user) {
    user.Set("DtpBDate", Date::Of(2024, 4, 2));
    user.Click("cmdOK");
    EXPECT_TRUE(form.IsVisible());
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-03-31");
    EXPECT_EQ(desk.Lines("ask ").back(),
              "ask '起始日期不能大于截止日期!' '信息提示' ok information ok -> ok");
    user.Click("cmdOK");
  });
  ASSERT_TRUE(filter);
  EXPECT_EQ(Spell(filter->Value("BDate")), "'2024-03-31'");
}

TEST_F(SummaryDialogs, BatchDatesAreGuarded) {
  ShowWith<Rpt10416>([&](Form& form, UserInput& user) {
    user.Enter("DtpBDate");
    user.Set("DtpBDate", Date::Of(2023, 12, 31));
    user.Leave("DtpBDate");
    EXPECT_EQ(Value(form, "DtpBDate"), "2024-01-01");
    EXPECT_EQ(desk.Count("[起始日期]不能小于账套启用日期。"), 1);
  });
}

TEST_F(SummaryDialogs, BatchesAreChosenFromTheListOfTheirItems) {
  struct Row {
    const char* name;
    const char* from;
    const char* to;
    const char* condition;
    Variant chosen;
    const char* text;
  };
  const Row rows[] = {
      {"all items", "", "", "", TextRows({"FBatchNo"}, {{"B1"}}), "'B1'"},
      {"from an item", "01", "", "t3.FNumber >='01'", TextRows({"FBatchNo"}, {{"B2"}}), "'B2'"},
      {"up to an item", "", "09", "t3.FNumber <='09'", TextRows({"FBatchNo"}, {{"B3"}}), "'B3'"},
      {"a range", "01", "09", "t3.FNumber >='01' And t3.FNumber <='09'", TextRows({"FBatchNo"}, {{"B4"}}),
       "'B4'"},
      {"nothing chosen", "", "", "", nullptr, "'old'"},
      {"a batch without a number", "", "", "", TextRows({"FBatchNo"}, {{platform::Null()}}), "'old'"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.Answer("TOVBaseList.BaseList", "Show", row.chosen);
    desk.journal.clear();
    ShowWith<Rpt10416>([&](Form& form, UserInput& user) {
      user.Set("txtItem(0)", row.from);
      user.Set("txtItem(1)", row.to);
      user.Set("txtItem(3)", "old");
      user.PressKey("txtItem(3)", "F7");
      EXPECT_EQ(Value(form, "txtItem(3)"), row.text);
    });
    EXPECT_EQ(desk.Count("put TOVBaseList.BaseList.Filter('" + std::string(row.condition) + "')"), 1);
    EXPECT_EQ(desk.Count("put TOVBaseList.BaseList.KeyWord('old')"), 1);
    EXPECT_EQ(desk.Count("put TOVBaseList.BaseList.FilterItem('')"), 1);
  }
}

TEST_F(SummaryDialogs, CodesAreLookedUpByTheirKind) {
  struct Row {
    const char* dialog;
    Ref<Object> report;
    std::vector<int> types;  // by pairs of indexes
  };
  for (const Row& row : {Row{"10401", MakeReport<Rpt10401>(), {4, 2, 3, 5, 21}},
                         Row{"10412", MakeReport<Rpt10412>(), {4, 21, 2, 5, 3}}}) {
    SCOPED_TRACE(row.dialog);
    desk.screen.scripts.push_back([&](Form& form, UserInput&) {
      for (int index = 0; index < 10; ++index) {
        const std::string id = "txtItem(" + std::to_string(index) + ")";
        std::array<Variant, 4> arguments{Variant(Ref<Object>(form.Find(id))), 0, "", ""};
        Control(form).events.Raise("GetDataType", arguments);
        EXPECT_EQ(platform::ToInt32(arguments[1]), row.types[static_cast<std::size_t>(index) / 2]) << index;
      }
    });
    row.report->Call("ShowFilter");
  }
}

}  // namespace
}  // namespace component
