// The lookup forms, with a user who acts through UserInput while they are shown.
#include <functional>

#include <gtest/gtest.h>

#include "desk/HeadlessScreen.h"
#include "desk/lookup/BatchForm.h"
#include "desk/lookup/LookupForm.h"
#include "platform/form/UserInput.h"
#include "tests/desk/FakeBackend.h"

namespace {

using desk_tests::FakeBackend;
using platform::Form;
using platform::UserInput;
using platform::Variant;

// Shows a form by letting a function act in it.
class ActingScreen final : public platform::Screen {
 public:
  explicit ActingScreen(std::function<void(Form&)> act) : act_(std::move(act)) { Use(this); }
  ActingScreen(const ActingScreen&) = delete;
  ActingScreen& operator=(const ActingScreen&) = delete;
  ActingScreen(ActingScreen&&) = delete;
  ActingScreen& operator=(ActingScreen&&) = delete;
  ~ActingScreen() override { Use(nullptr); }

  void ShowModal(Form& form) override { act_(form); }
  platform::Answer Ask(const platform::MessageBox& box) override { return box.standard; }
  void RunPendingEvents() override {}
  void SetPointer(platform::Pointer /*pointer*/) override {}
  void TellProgress(std::string_view /*operation*/, const Variant& /*value*/) override {}

