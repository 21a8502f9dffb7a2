// The ladder of title lines: which keys make a line, what it says, and where report numbers change it.
#include "component/frame/MRpt.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Ref;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TitleTest : public ComponentTest {
 protected:
  std::vector<std::string> Lines(const Ref<Dictionary>& filter) {
    return SpellTitle(BuildTitle(filter, property));
  }

  Ref<Dictionary> property;
};

TEST_F(TitleTest, AFilterWithNoneOfTheKeysHasNoLines) {
  EXPECT_THAT(Lines(Keys({{"OK", true}, {"RptID", 10414}})), IsEmpty());
  EXPECT_EQ(Spell(property), "{ShowInPreview: 1}") << "a property dictionary is made";
}

TEST_F(TitleTest, OnlyShowInPreviewIsSetInAPropertyDictionary) {
  property = Keys({{"Name", "x"}, {"ShowInPreview", 0}});
  const Ref<Dictionary> given = property;
  BuildTitle(Keys({}), property);
  BuildTitle(Keys({}), property);
  EXPECT_EQ(property, given);
  EXPECT_EQ(Spell(property), "{Name: 'x', ShowInPreview: 1}");
}

TEST_F(TitleTest, NoFilterAsksForAllItemsAndWarehouses) {
  EXPECT_THAT(Lines({}), ElementsAre("0 商品代码[全部]", "1 仓库代码[全部]"));
}

TEST_F(TitleTest, ALineIsACaptionAndASixteenBitPosition) {
  EXPECT_EQ(Spell(BuildTitle({}, property)),
            "[{FCaption: '商品代码[全部]', FIndex: 0s}, {FCaption: '仓库代码[全部]', FIndex: 1s}]");
}

