// Steps and what they write down. Each case names the steps and the lines of the last one, or of the last
// few.
#include <gtest/gtest.h>

#include "tests/player/Played.h"

namespace {

using player_tests::PlayedFrom;

struct Case {
  const char* name;
  std::size_t from;  // lines of the steps before this one are left out
  const char* steps;
  std::vector<std::string> lines;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(PlayedFrom(c.from, c.steps), c.lines);
  }
}

TEST(PlayerStep, WorksWithObjects) {
  Check({
      {"a new object has no value", 0, R"({"new":"D","class":"rnx.dictionary"})", {R"({"step":0})"}},
      {"entries of a named dictionary",
       2,
       R"({"new":"D","class":"RNX.Dictionary"},{"put":"D","key":"b","value":1},
          {"put":"D","key":"a","value":{"object":"D2"}},{"call":"D","method":"Lookup","args":["b",5]},
          {"get":"D","property":"Count"})",
       {R"({"step":2,"raised":"there is no object named 'D2'"})", R"({"step":3,"value":1})",
        R"({"step":4,"value":1})"}},
      {"a result is named",
       2,
       R"({"new":"V","class":"RNX.Vector"},{"call":"V","method":"Add","args":[{"dictionary":{"x":1}}]},
          {"call":"V","method":"Item","args":[0],"as":"D"},{"put":"D","key":"x","value":2.5},
          {"get":"V","property":"Count"},{"call":"V","method":"Item","args":[0]})",
       {R"({"step":2,"value":{"dictionary":{"x":1}}})", R"({"step":3})", R"({"step":4,"value":1})",
        R"({"step":5,"value":{"dictionary":{"x":2.5}}})"}},
      {"other objects are written by name",
       1,
       R"({"new":"S","class":"Test.Shower"},{"new":"V","class":"RNX.Vector"},
          {"call":"V","method":"Add","args":[{"object":"S"}]},{"call":"V","method":"Item","args":[0]},
          {"release":"S"},{"call":"V","method":"Item","args":[0]})",
       {R"({"step":1})", R"({"step":2})", R"({"step":3,"value":{"object":"S"}})", R"({"step":4})",
        R"({"step":5,"value":{"object":"?","class":"Test.Shower"}})"}},
      {"a property is written",
       1,
       R"({"new":"R","class":"TOVPlatform.Recordset"},{"call":"R","method":"AppendField","args":["A","text",{"missing":true}]},
          {"call":"R","method":"Open"},{"put":"R","property":"Filter","value":"A = 'x'"},{"get":"R","property":"Filter"})",
       {R"({"step":1})", R"({"step":2})", R"({"step":3})", R"({"step":4,"value":"A = 'x'"})"}},
      {"a name that nothing was given",
       0,
       R"({"call":"X","method":"M"},{"release":"X"})",
       {R"({"step":0,"raised":"there is no object named 'X'"})",
        R"({"step":1,"raised":"there is no object named 'X'"})"}},
      {"a class that nobody serves",
       0,
       R"({"new":"X","class":"No.Such"})",
       {R"({"step":0,"raised":"class not registered: No.Such"})"}},
      {"keys are for dictionaries",
       1,
       R"({"new":"V","class":"RNX.Vector"},{"put":"V","key":"k","value":1})",
       {R"({"step":1,"raised":"V is no dictionary, and only one has keys"})"}},
      {"a result that is no object leaves the name empty",
       2,
       R"({"new":"V","class":"RNX.Vector"},{"get":"V","property":"Count","as":"N"},{"call":"N","method":"M"})",
       {R"({"step":2,"raised":"'N' stands for nothing"})"}},
  });
}

TEST(PlayerStep, SetsProcessValues) {
  Check({
      {"empty to begin with", 0, R"({"get_process":"AppType"})", {R"({"step":0,"value":null})"}},
      {"values add up",
       2,
       R"({"process":{"AppType":1}},{"process":{"X":"y"}},{"get_process":"apptype"},{"get_process":"X"})",
       {R"({"step":2,"value":1})", R"({"step":3,"value":"y"})"}},
      {"the store is removed",
       1,
       R"({"process":{"AppType":1}},{"process":null},{"get_process":"AppType"})",
       {R"({"step":1})", R"({"step":2,"value":null})"}},
      {"and made anew",
       2,
       R"({"process":null},{"process":{"A":true}},{"get_process":"A"})",
       {R"({"step":2,"value":true})"}},
  });
}

