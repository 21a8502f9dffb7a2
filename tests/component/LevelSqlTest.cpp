// The batch that makes the level table, byte by byte, and the texts that describe fields to data components.
#include "component/frame/MRpt.h"
#include "component/frame/VEZPublic.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::ComboBox;

class LevelSqlTest : public ComponentTest {};

TEST_F(LevelSqlTest, OneLevel) {
  EXPECT_EQ(BuildItemLevelSql({.classId = 4}),
            "CREATE TABLE #ItemLevel( \r\n"
            " FNumber1 nvarchar(355),\r\n"
            " FName1 nvarchar(355),\r\n"
            " FItemID int,\r\n"
            " FNumber nvarchar(355))\r\n"
            " Insert Into #ItemLevel SELECT  \r\n"
            " Case When CharIndex('.',FFullNumber)-1= -1 or FLevel<2 THEN NULL ELSE SUBSTRING(FNumber, "
            "1,CharIndex('.',FFullNumber)-1)  END, \r\n"
            " '',\r\n"
            " FItemID,FNumber From t_Item\r\n"
            " Where FItemClassID=4\r\n"
            " AND FDetail=1 ##ITEMFILTER##\r\n"
            "\r\n"
            " Update t0 SET t0.FName1=t1.FName\r\n"
            " From #ItemLevel t0 left join t_Item t1 On t0.FNumber1=t1.FNumber  AND t1.FItemClassID=4 AND "
            "t1.FDetail=0 \r\n");
}

TEST_F(LevelSqlTest, LevelsTwoToThreeWithNumbersShown) {
  const std::string p2 = "CharIndex('.',FFullNumber,CharIndex('.',FFullNumber)+1)";
  const std::string p3 = "CharIndex('.',FFullNumber," + p2 + "+1)";
  EXPECT_EQ(
      BuildItemLevelSql({.classId = 2014,
                         .likeNumber = "01",
                         .beginNumber = "01.02",
                         .endNumber = "01.09",
                         .beginLevel = 2,
                         .endLevel = 3,
                         .showNumber = 1}),
      "CREATE TABLE #ItemLevel( \r\n"
      " FNumber2 nvarchar(355),\r\n"
      " FName2 nvarchar(355),\r\n"
      " FNumber3 nvarchar(355),\r\n"
      " FName3 nvarchar(355),\r\n"
      " FItemID int,\r\n"
      " FNumber nvarchar(355))\r\n"
      " Insert Into #ItemLevel SELECT  \r\n"
      " Case When " +
          p2 + "-1= -1 or FLevel<3 THEN NULL ELSE SUBSTRING(FNumber, 1," + p2 +
          "-1)  END, \r\n"
          " '',\r\n"
          " Case When " +
          p3 + "-1= -1 or FLevel<4 THEN NULL ELSE SUBSTRING(FNumber, 1," + p3 +
          "-1)  END, \r\n"
          " '',\r\n"
          " FItemID,FNumber From t_Item\r\n"
          " Where FItemClassID=2014\r\n"
          " AND FDetail=1 AND FNumber Like '01.%' AND FNumber>='01.02' AND FNumber<='01.09' "
          "##ITEMFILTER##\r\n"
          "\r\n"
          " Update t0 SET t0.FName2='[' + t2.FNumber + ']'+ t2.FName,t0.FName3='[' + t3.FNumber + ']'+ "
          "t3.FName\r\n"
          " From #ItemLevel t0"
          " left join t_Item t2 On t0.FNumber2=t2.FNumber  AND t2.FItemClassID=2014 AND t2.FDetail=0 \r\n"
          " left join t_Item t3 On t0.FNumber3=t3.FNumber  AND t3.FItemClassID=2014 AND t3.FDetail=0 \r\n");
}

TEST_F(LevelSqlTest, TheWrongWayRoundHasNoLevelsAndLosesABlank) {
  EXPECT_EQ(BuildItemLevelSql({.classId = 4, .beginLevel = 3, .endLevel = 2}),
            "CREATE TABLE #ItemLevel( \r\n"
            " FItemID int,\r\n"
            " FNumber nvarchar(355))\r\n"
            " Insert Into #ItemLevel SELECT  \r\n"
            " FItemID,FNumber From t_Item\r\n"
            " Where FItemClassID=4\r\n"
            " AND FDetail=1 ##ITEMFILTER##\r\n"
            "\r\n"
            " Update t0 SET\r\n"
            " From #ItemLevel t0");
}

