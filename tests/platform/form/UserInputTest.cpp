// What a user does in a form, what follows from it, and what a user could not have done.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/Raised.h"
#include "tests/platform/form/SampleForm.h"

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UserInputTest : public ::testing::Test {
 protected:
  UserInputTest() {
    form->combo.AddEntry("a");
    form->combo.AddEntry("b");
    form->tree.Add("", "K1", "one");
  }

  Ref<SampleForm> form = MakeRef<SampleForm>();
  UserInput user{*form};
};

TEST_F(UserInputTest, SettingLeavesTheFocus) {
  EXPECT_FALSE(user.Set("txtItem(0)", "01"));
  EXPECT_FALSE(user.Set("cboSort", 1));
  EXPECT_FALSE(user.Set("chkTotal", 1));
  EXPECT_FALSE(user.Set("optB", true));
  EXPECT_FALSE(user.Set("DtpBDate", "2024-03-02"));
  EXPECT_THAT(form->Heard(), ElementsAre("change txtItem(0)", "click cboSort", "click chkTotal", "click optB",
                                         "change DtpBDate"));
  EXPECT_EQ(form->Focus(), nullptr);
}

TEST_F(UserInputTest, ClickingGoesThereFirst) {
  struct Row {
    const char* id;
    std::vector<std::string> heard;
  };
  const Row rows[] = {
      {"cmdOK", {"got cmdOK", "click cmdOK"}},
      {"cmdOK", {"click cmdOK"}},
      {"chkTotal", {"lost cmdOK", "got chkTotal", "click chkTotal"}},
      {"chkTotal", {"click chkTotal"}},
      {"optA", {"lost chkTotal", "got optA", "click optA"}},
      {"optA", {"click optA"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.id);
    EXPECT_FALSE(user.Click(row.id));
    EXPECT_EQ(form->Heard(), row.heard);
  }
  EXPECT_EQ(form->check.Checked(), 0) << "ticked and unticked";
  EXPECT_TRUE(form->optA.IsOn());
}

TEST_F(UserInputTest, ATreeIsAlsoKnownByThatWord) {
  std::vector<std::string> ticked;
  form->tree.onNodeCheck = [&](TreeView::Node& node) { ticked.push_back(node.key); };
  EXPECT_FALSE(user.ClickNode("trvStock", "K1"));
  EXPECT_FALSE(user.ClickNode("Tree", "K1"));
  EXPECT_THAT(ticked, ElementsAre("K1", "K1"));
  EXPECT_EQ(form->Focus(), &form->tree);
}

TEST_F(UserInputTest, AKeyGoesThroughTheFormToTheControl) {
  struct Row {
    const char* name;
    const char* id;
    const char* key;
    const char* text;  // of the control afterwards
    const char* focus;
    std::vector<std::string> heard;
  };
  for (const Row& row : std::vector<Row>{
           {"a character",
            "txtItem(0)",
            "a",
            "a",
            "txtItem(0)",
            {"got txtItem(0)", "down 97", "press 97", "change txtItem(0)"}},
           {"a character of three bytes",
            "txtItem(0)",
            "中",
            "中",
            "txtItem(0)",
            {"got txtItem(0)", "down 20013", "press 20013", "change txtItem(0)"}},
           {"a blank",
            "txtItem(0)",
            " ",
            " ",
            "txtItem(0)",
            {"got txtItem(0)", "down 32", "press 32", "change txtItem(0)"}},
           {"a function key", "txtItem(0)", "f7", "", "txtItem(0)", {"got txtItem(0)", "down 118"}},
           {"the other function key", "txtItem(0)", "F8", "", "txtItem(0)", {"got txtItem(0)", "down 119"}},
           {"tab",
            "txtItem(0)",
            "Tab",
            "",
            "txtItem(1)",
            {"got txtItem(0)", "down 9", "lost txtItem(0)", "got txtItem(1)", "press 9"}},
           {"enter in a text",
            "txtItem(0)",
            "Enter",
            "",
            "txtItem(0)",
            {"got txtItem(0)", "down 13", "press 13"}},
           {"enter on a button",
            "cmdOK",
            "Enter",
            "",
            "cmdOK",
            {"got cmdOK", "down 13", "press 13", "click cmdOK"}},
           {"a blank on a button",
            "cmdOK",
            " ",
            "",
            "cmdOK",
            {"got cmdOK", "down 32", "press 32", "click cmdOK"}},
           {"a letter on a button", "cmdOK", "x", "", "cmdOK", {"got cmdOK", "down 120", "press 120"}},
           {"a blank on a check",
            "chkTotal",
            " ",
            "",
            "chkTotal",
            {"got chkTotal", "down 32", "press 32", "click chkTotal"}},
           {"a blank on an option",
            "optB",
            " ",
            "",
            "optB",
            {"got optB", "down 32", "press 32", "click optB"}},
       }) {
    SCOPED_TRACE(row.name);
    form = MakeRef<SampleForm>();
    EXPECT_FALSE(UserInput(*form).PressKey(row.id, row.key));
    EXPECT_EQ(form->Heard(), row.heard);
    EXPECT_EQ(form->Focus(), form->Find(row.focus));
    const auto* text = dynamic_cast<TextBox*>(form->Find(row.id));
    EXPECT_EQ(text == nullptr ? "" : text->Text(), row.text);
  }
}

TEST_F(UserInputTest, AFormMayKeepAKeyForItself) {
  std::vector<std::string> control;
  form->text.onKeyDown = [&](int& key) { control.push_back("down " + std::to_string(key)); };
  form->text.onKeyPress = [&](int& character) { control.push_back("press " + std::to_string(character)); };
  form->swallowPress = kKeyQuote;
  user.PressKey("txtItem(0)", "'");
  EXPECT_THAT(control, ElementsAre("down 39"));
  EXPECT_EQ(form->text.Text(), "");
  control.clear();
  form->swallowDown = kKeyF7;
  user.PressKey("txtItem(0)", "F7");
  EXPECT_THAT(control, IsEmpty());
  user.PressKey("txtItem(0)", "b");
  EXPECT_THAT(control, ElementsAre("down 98", "press 98"));
  form->text.onKeyPress = [](int& character) { character = 0; };
  user.PressKey("txtItem(0)", "c");
  EXPECT_EQ(form->text.Text(), "b") << "a control may swallow it too";
}

TEST_F(UserInputTest, EnteringAndLeaving) {
  EXPECT_FALSE(user.Enter("txtItem(0)"));
  EXPECT_FALSE(user.Leave("txtItem(0)"));
  EXPECT_FALSE(user.Leave("DtpBDate"));
  EXPECT_THAT(form->Heard(),
              ElementsAre("got txtItem(0)", "lost txtItem(0)", "got DtpBDate", "lost DtpBDate"))
      << "one can only leave where one is";
  EXPECT_EQ(form->Focus(), nullptr);
}

TEST_F(UserInputTest, WhatAUserCouldNotHaveDoneChangesNothing) {
  struct Row {
    const char* name;
    std::function<void(SampleForm&)> arrange;
    Refusal why;
  };
  const Row rows[] = {
      {"disabled",
       [](SampleForm& f) {
         for (auto& c : f.Controls()) c->SetEnabled(false);
       },
       Refusal::kDisabled},
      {"hidden",
       [](SampleForm& f) {
         for (auto& c : f.Controls()) c->SetVisible(false);
       },
       Refusal::kHidden},
      {"hidden and disabled",
       [](SampleForm& f) {
         for (auto& c : f.Controls()) {
           c->SetVisible(false);
           c->SetEnabled(false);
         }
       },
       Refusal::kHidden},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    form = MakeRef<SampleForm>();
    form->tree.Add("", "K1", "one");
    row.arrange(*form);
    UserInput hand(*form);
    EXPECT_EQ(hand.Set("txtItem(0)", "x"), row.why);
    EXPECT_EQ(hand.Click("cmdOK"), row.why);
    EXPECT_EQ(hand.Click("chkTotal"), row.why);
    EXPECT_EQ(hand.ClickNode("tree", "K1"), row.why);
    EXPECT_EQ(hand.PressKey("txtItem(0)", "a"), row.why);
    EXPECT_EQ(hand.Enter("txtItem(0)"), row.why);
    EXPECT_EQ(hand.Leave("txtItem(0)"), row.why);
    EXPECT_THAT(form->Heard(), IsEmpty());
    EXPECT_EQ(form->text.Text(), "");
    EXPECT_FALSE(form->tree.Find("K1")->checked);
  }
  EXPECT_EQ(ToString(Refusal::kDisabled), "disabled");
  EXPECT_EQ(ToString(Refusal::kHidden), "hidden");
}

TEST_F(UserInputTest, AFrameRefusesForWhatStandsInIt) {
  form->frame.SetVisible(false);
  EXPECT_EQ(user.Set("txtInside", "x"), Refusal::kHidden);
  form->frame.SetVisible(true);
  form->frame.SetEnabled(false);
  EXPECT_EQ(user.Click("optIn"), Refusal::kDisabled);
  EXPECT_EQ(form->inside.Text(), "");
  EXPECT_FALSE(form->optIn.IsOn());
}

TEST_F(UserInputTest, AReadOnlyTextTakesNothingFromAUser) {
  form->text.SetReadOnly(true);
  EXPECT_EQ(user.Set("txtItem(0)", "x"), Refusal::kDisabled);
  EXPECT_FALSE(user.PressKey("txtItem(0)", "x")) << "a key may be pressed in it";
  EXPECT_EQ(form->text.Text(), "");
  form->text.SetText("by code");
  EXPECT_EQ(form->text.Text(), "by code");
}

TEST_F(UserInputTest, AUserCannotChooseADayBeforeTheMinimumButCodeCan) {
  form->date.SetMinDate(Date::Of(2024, 1, 1));
  EXPECT_FALSE(user.Set("DtpBDate", Date::Of(2024, 1, 1)));
  EXPECT_EQ(Raised([&] { user.Set("DtpBDate", "2023-12-31"); }).Description(),
            "DtpBDate: a day before 2024-01-01 cannot be chosen");
  EXPECT_EQ(form->date.GetDate(), Date::Of(2024, 1, 1));
  form->date.SetDate(Date::Of(2023, 12, 31));
  EXPECT_EQ(form->date.GetDate(), Date::Of(2023, 12, 31));
}

TEST_F(UserInputTest, WhatTheFormDoesNotUnderstandIsRefusedWithAReason) {
  struct Row {
    const char* name;
    std::function<void(UserInput&)> act;
    const char* reason;
  };
  const Row rows[] = {
      {"no such control", [](UserInput& u) { u.Set("txtItem(9)", "x"); },
       "the form frmSample has no control 'txtItem(9)'"},
      {"no such tree", [](UserInput& u) { u.ClickNode("trvOther", "K1"); },
       "the form frmSample has no control 'trvOther'"},
      {"no such node", [](UserInput& u) { u.ClickNode("tree", "K9"); },
       "trvStock: the tree has no node 'K9'"},
      {"a node in a text", [](UserInput& u) { u.ClickNode("txtItem(0)", "K1"); },
       "txtItem(0): a control of kind text cannot be clicked at a node"},
      {"a click on a text", [](UserInput& u) { u.Click("txtItem(0)"); },
       "txtItem(0): a control of kind text cannot be clicked"},
      {"a click on a label", [](UserInput& u) { u.Click("lblItem"); },
       "lblItem: a control of kind label cannot be clicked"},
      {"setting a label", [](UserInput& u) { u.Set("lblItem", "x"); },
       "lblItem: a control of kind label cannot be set"},
      {"setting a button", [](UserInput& u) { u.Set("cmdOK", "x"); },
       "cmdOK: a control of kind button cannot be set"},
      {"entering a label", [](UserInput& u) { u.Enter("lblItem"); },
       "lblItem: the control cannot take the focus"},
      {"an unknown key", [](UserInput& u) { u.PressKey("cmdOK", "F12"); },
       "there is no key 'F12'; use F7, F8, Enter, Tab or one character"},
      {"no key", [](UserInput& u) { u.PressKey("cmdOK", ""); },
       "there is no key ''; use F7, F8, Enter, Tab or one character"},
      {"an entry that is not there", [](UserInput& u) { u.Set("cboSort", 5); },
       "cboSort: there is no entry 5"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Error error = Raised([&] { row.act(user); });
    EXPECT_EQ(error.Description(), row.reason);
    EXPECT_EQ(error.Number(), ErrorNumber::kInvalidCall);
  }
}

TEST_F(UserInputTest, AFormWithoutATreeHasNoneByThatWord) {
  Form empty("frmEmpty");
  EXPECT_EQ(Raised([&] { UserInput(empty).ClickNode("tree", "K1"); }).Description(),
            "the form frmEmpty has no control 'tree'");
}

}  // namespace
}  // namespace platform
