// The life of a form, its focus, and the screen that it is shown on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/Raised.h"
#include "tests/platform/form/SampleForm.h"

namespace platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Runs a script in each form that it is asked to show, and leaves it to the form to be done.
class ScriptedScreen final : public Screen {
 public:
  std::function<void(Form& form)> script;

  void ShowModal(Form& form) override {
    form.Activate();
    if (script) script(form);
  }
  Answer Ask(const MessageBox&) override { return Answer::kYes; }
  void RunPendingEvents() override { ++pendingRuns; }
  void SetPointer(Pointer) override {}
  void TellProgress(std::string_view, const Variant&) override {}

  int pendingRuns = 0;
};

class FormTest : public ::testing::Test {
 protected:
  FormTest() { Screen::Use(&screen); }
  FormTest(const FormTest&) = delete;
  FormTest& operator=(const FormTest&) = delete;
  FormTest(FormTest&&) = delete;
  FormTest& operator=(FormTest&&) = delete;
  ~FormTest() override { Screen::Use(nullptr); }

  ScriptedScreen screen;
  Ref<SampleForm> form = MakeRef<SampleForm>();
};

TEST_F(FormTest, LoadRunsOnceAndActivationAtEachShowing) {
  screen.script = [](Form& shown) {
    EXPECT_TRUE(shown.IsVisible());
    shown.Activate();
    shown.Hide();
    EXPECT_FALSE(shown.IsVisible());
  };
  form->Show();
  EXPECT_THAT(form->Heard(), ElementsAre("load", "activate", "activate"));
  form->text.SetText("kept");
  form->Heard();
  form->Show();
  EXPECT_THAT(form->Heard(), ElementsAre("activate", "activate"));
  EXPECT_EQ(form->text.Text(), "kept") << "a hidden form keeps its fields";
}

TEST_F(FormTest, UnloadingEndsAFormOnce) {
  screen.script = [](Form& shown) { shown.Unload(); };
  form->Show();
  EXPECT_THAT(form->Heard(), ElementsAre("load", "activate", "unload"));
  form->Unload();
  EXPECT_THAT(form->Heard(), IsEmpty());
  form->Show();
  EXPECT_THAT(form->Heard(), ElementsAre("load", "activate", "unload")) << "the next showing loads it anew";
  MakeRef<SampleForm>()->Unload();
}

TEST_F(FormTest, AFormMayBeLoadedWithoutBeingShown) {
  form->EnsureLoaded();
  form->EnsureLoaded();
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_FALSE(form->IsVisible());
  EXPECT_THAT(form->Heard(), ElementsAre("load"));
}

