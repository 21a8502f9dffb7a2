// The cost calculation that a confirmed filter may set off.
#include "component/frame/SysObjects.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Answer;
using platform::Form;
using platform::MakeRef;
using platform::Object;
using platform::Ref;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kQuestion =
    "ask '有新业务发生，即将进行成本核算，是否继续？' '信息提示' yesno question no -> ";
const std::string kCalculated = "call TOVCalCostByStock.InterFace.QuickCalculate(<frmOwner>, False)";

class QuickCostTest : public ComponentTest {
 protected:
  QuickCostTest() { desk.Answer("TOVCalCostByStock.InterFace", "QuickCalculate", {}); }

  void NewBusiness() { desk.AnswerSql("ICCalFlag", TextRows({"F"}, {{"1"}})); }
  void CanCalculate(const char* value) {
    desk.AnswerSql("CanQuickCalculate", TextRows({"FValue"}, {{value}}));
  }
  std::vector<std::string> Check(bool prompt) {
    desk.journal.clear();
    CheckQuickCost(owner, prompt);
    std::vector<std::string> lines = desk.Lines("ask ");
    for (const std::string& line : desk.Lines("QuickCalculate(")) lines.push_back(line);
    return lines;
  }

  Ref<Object> owner{MakeRef<Form>("frmOwner")};
};

TEST_F(QuickCostTest, WithoutNewBusinessNothingHappens) {
  desk.AnswerSql("ICCalFlag", TextRows({"F"}, {}));
  EXPECT_THAT(Check(true), IsEmpty());
  EXPECT_THAT(desk.sqlTexts, ElementsAre("Select 1 From ICCalFlag"));
  EXPECT_THAT(desk.Lines("TOVCalCostByStock"), IsEmpty()) << "the service is not even created";
}

TEST_F(QuickCostTest, WithoutPromptItCalculatesAtOnce) {
  NewBusiness();
  EXPECT_THAT(Check(false), ElementsAre(kCalculated));
  EXPECT_THAT(desk.Lines("TOVCalCostByStock"),
              ElementsAre("new TOVCalCostByStock.InterFace", kCalculated, "end TOVCalCostByStock.InterFace"));
}

TEST_F(QuickCostTest, WithPromptTheUserDecides) {
  NewBusiness();
  CanCalculate("1");
  desk.screen.answers = {Answer::kYes};
  EXPECT_THAT(Check(true), ElementsAre(kQuestion + "yes", kCalculated));
  desk.screen.answers = {Answer::kNo};
  EXPECT_THAT(Check(true), ElementsAre(kQuestion + "no"));
  EXPECT_THAT(Check(true), ElementsAre(kQuestion + "no")) << "no is the default";
}

TEST_F(QuickCostTest, AProfileThatForbidsItAsksNothing) {
  NewBusiness();
  CanCalculate("0");
  EXPECT_THAT(Check(true), IsEmpty());
  EXPECT_EQ(desk.Count("new TOVCalCostByStock.InterFace"), 1)
      << "the service was created before the profile was read";
  EXPECT_THAT(Check(false), ElementsAre(kCalculated)) << "without prompt the profile is not asked";
}

TEST_F(QuickCostTest, AnyErrorIsToldAndNothingIsRaised) {
  struct Row {
    const char* name;
    std::function<void(Desk&)> arrange;
    const char* text;
  };
  const Row rows[] = {
      {"the flag cannot be read", [](Desk&) {}, "the database refuses"},
      {"the service is missing", [](Desk& other) { other.AnswerSql("ICCalFlag", TextRows({"F"}, {{"1"}})); },
       "class not registered: TOVCalCostByStock.InterFace"},
      {"the calculation fails",
       [](Desk& other) {
         other.AnswerSql("ICCalFlag", TextRows({"F"}, {{"1"}}));
         other.AnswerSql("CanQuickCalculate", TextRows({"FValue"}, {}));
         other.Fail("TOVCalCostByStock.InterFace", "QuickCalculate", "负库存");
         other.screen.answers = {Answer::kYes};
       },
       "负库存"},
      {"the permission is no number",
       [](Desk& other) {
         other.AnswerSql("ICCalFlag", TextRows({"F"}, {{"1"}}));
         other.AnswerSql("CanQuickCalculate", TextRows({"FValue"}, {{"maybe"}}));
         other.Answer("TOVCalCostByStock.InterFace", "QuickCalculate", {});
       },
       "type mismatch: text 'maybe' is no number"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Desk other;
    row.arrange(other);
    EXPECT_EQ(Raised([&] { CheckQuickCost(owner, true); }), "nothing raised");
    ASSERT_FALSE(other.Lines("ask ").empty());
    EXPECT_EQ(other.Lines("ask ").back(),
              std::string("ask '即时成本核算出错,原因:") + row.text + "' '信息提示' ok none ok -> ok");
    EXPECT_EQ(other.living, 0);
  }
}

}  // namespace
}  // namespace component