TEST(PlayerStep, ServesTheSession) {
  Check({
      {"properties of the process",
       2,
       R"({"session":{"UserID":12}},{"new":"P","class":"TOVPropsMgr.ShareProps"},
          {"call":"P","method":"GetProperty","args":[1,"PropsString"]},{"call":"P","method":"GetProperty","args":[1,"userid"]},
          {"call":"P","method":"GetProperty","args":[1,"None"]})",
       {R"({"called":"TOVPropsMgr.ShareProps","method":"GetProperty","args":[1,"PropsString"]})",
        R"({"step":2,"value":"UserID=12;"})",
        R"({"called":"TOVPropsMgr.ShareProps","method":"GetProperty","args":[1,"userid"]})",
        R"({"step":3,"value":12})",
        R"({"called":"TOVPropsMgr.ShareProps","method":"GetProperty","args":[1,"None"]})", R"({"step":4})"}},
      {"the cache",
       2,
       R"({"session":{"UserID":12,"PropsString":"A=1"}},{"new":"C","class":"TOVMtsCacheService.CacheFacade"},
          {"call":"C","method":"GetItem","args":[1,"IsOuterLogin"]},{"outer_login":1},
          {"call":"C","method":"GetItem","args":[1,"IsOuterLogin"]},{"call":"C","method":"GetItem","args":[1,"PropsString"]})",
       {R"({"called":"TOVMtsCacheService.CacheFacade","method":"GetItem","args":[1,"IsOuterLogin"]})",
        R"({"step":2,"value":0})", R"({"step":3})",
        R"({"called":"TOVMtsCacheService.CacheFacade","method":"GetItem","args":[1,"IsOuterLogin"]})",
        R"({"step":4,"value":1})",
        R"({"called":"TOVMtsCacheService.CacheFacade","method":"GetItem","args":[1,"PropsString"]})",
        R"({"step":5,"value":"A=1"})"}},
      {"created and released",
       0,
       R"({"new":"P","class":"tovpropsmgr.shareprops"},{"release":"P"})",
       {R"({"created":"TOVPropsMgr.ShareProps"})", R"({"step":0})",
        R"({"released":"TOVPropsMgr.ShareProps"})", R"({"step":1})"}},
  });
}

TEST(PlayerStep, ServesTheProfileAndRights) {
  Check({
      {"what is set and what is not",
       2,
       R"({"profile":{"IC/StartYear":2024}},{"new":"P","class":"TOVEBSBase.SystemProfile"},
          {"call":"P","method":"GetProfile","args":["","ic","startyear"]},
          {"call":"P","method":"GetProfile","args":["","IC","Other"]},
          {"call":"P","method":"GetSystemProfile","args":["IC","Other",5]})",
       {R"({"called":"TOVEBSBase.SystemProfile","method":"GetProfile","args":["","ic","startyear"]})",
        R"({"step":2,"value":2024})",
        R"({"called":"TOVEBSBase.SystemProfile","method":"GetProfile","args":["","IC","Other"]})",
        R"({"step":3,"value":{"dbnull":true}})",
        R"({"called":"TOVEBSBase.SystemProfile","method":"GetSystemProfile","args":["IC","Other",5]})",
        R"({"step":4,"value":5})"}},
      {"handed out by the general ledger",
       1,
       R"({"new":"G","class":"TOVEBCGLView.GLData"},{"get":"G","property":"SystemProfile","as":"P"},{"release":"P"},
          {"call":"G","method":"AccessCheck","args":[1006,2,4]},{"call":"G","method":"Refresh"},
          {"call":"G","method":"GLGetPeriodDate","args":[2024,3]},{"call":"G","method":"GetAuthItemClassList"})",
       {R"({"got":"TOVEBCGLView.GLData","property":"SystemProfile"})", R"({"step":1,"value":{"object":"P"}})",
        R"({"step":2})", R"({"called":"TOVEBCGLView.GLData","method":"AccessCheck","args":[1006,2,4]})",
        R"({"step":3,"value":true})", R"({"called":"TOVEBCGLView.GLData","method":"Refresh","args":[]})",
        R"({"step":4})", R"({"called":"TOVEBCGLView.GLData","method":"GLGetPeriodDate","args":[2024,3]})",
        R"({"step":5,"value":{"date":"2024-03-01"}})",
        R"({"called":"TOVEBCGLView.GLData","method":"GetAuthItemClassList","args":[]})",
        R"({"step":6,"value":""})"}},
      {"rights",
       3,
       R"({"need_right":true},{"right_classes":"1,5"},{"new":"S","class":"TOVEBSBase.SecurityInfo"},
          {"call":"S","method":"NeedAutorized","args":["x"]})",
       {R"({"called":"TOVEBSBase.SecurityInfo","method":"NeedAutorized","args":["x"]})",
        R"({"step":3,"value":true})"}},
  });
}

