#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/Book.h"
#include "platform/rows/Picture.h"
#include "platform/value/Error.h"
#include "tests/books/services/SmallBook.h"

// The component's own SQL texts, run on the small book (SmallBook.h).
namespace {

struct Case {
  std::string name;
  std::string sql;
  std::string picture;
};

std::string NotShown(const std::string& chosen) {
  return "select b.FParentID from t_Item  a inner join t_Item b on a.FItemID=b.FParentID \r\n"
         "where a.FItemClassID=5 and b.FItemID not in " +
         chosen +
         " and charindex(b.FRightUserID,'12')>0 \r\n Union \r\n select FItemID from t_Item where fItemID  "
         "in " +
         chosen +
         " and FParentID>0 and FItemClassID=5  and charindex(FRightUserID,'12')>0 and  FParentid not in(\r\n"
         " select FParentID  from t_Item where FParentID  in " +
         chosen + " and FItemid not in " + chosen + " and charindex(FRightUserID,'12')>0 )\r\n";
}

TEST(BookSql, Texts) {
  const std::vector<Case> cases = {
      {"dates of the start period, February 2025",
       "Declare @Year int,@Period int \r\n"
       "SELECT @Year=CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND FKey='StartYear'\n"
       "SELECT @Period = CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND "
       "FKey='StartPeriod'\n"
       "SELECT CONVERT(DATETIME,FStartDate)as FStartDate,CONVERT(DATETIME,FEndDate)as FEndDate FROM "
       "t_PeriodDate "
       "\nWHERE FYear=@Year AND FPeriod=@Period ",
       "FStartDate date | FEndDate date\n> 2025-02-01 | 2025-02-28\nposition 1 of 1\n"},
      {"stock start date",
       " SELECT FStartDate FROM t_PeriodDate WHERE \r\n"
       " FYear =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
       "'StartYear' ) "
       "AND \r\n FPeriod =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey "
       "= "
       "'StartPeriod') ",
       "FStartDate date\n> 2025-02-01\nposition 1 of 1\n"},
      {"quick calculation not settled",
       "SELECT FValue FROM t_SystemProfile WHERE FCategory='General' AND FKey='CanQuickCalculate'",
       "FValue text\nposition empty of 0\n"},
      {"no new business", "Select 1 From ICCalFlag", "Column1 integer\nposition empty of 0\n"},
      {"four warehouses, the group not counted", "select count(*) as FStockCount from t_Stock",
       "FStockCount integer\n> 4\nposition 1 of 1\n"},
      {"one level of categories above the items",
       "select (max(FLevel) - 1) as MaxLevel from t_Item, t_ItemClass where t_Item.FItemClassID = "
       "t_ItemClass.FItemClassID and t_ItemClass.FItemClassID=4\n",
       "MaxLevel integer\n> 1\nposition 1 of 1\n"},
      {"no data in a class",
       "select (max(FLevel) - 1) as MaxLevel from t_Item, t_ItemClass where t_Item.FItemClassID = "
       "t_ItemClass.FItemClassID and t_ItemClass.FItemClassID=10\n",
       "MaxLevel integer\n> null\nposition 1 of 1\n"},
      {"cost by warehouse",
       "select FValue from t_systemprofile where fcategory='IC' and fkey = 'CalculateType'",
       "FValue text\n> '1'\nposition 1 of 1\n"},
      {"number of a warehouse", "Select Fnumber from t_stock where Fitemid=52",
       "FNumber text\n> '01.02'\nposition 1 of 1\n"},
      {"number of no warehouse", "Select Fnumber from t_stock where Fitemid=50",
       "FNumber text\nposition empty of 0\n"},
      // 杭州仓 alone has a right list that is a part of "12"; it is not chosen, so its group is found.
      {"groups without a chosen child",
       "select distinct a.FItemID,a.FNumber from t_Item  a inner join t_Item b on a.FItemID=b.FParentID\r\n"
       "where a.FItemClassID=5 and charindex(b.FRightUserID,'12')>0 and a.FItemID not in(select FParentID "
       "from "
       "t_Item where FItemID in(51,53) and charindex(FRightUserID,'12')>0 ) order by a.FNumber ",
       "FItemID integer | FNumber text\n> 50 | '01'\nposition 1 of 1\n"},
      {"groups with their child chosen",
       "select distinct a.FItemID,a.FNumber from t_Item  a inner join t_Item b on a.FItemID=b.FParentID\r\n"
       "where a.FItemClassID=5 and charindex(b.FRightUserID,'12')>0 and a.FItemID not in(select FParentID "
       "from "
       "t_Item where FItemID in(52) and charindex(FRightUserID,'12')>0 ) order by a.FNumber ",
       "FItemID integer | FNumber text\nposition empty of 0\n"},
      // An empty right list (54) is no part of anything.
      {"chosen warehouses that may be seen",
       " Select FItemID from t_Item where charindex(FRightUserID,'12')>0 And FItemID in (51,52,54) And "
       "FItemID "
       "not in(53)",
       "FItemID integer\n> 52\nposition 1 of 1\n"},
      {"the parent of what is not chosen", NotShown("(51)"), "FParentID integer\n> 50\nposition 1 of 1\n"},
      {"a chosen child whose group is not chosen", NotShown("(52)"),
       "FParentID integer\n> 52\nposition 1 of 1\n"},
  };
  const books::test::SmallBook small;
  const books::Book book = books::Book::Open(small.File());
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(platform::Picture(*book.Execute(each.sql)), each.picture);
  }
}

