// The clause that restricts a user to the base data that he may see.
#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "component/frame/MRpt.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::Ref;
using platform::Vector;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kStockClause = " (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ";

class RightsTest : public ComponentTest {
 protected:
  void Restrict(const std::string& classes) {
    desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
    desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", classes);
  }
};

TEST_F(RightsTest, EntriesAreDictionariesInOrder) {
  constexpr DataRight kRights[] = {{.table = "t_stock", .alias = "t4", .itemClass = "5"},
                                   {.table = "t_item", .alias = "i", .itemClass = "4"}};
  EXPECT_EQ(Spell(DataRightEntries(kRights)),
            "[{DataTable: 't_stock', DataTableAs: 't4', ItemClassType: '5'}, {DataTable: 't_item', "
            "DataTableAs: 'i', "
            "ItemClassType: '4'}]");
}

TEST_F(RightsTest, EachRecognisedTableThatIsRestrictedAddsAPart) {
  struct Row {
    const char* name;
    std::vector<DataRight> rights;
    std::string before;
    std::string clause;
  };
  const std::string supplier = " (CharIndex('12',s.FRightUserID)>0 OR ISNULL(s.FItemID,0)=0) ";
  const std::vector<Row> rows = {
      {"a stock", {{"t_stock", "t4", "5"}}, "", kStockClause},
      {"in capitals", {{"T_STOCK", "t4", "5"}}, "", kStockClause},
      {"a branch", {{"T_LS_BranchShop", "t4", "5"}}, "", kStockClause},
      {"a cashier", {{"t_ls_cashier", "t4", "5"}}, "", kStockClause},
      {"an organization", {{"t_organization", "t4", "5"}}, "", kStockClause},
      {"an item", {{"t_item", "t4", "5"}}, "", kStockClause},
      {"two entries",
       {{"t_stock", "t4", "5"}, {"t_supplier", "s", "8"}},
       "",
       kStockClause + " And " + supplier},
      {"a class found inside another's number", {{"t_stock", "t4", "1"}}, "", kStockClause},
      {"a clause that was there is extended", {{"t_stock", "t4", "5"}}, "a=1", "a=1 And " + kStockClause},
      {"a blank clause is extended", {{"t_stock", "t4", "5"}}, "  ", "  " + kStockClause},
      {"another table", {{"t_emp", "e", "5"}}, "", ""},
      {"another table between", {{"t_emp", "e", "5"}, {"t_stock", "t4", "5"}}, "", kStockClause},
      {"a table with a blank", {{"t_stock ", "t4", "5"}}, "", ""},
      {"a class that is not restricted", {{"t_stock", "t4", "3"}}, "a=1", "a=1"},
      {"no entries", {}, "a=1", "a=1"},
  };
  Restrict("10,5,8");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::string clause = row.before;
    EXPECT_TRUE(MakeDataRightWhere(DataRightEntries(row.rights), clause));
    EXPECT_EQ(clause, row.clause);
  }
}

TEST_F(RightsTest, TheUserIsReadAfreshFromTheSession) {
  Restrict("5");
  ParsePropsString("UserID=99;");
  desk.session->Set("PropsString", "Server=s;UserID=2;");
  std::string clause;
  MakeDataRightWhere(DataRightEntries(std::vector<DataRight>{{"t_stock", "t4", "5"}}), clause);
  EXPECT_EQ(clause, " (CharIndex('2',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ");
}

TEST_F(RightsTest, WithoutNeedTheClauseIsLeftAlone) {
  desk.session->Set("PropsString", "no user");
  std::string clause = "a=1";
  EXPECT_FALSE(MakeDataRightWhere(DataRightEntries(std::vector<DataRight>{{"t_stock", "t4", "5"}}), clause));
  EXPECT_EQ(clause, "a=1");
  EXPECT_THAT(ProcessState::Get().props, IsEmpty()) << "the session's text is not even parsed";
}