TEST_F(TitleTest, ARangeSaysWhatItsKeysHold) {
  struct Row {
    const char* name;
    Variant begin;
    Variant end;
    const char* line;
  };
  const Row rows[] = {
      {"both ends", "01", "09", "0 商品代码从[01]到[09]"},
      {"blanks are cut", "  01 ", " 09  ", "0 商品代码从[01]到[09]"},
      {"only the begin", "01", "", "0 商品代码从[01]到[]"},
      {"only the end", "", "09", "0 商品代码从[]到[09]"},
      {"both empty", "", "", "0 商品代码[全部]"},
      {"both blank", "   ", " ", "0 商品代码[全部]"},
      {"no text at all", Variant(), Variant(), "0 商品代码[全部]"},
      {"numbers", 1, 9.5, "0 商品代码从[1]到[9.5]"},
      {"dates", platform::Date::Of(2024, 1, 2), platform::Date::Of(2024, 1, 2, 3, 4, 5),
       "0 商品代码从[2024-01-02]到[2024-01-02 03:04:05]"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_THAT(Lines(Keys({{"BItemNumber", row.begin}, {"EItemNumber", row.end}})), ElementsAre(row.line));
  }
}

TEST_F(TitleTest, HalfAPairOfKeysMakesNoLine) {
  EXPECT_THAT(Lines(Keys({{"BItemNumber", "01"}})), IsEmpty());
  EXPECT_THAT(Lines(Keys({{"EItemNumber", "09"}})), IsEmpty());
  EXPECT_THAT(Lines(Keys({{"BItemNumber", "01"}, {"EItemNo", "09"}})), IsEmpty());
}

TEST_F(TitleTest, AValueThatCannotBeReadLeavesTheTextBefore) {
  EXPECT_THAT(Lines(Keys({{"BItemNumber", "01"},
                          {"EItemNumber", "09"},
                          {"BStockNumber", platform::Null()},
                          {"EStockNumber", "S9"}})),
              ElementsAre("0 商品代码从[01]到[09]", "1 仓库代码从[01]到[S9]"));
}

// Every section with all keys of the ladder present: what a report number says and what it does not.
class TitleLadderTest : public TitleTest {
 protected:
  static Ref<Dictionary> AllKeys(std::int32_t report) {
    const Ref<Dictionary> filter = Keys({{"RptID", report}});
    for (const char* key :
         {"TypeIn", "ItemNo", "ItemNumber", "CustNumber", "DeptNumber", "EmpNumber", "StockNo", "StockNumber",
          "SupplyNumber", "Supply", "AuxNumber", "AuxPropNumber", "BatchNo", "BillNo", "BillNumber"}) {
      filter->Set(std::string("B") + key, std::string(key) + "1");
      filter->Set(std::string("E") + key, std::string(key) + "9");
    }
    filter->Set("SumBy", "by_a|by_b");
    return filter;
  }

  static std::vector<std::string> Numbered(const std::vector<std::string>& captions) {
    std::vector<std::string> lines;
    for (const std::string& caption : captions) lines.push_back(std::to_string(lines.size()) + " " + caption);
    return lines;
  }

  const std::vector<std::string> usual = {"收入类别从[TypeIn1]到[TypeIn9]",
                                          "商品代码从[ItemNumber1]到[ItemNumber9]",
                                          "客户代码从[CustNumber1]到[CustNumber9]",
                                          "部门代码从[DeptNumber1]到[DeptNumber9]",
                                          "业务员代码从[EmpNumber1]到[EmpNumber9]",
                                          "仓库代码从[StockNumber1]到[StockNumber9]",
                                          "供应商代码从[SupplyNumber1]到[SupplyNumber9]",
                                          "辅助属性从[AuxPropNumber1]到[AuxPropNumber9]",
                                          "批号从[BatchNo1]到[BatchNo9]",
                                          "订单编号从[BillNumber1]到[BillNumber9]",
                                          "汇总依据[by_a]"};
};

TEST_F(TitleLadderTest, SectionsRunInTheirOrderAndReportNumbersChangeThem) {
  using Changes =
      std::vector<std::pair<std::string, std::string>>;  // beginning of a usual line -> line, "" for none
  struct Row {
    std::int32_t report;
    Changes changes;
  };
  const std::string bill = "订单编号从[BillNo1]到[BillNo9]";
  const std::string handler = "经手人代码从[EmpNumber1]到[EmpNumber9]";
  const std::vector<Row> rows = {
      {0, {}},
      {10414, {}},
      {10412, {}},
      {10524, {{"收入类别", "支出类别从[TypeIn1]到[TypeIn9]"}, {"业务员", handler}}},
      {10506, {{"商品代码", "往来单位从[ItemNumber1]到[ItemNumber9]"}, {"业务员", handler}}},
      {12015, {{"商品代码", "商品代码从[ItemNo1]到[ItemNo9]"}}},
      {12016, {{"商品代码", "商品代码从[ItemNo1]到[ItemNo9]"}}},
      {10219, {{"客户代码", ""}, {"供应商", "供应商代码从[CustNumber1]到[CustNumber9]"}}},
      {10220, {{"客户代码", ""}, {"供应商", "供应商代码从[CustNumber1]到[CustNumber9]"}}},
      {10229, {{"供应商", "供应商代码从[Supply1]到[Supply9]"}}},
      {10522, {{"业务员", handler}}},
      {10501, {{"业务员", handler}}},
      {10413, {{"业务员", ""}}},
      {10354, {{"仓库", "仓库代码从[StockNo1]到[StockNo9]"}, {"订单", "单据编号从[BillNo1]到[BillNo9]"}}},
      {10351, {{"订单", bill}}},
      {10352, {{"订单", bill}}},
      {10357, {{"订单", bill}}},
      {10325, {{"订单", bill}}},
      {10227, {{"订单", bill}}},
      {10901, {{"汇总依据", "汇总依据[by]"}}},
      {10903, {{"汇总依据", "汇总依据[by]"}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.report);
    std::vector<std::string> expected;
    for (const std::string& line : usual) {
      const auto change = std::ranges::find_if(
          row.changes, [&](const auto& candidate) { return line.starts_with(candidate.first); });
      if (change == row.changes.end()) {
        expected.push_back(line);
      } else if (!change->second.empty()) {
        expected.push_back(change->second);
      }
    }
    EXPECT_EQ(Lines(AllKeys(row.report)), Numbered(expected));
  }
}

TEST_F(TitleLadderTest, EmptyRangesNameTheSameLabels) {
  const Ref<Dictionary> filter = AllKeys(10524);
  for (const Dictionary::Entry& entry : std::vector(filter->Entries())) {
    if (entry.key != "RptID") filter->Set(entry.key, " ");
  }
  EXPECT_EQ(Lines(filter), Numbered({"支出类别[全部]", "商品代码[全部]", "客户代码[全部]", "部门代码[全部]",
                                     "经手人代码[全部]", "仓库代码[全部]", "供应商代码[全部]",
                                     "辅助属性[全部]", "批号[全部]", "订单编号[全部]"}));
}

TEST_F(TitleLadderTest, ApplicationTypeOneShowsNoAuxiliaryPropertyAndNoOrder) {
  store->Set("AppType", 1);
  std::vector<std::string> expected = usual;
  expected.erase(expected.begin() + 9);
  expected.erase(expected.begin() + 7);
  EXPECT_EQ(Lines(AllKeys(0)), Numbered(expected));

  expected = usual;
  expected[5] = "仓库代码从[StockNo1]到[StockNo9]";
  expected[9] = "单据编号从[BillNo1]到[BillNo9]";
  expected.erase(expected.begin() + 7);
  EXPECT_EQ(Lines(AllKeys(10354)), Numbered(expected)) << "a bill number is no order number";
}

TEST_F(TitleLadderTest, TheReportNumberIsReadFromTheFilterInAnyForm) {
  struct Row {
    const char* name;
    Variant number;
    bool isInstantStock;
  };
  for (const Row& row : {Row{"16 bits", std::int16_t{10422}, true}, Row{"text", " 10422 ", true},
                         Row{"double", 10422.0, true}, Row{"empty", Variant(), false},
                         Row{"no number", "stock", false}, Row{"null", platform::Null(), false}}) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Lines(Keys({{"RptID", row.number}})).size(), row.isInstantStock ? 1U : 0U);
  }
}