std::string Repeated(const std::string& part, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

// A text that can be made longer, or deeper, at will. Up to where the reader refuses it, the database must
// run it: the reader's bounds are inside the database's.
struct GrowingCase {
  std::string name;
  int step;
  std::string (*text)(int size);
};

TEST(BookSql, RunsUpToItsBounds) {
  const std::vector<GrowingCase> cases = {
      {"groups", 1,
       [](int n) {
         return "select FName from t_Item where " + Repeated("(1=1 or ", n) + "1=1" + Repeated(")", n);
       }},
      {"selects in lists", 1,
       [](int n) {
         return "select FName from t_Item where 1=1" +
                Repeated(" and FItemID in(select FParentID from t_Item where 1=1", n) + Repeated(")", n);
       }},
      {"selects in groups", 1,
       [](int n) {
         return "select FName from t_Item where 1=1" +
                Repeated(" and (1=2 or FLevel=(select FLevel from t_Item where 1=1", n) + Repeated("))", n);
       }},
      {"values", 1,
       [](int n) {
         return "select " + Repeated("ISNULL(1+(", n) + "1" + Repeated("),2)", n) + " from t_Item";
       }},
      {"alternatives", 50,
       [](int n) { return "select FName from t_Item where 1=1" + Repeated(" or 1=2", n); }},
      {"sums", 50, [](int n) { return "select FLevel" + Repeated("+1", n) + " as FSum from t_Item"; }},
      {"unions", 50,
       [](int n) { return "select FLevel from t_Item" + Repeated(" union select FLevel from t_Item", n); }},
      {"choices", 2500,
       [](int n) { return "select FName from t_Item where FItemID in (1" + Repeated(",1", n) + ")"; }},
      {"tables", 1,
       [](int n) {
         std::string text = "select 1 from ICCalFlag";
         for (int i = 0; i < n; ++i) text += ",ICCalFlag a" + std::to_string(i);
         return text;
       }},
  };
  const books::test::SmallBook small;
  const books::Book book = books::Book::Open(small.File());
  for (const GrowingCase& each : cases) {
    SCOPED_TRACE(each.name);
    int size = each.step;
    std::string refusal;
    for (; refusal.empty() && size < 40 * each.step; size += each.step) {
      try {
        book.Execute(each.text(size));
      } catch (const platform::Error& error) {
        refusal = error.Description();
      }
    }
    EXPECT_THAT(refusal, testing::StartsWith("SQL text refused at character "));
  }
}

TEST(BookSql, RefusedTextsChangeNothing) {
  const books::test::SmallBook small;
  const books::Book book = books::Book::Open(small.File());
  for (const char* sql :
       {"DELETE FROM t_Item", "Select 1 From ICCalFlag; DROP TABLE stock",
        "select FName from t_Item where FItemID in(1) union select password_hash from book_user"}) {
    SCOPED_TRACE(sql);
    EXPECT_THROW(book.Execute(sql), platform::Error);
  }
  EXPECT_EQ(book.Execute("select count(*) as FCount from t_Item")->Value("FCount"),
            platform::Variant(std::int32_t{17}));
}

}  // namespace
