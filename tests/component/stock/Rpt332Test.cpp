// The instant stock query by rows: the sibling's leading columns, and figures that no answer changes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/stock/Rpt332.h"
#include "tests/component/stock/StockTest.h"

namespace component {
namespace {

using ::testing::ElementsAre;

class Rpt332Test : public StockTest {
 protected:
  Rpt332Test() { desk.Answer("TOVMStockRpt.Data332", "GetRptData", nullptr); }

  platform::Ref<platform::Object> report = MakeReport<Rpt332>();
};

TEST_F(Rpt332Test, ItKeepsTheNumberOfItsSibling) {
  EXPECT_EQ(Spell(report->Get("Property").AsRef<platform::Dictionary>()->Value("RptProperty")), "10422");
  desk.screen.scripts.push_back([](platform::Form& form, platform::UserInput&) {
    EXPECT_EQ(form.Name(), "frmFirter332");
    EXPECT_EQ(Spell(form.Get("RptID")), "10432");
  });
  report->Call("ShowFilter");
}

TEST_F(Rpt332Test, TheHeadingIsCompleteWithoutRows) {
  Fetch(*report, Keys({{"ShowType", 3}}));
  EXPECT_THAT(Names(*report), ElementsAre("FItemNumber", "FItemName", "FModel", "FBarCode", "FUnitName",
                                          "FSecUnitName", "FAuxPropName", "FBatchNo", "FStockName", "FQty",
                                          "FComplexQtyDis", "FSecQty", "FAvgBal", "FBal"));
  EXPECT_EQ(FrozenColumn(*report), 6) << "the warehouse scrolls with the figures";
  EXPECT_EQ(desk.Count("ClassInfo"), 0) << "warehouses are not counted";
}

TEST_F(Rpt332Test, UnauditedBillsHideTheAmountAlone) {
  Fetch(*report, Keys({{"ContainBills", 1}}));
  EXPECT_THAT(Hidden(*report), ElementsAre("FBal"));
}

TEST_F(Rpt332Test, TheIndustryChangesNoWord) {
  Fetch(*report, Keys({}));
  const auto plain = Captions(*report, 0);
  store->Set("IndustryType", 1);
  Fetch(*report, Keys({}));
  EXPECT_EQ(Captions(*report, 0), plain);
}

}  // namespace
}  // namespace component