constexpr const char* kOneRow = R"({"recordset":{"fields":[["A","integer"]],"rows":[[1]],"position":1}})";

TEST(PlayerStep, AnswersSqlTexts) {
  const std::string sql =
      std::string(R"({"sql":[{"contains":"iccalflag","rows":)") + kOneRow +
      R"(},{"contains":"bad","rows":{"raises":"坏了"}}]},{"new":"C","class":"TOVMAppConnection.AppConnection"},)";
  Check({
      {"without regard to case, afresh each time",
       2,
       (sql + R"({"call":"C","method":"Execute","args":["p","Select 1 From ICCalFlag"],"as":"R"},
          {"call":"R","method":"MoveNext"},{"call":"C","method":"Execute","args":["p","ICCALFLAG"]})")
           .c_str(),
       {R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","Select 1 From ICCalFlag"]})",
        R"({"sql":"Select 1 From ICCalFlag"})", std::string(R"({"step":2,"value":)") + kOneRow + "}",
        R"({"step":3})",
        R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","ICCALFLAG"]})",
        R"({"sql":"ICCALFLAG"})", std::string(R"({"step":4,"value":)") + kOneRow + "}"}},
      {"a text that fails, and one without an answer",
       2,
       (sql +
        R"({"call":"C","method":"Execute","args":["p","bad"]},{"call":"C","method":"Execute","args":["p","x"]})")
           .c_str(),
       {R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","bad"]})",
        R"({"sql":"bad"})", R"({"step":2,"raised":"坏了"})",
        R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","x"]})",
        R"({"sql":"x"})", R"({"step":3,"raised":"the script has no answer for this SQL text"})"}},
      {"a later list replaces the first",
       3,
       (sql + R"({"sql":[]},{"call":"C","method":"Execute","args":["p","iccalflag"]})").c_str(),
       {R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","iccalflag"]})",
        R"({"sql":"iccalflag"})", R"({"step":3,"raised":"the script has no answer for this SQL text"})"}},
      {"class information",
       1,
       R"({"sql":[{"contains":"t_Stock","rows":{"recordset":{"fields":[["N","integer"]],"rows":[[3]]}}}]},
          {"new":"I","class":"TOVMClass.ClassInfo"},{"call":"I","method":"GetData","args":["p","select N from t_stock"]})",
       {R"({"created":"TOVMClass.ClassInfo"})", R"({"step":1})",
        R"({"called":"TOVMClass.ClassInfo","method":"GetData","args":["p","select N from t_stock"]})",
        R"({"sql":"select N from t_stock"})",
        R"({"step":2,"value":{"recordset":{"fields":[["N","integer"]],"rows":[[3]],"position":1}}})"}},
  });
}

