// Keys and lookups in a filter dialog's code fields.
#include "component/filter/frmFirter10414.h"
#include "tests/component/ComponentTest.h"
#include "tests/component/FilterControls.h"

namespace component {
namespace {

using platform::Form;
using platform::MakeRef;
using platform::Ref;
using platform::TextBox;
using platform::UserInput;
using platform::Variant;
using ::testing::IsEmpty;

class DialogInputTest : public ComponentTest {
 protected:
  DialogInputTest() {
    ServeFilterControls(desk);
    desk.Answer("Test.Row", "Number", "01.02");
    desk.Answer("Test.Row", "FShortNumber", "02");
    desk.On("Test.Lookup", "ReturnObject",
            [this](std::span<Variant>) { return Variant(desk.Make("Test.Row")); });
    desk.On("TOVEBCGLView.GLView", "ItemLookUp",
            [this](std::span<Variant>) { return Variant(desk.Make("Test.Lookup")); });
  }

  void ShowWith(FakeScreen::Script script) {
    desk.screen.scripts.push_back(std::move(script));
    dialog->Show();
  }
  std::string Text(std::string_view id) const { return dynamic_cast<TextBox&>(*dialog->Find(id)).Text(); }
  std::string Lookups() const {
    std::string types;
    for (const std::string& line : desk.Lines("ItemLookUp(")) {
      types += line.substr(line.find('(') + 1, line.find(',') - line.find('(') - 1) + " ";
    }
    return types;
  }

  Ref<frmFirter10414> dialog = MakeRef<frmFirter10414>();
};

TEST_F(DialogInputTest, EachButtonLooksUpItsKind) {
  ShowWith([&](Form&, UserInput& user) {
    user.Set("txtItem(2)", "S");
    for (const char* id : {"cmdItem(0)", "cmdItem(1)", "cmdItem(2)", "cmdItem(3)"}) user.Click(id);
    EXPECT_EQ(Lookups(), "4 4 5 5 ");
    EXPECT_EQ(desk.Count("ItemLookUp(5, 'S', '', {GetDataType: 1s, Search: 'S'})"), 1);
    for (const char* id : {"txtItem(0)", "txtItem(1)", "txtItem(2)", "txtItem(3)"})
      EXPECT_EQ(Text(id), "01.02");
    EXPECT_EQ(desk.screen.pendingRuns, 4) << "events may run after each choice";
  });
}

TEST_F(DialogInputTest, FunctionKeysDoWhatTheButtonDoes) {
  ShowWith([&](Form&, UserInput& user) {
    user.PressKey("txtItem(0)", "F7");
    user.PressKey("txtItem(3)", "F8");
    EXPECT_EQ(Lookups(), "4 5 ");
    EXPECT_EQ(Text("txtItem(0)"), "01.02");
    user.PressKey("txtItem(0)", "x");
    EXPECT_EQ(Text("txtItem(0)"), "01.02x");
    user.Click("cmdItem(0)");
    EXPECT_EQ(Lookups(), "4 5 4 ") << "the mark of the key is cleared again";
  });
}

TEST_F(DialogInputTest, TheProfileDecidesWhichNumberIsTaken) {
  ProcessState::Get().isLongNumber = false;
  ShowWith([&](Form&, UserInput& user) {
    user.Click("cmdItem(0)");
    EXPECT_EQ(Text("txtItem(0)"), "02");
  });
}

TEST_F(DialogInputTest, ACancelledLookupLeavesTheField) {
  desk.Answer("TOVEBCGLView.GLView", "ItemLookUp", nullptr);
  ShowWith([&](Form&, UserInput& user) {
    user.Set("txtItem(0)", "old");
    user.PressKey("txtItem(0)", "F7");
    EXPECT_EQ(Text("txtItem(0)"), "old");
    EXPECT_EQ(desk.screen.pendingRuns, 0);
    EXPECT_THAT(desk.Lines("ask "), IsEmpty());
  });
}

TEST_F(DialogInputTest, AFailedLookupIsToldAndLeavesTheField) {
  desk.Fail("TOVEBCGLView.GLView", "ItemLookUp", "no right");
  ShowWith([&](Form&, UserInput& user) {
    user.Set("txtItem(0)", "old");
    user.Click("cmdItem(0)");
    EXPECT_EQ(Text("txtItem(0)"), "old");
    EXPECT_EQ(desk.Count("ask '基础资料可能没有授权！'"), 1);
  });
}

TEST_F(DialogInputTest, AQuoteNeverArrives) {
  ShowWith([&](Form&, UserInput& user) {
    for (const char* key : {"0", "'", "1", "中", "'"}) user.PressKey("txtItem(0)", key);
    EXPECT_EQ(Text("txtItem(0)"), "01中");
  });
}

TEST_F(DialogInputTest, EnterMovesOnInsteadOfConfirming) {
  ShowWith([&](Form& form, UserInput& user) {
    user.PressKey("txtItem(0)", "Enter");
    EXPECT_EQ(form.Focus(), form.Find("cmdItem(0)"));
    EXPECT_EQ(Text("txtItem(0)"), "");
    user.PressKey("cmdOK", "Enter");
    EXPECT_TRUE(form.IsVisible()) << "the key is swallowed before the button hears it";
  });
}

TEST_F(DialogInputTest, ADialogTellsItsNumberAndOutcomeByName) {
  dialog->SetRptID(10414);
  EXPECT_EQ(Spell(dialog->Get("RptID")), "10414");
  EXPECT_EQ(Spell(dialog->Get("result")), "nothing") << "before it is loaded";
  dialog->EnsureLoaded();
  EXPECT_EQ(Spell(dialog->Get("Result")), "{OK: False}");
  EXPECT_EQ(RaisedNumber([&] { dialog->Put("Result", nullptr); }), platform::ErrorNumber::kUnknownMember)
      << "readable only";
}

}  // namespace
}  // namespace component
