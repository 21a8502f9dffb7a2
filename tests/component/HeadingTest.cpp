// Column descriptions, the shared heading that they go to, and the caption language.
#include <array>

#include "component/frame/MRpt.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Ref;
using platform::Variant;
using platform::Vector;

class HeadingTest : public ComponentTest {
 protected:
  HeadingTest() { SetHeadVector(heading); }

  Ref<Dictionary> At(std::int32_t index) const { return heading->Item(index).AsRef<Dictionary>(); }

  Ref<Vector> heading = MakeRef<Vector>();
};

TEST_F(HeadingTest, AColumnHasExactlySixKeysInThisOrder) {
  AddColumn("商品代码$", "", "1", "FItemNumber", 1, 7);
  EXPECT_EQ(
      Spell(heading),
      "[{FColCaption: '商品代码$', FHeadSecond: '', FColType: '1', FColName: 'FItemNumber', FVisible: 1s, "
      "FForceHide: False}]");
}

TEST_F(HeadingTest, NothingIsChecked) {
  AddColumn("", "", "", "", 0, 0);
  EXPECT_EQ(
      Spell(heading),
      "[{FColCaption: '', FHeadSecond: '', FColType: '', FColName: '', FVisible: 0s, FForceHide: True}]");
}

TEST_F(HeadingTest, VisibleIsOneForAnythingButZero) {
  struct Row {
    std::int16_t visible;
    const char* spelled;
  };
  for (const Row& row : {Row{1, "1s"}, Row{-1, "1s"}, Row{7, "1s"}, Row{0, "0s"}}) {
    SCOPED_TRACE(row.visible);
    AddColumn("a", "", "1", "F", row.visible, 7);
    EXPECT_EQ(Spell(At(heading->Count() - 1)->Value("FVisible")), row.spelled);
  }
}

TEST_F(HeadingTest, TheMaskForcesAColumnHidden) {
  struct Row {
    std::int16_t mask;
    std::array<bool, 3> hidden;  // in the application types 1, 2, 4
  };
  const Row rows[] = {
      {7, {false, false, false}}, {6, {true, false, false}}, {5, {false, true, false}},
      {4, {true, true, false}},   {3, {false, false, true}}, {2, {true, false, true}},
      {1, {false, true, true}},   {0, {true, true, true}},
  };
  constexpr std::array<std::int32_t, 3> kAppTypes = {1, 2, 4};
  std::int32_t count = 0;
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < kAppTypes.size(); ++i) {
      SCOPED_TRACE("mask " + std::to_string(row.mask) + " in type " + std::to_string(kAppTypes[i]));
      store->Set("AppType", kAppTypes[i]);
      AddColumn("a", "", "1", "F", 1, row.mask);
      EXPECT_EQ(heading->Count(), ++count) << "a hidden column stays in the list";
      EXPECT_EQ(At(count - 1)->Value("FForceHide"), Variant(row.hidden[i]));
      EXPECT_EQ(Spell(At(count - 1)->Value("FVisible")), "1s");
    }
  }
}

TEST_F(HeadingTest, ANumberOfTwoBitsNeedsBothInTheMask) {
  store->Set("AppType", 3);
  AddColumn("a", "", "1", "F", 1, 2);
  AddColumn("a", "", "1", "F", 1, 3);
  EXPECT_EQ(Spell(At(0)->Value("FForceHide")), "True");
  EXPECT_EQ(Spell(At(1)->Value("FForceHide")), "False");
}

TEST_F(HeadingTest, ColumnsGoToTheHeadingThatIsSet) {
  AddColumn("a", "", "1", "FA", 1, 7);
  const Ref<Vector> other = MakeRef<Vector>();
  SetHeadVector(other);
  AddColumn("b", "", "1", "FB", 1, 7);
  EXPECT_EQ(heading->Count(), 1);
  EXPECT_EQ(other->Count(), 1);
  SetHeadVector({});
  EXPECT_EQ(other->Holders(), 1U) << "clearing lets go of the heading";
}

