// What a clerk is told of a report that is named and not made.
#include <string>

#include <gtest/gtest.h>

#include "browser/worker/Reports.h"

namespace browser {
namespace {

TEST(Reports, AClassThatIsNotMadeIsRefusedInAClerksWords) {
  const platform::ComponentClass named{
      .programmaticId = "TOVStockRpt.RptNotMade", .number = "10499", .title = "库龄分析表"};
  try {
    MakeReport(named);
    FAIL() << "it was made";
  } catch (const RefusedMessage& refused) {
    EXPECT_EQ(refused.Code(), "failed");
    EXPECT_STREQ(refused.what(), "本版本还没有“库龄分析表”，请选择其他报表。");
  }
}

}  // namespace
}  // namespace browser