TEST_F(FormTest, TheWindowButtonUnloads) {
  screen.script = [](Form& shown) { shown.CloseByUser(); };
  form->Show();
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(FormTest, AnErrorLeavesThroughShowWithTheFormHidden) {
  struct Row {
    const char* name;
    std::function<void(SampleForm&, ScriptedScreen&)> arrange;
  };
  const auto fail = [] { throw Error(ErrorNumber::kUserDefined, "test", "broken"); };
  const Row rows[] = {
      {"while loading", [&](SampleForm& shown, ScriptedScreen&) { shown.onLoad = fail; }},
      {"while activating", [&](SampleForm& shown, ScriptedScreen&) { shown.onActivate = fail; }},
      {"in a control's event",
       [&](SampleForm& shown, ScriptedScreen& used) {
         shown.button.onClick = fail;
         used.script = [](Form& up) { UserInput(up).Click("cmdOK"); };
       }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    screen.script = {};
    form = MakeRef<SampleForm>();
    row.arrange(*form, screen);
    EXPECT_EQ(Raised([&] { form->Show(); }).Description(), "broken");
    EXPECT_FALSE(form->IsVisible());
  }
}

TEST_F(FormTest, AnEventMayDropTheLastReference) {
  screen.script = [&](Form& shown) {
    form = nullptr;
    EXPECT_EQ(shown.Name(), "frmSample") << "the showing holds it";
    shown.Unload();
  };
  Form& shown = *form;
  shown.Show();
  EXPECT_FALSE(form);
}

TEST_F(FormTest, AFormAnswersItsNameAndCaption) {
  form->SetCaption("过滤");
  EXPECT_EQ(form->Get("Name"), Variant("frmSample"));
  EXPECT_EQ(form->Get("caption"), Variant("过滤"));
  EXPECT_EQ(form->ClassName(), "frmSample");
  EXPECT_EQ(Raised([&] { form->Get("Result"); }).Number(), ErrorNumber::kUnknownMember);
  EXPECT_EQ(Raised([&] { form->Put("Caption", "x"); }).Number(), ErrorNumber::kUnknownMember);
}

TEST_F(FormTest, MovingTheFocusTellsBothControls) {
  form->SetFocus(&form->text);
  EXPECT_THAT(form->Heard(), ElementsAre("got txtItem(0)"));
  form->SetFocus(&form->text);
  EXPECT_THAT(form->Heard(), IsEmpty());
  form->SetFocus(&form->date);
  EXPECT_THAT(form->Heard(), ElementsAre("lost txtItem(0)", "got DtpBDate"));
  form->SetFocus(nullptr);
  EXPECT_THAT(form->Heard(), ElementsAre("lost DtpBDate"));
  EXPECT_EQ(form->Focus(), nullptr);
}

TEST_F(FormTest, AControlMayTakeTheFocusBack) {
  form->SetFocus(&form->date);
  form->date.onLostFocus = [&] { form->SetFocus(&form->date); };
  form->Heard();
  form->SetFocus(&form->text);
  EXPECT_EQ(form->Focus(), &form->date);
  EXPECT_THAT(form->Heard(), ElementsAre("lost txtItem(0)", "got DtpBDate")) << "the text never got it";
}

TEST_F(FormTest, AControlThatCannotTakeTheFocusIsRefused) {
  form->SetFocus(&form->text);
  form->second.SetEnabled(false);
  form->combo.SetVisible(false);
  form->frame.SetVisible(false);
  form->Heard();
  for (const char* id :
       {"lblItem", "fraGroup", "updLevel", "ProgressBar1", "txtItem(1)", "cboSort", "txtInside"}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(Raised([&] { form->SetFocus(form->Find(id)); }).Number(), ErrorNumber::kInvalidCall);
    EXPECT_EQ(form->Focus(), &form->text);
  }
  EXPECT_THAT(form->Heard(), IsEmpty());
}

TEST_F(FormTest, TabGoesRoundInTheOrderOfAdding) {
  auto tour = [&] {
    std::vector<std::string> ids;
    form->SetFocus(nullptr);
    for (int i = 0; i < 20; ++i) {
      form->FocusNext();
      if (!ids.empty() && form->Focus()->Id() == ids.front()) break;
      ids.push_back(form->Focus()->Id());
    }
    return ids;
  };
  EXPECT_THAT(tour(), ElementsAre("txtItem(0)", "txtItem(1)", "cboSort", "chkTotal", "optA", "optB", "optIn",
                                  "optOut", "txtInside", "DtpBDate", "trvStock", "cmdOK"));
  form->text.SetEnabled(false);
  form->frame.SetEnabled(false);
  form->combo.SetVisible(false);
  EXPECT_THAT(tour(), ElementsAre("txtItem(1)", "chkTotal", "optA", "optB", "DtpBDate", "trvStock", "cmdOK"));
}

TEST_F(FormTest, AFormWithoutControlsHasNowhereToGo) {
  const Ref<Form> empty = MakeRef<Form>("frmEmpty");
  empty->FocusNext();
  EXPECT_EQ(empty->Focus(), nullptr);
  EXPECT_EQ(empty->FirstTree(), nullptr);
  EXPECT_EQ(empty->FirstEmbedded(), nullptr);
  EXPECT_EQ(form->FirstTree(), &form->tree);
}

TEST(ScreenTest, WithoutAScreenNothingCanBeShown) {
  Screen::Use(nullptr);
  const Ref<SampleForm> form = MakeRef<SampleForm>();
  EXPECT_EQ(Raised([&] { form->Show(); }).Description(), "there is no screen to show the form frmSample on");
  EXPECT_FALSE(form->IsVisible());
  EXPECT_EQ(Raised([] { Screen::Current().Ask({.text = "继续？"}); }).Description(),
            "there is no screen to show the message '继续？' on");
  Screen::Current().RunPendingEvents();
  Screen::Current().SetPointer(Pointer::kHourglass);
  Screen::Current().TellProgress("SetMsg", "x");
}

TEST(ScreenTest, TheScreenInUseIsBorrowed) {
  ScriptedScreen screen;
  Screen::Use(&screen);
  Screen::Current().RunPendingEvents();
  EXPECT_EQ(screen.pendingRuns, 1);
  EXPECT_EQ(Screen::Current().Ask({.text = "?"}), Answer::kYes);
  Screen::Use(nullptr);
  EXPECT_NE(&Screen::Current(), &screen);
}

TEST(ScreenTest, WordsOfTheScreenHaveNames) {
  EXPECT_EQ(ToString(Answer::kOk), "ok");
  EXPECT_EQ(ToString(Answer::kCancel), "cancel");
  EXPECT_EQ(ToString(Answer::kYes), "yes");
  EXPECT_EQ(ToString(Answer::kNo), "no");
  EXPECT_EQ(ToString(MessageButtons::kOk), "ok");
  EXPECT_EQ(ToString(MessageButtons::kOkCancel), "okcancel");
  EXPECT_EQ(ToString(MessageButtons::kYesNo), "yesno");
  EXPECT_EQ(ToString(MessageIcon::kNone), "none");
  EXPECT_EQ(ToString(MessageIcon::kInformation), "information");
  EXPECT_EQ(ToString(MessageIcon::kQuestion), "question");
  EXPECT_EQ(ToString(Pointer::kDefault), "default");
  EXPECT_EQ(ToString(Pointer::kHourglass), "hourglass");
}

}  // namespace
}  // namespace platform
