#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "books/reader/SqlReader.h"
#include "platform/value/Error.h"

// What the reader refuses: anything that is not one of the component's own texts. Every refusal names the
// place and the reason.
namespace {

using books::reader::ConditionAlias;
using platform::Error;

struct RefusedCase {
  std::string name;
  std::string text;
  std::string expected;  // occurs in the message
};

std::string Repeated(const std::string& part, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

void ExpectRefused(const std::function<void()>& read, const std::string& expected) {
  try {
    read();
    ADD_FAILURE() << "it was accepted";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), platform::ErrorNumber::kBadArgument);
    EXPECT_THAT(error.Description(), testing::StartsWith("SQL text refused at character "));
    EXPECT_THAT(error.Description(), testing::HasSubstr(expected));
  }
}

TEST(ReaderRefusal, Statements) {
  const std::vector<RefusedCase> cases = {
      {"nothing", "", "character 1 (its end): expected SELECT"},
      {"blanks", " \r\n\t", "expected SELECT"},
      {"update", "UPDATE t_Item SET FRightUserID='1'", "character 1 (\"UPDATE"},
      {"delete", "delete from t_Item", "expected SELECT"},
      {"drop", "DROP TABLE t_Item", "expected SELECT"},
      {"pragma", "PRAGMA writable_schema=1", "expected SELECT"},
      {"attach", "ATTACH 'x' AS y", "expected SELECT"},
      {"with", "with a as (select 1 from ICCalFlag) select 1 from a", "expected SELECT"},
      {"stacked by semicolon", "Select 1 From ICCalFlag; delete from t_Item", "character 24 (\"; delete"},
      {"semicolon at the end", "Select 1 From ICCalFlag;", "without a semicolon"},
      {"stacked without semicolon", "Select 1 From ICCalFlag delete from t_Item", "expected the end"},
      {"two selects", "Select 1 From ICCalFlag where 1=1 Select 1 From ICCalFlag", "expected the end"},
      {"line comment", "Select 1 From ICCalFlag -- all", "comments are not accepted"},
      {"block comment", "Select/**/1 From ICCalFlag", "comments are not accepted"},
      {"unclosed block comment", "Select 1 From ICCalFlag /*", "comments are not accepted"},
      {"the catalogue", "select FName from sqlite_master", "character 19 (\"sqlite_master\"): unknown table"},
      {"the catalogue of the dialect", "select FName from sysobjects", "unknown table sysobjects"},
      {"users", "select FName from t_User", "unknown table"},
      {"table of another schema", "select FName from main.t_Item", "expected the end"},
      {"quoted table", "select FName from \"t_Item\"", "no place outside quotes"},
      {"bracketed table", "select FName from [t_Item]", "no place outside quotes"},
      {"derived table", "select FName from (select FName from t_Item)", "expected a table name"},
      {"union with another table", "select FName from t_Item union select FPasswordHash from t_User",
       "unknown table t_User"},
      {"union all", "select FName from t_Item union all select FName from t_Item", "expected SELECT"},
      {"union of unequal width", "select FName from t_Item union select FName,FNumber from t_Item",
       "equally many columns"},
      {"except", "select FName from t_Item except select FName from t_Stock", "expected"},
      {"unknown column", "select FPassword from t_Item", "unknown column FPassword"},
      {"row id", "select rowid from t_Item", "unknown column rowid"},
      {"star", "select * from t_Item", "expected a column or a value"},
      {"unknown alias", "select x.FName from t_Item a", "unknown table or alias x"},
      {"table's own name beside an alias", "select t_Item.FName from t_Item a",
       "unknown table or alias t_Item"},
      {"column of the other table", "select a.FValue from t_Item a, t_SystemProfile b",
       "a has no column FValue"},
      {"in two tables", "select FName from t_Item, t_Stock", "more than one table"},
      {"alias twice", "select a.FName from t_Item a, t_Stock a", "alias used twice"},
      {"alias is a word", "select 1 from t_Item where", "expected a number, a text in quotes or a column"},
      {"column twice", "select FName, FName from t_Item", "there is a column FName already"},
      {"limit", "select FName from t_Item limit 1", "expected the end"},
      {"group by", "select FName from t_Item group by FName", "expected the end"},
      {"into", "select FName into x from t_Item", "expected FROM"},
      {"top", "select top 1 FName from t_Item", "expected FROM"},
      {"left join", "select a.FName from t_Item a left join t_Stock b on 1=1", "expected the end"},
      {"join without condition", "select a.FName from t_Item a inner join t_Stock b where 1=1",
       "expected ON"},
      {"loading code", "select load_extension('x') from t_Item", "this function is not known here"},
      {"reading a file", "select readfile('x') from t_Item", "this function is not known here"},
      {"memory", "select zeroblob(1000000000) from t_Item", "this function is not known here"},
      {"conversion to another type", "select convert(image, FName) from t_Item", "expected INT or DATETIME"},
      {"aggregate in a condition", "select FName from t_Item where max(FLevel)=1", "aggregate"},
      {"aggregate in an aggregate", "select max(max(FLevel)) from t_Item", "aggregate"},
      {"adding texts", "select FName+'x' from t_Item", "only numbers can be added"},
      {"multiplication", "select FLevel*2 from t_Item", "expected FROM"},
      {"division", "select FLevel/0 from t_Item", "no place outside quotes"},
      {"concatenation", "select FName||FName from t_Item", "no place outside quotes"},
      {"question mark", "select FName from t_Item where FItemID=?", "no place outside quotes"},
      {"named parameter", "select FName from t_Item where FItemID=:a", "no place outside quotes"},
      {"undeclared variable", "select FName from t_Item where FItemID=@a", "not declared"},
      {"system variable", "select @@version from t_Item", "no place outside quotes"},
      {"declared twice over", "Declare @a int Declare @b int select 1 from ICCalFlag", "expected SELECT"},
      {"declared as text", "Declare @a varchar select 1 from ICCalFlag", "expected INT"},
      {"given a value and no more", "Declare @a int select @a=FItemID from t_Item", "expected SELECT"},
      {"a variable from itself", "Declare @a int select @a=@a from t_Item select 1 from ICCalFlag",
       "not declared"},
      {"a value in a condition",
       "Declare @a int select 1 from t_Item where FItemID in(select @a=1 from t_Item)", "expected FROM"},
      {"two columns in a list", "select FName from t_Item where FItemID in(select FItemID,FName from t_Item)",
       "must have one column"},
      {"stored procedure", "exec xp_cmdshell 'dir'", "expected SELECT"},
      {"waiting", "Select 1 From ICCalFlag waitfor delay '0:0:9'", "expected the end"},
      {"curly quotes", "select FName from t_Item where FNumber=\u2018x\u2019", "no place outside quotes"},
      {"wide quotes", "select FName from t_Item where FNumber=\uFF07x\uFF07", "character 40"},
      {"position counts characters", "select FName from t_Item where FNumber='商品' + \u2019",
       "character 47"},
      {"wide blank", "select\u3000FName from t_Item", "no place outside quotes"},
      {"no-break blank", "select\u00A0FName from t_Item", "no place outside quotes"},
      {"unclosed quote", "select FName from t_Item where FNumber='x", "a quote that is not closed"},
      {"unclosed after a doubled quote", "select FName from t_Item where FNumber='x''", "not closed"},
      {"backslash before a quote", "select FName from t_Item where FNumber='\\' or 1=1 --'",
       "comments are not accepted"},
      {"escaped text", "select FName from t_Item where FNumber=E'x'", "a quote may not follow a name"},
      {"wide text", "select FName from t_Item where FNumber=N'x'", "a quote may not follow a name"},
      {"blob", "select FName from t_Item where FNumber=x'00'", "a quote may not follow a name"},
      {"zero byte", std::string("select FName from t_Item\0where 1=1", 34), "no place outside quotes"},
      {"zero byte in quotes", std::string("select FName from t_Item where FName='\0'", 40),
       "control character"},
      {"line end in quotes", "select FName from t_Item where FName='a\nb'", "control character"},
      {"unclosed parenthesis", "select FName from t_Item where (FLevel=1", "expected )"},
      {"one parenthesis too many", "select FName from t_Item where (FLevel=1))", "expected the end"},
      {"empty list", "select FName from t_Item where FItemID in ()", "expected a number"},
      {"list that ends in a comma", "select FName from t_Item where FItemID in (1,)", "expected a number"},
      {"stock set with more behind it",
       "select FItemID from t_Item where FItemID in(1) or FItemID in(select FItemID from t_User)",
       "unknown table"},
      {"comparison of truth", "select FName from t_Item where FLevel=1=1", "expected the end"},
      {"bare value", "select FName from t_Item where FLevel", "expected a comparison"},
      {"between", "select FName from t_Item where FLevel between 1 and 2", "expected a comparison"},
      {"is null", "select FName from t_Item where FName is null", "expected a comparison"},
      {"exists", "select FName from t_Item where exists(select 1 from t_User)", "not known here"},
      {"like a column", "select FName from t_Item where FName like FNumber", "expected a text in quotes"},
      {"number and letters", "select FName from t_Item where FItemID=0x10", "expected a whole number"},
      {"fraction", "select FName from t_Item where FItemID=1.5", "expected a whole number"},
      {"too large a number", "select FName from t_Item where FItemID=99999999999999999999", "too large"},
      {"double minus", "select FName from t_Item where FItemID=1--1", "comments are not accepted"},
      {"deep parentheses", "select FName from t_Item where " + Repeated("(", 100000), "nested too deeply"},
      {"deep values", "select " + Repeated("(", 50) + "1" + Repeated(")", 50) + " from t_Item",
       "nested too deeply"},
      {"deep selects",
       "select FName from t_Item where " + Repeated("FItemID in (select FItemID from t_Item where ", 40),
       "nested too deeply"},
      {"very many conditions", "select FName from t_Item where 1=1" + Repeated(" or 1=1", 10000),
       "too many parts"},
      {"very many unions", "select 1 from ICCalFlag" + Repeated(" union select 1 from ICCalFlag", 1000),
       "too many parts"},
      {"very many values", "select FName from t_Item where FItemID in (1" + Repeated(",1", 40000) + ")",
       "too many values"},
      {"very many tables", "select 1 from ICCalFlag" + Repeated(",ICCalFlag", 20), "too many tables"},
      {"very long", "select FName from t_Item where FName='" + std::string(1000000, 'x') + "'", "too long"},
  };
  for (const RefusedCase& each : cases) {
    SCOPED_TRACE(each.name);
    ExpectRefused([&] { books::reader::ReadStatement(each.text); }, each.expected);
  }
}