TEST_F(HeadingTest, ClearingWithoutAHeadingDoesNothing) {
  SetHeadVector({});
  SetHeadVector({});
  EXPECT_FALSE(ProcessState::Get().sharedHeading);
}

TEST_F(HeadingTest, WithoutAHeadingOneIsMadeThatNoReportOwns) {
  SetHeadVector({});
  AddColumn("a", "", "1", "FA", 1, 7);
  AddColumn("b", "", "1", "FB", 1, 7);
  ASSERT_TRUE(ProcessState::Get().sharedHeading);
  EXPECT_EQ(ProcessState::Get().sharedHeading->Count(), 2);
  EXPECT_EQ(heading->Count(), 0);
}

TEST_F(HeadingTest, ATableIsWalkedInItsOrder) {
  constexpr Column kTable[] = {
      {.caption = "期初结存+|+|+|+|", .second = "数量", .type = ColumnType::kQuantity, .field = "FBegQty"},
      {.second = "整件散包", .type = ColumnType::kPackages, .field = "FComplexQtyDisBeg", .visible = false},
      {.second = "辅助数量",
       .type = ColumnType::kQuantity,
       .field = "FBegSecQty",
       .mask = kWithAuxiliaryUnits},
      {.second = "单价", .type = ColumnType::kPrice, .field = "FBegPrice"},
      {.second = "金额", .type = ColumnType::kAmount, .field = "FBegBal"},
      {.caption = "占比%$", .type = ColumnType::kAmount, .field = "FPercent"},
  };
  store->Set("AppType", 1);
  AddColumns(kTable);
  struct Row {
    const char* caption;
    const char* second;
    const char* type;
    const char* rest;
  };
  // Four marks span five columns; the browser sees no caption over the last four.
  const Row rows[] = {
      {"期初结存+|+|+|+|", "数量", "2", "FColName: 'FBegQty', FVisible: 1s, FForceHide: False"},
      {"", "整件散包", "5", "FColName: 'FComplexQtyDisBeg', FVisible: 0s, FForceHide: False"},
      {"", "辅助数量", "2", "FColName: 'FBegSecQty', FVisible: 1s, FForceHide: True"},
      {"", "单价", "4", "FColName: 'FBegPrice', FVisible: 1s, FForceHide: False"},
      {"", "金额", "6", "FColName: 'FBegBal', FVisible: 1s, FForceHide: False"},
      {"占比%$", "", "6", "FColName: 'FPercent', FVisible: 1s, FForceHide: False"}};
  ASSERT_EQ(heading->Count(), 6);
  for (std::int32_t i = 0; i < 6; ++i) {
    const Row& row = rows[i];
    EXPECT_EQ(Spell(heading->Item(i)), std::string("{FColCaption: '") + row.caption + "', FHeadSecond: '" +
                                           row.second + "', FColType: '" + row.type + "', " + row.rest + "}");
  }
}

TEST_F(HeadingTest, EachCategoryLevelIsATextColumn) {
  struct Row {
    const char* name;
    std::int32_t begin;
    std::int32_t end;
    std::vector<std::string> levels;
  };
  for (const Row& row : {Row{"one level", 2, 2, {"2"}}, Row{"three levels", 1, 3, {"1", "2", "3"}},
                         Row{"the wrong way round", 3, 2, {}}}) {
    SCOPED_TRACE(row.name);
    heading = MakeRef<Vector>();
    SetHeadVector(heading);
    AddLevelColumns({.on = true, .begin = row.begin, .end = row.end});
    ASSERT_EQ(heading->Items().size(), row.levels.size());
    for (std::size_t i = 0; i < row.levels.size(); ++i) {
      EXPECT_EQ(Spell(heading->Items()[i]), "{FColCaption: '类别级次" + row.levels[i] +
                                                "$', FHeadSecond: '', FColType: '1', FColName: 'FItemLevel0" +
                                                row.levels[i] + "Name', FVisible: 1s, FForceHide: False}");
    }
  }
}

}  // namespace
}  // namespace component
