// The two filter controls, with a listener in the place of a dialog.
#include <gtest/gtest.h>

#include "desk/filter/ReportFilter.h"
#include "desk/filter/TOVRptFilter.h"
#include "tests/desk/FakeBackend.h"

namespace {

using desk_tests::FakeBackend;
using desk_tests::FakeWitness;
using platform::Dictionary;
using platform::Object;
using platform::Ref;
using platform::Variant;
using Texts = std::vector<std::string>;

class DeskFilterControl : public testing::Test {
 protected:
  ~DeskFilterControl() override { desk_->Close(); }

  // Listens as a dialog with one field, "A", whose value is `field_`.
  template <class C>
  Ref<C> Control() {
    const Ref<Object> made = desk_->Create(C::kClassName);
    control_ = made.Get();
    made->Events()->Listen(
        [this](std::string_view event, std::span<Variant> arguments) { Hear(event, arguments); });
    return Ref<C>(dynamic_cast<C*>(made.Get()));
  }

  void Hear(std::string_view event, std::span<Variant> arguments) {
    std::string text(event);
    if (!arguments.empty() && !arguments[0].IsObject()) text += " " + platform::ToText(arguments[0]);
    heard_.push_back(text);
    if (event == failOn_)
      throw platform::Error(platform::ErrorNumber::kUserDefined, "dialog", "the dialog fails");
    if (event == "SaveScheme") control_->Call("WriteValue", arguments[0], "A", field_);
    if (event == "LoadScheme") field_ = platform::ToText(control_->Call("ReadValue", arguments[0], "a"));
    if (event == "SaveFields") arguments[0].AsRef<Dictionary>()->Set("A", field_);
    if (event == "SaveQuery") arguments[0].AsRef<Dictionary>()->Set("Q", 1);
    if (event == "LoadFields") field_ = platform::ToText(arguments[0].AsRef<Dictionary>()->Value("A"));
    if (event == "GetDataType") arguments[1] = 21;
  }

