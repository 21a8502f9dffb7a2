// The filter of the two instant stock reports: one logic under two names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/Rpt302.h"
#include "component/stock/Rpt332.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Form;
using platform::Object;
using platform::Ref;
using platform::UserInput;

class InstantStockDialogTest : public StockTest {
 protected:
  InstantStockDialogTest() {
    AnswerMaxLevel(3);
    desk.Answer("VEZ_APFC.FrameData", "WriteMGLog", {});
  }

  void AnswerMaxLevel(int level) {
    desk.AnswerSql("MaxLevel", TextRows({"MaxLevel"}, {{std::to_string(level)}}));
  }
  // Shows the dialog and confirms it after what the user does.
  void ShowWith(const FakeScreen::Script& script) {
    desk.screen.scripts.push_back([script](Form& form, UserInput& user) {
      script(form, user);
      FilterControl::In<ReportControl>(form).Ok();
    });
    report->Call("ShowFilter");
  }
  std::string Key(const char* key) { return Spell(report->Get("Filter").AsRef<Dictionary>()->Value(key)); }
  static std::string Value(Form& form, const char* id) { return Spell(form.Find(id)->Value()); }
  static void Load(Form& form, const Ref<Dictionary>& filter) {
    FilterControl::In<ReportControl>(form).events.RaiseWith("LoadFields", filter);
  }
  int Hints() const { return desk.Count("校对即时库存。"); }

  Ref<Object> report = MakeReport<Rpt302>();
};

TEST_F(InstantStockDialogTest, BothNamesWriteTheSameKeys) {
  const auto nothing = [](Form&, UserInput&) {};
  ShowWith(nothing);
  const std::string first = Spell(report->Get("Filter"));
  EXPECT_EQ(Key("RptID"), "10422s");
  report = MakeReport<Rpt332>();
  ShowWith(nothing);
  EXPECT_EQ(Spell(report->Get("Filter")), first);
  EXPECT_EQ(desk.Count("show frmFirter332"), 1);
}

TEST_F(InstantStockDialogTest, TheClosingDateCountsOnlyWhileInstantIsOff) {
  ShowWith([&](Form& form, UserInput& user) {
    EXPECT_FALSE(form.Find("DtpDate(0)")->Enabled());
    user.Click("chkitem(1)");
    user.Click("chkitem(3)");
    user.Click("chkitem(2)");
    EXPECT_TRUE(form.Find("DtpDate(0)")->Enabled());
    EXPECT_EQ(Value(form, "DtpDate(0)"), "2024-03-31") << "clearing does not change the date";
    for (const char* id : {"chkitem(1)", "chkitem(3)", "chkBill"}) {
      EXPECT_FALSE(form.Find(id)->Enabled()) << id;
      EXPECT_EQ(Value(form, id), "0") << id;
    }
    user.Set("DtpDate(0)", platform::Date::Of(2024, 2, 29));
    user.Click("chkitem(2)");
    EXPECT_EQ(Value(form, "DtpDate(0)"), "2024-03-31") << "instant again is today";
  });
}

TEST_F(InstantStockDialogTest, TheStockCheckHintsOnceByHandAndNeverFromAScheme) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Click("chkitem(1)");
    EXPECT_EQ(Hints(), 1);
    Load(form, Keys({{"OnTime", 0}}));
    Load(form, Keys({{"OnTime", 1}, {"CheckItem", 1}, {"ShareAbnormalAmt", 1}}));
    EXPECT_EQ(Value(form, "chkitem(1)"), "1") << "the rule does not wipe what the scheme holds";
    EXPECT_EQ(Value(form, "chkitem(3)"), "1");
    EXPECT_EQ(Hints(), 1);
  });
}

TEST_F(InstantStockDialogTest, AnExpandedDisplayNeverListsZeroStock) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Click("chkShowZero");
    user.Set("cmbitem(1)", 2);
    EXPECT_FALSE(form.Find("chkShowZero")->Enabled());
    EXPECT_EQ(Value(form, "chkShowZero"), "0");
  });
  EXPECT_EQ(Key("ShowType"), "2");
}

TEST_F(InstantStockDialogTest, TheSmallestApplicationHasTwoDisplaysHidden) {
  store->Set("AppType", 1);
  ShowWith([&](Form& form, UserInput&) {
    const auto& display = dynamic_cast<platform::ComboBox&>(*form.Find("cmbitem(1)"));
    EXPECT_EQ(display.EntryCount(), 2);
    EXPECT_EQ(display.ListIndex(), 0);
    for (const char* id : {"cmbitem(1)", "txtItem(2)", "txtItem(5)", "cmdItem(2)", "cmdItem(5)"})
      EXPECT_FALSE(form.Find(id)->Visible()) << id;
    EXPECT_EQ(form.Find("txtItem(8)")->GetPlace().row, form.Find("txtItem(2)")->GetPlace().row);
  });
}

