// Controls as values with events: what code sets fires what a user's setting would.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/Raised.h"
#include "tests/platform/form/SampleForm.h"

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ControlTest : public ::testing::Test {
 protected:
  Ref<SampleForm> form = MakeRef<SampleForm>();
};

TEST_F(ControlTest, KindsHaveNames) {
  const std::pair<const char*, const char*> rows[] = {
      {"txtItem(0)", "text"}, {"cboSort", "combo"},         {"chkTotal", "check"}, {"optA", "option"},
      {"cmdOK", "button"},    {"lblItem", "label"},         {"DtpBDate", "date"},  {"updLevel", "spin"},
      {"trvStock", "tree"},   {"ProgressBar1", "progress"}, {"fraGroup", "frame"}};
  for (const auto& [id, kind] : rows) EXPECT_EQ(ToString(form->Find(id)->GetKind()), kind) << id;
  EXPECT_EQ(ToString(EmbeddedControl("x", MakeRef<Dictionary>()).GetKind()), "embedded");
}

TEST_F(ControlTest, AControlIsFoundByItsIdInAnyCase) {
  EXPECT_EQ(form->Find("TXTITEM(1)"), &form->second);
  EXPECT_EQ(form->Find("cbosort"), &form->combo);
  for (const char* id : {"txtItem", "txtItem(2)", "txtItem( 1)", ""})
    EXPECT_EQ(form->Find(id), nullptr) << id;
}

