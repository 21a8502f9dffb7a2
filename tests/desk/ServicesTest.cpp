// The services by programmatic id: what they answer, what they ask of the backend, what is told.
#include <memory>

#include <gtest/gtest.h>

#include "desk/Desk.h"
#include "tests/desk/FakeBackend.h"

namespace {

using desk_tests::FakeBackend;
using desk_tests::FakeWitness;
using platform::Date;
using platform::Object;
using platform::Ref;
using platform::Variant;
using Texts = std::vector<std::string>;

class DeskServices : public testing::Test {
 protected:
  ~DeskServices() override { desk_->Close(); }

  FakeBackend backend_;
  FakeWitness witness_;
  std::shared_ptr<desk::Desk> desk_ = desk::Desk::Open(backend_, witness_);
};

TEST_F(DeskServices, AnswerWhatTheBackendSays) {
  struct Case {
    const char* programmaticId;
    const char* method;
    std::vector<Variant> arguments;
    Variant answer;
  };
  const Case kCases[] = {
      {"TOVMtsCacheService.CacheFacade", "GetItem", {7, "IsOuterLogin"}, 1},
      {"TOVMtsCacheService.CacheFacade", "GetItem", {7, "UserID"}, "session UserID"},
      {"TOVPropsMgr.ShareProps", "GetProperty", {7, "IP"}, "session IP"},
      {"TOVEBSBase.SystemProfile", "GetProfile", {"p", "IC", "StartYear"}, 2024},
      {"TOVEBSBase.SystemProfile", "GetProfile", {"p", "IC", "None"}, platform::Null{}},
      {"TOVEBSBase.SystemProfile", "GetSystemProfile", {"IC", "StartYear", 0}, 2024},
      {"TOVEBSBase.SystemProfile", "GetSystemProfile", {"IC", "None", 3}, 3},
      {"TOVEBSBase.SystemProfile", "GetSystemProfile", {"IC", "None"}, Variant()},
      {"TOVEBSBase.SecurityInfo", "NeedAutorized", {"p"}, true},
      {"TOVEBCGLView.GLData", "AccessCheck", {1006, 2, 4}, true},
      {"TOVEBCGLView.GLData", "GetAuthItemClassList", {}, "4,5"},
      {"TOVEBCGLView.GLData", "Refresh", {}, Variant()},
      {"TOVEBCGLView.GLData", "GLGetPeriodDate", {2024, 2}, Date::Of(2024, 2, 1)},
      {"TOVEBCGLView.GLView", "CurrencyLookup", {"x"}, nullptr},
      {"TOVMAppConnection.AppConnection", "Execute", {"p", "select"}, nullptr},
      {"TOVMClass.ClassInfo", "GetData", {"p", "select"}, nullptr},
      {"TOVebsglitem.ItemInfo", "GetList", {"p", 5}, nullptr},
      {"TOVebsglitem.ItemInfo", "GetList", {"p", 5, platform::Missing{}, "FItemID in (1)"}, nullptr},
      {"TOVBaseList.BaseList", "Show", {1}, nullptr},
      {"VEZ_APFC.FrameData", "WriteMGLog", {"C", "T"}, Variant()},
      {"TOVCalCostByStock.InterFace", "QuickCalculate", {nullptr, false}, Variant()},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(std::string(c.programmaticId) + "." + c.method);
    std::vector<Variant> arguments = c.arguments;
    EXPECT_TRUE(desk_->Create(c.programmaticId)->Invoke(c.method, platform::CallKind::kMethod, arguments) ==
                c.answer);
  }
  EXPECT_EQ(backend_.asked, (Texts{"CurrencyLookup 12 x ", "sql select", "sql select", "list 5 ",
                                   "list 5 FItemID in (1)", "batch  ", "usage C T", "calculate"}));
}

TEST_F(DeskServices, AreToldAboutFromTheFirstToTheLast) {
  Ref<Object> list = desk_->Create("tovbaselist.baselist");
  list->Put("FilterItem", "i");
  list->Put("Filter", "f");
  list->Put("KeyWord", "k");
  list->Call("Show", 1);
  list = nullptr;
  EXPECT_EQ(witness_.told, (Texts{"created TOVBaseList.BaseList", "put FilterItem at 0", "put Filter at 0",
                                  "put KeyWord at 0", "called Show with 1", "lookup BaseList 21 'k' 'f'",
                                  "released TOVBaseList.BaseList"}));
}

TEST_F(DeskServices, AreToldAboutAlsoWhenTheCallIsRefused) {
  const Ref<Object> connection = desk_->Create("TOVMAppConnection.AppConnection");
  EXPECT_THROW(connection->Call("Execute"), platform::Error);
  EXPECT_THROW(connection->Call("Nothing"), platform::Error);
  EXPECT_EQ(witness_.told, (Texts{"created TOVMAppConnection.AppConnection", "called Execute with 0", "sql ",
                                  "called Nothing with 0"}));
}

TEST_F(DeskServices, HandOutTheProfileWithoutACreation) {
  const Ref<Object> data = desk_->Create("TOVEBCGLView.GLData");
  const Variant profile = data->Get("SystemProfile");
  EXPECT_EQ(profile.AsObject().Call("GetSystemProfile", "IC", "StartYear", 0), Variant(2024));
  EXPECT_EQ(witness_.told,
            (Texts{"created TOVEBCGLView.GLData", "got SystemProfile", "called GetSystemProfile with 3"}));
}

TEST_F(DeskServices, LookUpBaseData) {
  backend_.picked = desk::Picked{.number = "01.02", .shortNumber = "02", .detail = false};
  const Variant outcome =
      desk_->Create("TOVEBCGLView.GLView")->Call("ItemLookUp", 4, "0", "f", Variant("options"));
  Object& choice = outcome.AsObject().Get("ReturnObject").AsObject();
  EXPECT_EQ(choice.Get("Number"), Variant("01.02"));
  EXPECT_EQ(choice.Get("FShortNumber"), Variant("02"));
  EXPECT_EQ(choice.Get("Detail"), Variant(false));
  EXPECT_EQ(backend_.asked, (Texts{"ItemLookUp 4 0 f"}));
}

TEST_F(DeskServices, AreNotThereForOtherIds) { EXPECT_FALSE(desk_->Create("TOVMStockRpt.Data")); }

TEST_F(DeskServices, OutliveTheirDesk) {
  const Ref<Object> data = desk_->Create("TOVEBCGLView.GLData");
  desk_->Close();
  try {
    data->Call("Refresh");
    FAIL() << "a closed desk must not answer";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.Number(), platform::ErrorNumber::kObjectClosed);
  }
  EXPECT_EQ(witness_.told, (Texts{"created TOVEBCGLView.GLData"}));
}

TEST_F(DeskServices, GiveWayToAReplacement) {
  const Ref<Object> before = desk_->Create("TOVEBSBase.SecurityInfo");
  EXPECT_EQ(before->Call("NeedAutorized", "p"), Variant(true));
  class Refuser final : public Object {
   public:
    std::string ClassName() const override { return "Refuser"; }
    Variant Invoke(std::string_view, platform::CallKind, std::span<Variant>) override { return false; }
  };
  desk_->SetReplacement([](std::string_view id) {
    return id == "TOVEBSBase.SecurityInfo" ? Ref<Object>(platform::MakeRef<Refuser>()) : Ref<Object>();
  });
  EXPECT_EQ(before->Call("NeedAutorized", "p"), Variant(false));
}

}  // namespace