 private:
  std::function<void(Form&)> act_;
};

void Fill(FakeBackend& backend) {
  backend.rows = {
      {.id = 1, .number = "01", .shortNumber = "01", .name = "五金", .detail = false},
      {.id = 2, .parentId = 1, .number = "01.01", .shortNumber = "01", .name = "螺丝"},
      {.id = 3, .parentId = 1, .number = "01.02", .shortNumber = "02", .name = "螺母", .disabled = true},
      {.id = 4, .number = "09", .shortNumber = "09", .name = "胶带"},
  };
}

struct Case {
  const char* name;
  const char* text;  // what stood in the field
  std::function<void(Form&)> act;
  const char* number;  // nullptr: nothing picked
};

TEST(DeskLookupForm, PicksOneRow) {
  const Case kCases[] = {
      {"a row of the tree", "",
       [](Form& form) {
         UserInput(form).ClickNode("tvwRows", "K2");
         UserInput(form).Click("cmdOK");
       },
       "01.01"},
      {"the last one ticked", "",
       [](Form& form) {
         UserInput(form).ClickNode("tvwRows", "K2");
         UserInput(form).ClickNode("tvwRows", "K3");
         UserInput(form).Click("cmdOK");
       },
       "01.02"},
      {"a number typed in full", "01.02", [](Form& form) { UserInput(form).Click("cmdOK"); }, "01.02"},
      {"the only row that is found", "胶", [](Form& form) { UserInput(form).Click("cmdOK"); }, "09"},
      {"found while typing", "",
       [](Form& form) {
         UserInput(form).Set("txtSearch", "胶带");
         UserInput(form).PressKey("txtSearch", "Enter");
       },
       "09"},
      {"a group is not picked", "",
       [](Form& form) {
         UserInput(form).ClickNode("tvwRows", "K1");
         EXPECT_EQ(UserInput(form).Click("cmdOK"), platform::Refusal::kDisabled);
       },
       nullptr},
      {"nothing while several fit", "螺",
       [](Form& form) { EXPECT_EQ(UserInput(form).Click("cmdOK"), platform::Refusal::kDisabled); }, nullptr},
      {"unticked again", "",
       [](Form& form) {
         UserInput(form).ClickNode("tvwRows", "K2");
         UserInput(form).ClickNode("tvwRows", "K2");
         EXPECT_EQ(UserInput(form).Click("cmdOK"), platform::Refusal::kDisabled);
       },
       nullptr},
      {"cancelled", "01.02", [](Form& form) { UserInput(form).Click("cmdCancel"); }, nullptr},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    FakeBackend backend;
    Fill(backend);
    const ActingScreen screen(c.act);
    const auto picked =
        desk::PickBaseData(backend, {.kind = "ItemLookUp", .dataType = 4, .text = c.text, .filter = {}});
    ASSERT_EQ(picked.has_value(), c.number != nullptr);
    if (picked) {
      EXPECT_EQ(picked->number, Variant(c.number));
    }
  }
}

TEST(DeskLookupForm, ShowsTreeListAndDisabledRows) {
  FakeBackend backend;
  Fill(backend);
  const ActingScreen screen([](Form& form) {
    EXPECT_EQ(form.Caption(), "选择仓库");
    const auto& tree = *form.FirstTree();
    ASSERT_EQ(tree.Nodes().size(), 4u);
    EXPECT_EQ(tree.Find("K2")->parent, tree.Find("K1"));
    EXPECT_EQ(tree.Find("K2")->text, "01.01  螺丝");
    EXPECT_EQ(tree.Find("K3")->color, 255u);
    EXPECT_EQ(tree.Find("K1")->image, "Close");
    UserInput(form).Set("txtSearch", "螺");
    ASSERT_EQ(tree.Nodes().size(), 2u);
    EXPECT_EQ(tree.Find("K2")->parent, nullptr);
    EXPECT_EQ(form.Find("lblCount")->Caption(), "共 2 条");
  });
  desk::PickBaseData(backend, {.kind = "ItemLookUp", .dataType = 5, .text = "", .filter = {}});
  EXPECT_EQ(backend.asked, (std::vector<std::string>{"rows '' limit 1001", "rows '螺' limit 201"}));
}

TEST(DeskLookupForm, SaysWhenThereAreMore) {
  FakeBackend backend;
  for (std::int32_t id = 1; id <= desk::LookupForm::kMostInTree + 1; ++id) {
    backend.rows.push_back({.id = id, .number = std::to_string(id), .name = "n"});
  }
  const ActingScreen screen([](Form& form) {
    EXPECT_EQ(form.FirstTree()->Nodes().size(), static_cast<std::size_t>(desk::LookupForm::kMostInTree));
    EXPECT_EQ(form.Find("lblCount")->Caption(), "仅显示前 1000 条，请输入更多内容");
    UserInput(form).Set("txtSearch", "n");
    EXPECT_EQ(form.FirstTree()->Nodes().size(), static_cast<std::size_t>(desk::LookupForm::kMostRows));
    EXPECT_EQ(form.Find("lblCount")->Caption(), "仅显示前 200 条，请输入更多内容");
  });
  desk::PickBaseData(backend, {.kind = "ItemLookUp", .dataType = 4, .text = "", .filter = {}});
}

// No class is out of reach because those before it have too many rows.
TEST(DeskLookupForm, ShowsTheGroupsAloneOfALongTree) {
  FakeBackend backend;
  constexpr std::int32_t kGroups = 3;
  for (std::int32_t id = 1; id <= kGroups; ++id) {
    backend.rows.push_back({.id = id, .number = "0" + std::to_string(id), .name = "类", .detail = false});
  }
  for (std::int32_t id = kGroups + 1; id <= desk::LookupForm::kMostInTree + 1; ++id) {
    backend.rows.push_back({.id = id, .parentId = 1, .number = "01." + std::to_string(id), .name = "n"});
  }
  const ActingScreen screen([](Form& form) {
    ASSERT_EQ(form.FirstTree()->Nodes().size(), static_cast<std::size_t>(kGroups));
    EXPECT_EQ(form.FirstTree()->Nodes()[2]->tag, "03");
    EXPECT_EQ(form.Find("lblCount")->Caption(), "共 3 个类别，请选择类别或输入内容");
    EXPECT_FALSE(form.Find("cmdOK")->Enabled());
  });
  desk::PickBaseData(backend, {.kind = "ItemLookUp", .dataType = 4, .text = "", .filter = {}});
}

platform::Ref<platform::Recordset> TwoBatches() {
  auto batches = platform::MakeRef<platform::Recordset>();
  batches->AppendField("FBatchNo", platform::FieldType::kText);
  batches->AppendField("FItemNumber", platform::FieldType::kText);
  batches->AppendField("FItemName", platform::FieldType::kText);
  batches->AppendField("FQty", platform::FieldType::kDouble);
  batches->Open();
  for (const char* batch : {"B1", "B2"}) {
    batches->AddNew();
    batches->SetValue("FBatchNo", batch);
    batches->SetValue("FItemNumber", "01.01");
    batches->SetValue("FItemName", "螺丝");
    batches->SetValue("FQty", 2.5);
    batches->Update();
  }
  return batches;
}

TEST(DeskBatchForm, PositionsTheListOnTheBatchPicked) {
  FakeBackend backend;
  backend.batches = TwoBatches();
  {
    const ActingScreen screen([](Form& form) {
      EXPECT_EQ(form.FirstTree()->Find("2")->text, "B2  01.01 螺丝  2.5");
      EXPECT_EQ(UserInput(form).Click("cmdOK"), platform::Refusal::kDisabled);
      UserInput(form).ClickNode("tvwRows", "2");
      UserInput(form).Click("cmdOK");
    });
    EXPECT_EQ(desk::PickBatch(backend, {.filterItem = "", .filter = "", .keyWord = "B"})->Value("FBatchNo"),
              Variant("B2"));
  }
  const ActingScreen screen([](Form& form) { UserInput(form).Click("cmdCancel"); });
  EXPECT_FALSE(desk::PickBatch(backend, {}));
}

// Some dialogs ask for batches as for any other base data.
TEST(DeskBatchForm, AnswersALookupOfTheBatchType) {
  FakeBackend backend;
  backend.batches = TwoBatches();
  const ActingScreen screen([](Form& form) {
    EXPECT_EQ(form.Name(), "frmBatchList");
    UserInput(form).ClickNode("tvwRows", "1");
    UserInput(form).Click("cmdOK");
  });
  const auto picked = desk::PickBaseData(
      backend, {.kind = "SubMesLookup", .dataType = desk::kBatchType, .text = "B", .filter = {}});
  ASSERT_TRUE(picked.has_value());
  EXPECT_EQ(picked->number, Variant("B1"));
}

TEST(DeskHeadlessScreen, RefusesDialogsAndRunsProgressBoxes) {
  class Box final : public Form {
   public:
    explicit Box(bool fails) : Form("frmProgBar", platform::FormRole::kProgress), fails_(fails) {}
    int runs = 0;

   private:
    void OnActivate() override {
      ++runs;
      if (fails_) throw platform::Error(platform::ErrorNumber::kUserDefined, "Box", "no");
    }
    bool fails_;
  };
  desk::HeadlessScreen screen;
  platform::Screen::Use(&screen);
  const auto box = platform::MakeRef<Box>(false);
  box->Show();
  EXPECT_EQ(box->runs, 1);
  EXPECT_FALSE(box->IsLoaded());
  EXPECT_THROW(platform::MakeRef<Box>(true)->Show(), platform::Error);
  EXPECT_EQ(
      screen.Ask(
          {.text = "?", .buttons = platform::MessageButtons::kYesNo, .standard = platform::Answer::kNo}),
      platform::Answer::kNo);
  FakeBackend backend;
  EXPECT_THROW(desk::PickBaseData(backend, {}), platform::Error);
  platform::Screen::Use(nullptr);
}

}  // namespace