TEST(ReaderRefusal, Conditions) {
  const std::vector<RefusedCase> cases = {
      {"closes the group and opens another", "1=1) or (1=1", "expected the end"},
      {"always true without aliases", "1=1 --", "comments are not accepted"},
      {"another alias", " (CharIndex('12',t5.FRightUserID)>0) ", "unknown table or alias t5"},
      {"no alias where one is needed", "FRightUserID='12'", "unknown column FRightUserID"},
      {"another column", "t4.FCost>0", "t4 has no column FCost"},
      {"a select", "t4.FItemID in (select FItemID from t_Item)", "may not hold a select"},
      {"a select as a value", "t4.FItemID = (select FItemID from t_Item)", "may not hold a select"},
      {"a variable", "t4.FItemID=@a", "not declared"},
      {"joined with nothing behind", " (CharIndex('12',t4.FRightUserID)>0) And ", "expected a number"},
      {"begins with And", " And t4.FItemID=1", "expected a number"},
      {"a quote in the user id", " (CharIndex('1'2',t4.FRightUserID)>0) ", "a quote that is not closed"},
      {"a user id that closes the clause",
       " (CharIndex('1',t4.FRightUserID)>0 OR 1=1; --',t4.FRightUserID)>0) ", "without a semicolon"},
      {"a function within the search", "CharIndex(ISNULL('1','2'),t4.FRightUserID)>0",
       "expected a text in quotes"},
      {"a sort order", "t4.FItemID=1 order by t4.FItemID", "expected the end"},
      {"a union", "t4.FItemID=1 union select 1 from ICCalFlag", "expected the end"},
  };
  const std::vector<ConditionAlias> aliases = {{"t4", books::reader::BaseDataTable()}};
  for (const RefusedCase& each : cases) {
    SCOPED_TRACE(each.name);
    ExpectRefused([&] { books::reader::ReadConditionText(each.text, aliases); }, each.expected);
  }
}

}  // namespace
