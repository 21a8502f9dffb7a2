#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "books/reader/SqlReader.h"
#include "platform/value/Convert.h"

// The texts that the component sends, letter by letter, and what the database is asked instead.
namespace {

using books::reader::ConditionAlias;
using books::reader::SqlStatement;
using books::reader::SqlText;

// "FStartDate date, FEndDate date | 'IC' 'StartYear' 4"
std::string ParametersOf(const SqlText& text) {
  std::string all;
  for (const platform::Variant& each : text.parameters) {
    if (!all.empty()) all += ' ';
    all += each.IsText() ? "'" + platform::ToText(each) + "'" : platform::ToText(each);
  }
  return all;
}

std::string FieldsOf(const SqlStatement& statement) {
  std::string all;
  for (const platform::Field& each : statement.fields) {
    if (!all.empty()) all += ", ";
    all += each.name + " " + std::string(platform::ToString(each.type));
  }
  return all;
}

struct StatementCase {
  std::string name;
  std::string text;
  std::string sql;
  std::string parameters;
  std::string fields;
};

TEST(Reader, Statements) {
  const std::vector<StatementCase> cases = {
      {"first period's dates",
       "Declare @Year int,@Period int \r\n"
       "SELECT @Year=CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND FKey='StartYear'\n"
       "SELECT @Period = CONVERT(INT,FValue) FROM t_SystemProfile WHERE FCategory='IC' AND "
       "FKey='StartPeriod'\n"
       "SELECT CONVERT(DATETIME,FStartDate)as FStartDate,CONVERT(DATETIME,FEndDate)as FEndDate FROM "
       "t_PeriodDate "
       "\nWHERE FYear=@Year AND FPeriod=@Period ",
       R"(SELECT "t_PeriodDate"."FStartDate" AS "FStartDate", "t_PeriodDate"."FEndDate" AS "FEndDate")"
       R"( FROM "t_PeriodDate" AS "t_PeriodDate" WHERE "t_PeriodDate"."FYear" =)"
       R"( (SELECT CAST("t_SystemProfile"."FValue" AS INTEGER) AS "Column1" FROM "t_SystemProfile" AS)"
       R"( "t_SystemProfile" WHERE "t_SystemProfile"."FCategory" = ? AND "t_SystemProfile"."FKey" = ?) AND)"
       R"( "t_PeriodDate"."FPeriod" = (SELECT CAST("t_SystemProfile"."FValue" AS INTEGER) AS "Column1" FROM)"
       R"( "t_SystemProfile" AS "t_SystemProfile" WHERE "t_SystemProfile"."FCategory" = ? AND)"
       R"( "t_SystemProfile"."FKey" = ?))",
       "'IC' 'StartYear' 'IC' 'StartPeriod'", "FStartDate date, FEndDate date"},
      {"stock start date",
       " SELECT FStartDate FROM t_PeriodDate WHERE \r\n"
       " FYear =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
       "'StartYear' ) "
       "AND \r\n"
       " FPeriod =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = "
       "'StartPeriod') ",
       R"(SELECT "t_PeriodDate"."FStartDate" AS "FStartDate" FROM "t_PeriodDate" AS "t_PeriodDate" WHERE)"
       R"( "t_PeriodDate"."FYear" = (SELECT CAST("t_SystemProfile"."FValue" AS INTEGER) AS "Column1" FROM)"
       R"( "t_SystemProfile" AS "t_SystemProfile" WHERE "t_SystemProfile"."FCategory" = ? AND)"
       R"( "t_SystemProfile"."FKey" = ?) AND "t_PeriodDate"."FPeriod" = (SELECT)"
       R"( CAST("t_SystemProfile"."FValue" AS INTEGER) AS "Column1" FROM "t_SystemProfile" AS "t_SystemProfile")"
       R"( WHERE "t_SystemProfile"."FCategory" = ? AND "t_SystemProfile"."FKey" = ?))",
       "'IC' 'StartYear' 'IC' 'StartPeriod'", "FStartDate date"},
      {"quick calculation allowed",
       "SELECT FValue FROM t_SystemProfile WHERE FCategory='General' AND FKey='CanQuickCalculate'",
       R"(SELECT "t_SystemProfile"."FValue" AS "FValue" FROM "t_SystemProfile" AS "t_SystemProfile" WHERE)"
       R"( "t_SystemProfile"."FCategory" = ? AND "t_SystemProfile"."FKey" = ?)",
       "'General' 'CanQuickCalculate'", "FValue text"},
      {"new business waits", "Select 1 From ICCalFlag",
       R"(SELECT ? AS "Column1" FROM "ICCalFlag" AS "ICCalFlag")", "1", "Column1 integer"},
      {"warehouse count", "select count(*) as FStockCount from t_Stock",
       R"(SELECT count(*) AS "FStockCount" FROM "t_Stock" AS "t_Stock")", "", "FStockCount integer"},
      {"deepest level",
       "select (max(FLevel) - 1) as MaxLevel from t_Item, t_ItemClass where t_Item.FItemClassID = "
       "t_ItemClass.FItemClassID and t_ItemClass.FItemClassID=4\n",
       R"(SELECT (max("t_Item"."FLevel") - ?) AS "MaxLevel" FROM "t_Item" AS "t_Item", "t_ItemClass" AS)"
       R"( "t_ItemClass" WHERE "t_Item"."FItemClassID" = "t_ItemClass"."FItemClassID" AND)"
       R"( "t_ItemClass"."FItemClassID" = ?)",
       "1 4", "MaxLevel integer"},
      {"way of costing", "select FValue from t_systemprofile where fcategory='IC' and fkey = 'CalculateType'",
       R"(SELECT "t_SystemProfile"."FValue" AS "FValue" FROM "t_SystemProfile" AS "t_SystemProfile" WHERE)"
       R"( "t_SystemProfile"."FCategory" = ? AND "t_SystemProfile"."FKey" = ?)",
       "'IC' 'CalculateType'", "FValue text"},
      {"number of a warehouse", "Select Fnumber from t_stock where Fitemid=12",
       R"(SELECT "t_Stock"."FNumber" AS "FNumber" FROM "t_Stock" AS "t_Stock" WHERE "t_Stock"."FItemID" = ?)",
       "12", "FNumber text"},
      {"groups without a chosen child",
       "select distinct a.FItemID,a.FNumber from t_Item  a inner join t_Item b on a.FItemID=b.FParentID\r\n"
       "where a.FItemClassID=5 and charindex(b.FRightUserID,'12')>0 and a.FItemID not in(select FParentID "
       "from "
       "t_Item where FItemID in(1,2) and charindex(FRightUserID,'12')>0 ) order by a.FNumber ",
       R"(SELECT DISTINCT "a"."FItemID" AS "FItemID", "a"."FNumber" AS "FNumber" FROM "t_Item" AS "a" INNER JOIN)"
       R"( "t_Item" AS "b" ON "a"."FItemID" = "b"."FParentID" WHERE "a"."FItemClassID" = ? AND (CASE WHEN)"
       R"( "b"."FRightUserID" = '' THEN 0 ELSE instr(?, "b"."FRightUserID") END) > ? AND "a"."FItemID" NOT IN)"
       R"( (SELECT "t_Item"."FParentID" AS "FParentID" FROM "t_Item" AS "t_Item" WHERE "t_Item"."FItemID" IN)"
       R"( (?, ?) AND (CASE WHEN "t_Item"."FRightUserID" = '' THEN 0 ELSE instr(?, "t_Item"."FRightUserID"))"
       R"( END) > ?) ORDER BY "a"."FNumber")",
       "5 '12' 0 1 2 '12' 0", "FItemID integer, FNumber text"},
      {"chosen warehouses that may be seen",
       " Select FItemID from t_Item where charindex(FRightUserID,'12')>0 And FItemID in (1,2) And FItemID "
       "not "
       "in(3)",
       R"(SELECT "t_Item"."FItemID" AS "FItemID" FROM "t_Item" AS "t_Item" WHERE (CASE WHEN)"
       R"( "t_Item"."FRightUserID" = '' THEN 0 ELSE instr(?, "t_Item"."FRightUserID") END) > ? AND)"
       R"( "t_Item"."FItemID" IN (?, ?) AND "t_Item"."FItemID" NOT IN (?))",
       "'12' 0 1 2 3", "FItemID integer"},
      {"nodes that are not shown",
       "select b.FParentID from t_Item  a inner join t_Item b on a.FItemID=b.FParentID \r\n"
       "where a.FItemClassID=5 and b.FItemID not in (1,2) and charindex(b.FRightUserID,'12')>0 \r\n"
       " Union \r\n"
       " select FItemID from t_Item where fItemID  in (1,2) and FParentID>0 and FItemClassID=5  and "
       "charindex(FRightUserID,'12')>0 and  FParentid not in(\r\n"
       " select FParentID  from t_Item where FParentID  in (1,2) and FItemid not in (1,2) and "
       "charindex(FRightUserID,'12')>0 )\r\n",
       R"(SELECT "b"."FParentID" AS "FParentID" FROM "t_Item" AS "a" INNER JOIN "t_Item" AS "b" ON)"
       R"( "a"."FItemID" = "b"."FParentID" WHERE "a"."FItemClassID" = ? AND "b"."FItemID" NOT IN (?, ?) AND)"
       R"( (CASE WHEN "b"."FRightUserID" = '' THEN 0 ELSE instr(?, "b"."FRightUserID") END) > ? UNION SELECT)"
       R"( "t_Item"."FItemID" AS "FItemID" FROM "t_Item" AS "t_Item" WHERE "t_Item"."FItemID" IN (?, ?) AND)"
       R"( "t_Item"."FParentID" > ? AND "t_Item"."FItemClassID" = ? AND (CASE WHEN "t_Item"."FRightUserID" = '')"
       R"( THEN 0 ELSE instr(?, "t_Item"."FRightUserID") END) > ? AND "t_Item"."FParentID" NOT IN (SELECT)"
       R"( "t_Item"."FParentID" AS "FParentID" FROM "t_Item" AS "t_Item" WHERE "t_Item"."FParentID" IN (?, ?))"
       R"( AND "t_Item"."FItemID" NOT IN (?, ?) AND (CASE WHEN "t_Item"."FRightUserID" = '' THEN 0 ELSE)"
       R"( instr(?, "t_Item"."FRightUserID") END) > ?))",
       "5 1 2 '12' 0 1 2 0 5 '12' 0 1 2 1 2 '12' 0", "FParentID integer"},
  };
  for (const StatementCase& each : cases) {
    SCOPED_TRACE(each.name);
    const SqlStatement statement = books::reader::ReadStatement(each.text);
    EXPECT_EQ(statement.sql, each.sql);
    EXPECT_EQ(ParametersOf(statement), each.parameters);
    EXPECT_EQ(FieldsOf(statement), each.fields);
  }
}

const std::vector<ConditionAlias> kBaseData = {{"t4", books::reader::BaseDataTable()},
                                               {"t1", books::reader::BaseDataTable(), true}};
const std::vector<ConditionAlias> kBatches = {{"t3", books::reader::BaseDataTable()},
                                              {"stock", books::reader::BatchStockTable(), true}};

struct ConditionCase {
  std::string name;
  const std::vector<ConditionAlias>& aliases;
  std::string text;
  std::string sql;
  std::string parameters;
};

TEST(Reader, Conditions) {
  const std::vector<ConditionCase> cases = {
      {"no restriction", kBaseData, "", "", ""},
      {"blanks", kBaseData, "  \r\n", "", ""},
      {"right clause", kBaseData, " (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ",
       R"((instr("t4"."FRightUserID", ?) > ? OR coalesce("t4"."FItemID", ?) = ?))", "'12' 0 0 0"},
      {"two right clauses", kBaseData,
       " (CharIndex('12',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0)  And  "
       "(CharIndex('12',T1.FRightUserID)>0 OR "
       "ISNULL(t1.FItemID,0)=0) ",
       R"(((instr("t4"."FRightUserID", ?) > ? OR coalesce("t4"."FItemID", ?) = ?) AND)"
       R"( (instr("t1"."FRightUserID", ?) > ? OR coalesce("t1"."FItemID", ?) = ?)))",
       "'12' 0 0 0 '12' 0 0 0"},
      {"right clause of no user", kBaseData, " (CharIndex('',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ",
       R"((0 > ? OR coalesce("t4"."FItemID", ?) = ?))", "0 0 0"},
      {"enabled base data", kBaseData, " t1.FDeleted=0 ", R"(("t1"."FDeleted" = ?))", "0"},
      {"filter and all base data", kBaseData, "t1.FItemID<>7 And  1=1 ", R"(("t1"."FItemID" <> ? AND ? = ?))",
       "7 1 1"},
      {"chosen warehouses", kBaseData, "FItemID in (1,2) And FItemID not in(3)",
       R"(("t1"."FItemID" IN (?, ?) AND "t1"."FItemID" NOT IN (?)))", "1 2 3"},
      {"batches of a goods range", kBatches, "t3.FNumber >='01.001' And t3.FNumber <='01.9'",
       R"(("t3"."FNumber" >= ? AND "t3"."FNumber" <= ?))", "'01.001' '01.9'"},
      {"batches in stock", kBatches, "(t3.FNumber >='01.001' AND FQty<>0 )",
       R"(("t3"."FNumber" >= ? AND "stock"."FQty" <> ?))", "'01.001' 0"},
      {"only batches in stock", kBatches, "( FQty<>0 )", R"(("stock"."FQty" <> ?))", "0"},
      {"a class of items", kBatches, "t3.FShortNumber  Like '01.%'", R"(("t3"."FShortNumber" LIKE ?))",
       "'01.%'"},
      {"and binds closer than or", kBaseData, "t1.FLevel=1 or t1.FLevel=2 and t1.FDetail=1",
       R"(("t1"."FLevel" = ? OR ("t1"."FLevel" = ? AND "t1"."FDetail" = ?)))", "1 2 1"},
      {"a quote in a number", kBatches, "t3.FNumber ='O''Brien'", R"(("t3"."FNumber" = ?))", "'O'Brien'"},
      {"what looks like SQL in quotes", kBatches, "t3.FNumber ='x; drop table t_Item --'",
       R"(("t3"."FNumber" = ?))", "'x; drop table t_Item --'"},
      {"Chinese in quotes", kBatches, "t3.FName ='青岛啤酒'", R"(("t3"."FName" = ?))", "'青岛啤酒'"},
      {"sums from the left", kBaseData, "t1.FLevel - (1 - 2) + 3 = 4",
       R"((("t1"."FLevel" - (? - ?) + ?) = ?))", "1 2 3 4"},
      {"a negative number", kBaseData, "t1.FItemID > -1", R"(("t1"."FItemID" > ?))", "-1"},
  };
  for (const ConditionCase& each : cases) {
    SCOPED_TRACE(each.name);
    const SqlText condition = books::reader::ReadConditionText(each.text, each.aliases);
    EXPECT_EQ(condition.sql, each.sql);
    EXPECT_EQ(ParametersOf(condition), each.parameters);
  }
}

}  // namespace
