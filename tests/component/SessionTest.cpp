// Where session values come from, and how the session's text is taken apart.
#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "tests/component/ComponentTest.h"

namespace component {
namespace {

using platform::ErrorNumber;
using platform::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SessionTest : public ComponentTest {};

TEST_F(SessionTest, AValueTakesTheRouteOfItsLogin) {
  struct Row {
    const char* name;
    Variant login;
    const char* key;
    const char* value;
    std::vector<std::string> calls;
  };
  const std::string cacheLogin = "call TOVMtsCacheService.CacheFacade.GetItem(pid, 'IsOuterLogin')";
  const std::vector<Row> rows = {
      {"own login asks the shared props",
       0,
       "PropsString",
       "'UserID=12;'",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin, "new TOVPropsMgr.ShareProps",
        "call TOVPropsMgr.ShareProps.GetProperty(pid, 'PropsString')"}},
      {"own login serves any key",
       0,
       "Colour",
       "'red'",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin, "new TOVPropsMgr.ShareProps",
        "call TOVPropsMgr.ShareProps.GetProperty(pid, 'Colour')"}},
      {"an empty login counts as 0",
       {},
       "Colour",
       "'red'",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin, "new TOVPropsMgr.ShareProps",
        "call TOVPropsMgr.ShareProps.GetProperty(pid, 'Colour')"}},
      {"login as text",
       "1",
       "UserName",
       "'li'",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin,
        "call TOVMtsCacheService.CacheFacade.GetItem(pid, 'UserName')"}},
      {"outer login asks the cache again",
       1,
       "UserName",
       "'li'",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin,
        "call TOVMtsCacheService.CacheFacade.GetItem(pid, 'UserName')"}},
      {"outer login keeps an object",
       1,
       "TOVLogin",
       "{a: 1}",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin,
        "call TOVMtsCacheService.CacheFacade.GetItem(pid, 'TOVLogin')"}},
      {"own login keeps an object",
       0,
       "TOVLogin",
       "{a: 1}",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin, "new TOVPropsMgr.ShareProps",
        "call TOVPropsMgr.ShareProps.GetProperty(pid, 'TOVLogin')"}},
      {"outer login, key outside the list",
       1,
       "Colour",
       "empty",
       {"new TOVMtsCacheService.CacheFacade", cacheLogin}},
      {"another number", 2, "PropsString", "empty", {"new TOVMtsCacheService.CacheFacade", cacheLogin}},
      {"a negative number", -1, "PropsString", "empty", {"new TOVMtsCacheService.CacheFacade", cacheLogin}},
  };
  desk.session->Set("Colour", "red");
  desk.session->Set("UserName", "li");
  desk.session->Set("TOVLogin", Keys({{"a", 1}}));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    desk.journal.clear();
    desk.outerLogin = row.login;
    EXPECT_EQ(Spell(GetSessionValue(row.key)), row.value);
    std::vector<std::string> calls = desk.journal;
    std::erase_if(calls, [](const std::string& line) { return line.starts_with("end "); });
    EXPECT_EQ(calls, row.calls);
    EXPECT_EQ(desk.living, 0) << "the services are released";
  }
}

TEST_F(SessionTest, AnOuterLoginIsServedExactlyItsFourteenKeys) {
  desk.outerLogin = 1;
  for (const char* key :
       {"UserName", "UserID", "PropsString", "LogStatus", "AcctName", "AcctType", "Setuptype", "AcctID",
        "SubID", "AcctClosed", "MachineName", "IP", "UUID", "TOVLogin"}) {
    SCOPED_TRACE(key);
    desk.session->Set(key, std::string("value of ") + key);
    EXPECT_EQ(Spell(GetSessionValue(key)), std::string("'value of ") + key + "'");
  }
  for (const char* key : {"Password", "UserIDs", "User", "", "IsOuterLogin", "IPs"}) {
    SCOPED_TRACE(key);
    desk.session->Set(key, "secret");
    EXPECT_EQ(Spell(GetSessionValue(key)), "empty");
  }
}

TEST_F(SessionTest, AFailedServiceReachesTheCallerUnlessErrorsAreSkipped) {
  desk.Withdraw("TOVPropsMgr.ShareProps");
  EXPECT_EQ(Raised([] { GetSessionValue("PropsString"); }), "class not registered: TOVPropsMgr.ShareProps");
  EXPECT_EQ(Spell(GetSessionValueOrEmpty("PropsString")), "empty");
  desk.Withdraw("TOVMtsCacheService.CacheFacade");
  EXPECT_EQ(Raised([] { GetSessionValue("PropsString"); }),
            "class not registered: TOVMtsCacheService.CacheFacade");
  EXPECT_EQ(Raised([] { GetPropsString(); }), "class not registered: TOVMtsCacheService.CacheFacade");
}

TEST_F(SessionTest, AFrameworkObjectComesBeforeTheSessionServices) {
  desk.Answer("Host.Framework", "PropsString", "UserID=7;");
  ProcessState::Get().framework = desk.Make("Host.Framework");
  desk.journal.clear();
  EXPECT_EQ(GetPropsString(), "UserID=7;");
  EXPECT_THAT(desk.journal, ElementsAre("get Host.Framework.PropsString()"));
}