TEST_F(ControlTest, SettingAValueFiresWhatAUsersSettingWould) {
  struct Row {
    const char* name;
    const char* id;
    std::vector<Variant> values;  // set one after the other
    Variant value;
    std::vector<std::string> heard;
  };
  form->combo.AddEntry("a", 5);
  form->combo.AddEntry("b", 7);
  const Date day = Date::Of(2024, 3, 2);
  const std::vector<Row> rows = {
      {"a text", "txtItem(0)", {"01"}, "01", {"change txtItem(0)"}},
      {"the same text", "txtItem(0)", {"01"}, "01", {}},
      {"a number as text", "txtItem(0)", {7}, "7", {"change txtItem(0)"}},
      {"back to empty", "txtItem(0)", {Variant()}, "", {"change txtItem(0)"}},
      {"a check", "chkTotal", {1}, 1, {"click chkTotal"}},
      {"any number ticks", "chkTotal", {-5}, 1, {}},
      {"true is ticked", "chkTotal", {0, true}, 1, {"click chkTotal", "click chkTotal"}},
      {"false is not", "chkTotal", {false}, 0, {"click chkTotal"}},
      {"a check from text", "chkTotal", {"1"}, 1, {"click chkTotal"}},
      {"a combo by number", "cboSort", {1}, "b", {"click cboSort"}},
      {"the same entry clicks again", "cboSort", {1}, "b", {"click cboSort"}},
      {"a combo by text", "cboSort", {"a"}, "a", {"click cboSort"}},
      {"nothing selected", "cboSort", {-1}, "", {"click cboSort"}},
      {"a date", "DtpBDate", {day}, day, {"change DtpBDate"}},
      {"the same date as text", "DtpBDate", {"2024/3/2"}, day, {}},
      {"an option", "optA", {true}, true, {"click optA"}},
      {"the same option", "optA", {true}, true, {}},
      {"an option switched off says nothing", "optA", {false}, false, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    form->Heard();
    for (const Variant& value : row.values) form->Find(row.id)->SetValue(value);
    EXPECT_EQ(form->Find(row.id)->Value(), row.value);
    EXPECT_EQ(form->Heard(), row.heard);
  }
}

TEST_F(ControlTest, ValuesThatDoNotFitAreRefusedAndChangeNothing) {
  struct Row {
    const char* name;
    const char* id;
    Variant value;
    ErrorNumber number;
  };
  form->combo.AddEntry("a");
  form->combo.SetListIndex(0);
  form->text.SetText("old");
  const Row rows[] = {
      {"an entry that is not there", "cboSort", 1, ErrorNumber::kInvalidCall},
      {"below nothing", "cboSort", -2, ErrorNumber::kInvalidCall},
      {"a text without an entry", "cboSort", "z", ErrorNumber::kInvalidCall},
      {"null in a text", "txtItem(0)", Null(), ErrorNumber::kTypeMismatch},
      {"an object in a text", "txtItem(0)", nullptr, ErrorNumber::kTypeMismatch},
      {"a text in a check", "chkTotal", "yes", ErrorNumber::kTypeMismatch},
      {"a text in an option", "optA", "yes", ErrorNumber::kTypeMismatch},
      {"a day that is none", "DtpBDate", "2024-02-30", ErrorNumber::kTypeMismatch},
      {"a label", "lblItem", "x", ErrorNumber::kUnknownMember},
      {"a button", "cmdOK", "x", ErrorNumber::kUnknownMember},
      {"a progress bar", "ProgressBar1", 5, ErrorNumber::kUnknownMember},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    form->Heard();
    const Variant before = form->Find(row.id)->Value();
    EXPECT_EQ(Raised([&] { form->Find(row.id)->SetValue(row.value); }).Number(), row.number);
    EXPECT_EQ(form->Find(row.id)->Value(), before);
    EXPECT_THAT(form->Heard(), IsEmpty());
  }
}

TEST_F(ControlTest, AComboHasEntriesWithNumbers) {
  ComboBox& combo = form->combo;
  EXPECT_EQ(combo.ListIndex(), -1);
  combo.AddEntry("a", 5);
  combo.AddEntry("b");
  EXPECT_EQ(combo.EntryCount(), 2);
  EXPECT_EQ(combo.ItemData(0), 5);
  EXPECT_EQ(combo.ItemData(1), 0);
  EXPECT_EQ(combo.ItemText(1), "b");
  EXPECT_EQ(Raised([&] { combo.ItemData(2); }).Description(), "cboSort: there is no entry 2");
  EXPECT_EQ(Raised([&] { combo.ItemText(-1); }).Number(), ErrorNumber::kInvalidCall);
  combo.SetListIndex(1);
  form->Heard();
  combo.Clear();
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_THAT(form->Heard(), IsEmpty()) << "clearing fires nothing";
}

TEST_F(ControlTest, OfEachGroupOfOptionsOneIsOn) {
  auto on = [&] {
    std::string ids;
    for (const OptionButton* option : {&form->optA, &form->optB, &form->optIn, &form->optOut}) {
      if (option->IsOn()) ids += option->Id() + " ";
    }
    return ids;
  };
  form->optA.SetOn(true);
  form->optIn.SetOn(true);
  EXPECT_EQ(on(), "optA optIn ") << "a frame is a group of its own";
  form->Heard();
  form->optB.SetOn(true);
  EXPECT_EQ(on(), "optB optIn ");
  EXPECT_THAT(form->Heard(), ElementsAre("click optB")) << "the one that goes off says nothing";
  form->optOut.SetOn(true);
  EXPECT_EQ(on(), "optB optOut ");
  form->optOut.PlaceInside(nullptr);
  form->optOut.SetOn(false);
  form->optOut.SetOn(true);
  EXPECT_EQ(on(), "optOut ") << "taken out of the frame it belongs to the form's own group";
}

TEST_F(ControlTest, AFrameHidesAndDisablesWhatStandsInIt) {
  EXPECT_TRUE(form->inside.IsShown());
  form->frame.SetVisible(false);
  EXPECT_FALSE(form->inside.IsShown());
  EXPECT_TRUE(form->inside.Visible()) << "its own setting stays";
  EXPECT_TRUE(form->text.IsShown());
  form->frame.SetVisible(true);
  form->frame.SetEnabled(false);
  EXPECT_TRUE(form->inside.IsShown());
  EXPECT_FALSE(form->inside.IsUsable());
  form->frame.SetEnabled(true);
  form->inside.SetEnabled(false);
  EXPECT_FALSE(form->inside.IsUsable());
}

TEST_F(ControlTest, ASpinAddsToTheNumberInItsTextBox) {
  struct Row {
    const char* text;
    int step;
    const char* after;
  };
  for (const Row& row : {Row{"1", 1, "2"}, Row{"5", -2, "3"}, Row{"", 1, "1"}, Row{"x", -1, "-1"},
                         Row{"3a", 1, "4"}, Row{" 7 ", 1, "8"}}) {
    SCOPED_TRACE(row.text);
    form->second.SetText(row.text);
    form->Heard();
    form->spin.Step(row.step);
    EXPECT_EQ(form->second.Text(), row.after);
    EXPECT_THAT(form->Heard(), ElementsAre("change txtItem(1)"));
  }
}

TEST_F(ControlTest, AControlAnswersByName) {
  Control& text = form->text;
  EXPECT_EQ(text.Get("Name"), Variant("txtItem"));
  EXPECT_EQ(text.Get("index"), Variant(std::int32_t{0}));
  text.Put("Text", "01");
  EXPECT_EQ(text.Get("Value"), Variant("01"));
  text.Put("Enabled", false);
  EXPECT_FALSE(text.Enabled());
  EXPECT_EQ(Raised([&] { text.Call("Blink"); }).Number(), ErrorNumber::kUnknownMember);
}

TEST_F(ControlTest, AControlThatOutlivesItsFormIsOnItsOwn) {
  const Ref<Control> text(&form->text);
  const Ref<Control> option(&form->optA);
  const Ref<Control> inside(&form->inside);
  const Ref<TreeView> tree(&form->tree);
  int checks = 0;
  tree->onNodeCheck = [&](TreeView::Node&) { ++checks; };
  TreeView::Node& node = tree->Add("", "K1", "one");
  form = nullptr;
  EXPECT_EQ(text->Owner(), nullptr);
  text->SetValue("x");
  option->SetValue(true);
  EXPECT_TRUE(inside->IsShown());
  EXPECT_EQ(inside->Container(), nullptr);
  tree->ToggleByUser(node);
  EXPECT_EQ(checks, 0) << "nobody hears it any more";
}

class TreeTest : public ControlTest {
 protected:
  std::string Walk(const std::vector<TreeView::Node*>& nodes) const {
    std::string text;
    for (const TreeView::Node* node : nodes) text += node->key + "(" + Walk(node->children) + ")";
    return text;
  }
};

TEST_F(TreeTest, NodesStandUnderTheirParents) {
  TreeView& tree = form->tree;
  tree.Add("", "A", "a");
  TreeView::Node& b = tree.Add("", "B", "b");
  tree.Add("A", "A1", "a1");
  tree.Add("B", "B1", "b1");
  tree.Add("A1", "A11", "a11");
  tree.Add("A", "", "without a key");
  EXPECT_EQ(Walk(tree.Roots()), "A(A1(A11())())B(B1())");
  EXPECT_EQ(tree.Nodes().size(), 6U);
  EXPECT_EQ(tree.Find("B1")->parent, &b);
  EXPECT_EQ(tree.Find("b"), nullptr) << "keys are exact";

  EXPECT_EQ(Raised([&] { tree.Add("", "A1", "again"); }).Number(), ErrorNumber::kKeyExists);
  EXPECT_EQ(Raised([&] { tree.Add("Z", "C", "c"); }).Number(), ErrorNumber::kInvalidCall);
  EXPECT_EQ(tree.Nodes().size(), 6U) << "a refused node leaves the tree as before";

  tree.Remove(*tree.Find("A"));
  EXPECT_EQ(Walk(tree.Roots()), "B(B1())");
  EXPECT_EQ(tree.Nodes().size(), 2U) << "with all below it";
  tree.Remove(*tree.Find("B1"));
  EXPECT_EQ(Walk(tree.Roots()), "B()");
  tree.Clear();
  EXPECT_TRUE(tree.Roots().empty());
  EXPECT_EQ(tree.Find("B"), nullptr);
}

TEST_F(TreeTest, OnlyAUsersTickIsAnEvent) {
  TreeView::Node& node = form->tree.Add("", "A", "a");
  std::vector<std::string> ticked;
  form->tree.onNodeCheck = [&](TreeView::Node& hit) {
    ticked.push_back(hit.key + (hit.checked ? "+" : "-"));
  };
  node.checked = true;
  EXPECT_THAT(ticked, IsEmpty());
  form->tree.ToggleByUser(node);
  form->tree.ToggleByUser(node);
  EXPECT_THAT(ticked, ElementsAre("A-", "A+"));
}

}  // namespace
}  // namespace platform
