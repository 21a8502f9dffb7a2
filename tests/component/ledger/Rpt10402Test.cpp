// The ledger as its browser sees it: the interface, the walk over the items, all pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/component/ledger/LedgerDesk.h"

namespace component {
namespace {

using platform::Answer;
using platform::CallKind;
using platform::Recordset;
using platform::Ref;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Rpt10402Test : public LedgerTest {
 protected:
  std::string ItemLine() const {
    return SpellTitle(report->Title()).size() > 2 ? SpellTitle(report->Title())[2] : std::string("none");
  }
};

TEST_F(Rpt10402Test, OperationsStandInSlotOrder) {
  std::vector<std::string> slots;
  for (const platform::Operation& operation : Rpt10402::Info().operations) {
    const char* kind = operation.kind == CallKind::kMethod ? ""
                       : operation.kind == CallKind::kGet  ? " get"
                                                           : " let";
    slots.push_back(std::string(operation.name) + kind);
  }
  EXPECT_THAT(
      slots, ElementsAre("RptID get", "RptID let", "Filter get", "Filter let", "ExtFirter let",
                         "Property get", "Result get", "Header get", "Title get", "rs get", "MutilPageRs get",
                         "RowBreakRs get", "Refresh", "NextItem", "FirstItem", "LastItem", "PreviousItem",
                         "ShowFilter", "GetReportData", "GetMutilPageData", "GetRptList", "FindItem"));
}

TEST_F(Rpt10402Test, WalksTheItems) {
  Open(3, Months(2024, 3, 2024, 3));
  EXPECT_EQ(ItemLine(), "2 商品名称：商品1(01.1)");
  EXPECT_EQ(report->NextItem(), 1);
  EXPECT_EQ(report->NextItem(), 1);
  EXPECT_EQ(ItemLine(), "2 商品名称：商品3(01.3)");
  const Ref<Recordset> last = Page();
  EXPECT_EQ(report->NextItem(), 0) << "past the end the page stays";
  EXPECT_EQ(Page(), last);
  EXPECT_EQ(report->PreviousItem(), 1);
  EXPECT_EQ(ItemLine(), "2 商品名称：商品2(01.2)");
  EXPECT_EQ(report->FirstItem(), 0) << "0 although it moved";
  EXPECT_EQ(ItemLine(), "2 商品名称：商品1(01.1)");
  EXPECT_EQ(report->PreviousItem(), 0);
  EXPECT_EQ(report->LastItem(), 0);
  EXPECT_EQ(ItemLine(), "2 商品名称：商品3(01.3)");
  EXPECT_THAT(fetches, ElementsAre("1 2024 3", "2 2024 3", "3 2024 3", "2 2024 3", "1 2024 3", "3 2024 3"));
}

TEST_F(Rpt10402Test, FindsByNumberAndStaysOnAMiss) {
  Open(3, Months(2024, 3, 2024, 3));
  report->FindItem("01.3");
  EXPECT_EQ(ItemLine(), "2 商品名称：商品3(01.3)");
  const Ref<Recordset> before = Page();
  for (const char* number : {"01.9", "", "it's", "' OR '1'='1"}) {
    SCOPED_TRACE(number);
    report->FindItem(number);
    EXPECT_EQ(Result(),
              std::string("{OK: False, Error: '在当前物料范围内未找到代码为 [") + number + "]的物料!'}");
    EXPECT_EQ(Page(), before);
    EXPECT_EQ(ItemLine(), "2 商品名称：商品3(01.3)");
  }
  EXPECT_EQ(report->PreviousItem(), 1);
  EXPECT_EQ(ItemLine(), "2 商品名称：商品2(01.2)") << "the position had stayed too";
}

TEST_F(Rpt10402Test, TheShortNumberIsReachedWhenAnotherReportAskedForIt) {
  ProcessState::Get().isLongNumber = false;
  Open(3, Months(2024, 3, 2024, 3));
  EXPECT_EQ(desk.Count("GetItems('UserID=12;', ' ORDER BY  t0.FShortNumber'"), 1);
  report->FindItem("2");
  EXPECT_EQ(ItemLine(), "2 商品名称：商品2(01.2)");
}

struct QuestionCase {
  const char* name;
  std::int32_t items;
  std::int16_t range[4];
  std::vector<std::string> asked;
};

TEST_F(Rpt10402Test, AsksBeforeALongRun) {
  const std::string tail = ",取数时间较长,确认继续操作吗?' '' okcancel information ok -> cancel";
  const QuestionCase cases[] = {
      {"50 items and 2 periods", 50, {2024, 3, 2024, 4}, {}},
      {"December to January", 1, {2024, 12, 2025, 1}, {}},
      {"an end before the beginning", 1, {2024, 5, 2024, 3}, {}},
      {"51 items", 51, {2024, 3, 2024, 3}, {"ask '所选物料数超过 50 " + tail}},
      {"3 periods", 1, {2024, 3, 2024, 5}, {"ask '所选期间数超过 2 " + tail}},
      {"both", 51, {2024, 3, 2024, 5}, {"ask '所选物料数超过 50 ,所选期间数超过 2 " + tail}},
  };
  for (const QuestionCase& each : cases) {
    SCOPED_TRACE(each.name);
    desk.journal.clear();
    desk.screen.answers = {Answer::kCancel};
    Open(each.items, Months(each.range[0], each.range[1], each.range[2], each.range[3], 1));
    report->GetMutilPageData();
    EXPECT_EQ(desk.Lines("ask "), each.asked);
    EXPECT_EQ(Result(), each.asked.empty() ? "{OK: True, Error: ''}" : "{OK: False, Error: '2'}");
  }
}

TEST_F(Rpt10402Test, ARefusalKeepsTheOutputBefore) {
  book[{1, 202403}] = {.opening = {{.quantity = 1, .amount = 1}}};
  Open(1, Months(2024, 3, 2024, 3, 1));
  report->GetMutilPageData();
  const Ref<Recordset> pages = report->MutilPageRs();
  report->Filter()->Set("EPeriod", std::int16_t{9});
  desk.screen.answers = {Answer::kCancel};
  report->GetMutilPageData();
  EXPECT_EQ(Result(), "{OK: False, Error: '2'}");
  EXPECT_EQ(report->MutilPageRs(), pages);
  EXPECT_THAT(Breaks(), ElementsAre("2"));
}

TEST_F(Rpt10402Test, AllPagesOneBehindTheOther) {
  book[{1, 202403}] = {.opening = {{.quantity = 1, .amount = 1}}};
  book[{3, 202403}] = {.happened = {{.inQuantity = 1, .inAmount = 2}}};
  Open(3, Months(2024, 3, 2024, 3, 1));
  report->NextItem();
  const Ref<Recordset> page = Page();
  report->GetMutilPageData();
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_THAT(Breaks(), ElementsAre("2", "7")) << "an item without rows has no entry";
  const Recordset& rows = *report->MutilPageRs();
  for (std::size_t row = 0; row < rows.ViewCount(); ++row) {
    EXPECT_EQ(rows.TextAt(rows.FieldIndex("FTitle3"), row),
              row < 2 ? "商品名称：商品1(01.1)" : "商品名称：商品3(01.3)");
    EXPECT_EQ(rows.IntegerAt(rows.FieldIndex("FQtyDecimal"), row), row < 2 ? 1 : 3);
  }
  EXPECT_EQ(Page(), page) << "the single page is not touched";
  EXPECT_EQ(report->NextItem(), 1);
  EXPECT_EQ(ItemLine(), "2 商品名称：商品3(01.3)") << "the list stood where it was";
  EXPECT_TRUE(report->MutilPageRs());
  report->Refresh();
  EXPECT_FALSE(report->MutilPageRs());
  EXPECT_FALSE(report->RowBreakRs());
}

TEST_F(Rpt10402Test, AFailureOnAnItemKeepsThoseDone) {
  for (const std::int32_t item : {1, 2, 3})
    book[{item, 202403}] = {.opening = {{.quantity = 1, .amount = 1}}};
  Open(3, Months(2024, 3, 2024, 4));
  const std::size_t before = fetches.size();
  const auto answer = [this, before](std::span<platform::Variant> arguments) {
    fetches.emplace_back("again");
    if (fetches.size() - before == 4)
      throw platform::Error(platform::ErrorNumber::kUserDefined, "data", "中断");
    const Ref<Recordset> none = TextRows({"F"}, {});
    return platform::Variant(Keys({{"rsBegBal", none},
                                   {"rsHappen", none},
                                   {"rsEndBal", none},
                                   {"BDate", platform::Date::Of(2024, 3, 1)},
                                   {"EDate", platform::Date::Of(2024, 4, 1)},
                                   {"asked", arguments[1]}}));
  };
  desk.On("TOVMStockRpt.Data10402", "GetPerioddata", answer);
  report->NextItem();
  fetches.resize(before);
  report->GetMutilPageData();
  EXPECT_EQ(Result(), "{OK: False, Error: '中断'}");
  EXPECT_EQ(report->MutilPageRs()->RecordCount(), 4)
      << "two periods of the first item, nothing of the second";
  EXPECT_THAT(Breaks(), ElementsAre("4"));
  EXPECT_EQ(desk.Count("abandoned"), 0);
  fetches.resize(before);
  fetches.resize(before + 10);
  report->Refresh();
  EXPECT_EQ(ItemLine(), "2 商品名称：商品2(01.2)");
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
}

TEST_F(Rpt10402Test, WithoutItemsThereAreNoPages) {
  Open(0, Months(2024, 3, 2024, 3));
  EXPECT_EQ(SpellTitle(report->Title()).size(), 2U);
  report->GetMutilPageData();
  EXPECT_EQ(Result(), "{OK: False, Error: '没有符合条件的物料。'}");
  EXPECT_EQ(desk.Count("abandoned"), 0);
  EXPECT_THAT(fetches, IsEmpty());
}

TEST_F(Rpt10402Test, ABrowserMayAskForAPageWithoutABox) {
  Open(2, Months(2024, 3, 2024, 3));
  desk.journal.clear();
  const Ref<Recordset> page = report->GetRptList(2024, 4, 2024, 4, 2, true);
  EXPECT_EQ(page->RecordCount(), 2);
  EXPECT_EQ(fetches.back(), "2 2024 4");
  EXPECT_EQ(desk.Count("bar "), 0);
  EXPECT_EQ(page->IntegerAt(page->FieldIndex("FQtyDecimal"), 0), 1) << "the decimals of the current item";
}

}  // namespace
}  // namespace component