TEST_F(TitleTest, TheInstantStockReportsShowTheirDate) {
  struct Row {
    const char* name;
    Ref<Dictionary> filter;
    std::vector<std::string> lines;
  };
  const std::string fixed = "汇总依据[商品]";
  const std::vector<Row> rows = {
      {"on time",
       Keys({{"OnTime", 1}, {"EDate", "2024-03-01"}}),
       {"0 日期[即时库存]", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"on time as text",
       Keys({{"OnTime", " 1 "}}),
       {"0 日期[即时库存]", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"not on time",
       Keys({{"OnTime", 0}, {"EDate", " 2024-03-01 "}}),
       {"0 截止日期[2024-03-01]", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"not on time as text",
       Keys({{"OnTime", "0"}, {"EDate", platform::Date::Of(2024, 3, 1)}}),
       {"0 截止日期[2024-03-01]", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"a date alone",
       Keys({{"EDate", "2024-03-01"}}),
       {"0 截止日期[2024-03-01]", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"a blank date has a line without a caption",
       Keys({{"EDate", "  "}}),
       {"0 (no caption)", "1 打印日期[2024-03-31]", "2 " + fixed}},
      {"not on time, no date", Keys({{"OnTime", 0}}), {"0 " + fixed}},
      {"neither", Keys({}), {"0 " + fixed}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    row.filter->Set("RptID", 10422);
    EXPECT_EQ(Lines(row.filter), row.lines);
    row.filter->Set("RptID", 10424);
    EXPECT_THAT(Lines(row.filter), IsEmpty()) << "the other reports show no date from here";
  }
}

TEST_F(TitleTest, TheInstantStockReportsPutItemsBetweenTheTwoDates) {
  EXPECT_THAT(Lines(Keys({{"RptID", 10422},
                          {"OnTime", 1},
                          {"BItemNumber", ""},
                          {"EItemNumber", ""},
                          {"BAuxNumber", "x"},
                          {"EAuxNumber", ""},
                          {"BAuxPropNumber", "no"},
                          {"EAuxPropNumber", "no"}})),
              ElementsAre("0 日期[即时库存]", "1 商品代码[全部]", "2 打印日期[2024-03-31]",
                          "3 辅助属性从[x]到[]", "4 汇总依据[商品]"));
}

TEST_F(TitleTest, TheSummaryLineNamesTheFirstPiece) {
  struct Row {
    const char* name;
    Ref<Dictionary> filter;
    std::vector<std::string> lines;
  };
  const std::vector<Row> rows = {
      {"a name", Keys({{"SumBy", "仓库"}}), {"0 汇总依据[仓库]"}},
      {"the blank before the bar goes", Keys({{"SumBy", "仓库 |2"}}), {"0 汇总依据[仓库]"}},
      {"an underscore is text", Keys({{"SumBy", "a_b"}}), {"0 汇总依据[a_b]"}},
      {"an underscore in 10901", Keys({{"RptID", 10901}, {"SumBy", "a _b|c"}}), {"0 汇总依据[a]"}},
      {"a bar in 10903", Keys({{"RptID", 10903}, {"SumBy", "a|b"}}), {"0 汇总依据[a|b]"}},
      {"nothing before the bar", Keys({{"SumBy", " |2"}}), {"0 汇总依据[]"}},
      {"levels",
       Keys({{"SumBy", "类别"}, {"MultiLevel", 1}, {"MultiLevelBegin", "1"}, {"MultiLevelEnd", "3"}}),
       {"0 汇总依据[类别(1-3级)]"}},
      {"levels with blanks",
       Keys({{"SumBy", "类别"}, {"MultiLevel", "True"}, {"MultiLevelBegin", " 1 "}, {"MultiLevelEnd", 2}}),
       {"0 汇总依据[类别(1-2级)]"}},
      {"levels that are not there",
       Keys({{"SumBy", "类别"}, {"MultiLevel", true}}),
       {"0 汇总依据[类别(-级)]"}},
      {"levels off",
       Keys({{"SumBy", "类别"}, {"MultiLevel", "0"}, {"MultiLevelBegin", "1"}}),
       {"0 汇总依据[类别]"}},
      {"levels empty", Keys({{"SumBy", "类别"}, {"MultiLevel", ""}}), {"0 汇总依据[类别]"}},
      {"instant stock has two",
       Keys({{"RptID", 10422}, {"SumBy", "仓库"}}),
       {"0 汇总依据[仓库]", "1 汇总依据[商品]"}},
      {"instant stock with levels",
       Keys({{"RptID", 10422}, {"MultiLevel", 1}, {"MultiLevelBegin", 2}, {"MultiLevelEnd", 4}}),
       {"0 汇总依据[商品(2-4级)]"}},
      {"blank", Keys({{"SumBy", "  "}}), {}},
      {"absent", Keys({{"MultiLevel", 1}}), {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Lines(row.filter), row.lines);
  }
}

}  // namespace
}  // namespace component