  FakeBackend backend_;
  FakeWitness witness_;
  std::shared_ptr<desk::Desk> desk_ = desk::Desk::Open(backend_, witness_);
  Object* control_ = nullptr;
  std::string field_ = "01";
  std::string_view failOn_;
  Texts heard_;
};

std::string ValueOfA(const Variant& filter) {
  return platform::ToText(filter.AsRef<Dictionary>()->Value("A"));
}

TEST_F(DeskFilterControl, CollectsThroughFilterInfo) {
  const auto control = Control<desk::TOVRptFilter>();
  EXPECT_EQ(ValueOfA(control_->Get("FilterInfo").AsObject().Call("FilterResult")), "01");
  field_ = "02";
  EXPECT_EQ(ValueOfA(control_->Get("FilterInfo").AsObject().Call("FilterResult")), "02");
  EXPECT_EQ(heard_, (Texts{"SaveScheme ", "SaveScheme "}));
  EXPECT_EQ(witness_.told[0], "got FilterInfo");
  EXPECT_EQ(witness_.told[1], "called FilterResult with 0");
  EXPECT_FALSE(control->HasButtons());
}

TEST_F(DeskFilterControl, KeepsSchemesByDialog) {
  const auto control = Control<desk::TOVRptFilter>();
  control->Save(backend_.schemes, "frmA", "mine");
  field_ = "x";
  control->Load(backend_.schemes, "FRMA", "MINE");
  EXPECT_EQ(field_, "01");
  EXPECT_EQ(heard_, (Texts{"SaveScheme mine", "LoadScheme MINE", "SchemeActivated"}));
  EXPECT_EQ(control_->Get("CurrentScheme").AsObject().Get("Name"), Variant("MINE"));
  EXPECT_THROW(control->Load(backend_.schemes, "frmB", "mine"), platform::Error);
  EXPECT_EQ(backend_.schemes.Names("frmA"), (Texts{"mine"}));
}

TEST_F(DeskFilterControl, ReadsEmptyForAKeyThatASchemeDoesNotHold) {
  const auto control = Control<desk::TOVRptFilter>();
  backend_.schemes.Save("frmA", "old", {{"Other", Variant(5)}});
  control->Load(backend_.schemes, "frmA", "old");
  EXPECT_EQ(field_, "");
  Variant section("old");
  EXPECT_TRUE(control_->Call("ReadValue", section, "A").IsEmpty());
  EXPECT_EQ(control_->Call("ReadValue", section, "other"), Variant(5));
}

TEST_F(DeskFilterControl, ShowsAndHidesPages) {
  const auto control = Control<desk::TOVRptFilter>();
  control_->Put("PageVisible", std::int16_t{1}, false);
  EXPECT_FALSE(control->IsPageVisible(1));
  EXPECT_TRUE(control->IsPageVisible(2));
  control_->Put("PageVisible", std::int16_t{1}, true);
  EXPECT_TRUE(control->IsPageVisible(1));
  EXPECT_EQ(witness_.told, (Texts{"put PageVisible at 1", "put PageVisible at 1"}));
  Variant number(10414);
  control_->Call("InitFilter", "商品超储短缺表", number);
  EXPECT_EQ(control->Title(), "商品超储短缺表");
}

TEST_F(DeskFilterControl, ConfirmsWithItsOwnButtons) {
  const auto control = Control<desk::ReportFilter>();
  control->Confirm(false);
  EXPECT_EQ(ValueOfA(control_->Call("FilterResult")), "01");
  control->Confirm(true);
  EXPECT_EQ(control_->Call("FilterResult").AsRef<Dictionary>()->Value("Q"), Variant(1));
  EXPECT_EQ(heard_, (Texts{"SaveFields", "FilterDone 0", "SaveFields", "SaveQuery", "FilterDone 0"}));
  EXPECT_TRUE(control->HasButtons());
}

TEST_F(DeskFilterControl, FillsTheFields) {
  const auto control = Control<desk::ReportFilter>();
  control->Save(backend_.schemes, "frmA", "mine");
  field_ = "x";
  control->Load(backend_.schemes, "frmA", "mine");
  EXPECT_EQ(field_, "01");
  const Ref<Dictionary> filter = platform::MakeRef<Dictionary>();
  filter->Set("A", "given");
  control_->Call("LoadFilter", filter);
  EXPECT_EQ(field_, "given");
  EXPECT_EQ(heard_, (Texts{"SaveFields", "LoadFields", "LoadQuery", "LoadFields", "LoadQuery"}));
}

TEST_F(DeskFilterControl, AsksTheDialogForTheDataType) {
  const auto control = Control<desk::ReportFilter>();
  const auto field = platform::MakeRef<platform::TextBox>("txtItem", 4);
  EXPECT_EQ(control->DataTypeOf(*field), 21);
  control_->Put("ReportID", 10422);
  EXPECT_EQ(control->ReportID(), 10422);
  Variant autoFilter(-1);
  control_->Put("AutoFilter", autoFilter);
  EXPECT_EQ(control->AutoFilter(), Variant(-1));
}

TEST_F(DeskFilterControl, YieldsAForcedResultOnce) {
  const auto control = Control<desk::ReportFilter>();
  control->ForceResultOnce(nullptr);
  control->Confirm(false);
  EXPECT_TRUE(control_->Call("FilterResult").IsNothing());
  EXPECT_EQ(ValueOfA(control_->Call("FilterResult")), "01");
  control->ForceErrorOnce("broken");
  EXPECT_THROW(control_->Call("FilterResult"), platform::Error);
  EXPECT_EQ(ValueOfA(control_->Call("FilterResult")), "01");
}

TEST_F(DeskFilterControl, LetsTheDialogsFailureOut) {
  const auto control = Control<desk::TOVRptFilter>();
  failOn_ = "ResetFields";
  EXPECT_THROW(control->Reset(), platform::Error);
  failOn_ = "SaveScheme";
  EXPECT_THROW(control->Save(backend_.schemes, "frmA", "mine"), platform::Error);
  EXPECT_FALSE(backend_.schemes.Load("frmA", "mine"));
}

}  // namespace