TEST_F(RightsTest, AFailureAfterTheNeedReachesTheCaller) {
  Restrict("5");
  const Ref<Vector> entries = DataRightEntries(std::vector<DataRight>{{"t_stock", "t4", "5"}});
  std::string clause;
  desk.session->Set("PropsString", "Server=s;");
  EXPECT_EQ(Raised([&] { MakeDataRightWhere(entries, clause); }), "the session text holds no key 'UserID'");
  desk.Fail("TOVEBCGLView.GLData", "GetAuthItemClassList", "no list");
  platform::ProcessStore()->Remove("AuthrizeItemClassList");
  EXPECT_EQ(Raised([&] { MakeDataRightWhere(entries, clause); }), "no list");
}

TEST_F(RightsTest, TheNeedIsFetchedOnceForTheProcess) {
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  EXPECT_TRUE(GetNeedAuthrize());
  EXPECT_EQ(Spell(store), "{NeedAuthrize: True}");
  EXPECT_THAT(
      desk.Lines("SecurityInfo"),
      ElementsAre("new TOVEBSBase.SecurityInfo", "call TOVEBSBase.SecurityInfo.NeedAutorized('UserID=12;')",
                  "end TOVEBSBase.SecurityInfo"));
  EXPECT_TRUE(GetNeedAuthrize());
  EXPECT_EQ(desk.Count("call TOVEBSBase.SecurityInfo"), 1) << "the second time it comes from the store";
  store->Set("NeedAuthrize", 0);
  EXPECT_FALSE(GetNeedAuthrize()) << "another component may change it";
  store->Remove("NeedAuthrize");
  EXPECT_TRUE(GetNeedAuthrize()) << "another component may clear it";
  EXPECT_EQ(desk.Count("call TOVEBSBase.SecurityInfo"), 2);
  EXPECT_EQ(Spell(store), "{NeedAuthrize: True}");
}

TEST_F(RightsTest, TheFirstReadAsksTheServiceWhateverTheStoreHolds) {
  store->Set("NeedAuthrize", true);
  EXPECT_FALSE(GetNeedAuthrize());
  EXPECT_EQ(Spell(store), "{NeedAuthrize: False}");
}

TEST_F(RightsTest, WithoutAStoreTheNeedIsFetchedEachTime) {
  platform::SetProcessStore({});
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  EXPECT_TRUE(GetNeedAuthrize());
  EXPECT_EQ(desk.Count("call TOVEBSBase.SecurityInfo"), 2) << "what was stored reads as empty, so once more";
  EXPECT_TRUE(GetNeedAuthrize());
  EXPECT_EQ(desk.Count("call TOVEBSBase.SecurityInfo"), 3);
}

TEST_F(RightsTest, AFailureOfTheSecurityServiceMeansNoRestriction) {
  desk.Fail("TOVEBSBase.SecurityInfo", "NeedAutorized", "no security");
  EXPECT_FALSE(GetNeedAuthrize());
  EXPECT_EQ(Spell(store), "{}");
  desk.Withdraw("TOVEBSBase.SecurityInfo");
  EXPECT_FALSE(GetNeedAuthrize());
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  EXPECT_TRUE(GetNeedAuthrize()) << "a first read that failed is tried again";
  store->Set("NeedAuthrize", "perhaps");
  EXPECT_FALSE(GetNeedAuthrize());
}

TEST_F(RightsTest, TheSecurityServiceIsAskedEvenWithoutASession) {
  desk.Withdraw("TOVMtsCacheService.CacheFacade");
  desk.Answer("TOVEBSBase.SecurityInfo", "NeedAutorized", true);
  EXPECT_TRUE(GetNeedAuthrize());
  EXPECT_EQ(desk.Count("NeedAutorized(empty)"), 1);
}

TEST_F(RightsTest, TheClassListIsKeptInTheStore) {
  desk.Answer("TOVEBCGLView.GLData", "GetAuthItemClassList", "1,5");
  EXPECT_EQ(GetAuthrizeItemClassList(), "1,5");
  EXPECT_EQ(Spell(store), "{AuthrizeItemClassList: '1,5'}");
  EXPECT_FALSE(ProcessState::Get().glData) << "the service is created for this alone";
  store->Set("AuthrizeItemClassList", 8);
  EXPECT_EQ(GetAuthrizeItemClassList(), "8");
  EXPECT_EQ(desk.Count("call TOVEBCGLView.GLData.GetAuthItemClassList()"), 1);
}

}  // namespace
}  // namespace component
