// The progress box: operations in slot order and their effects, and the life of a Bar.
#include "component/frame/Bar.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::ErrorNumber;
using platform::MakeRef;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Names(const platform::ClassInfo& info) {
  std::vector<std::string> names;
  for (const platform::Operation& operation : info.operations) {
    std::string name(operation.name);
    for (const platform::Parameter& parameter : operation.parameters) {
      name += parameter.type == platform::ValueType::kInt32 ? " int32" : " text";
    }
    names.push_back(name);
  }
  return names;
}

class BarTest : public ComponentTest {
 protected:
  // Runs `work` inside the box; looks at the box are by the form that it gets.
  void ShowWith(std::function<void()> work) {
    bar->onActive = std::move(work);
    bar->Show();
    bar->onActive = {};
  }

  Ref<Bar> bar = MakeRef<Bar>();
};

TEST_F(BarTest, OperationsStandInSlotOrder) {
  EXPECT_THAT(Names(Bar::Info()), ElementsAre("HideProgBar", "SetBarMaxValue int32", "SetBarMinValue int32",
                                              "SetBarValue int32", "SetBarValueWithMax", "SetMsg text",
                                              "SetMsgHead text", "Show", "ShowProgBar", "Unload"));
  EXPECT_THAT(Names(clsPass::Info()),
              ElementsAre("HideProgBar", "SetActive", "SetBarMaxValue int32", "SetBarMinValue int32",
                          "SetBarValue int32", "SetBarValueWithMax", "SetMsg text", "SetMsgHead text",
                          "ShowProgBar", "Unload"));
}

TEST_F(BarTest, EveryOperationReachesTheBoxAndLetsEventsRun) {
  struct Row {
    const char* operation;
    std::vector<Variant> arguments;
    const char* line;
  };
  const Row rows[] = {
      {"HideProgBar", {}, "bar HideProgBar"},
      {"ShowProgBar", {}, "bar ShowProgBar"},
      {"SetBarMaxValue", {200}, "bar SetBarMaxValue(200)"},
      {"SetBarMinValue", {10}, "bar SetBarMinValue(10)"},
      {"SetBarValue", {50}, "bar SetBarValue(50)"},
      {"SetBarValueWithMax", {}, "bar SetBarValueWithMax"},
      {"SetMsgHead", {"头"}, "bar SetMsgHead('头')"},
      {"SetMsg", {"文"}, "bar SetMsg('文')"},
  };
  ShowWith([&] {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.operation);
      desk.journal.clear();
      desk.screen.pendingRuns = 0;
      std::vector<Variant> arguments = row.arguments;
      EXPECT_TRUE(bar->Invoke(row.operation, platform::CallKind::kMethod, arguments).IsEmpty());
      EXPECT_THAT(desk.journal, ElementsAre(row.line));
      EXPECT_EQ(desk.screen.pendingRuns, 1);
    }
    desk.journal.clear();
    desk.screen.pendingRuns = 0;
    EXPECT_TRUE(bar->Unload().IsEmpty());
    EXPECT_THAT(desk.journal, ElementsAre("bar Unload"));
    EXPECT_EQ(desk.screen.pendingRuns, 2) << "in the box, and once it is gone";
  });
}

// The box itself, shown without a Bar.
class ProgressBoxTest : public ComponentTest {
 protected:
  ProgressBoxTest() { box->EnsureLoaded(); }

  const platform::ProgressBar& Progress() const {
    return dynamic_cast<const platform::ProgressBar&>(*box->Find("ProgressBar1"));
  }
  std::string Message() const { return box->Find("lblMsg")->Caption(); }

  Ref<clsPass> pass = MakeRef<clsPass>();
  Ref<frmProgBar> box = MakeRef<frmProgBar>(pass);
};

TEST_F(ProgressBoxTest, HasItsControlsAndNoButton) {
  std::vector<std::string> ids;
  for (const auto& control : box->Controls()) {
    ids.push_back(control->Id());
    EXPECT_NE(control->GetKind(), platform::ControlKind::kButton);
  }
  EXPECT_THAT(ids, ::testing::UnorderedElementsAre("ProgressBar1", "lblMsg", "Animation1"));
  EXPECT_EQ(box->Role(), platform::FormRole::kProgress);
}

TEST_F(ProgressBoxTest, TheBarIsHiddenAndShown) {
  pass->HideProgBar();
  EXPECT_FALSE(Progress().Visible());
  pass->ShowProgBar();
  EXPECT_TRUE(Progress().Visible());
}