TEST_F(InstantStockDialogTest, LevelBoxesAreBoundAndComparedAsTexts) {
  struct Row {
    const char* name;
    int maxLevel;
    const char* box;
    const char* typed;
    const char* begin;
    const char* end;
  };
  const Row rows[] = {
      {"above the highest", 3, "txtMultiLevelEnd", "9", "1", "3"},
      {"below the lowest", 3, "txtMultiLevelBegin", "0", "1", "1"},
      {"no number", 3, "txtMultiLevelEnd", "x", "1", "x"},
      {"beyond the other", 3, "txtMultiLevelBegin", "2", "2", "2"},
      {"a tree of one level", 0, "txtMultiLevelEnd", "2", "1", "1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Desk other;
    ServeFilterControls(other);
    other.AnswerSql("MaxLevel", TextRows({"MaxLevel"}, {{std::to_string(row.maxLevel)}}));
    ProcessState::Get() = {};
    report = MakeReport<Rpt302>();
    other.screen.scripts.push_back([&](Form& form, UserInput& user) {
      user.Click("chkMultiLevel");
      user.Set(row.box, row.typed);
      EXPECT_EQ(Value(form, "txtMultiLevelBegin"), std::string("'") + row.begin + "'");
      EXPECT_EQ(Value(form, "txtMultiLevelEnd"), std::string("'") + row.end + "'");
    });
    report->Call("ShowFilter");
    report = nullptr;
    ProcessState::Get() = {};
  }
}

TEST_F(InstantStockDialogTest, TenSortsBeforeTwo) {
  Desk other;
  ServeFilterControls(other);
  other.AnswerSql("MaxLevel", TextRows({"MaxLevel"}, {{"12"}}));
  report = MakeReport<Rpt302>();
  other.screen.scripts.push_back([&](Form& form, UserInput& user) {
    user.Click("chkMultiLevel");
    user.Set("txtMultiLevelEnd", "10");
    EXPECT_EQ(Value(form, "txtMultiLevelBegin"), "'1'");
    user.Set("txtMultiLevelBegin", "2");
    EXPECT_EQ(Value(form, "txtMultiLevelEnd"), "'2'") << "the other box follows the changed one";
  });
  report->Call("ShowFilter");
  report = nullptr;
  ProcessState::Get() = {};
}

TEST_F(InstantStockDialogTest, WithoutLevelsTheFilterSaysZero) {
  ShowWith([&](Form& form, UserInput& user) {
    user.Click("chkMultiLevel");
    EXPECT_TRUE(form.Find("frmMultiLevel")->Visible());
    user.Set("txtMultiLevelEnd", "2");
    user.Click("chkMultiLevel");
    EXPECT_FALSE(form.Find("frmMultiLevel")->Visible());
  });
  EXPECT_EQ(Key("MultiLevelBegin"), "0");
  EXPECT_EQ(Key("MultiLevelEnd"), "0");
}

TEST_F(InstantStockDialogTest, UseOfZeroStockIsRecorded) {
  const auto usage = [&] { return desk.Lines("RPT10422").size(); };
  ShowWith([](Form&, UserInput&) {});
  EXPECT_EQ(usage(), 0U) << "never touched";
  ShowWith([](Form&, UserInput& user) { user.Click("chkShowZero"); });
  EXPECT_EQ(desk.Count("RPT1042201"), 1);
  ShowWith([](Form&, UserInput& user) { user.Click("chkShowZero"); });
  EXPECT_EQ(desk.Count("RPT1042202"), 1) << "touched before, in the dialog that is kept";
}

TEST_F(InstantStockDialogTest, ACancelInTheKeptDialogTakesTheFilterBack) {
  ShowWith([](Form&, UserInput&) {});
  desk.screen.scripts.push_back(
      [](Form& form, UserInput&) { FilterControl::In<ReportControl>(form).Cancel(); });
  report->Call("ShowFilter");
  EXPECT_EQ(Key("OK"), "False") << "it is the very dictionary";
  EXPECT_EQ(desk.Count("control ReportID(10422)"), 1);
}

}  // namespace
}  // namespace component