TEST_F(LevelSqlTest, TheItemConditionGoesByTheKindOfNumbers) {
  struct Row {
    const char* name;
    bool isLong;
    ItemLevelRange range;
    const char* condition;
  };
  const Row rows[] = {
      {"none", true, {}, ""},
      {"like", true, {.likeNumber = "01"}, " AND FNumber Like '01.%'"},
      {"like in short numbers", false, {.likeNumber = "01"}, " AND FNumber Like '01.%'"},
      {"begin", true, {.beginNumber = "a"}, " AND FNumber>='a'"},
      {"end", true, {.endNumber = "b"}, " AND FNumber<='b'"},
      {"both", true, {.beginNumber = "a", .endNumber = "b"}, " AND FNumber>='a' AND FNumber<='b'"},
      {"short begin", false, {.beginNumber = "a"}, " AND FShortNumber>='a'"},
      {"short end", false, {.endNumber = "b"}, " AND FShortNumber<='b'"},
      {"short both",
       false,
       {.likeNumber = "1", .beginNumber = "a", .endNumber = "b"},
       " AND FNumber Like '1.%' AND FShortNumber>='a' AND FShortNumber<='b'"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ProcessState::Get().isLongNumber = row.isLong;
    const std::string text = BuildItemLevelSql(row.range);
    const std::size_t from = text.find(" AND FDetail=1") + 14;
    EXPECT_EQ(text.substr(from, text.find(" ##ITEMFILTER##") - from), row.condition);
  }
}

TEST_F(LevelSqlTest, TheLedgersCallHasFiveLevels) {
  const std::string text = BuildItemLevelSql({.classId = 4, .beginLevel = 1, .endLevel = 5});
  for (int level = 1; level <= 5; ++level) {
    EXPECT_NE(text.find(" FNumber" + std::to_string(level) + " nvarchar(355),"), std::string::npos) << level;
    EXPECT_NE(text.find("or FLevel<" + std::to_string(level + 1) + " THEN"), std::string::npos) << level;
  }
  EXPECT_EQ(text.find("FNumber6"), std::string::npos);
}

class ComboTest : public ComponentTest {
 protected:
  platform::Ref<ComboBox> combo = platform::MakeRef<ComboBox>("cmbGroup");
};

TEST_F(ComboTest, ACombosEntriesAreDescribed) {
  EXPECT_EQ(DescribeComboItems(*combo, "cmbGroup"), "cmbGroup,-1|") << "empty";
  combo->AddEntry("仓库", 5);
  combo->AddEntry("商品", 0);
  combo->AddEntry("部门", -2);
  EXPECT_EQ(DescribeComboItems(*combo, "cmbGroup"), "cmbGroup,-1|仓库,5|商品,1|部门,-2|");
  combo->SetListIndex(2);
  EXPECT_EQ(DescribeComboItems(*combo, ""), ",2|仓库,5|商品,1|部门,-2|");
}

TEST_F(ComboTest, ChoicesAreOfferedByApplicationType) {
  constexpr Choice kChoices[] = {{.data = 3, .caption = "甲", .mask = 6},
                                 {.data = 1, .caption = "乙"},
                                 {.data = 2, .caption = "丙", .mask = 1}};
  struct Row {
    const char* name;
    std::int32_t appType;
    std::optional<std::int32_t> standard;
    const char* described;
  };
  const Row rows[] = {
      {"type 2, no default", 2, {}, "k,0|甲,3|乙,1|"},
      {"type 2, default in the list", 2, 1, "k,1|甲,3|乙,1|"},
      {"type 2, default not offered", 2, 2, "k,0|甲,3|乙,1|"},
      {"type 4, unknown default", 4, 99, "k,0|甲,3|乙,1|"},
      {"type 1, no default", 1, {}, "k,0|乙,1|丙,2|"},
      {"type 1, default", 1, 2, "k,1|乙,1|丙,2|"},
      {"a type that nothing is offered in", 8, 1, "k,-1|"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    store->Set("AppType", row.appType);
    combo->AddEntry("left over", 1);
    FillComboByAppType(*combo, kChoices, row.standard);
    EXPECT_EQ(DescribeComboItems(*combo, "k"), row.described);
  }
}

TEST_F(ComboTest, TheFirstEntryWithANumberIsFound) {
  EXPECT_EQ(FindComboItemData(nullptr, 1), -1);
  EXPECT_EQ(FindComboItemData(combo.Get(), 0), -1);
  combo->AddEntry("a", 7);
  combo->AddEntry("b", 5);
  combo->AddEntry("c", 5);
  EXPECT_EQ(FindComboItemData(combo.Get(), 5), 1);
  EXPECT_EQ(FindComboItemData(combo.Get(), 7), 0);
  EXPECT_EQ(FindComboItemData(combo.Get(), 6), -1);
}

TEST_F(ComboTest, AUserFieldRequestHasFourKeysInOrder) {
  EXPECT_EQ(Spell(NewUserFieldRequest(true, "FModel", "", "")),
            "{hasVect: True, prefixValue: 'FModel', classType: '', DisplayFields: ''}");
  EXPECT_EQ(Spell(NewUserFieldRequest(false, "FBillNo", "4", "a,b")),
            "{hasVect: False, prefixValue: 'FBillNo', classType: '4', DisplayFields: 'a,b'}");
}

}  // namespace
}  // namespace component