TEST_F(SessionTest, PropsTextIsTakenApart) {
  struct Row {
    const char* name;
    const char* text;
    std::vector<std::pair<std::string, std::string>> props;
  };
  const std::vector<Row> rows = {
      {"two pairs", "UserID=12;Server=s1;", {{"UserID", "12"}, {"Server", "s1"}}},
      {"the last pair without its semicolon", "UserID=12;Server=s1", {{"UserID", "12"}, {"Server", "s1"}}},
      {"blanks around keys and values",
       "  UserID  =  12  ;  Server = s 1 ; ",
       {{"UserID", "12"}, {"Server", "s 1"}}},
      {"braces keep semicolons", "Con={a=1;b=2};UserID=12;", {{"Con", "a=1;b=2"}, {"UserID", "12"}}},
      {"blanks before and inside braces", "Con =  { a;b } ; UserID=12", {{"Con", "a;b"}, {"UserID", "12"}}},
      {"text after the brace falls away", "Con={a} rest;UserID=12", {{"Con", "a"}, {"UserID", "12"}}},
      {"an open brace takes the rest", "Con={a;b=2;UserID=12", {{"Con", "a;b=2;UserID=12"}}},
      {"an opening brace inside is text", "Con={a{b};UserID=1", {{"Con", "a{b"}, {"UserID", "1"}}},
      {"a brace in the middle is text", "Con=x{a;UserID=1", {{"Con", "x{a"}, {"UserID", "1"}}},
      {"an equals sign in a value", "Con=a=b;UserID=1", {{"Con", "a=b"}, {"UserID", "1"}}},
      {"an empty value", "Con=;UserID=1", {{"Con", ""}, {"UserID", "1"}}},
      {"a key without an equals sign", "UserID=1;Server", {{"UserID", "1"}, {"Server", ""}}},
      {"a text without any separator", "UserID", {{"UserID", ""}}},
      {"an empty key ends the reading", "UserID=1;=x;Server=s1", {{"UserID", "1"}}},
      {"a doubled semicolon belongs to the next key",
       "UserID=1;;Server=s1",
       {{"UserID", "1"}, {";Server", "s1"}}},
      {"empty", "", {}},
      {"blanks only", "   ", {}},
      {"only blanks behind the last pair", "UserID=1;   ", {{"UserID", "1"}}},
      {"letters beyond ASCII", "用户=李;", {{"用户", "李"}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(ParsePropsString(row.text));
    EXPECT_EQ(ProcessState::Get().props, row.props);
    EXPECT_EQ(ProcessState::Get().propsText, row.text);
  }
}

TEST_F(SessionTest, AKeyThatOccursTwiceIsRefused) {
  for (const char* text : {"UserID=1;Server=s;UserID=2;Last=3", "UserID=1;Server=s;userid=2"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(RaisedNumber([&] { ParsePropsString(text); }), ErrorNumber::kKeyExists);
    EXPECT_EQ(GetPropsItem("UserID"), "1") << "the pairs before it stay";
    EXPECT_EQ(GetPropsItem("Server"), "s");
    EXPECT_EQ(RaisedNumber([] { GetPropsItem("Last"); }), ErrorNumber::kInvalidCall);
  }
}

TEST_F(SessionTest, ParsingAgainReplacesTheProps) {
  ParsePropsString("UserID=1;Old=x");
  ParsePropsString("UserID=2");
  EXPECT_EQ(GetPropsItem("USERID"), "2") << "keys meet in any case";
  EXPECT_EQ(RaisedNumber([] { GetPropsItem("Old"); }), ErrorNumber::kInvalidCall);
}

TEST_F(SessionTest, TheUserIsASixteenBitNumber) {
  struct Row {
    const char* text;
    std::int16_t user;
  };
  for (const Row& row : {Row{"UserID=12;", 12}, Row{"UserID=32767", 32767}, Row{"UserID= 5 ;", 5}}) {
    SCOPED_TRACE(row.text);
    ParsePropsString(row.text);
    EXPECT_EQ(GetUserID(), row.user);
  }
  struct Refused {
    const char* text;
    ErrorNumber number;
  };
  for (const Refused& row :
       {Refused{"UserID=32768", ErrorNumber::kOverflow}, Refused{"UserID=li", ErrorNumber::kTypeMismatch},
        Refused{"UserID=", ErrorNumber::kTypeMismatch}, Refused{"User=1", ErrorNumber::kInvalidCall}}) {
    SCOPED_TRACE(row.text);
    ParsePropsString(row.text);
    EXPECT_EQ(RaisedNumber([] { GetUserID(); }), row.number);
  }
}

TEST_F(SessionTest, SqlGoesToTheConnectionWithTheProps) {
  desk.AnswerSql("t_Stock", TextRows({"FName"}, {{"main"}}));
  const platform::Ref<platform::Recordset> rows = ExecuteSql("Select FName From t_Stock");
  ASSERT_TRUE(rows);
  EXPECT_EQ(Spell(rows->Value("FName")), "'main'");
  EXPECT_THAT(
      desk.Lines("AppConnection"),
      ElementsAre("new TOVMAppConnection.AppConnection",
                  "call TOVMAppConnection.AppConnection.Execute('UserID=12;', 'Select FName From t_Stock')",
                  "end TOVMAppConnection.AppConnection"));
}

TEST_F(SessionTest, FailedSqlAnswersNothing) {
  EXPECT_FALSE(ExecuteSql("Select 1")) << "the database refuses";
  EXPECT_EQ(Raised([] { ExecuteSqlOrRaise("Select 1"); }), "the database refuses");
  desk.Answer("TOVMAppConnection.AppConnection", "Execute", nullptr);
  EXPECT_FALSE(ExecuteSql("Select 1")) << "nothing comes back";
  desk.Answer("TOVMAppConnection.AppConnection", "Execute", Keys({}));
  EXPECT_FALSE(ExecuteSql("Select 1")) << "no recordset comes back";
  desk.Withdraw("TOVMAppConnection.AppConnection");
  EXPECT_FALSE(ExecuteSql("Select 1")) << "there is no connection";
  EXPECT_THAT(desk.Lines("ask "), IsEmpty()) << "the reason is dropped";
}

}  // namespace
}  // namespace component