TEST(PlayerStep, AnswersLookupsFromThePicks) {
  const std::string view = R"({"new":"V","class":"TOVEBCGLView.GLView"},)";
  Check({
      {"picked, then cancelled, then without a pick",
       3,
       (view + R"({"pick":{"dictionary":{"Number":"01.02","FShortNumber":"02","Detail":true}}},{"pick":null},
          {"call":"V","method":"ItemLookUp","args":[4,"0","f",{"dictionary":{}}],"as":"L"},
          {"get":"L","property":"ReturnObject","as":"O"},{"get":"O","property":"Number"},
          {"get":"O","property":"FShortNumber"},{"get":"O","property":"Detail"},
          {"call":"V","method":"AccountLookup","args":["t"]},{"call":"V","method":"UnitLookup","args":[3,"u"]})")
           .c_str(),
       {R"({"called":"TOVEBCGLView.GLView","method":"ItemLookUp","args":[4,"0","f",{"dictionary":{}}]})",
        R"({"lookup":{"kind":"ItemLookUp","type":4,"text":"0","filter":"f"}})",
        R"({"step":3,"value":{"object":"L"}})", R"({"step":4,"value":{"object":"O"}})",
        R"({"step":5,"value":"01.02"})", R"({"step":6,"value":"02"})", R"({"step":7,"value":true})",
        R"({"called":"TOVEBCGLView.GLView","method":"AccountLookup","args":["t"]})",
        R"({"lookup":{"kind":"AccountLookup","type":13,"text":"t","filter":""}})",
        R"({"step":8,"value":{"nothing":true}})",
        R"({"called":"TOVEBCGLView.GLView","method":"UnitLookup","args":[3,"u"]})",
        R"({"lookup":{"kind":"UnitLookup","type":7,"text":"u","filter":"3"}})",
        R"({"step":9,"value":{"nothing":true}})"}},
      {"the other kinds",
       1,
       (view +
        R"({"call":"V","method":"CurrencyLookup","args":["a"]},{"call":"V","method":"SettTypeLookup","args":["b"]},
          {"call":"V","method":"SubMesLookup","args":[20,"c"]})")
           .c_str(),
       {R"({"called":"TOVEBCGLView.GLView","method":"CurrencyLookup","args":["a"]})",
        R"({"lookup":{"kind":"CurrencyLookup","type":12,"text":"a","filter":""}})",
        R"({"step":1,"value":{"nothing":true}})",
        R"({"called":"TOVEBCGLView.GLView","method":"SettTypeLookup","args":["b"]})",
        R"({"lookup":{"kind":"SettTypeLookup","type":130,"text":"b","filter":""}})",
        R"({"step":2,"value":{"nothing":true}})",
        R"({"called":"TOVEBCGLView.GLView","method":"SubMesLookup","args":[20,"c"]})",
        R"({"lookup":{"kind":"SubMesLookup","type":20,"text":"c","filter":""}})",
        R"({"step":3,"value":{"nothing":true}})"}},
      {"the batch list",
       2,
       R"({"pick":{"recordset":{"fields":[["FBatchNo","text"]],"rows":[["B7"]]}}},{"new":"L","class":"TOVBaseList.BaseList"},
          {"put":"L","property":"FilterItem","value":""},{"put":"L","property":"Filter","value":"t1.FItemID=1"},
          {"put":"L","property":"KeyWord","value":"B"},{"call":"L","method":"Show","args":[1]})",
       {R"({"put":"TOVBaseList.BaseList","property":"FilterItem","value":""})", R"({"step":2})",
        R"({"put":"TOVBaseList.BaseList","property":"Filter","value":"t1.FItemID=1"})", R"({"step":3})",
        R"({"put":"TOVBaseList.BaseList","property":"KeyWord","value":"B"})", R"({"step":4})",
        R"({"called":"TOVBaseList.BaseList","method":"Show","args":[1]})",
        R"({"lookup":{"kind":"BaseList","type":21,"text":"B","filter":"t1.FItemID=1"}})",
        R"({"step":5,"value":{"recordset":{"fields":[["FBatchNo","text"]],"rows":[["B7"]],"position":1}}})"}},
      {"a pick of the wrong kind",
       2,
       (view + R"({"pick":"01"},{"call":"V","method":"AccountLookup","args":["t"]})").c_str(),
       {R"({"called":"TOVEBCGLView.GLView","method":"AccountLookup","args":["t"]})",
        R"({"lookup":{"kind":"AccountLookup","type":13,"text":"t","filter":""}})",
        R"({"step":2,"raised":"a pick of base data is a dictionary with \"Number\", \"FShortNumber\" and \"Detail\""})"}},
  });
}

TEST(PlayerStep, RecordsUsageAndCost) {
  Check({
      {"usage",
       1,
       R"({"new":"F","class":"VEZ_APFC.FrameData"},{"put":"F","property":"PropString","value":"UserID=1;"},
          {"call":"F","method":"WriteMGLog","args":["C001C032","RPT1042201"]})",
       {R"({"put":"VEZ_APFC.FrameData","property":"PropString","value":"UserID=1;"})", R"({"step":1})",
        R"({"called":"VEZ_APFC.FrameData","method":"WriteMGLog","args":["C001C032","RPT1042201"]})",
        R"({"usage":["C001C032","RPT1042201"]})", R"({"step":2})"}},
      {"cost",
       1,
       R"({"new":"C","class":"TOVCalCostByStock.InterFace"},{"call":"C","method":"QuickCalculate","args":[{"object":"C"},false]})",
       {R"({"called":"TOVCalCostByStock.InterFace","method":"QuickCalculate","args":[{"object":"C"},false]})",
        R"({"step":1})"}},
      {"base data without a book",
       1,
       R"({"new":"I","class":"TOVebsglitem.ItemInfo"},{"call":"I","method":"GetList","args":["p",5]})",
       {R"({"called":"TOVebsglitem.ItemInfo","method":"GetList","args":["p",5]})",
        R"({"step":1,"raised":"the script has no list of base data; describe TOVebsglitem.ItemInfo in a component step"})"}},
      {"a book without a player that opens any",
       0,
       R"({"book":"x.db"})",
       {R"({"step":0,"raised":"this player opens no books"})"}},
  });
}

}  // namespace