TEST_F(ProgressBoxTest, TheBarTakesItsNumbers) {
  pass->SetBarMinValue(5);
  pass->SetBarMaxValue(200);
  pass->SetBarValue(50);
  EXPECT_EQ(Progress().min, 5);
  EXPECT_EQ(Progress().max, 200);
  EXPECT_EQ(Progress().value, 50);
  pass->SetBarValueWithMax();
  EXPECT_EQ(Progress().value, 200);
  pass->SetBarMaxValue(16777217);
  EXPECT_EQ(Progress().max, 16777216) << "single precision";
}

TEST_F(ProgressBoxTest, HeadAndMessageStandTogetherWithNothingBetween) {
  pass->SetMsg("一");
  EXPECT_EQ(Message(), "一");
  pass->SetMsgHead("头");
  EXPECT_EQ(Message(), "一") << "the head shows with the next message";
  pass->SetMsg("二");
  EXPECT_EQ(Message(), "头二");
  pass->SetMsgHead("");
  pass->SetMsg("三");
  EXPECT_EQ(Message(), "三");
}

TEST_F(ProgressBoxTest, UnloadingDrivesTheBarToItsMaximum) {
  pass->SetBarMaxValue(30);
  pass->Unload();
  EXPECT_EQ(Progress().value, 30);
  EXPECT_FALSE(box->IsVisible());
  EXPECT_FALSE(box->IsLoaded());
}

TEST_F(ProgressBoxTest, EachActivationIsPassedOn) {
  int activations = 0;
  pass->onActive = [&] { ++activations; };
  box->Activate();
  box->Activate();
  EXPECT_EQ(activations, 2);
}

TEST_F(ProgressBoxTest, ABoxWhoseResourcesFailIsLoadedAllTheSame) {
  ProcessState::Get().language = "eng";  // nobody serves the loader of texts
  const Ref<frmProgBar> other = MakeRef<frmProgBar>(MakeRef<clsPass>());
  EXPECT_EQ(Raised([&] { other->EnsureLoaded(); }), "nothing raised");
  EXPECT_TRUE(other->IsLoaded());
}

TEST_F(ProgressBoxTest, APassWithoutABoxSpeaksToNobody) {
  box = nullptr;
  pass->SetMsg("x");
  EXPECT_THAT(desk.journal, IsEmpty());
}

TEST_F(BarTest, WithoutABoxOnlyUnloadAndShowMayBeCalled) {
  const std::vector<std::pair<const char*, std::vector<Variant>>> calls = {
      {"HideProgBar", {}},        {"SetBarMaxValue", {1}}, {"SetBarMinValue", {1}}, {"SetBarValue", {1}},
      {"SetBarValueWithMax", {}}, {"SetMsg", {"x"}},       {"SetMsgHead", {"x"}},   {"ShowProgBar", {}}};
  auto expectRefused = [&] {
    for (const auto& call : calls) {
      SCOPED_TRACE(call.first);
      std::vector<Variant> given = call.second;
      EXPECT_EQ(RaisedNumber([&] { bar->Invoke(call.first, platform::CallKind::kMethod, given); }),
                ErrorNumber::kObjectNotSet);
    }
    EXPECT_TRUE(bar->Unload().IsEmpty());
  };
  expectRefused();
  ShowWith([&] {
    bar->Unload();
    expectRefused();
  });
  expectRefused();
}

TEST_F(BarTest, ASecondShowHasAFreshBox) {
  int shown = 0;
  for (int i = 0; i < 2; ++i) {
    ShowWith([&] {
      ++shown;
      EXPECT_TRUE(bar->IsUp());
      bar->SetMsg("x");
      bar->SetMsgHead("head");
      bar->Unload();
      EXPECT_FALSE(bar->IsUp());
    });
  }
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(desk.Count("bar SetMsg('x')"), 2);
}

TEST_F(BarTest, ABoxThatIsLeftUpIsClosedByTheHost) {
  ShowWith([] {});
  EXPECT_FALSE(bar->IsUp());
  EXPECT_THAT(desk.journal, ElementsAre("abandoned frmProgBar"));
}

TEST_F(BarTest, AnErrorLeavesThroughShowWithTheBoxGone) {
  EXPECT_EQ(
      Raised([&] { ShowWith([] { throw platform::Error(ErrorNumber::kUserDefined, "x", "broken"); }); }),
      "broken");
  EXPECT_FALSE(bar->IsUp());
  bar->onActive = {};
}

TEST_F(BarTest, TheWorkMayDropTheLastReferenceToItsBar) {
  bar->onActive = [this] {
    Bar& up = *bar;
    bar = nullptr;
    up.Unload();
  };
  bar->Show();
  EXPECT_FALSE(bar);
}

}  // namespace
}  // namespace component
