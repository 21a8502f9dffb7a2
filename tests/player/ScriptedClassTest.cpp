// Object classes that a script describes.
#include <gtest/gtest.h>

#include "tests/player/Played.h"

namespace {

using player_tests::PlayedFrom;

struct Case {
  const char* name;
  std::size_t from;
  const char* steps;
  std::vector<std::string> lines;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(PlayedFrom(c.from, c.steps), c.lines);
  }
}

TEST(PlayerScriptedClass, AnswersCalls) {
  Check({
      {"created, called, released",
       1,
       R"({"component":"A.B","methods":{"M":{"returns":7},"N":{}}},{"new":"X","class":"a.b"},
          {"call":"X","method":"m","args":[1,"x"]},{"call":"X","method":"N"},{"release":"X"})",
       {R"({"created":"A.B"})", R"({"step":1})", R"({"called":"A.B","method":"m","args":[1,"x"]})",
        R"({"step":2,"value":7})", R"({"called":"A.B","method":"N","args":[]})", R"({"step":3})",
        R"({"released":"A.B"})", R"({"step":4})"}},
      {"the last answer repeats, counted over all objects",
       3,
       R"({"component":"A.B","methods":{"M":[{"returns":1},{"returns":2}]}},{"new":"X","class":"A.B"},{"new":"Y","class":"A.B"},
          {"call":"X","method":"M"},{"call":"Y","method":"M"},{"call":"X","method":"M"})",
       {R"({"called":"A.B","method":"M","args":[]})", R"({"step":3,"value":1})",
        R"({"called":"A.B","method":"M","args":[]})", R"({"step":4,"value":2})",
        R"({"called":"A.B","method":"M","args":[]})", R"({"step":5,"value":2})"}},
      {"a later description counts anew, also for old objects",
       3,
       R"({"component":"A.B","methods":{"M":[{"returns":1},{"returns":2}]}},{"new":"X","class":"A.B"},{"call":"X","method":"M"},
          {"component":"A.B","methods":{"M":[{"returns":8},{"returns":9}]}},{"call":"X","method":"M"})",
       {R"({"step":3})", R"({"called":"A.B","method":"M","args":[]})", R"({"step":4,"value":8})"}},
      {"answers are built afresh",
       3,
       R"({"component":"A.B","methods":{"M":{"returns":{"recordset":{"fields":[["A","integer"]],"rows":[[1],[2]]}}}}},
          {"new":"X","class":"A.B"},{"call":"X","method":"M","as":"R"},{"call":"R","method":"MoveLast"},{"call":"X","method":"M"})",
       {R"({"step":3})", R"({"called":"A.B","method":"M","args":[]})",
        R"({"step":4,"value":{"recordset":{"fields":[["A","integer"]],"rows":[[1],[2]],"position":1}}})"}},
      {"an answer is a named object",
       2,
       R"({"component":"A.B","methods":{"M":{"returns":{"object":"X"}}}},{"new":"X","class":"A.B"},{"call":"X","method":"M"})",
       {R"({"called":"A.B","method":"M","args":[]})", R"({"step":2,"value":{"object":"X"}})"}},
      {"an error with its text unchanged",
       2,
       R"({"component":"A.B","methods":{"M":{"raises":"没有权限 "}}},{"new":"X","class":"A.B"},{"call":"X","method":"M"})",
       {R"({"called":"A.B","method":"M","args":[]})", R"({"step":2,"raised":"没有权限 "})"}},
      {"a method that is not described",
       2,
       R"({"component":"A.B"},{"new":"X","class":"A.B"},{"call":"X","method":"M"})",
       {R"({"called":"A.B","method":"M","args":[]})",
        R"({"step":2,"raised":"A.B.M: the script describes no such method"})"}},
  });
}

TEST(PlayerScriptedClass, HasProperties) {
  Check({
      {"read, written and read again",
       2,
       R"({"component":"A.B","properties":{"P":5}},{"new":"X","class":"A.B"},{"get":"X","property":"P"},
          {"put":"X","property":"p","value":6},{"get":"X","property":"P"},{"put":"X","property":"Q","value":1},{"get":"X","property":"Q"})",
       {R"({"got":"A.B","property":"P"})", R"({"step":2,"value":5})",
        R"({"put":"A.B","property":"p","value":6})", R"({"step":3})", R"({"got":"A.B","property":"P"})",
        R"({"step":4,"value":6})", R"({"put":"A.B","property":"Q","value":1})", R"({"step":5})",
        R"({"got":"A.B","property":"Q"})", R"({"step":6,"value":1})"}},
      {"one that is not described",
       2,
       R"({"component":"A.B"},{"new":"X","class":"A.B"},{"get":"X","property":"P"})",
       {R"({"got":"A.B","property":"P"})",
        R"({"step":2,"raised":"A.B.P: the script describes no such property"})"}},
  });
}

TEST(PlayerScriptedClass, StandsBeforeOtherClasses) {
  Check({
      {"a service",
       1,
       R"({"component":"TOVEBSBase.SecurityInfo","methods":{"NeedAutorized":{"raises":"down"}}},
          {"new":"S","class":"TOVEBSBase.SecurityInfo"},{"call":"S","method":"NeedAutorized","args":["p"]})",
       {R"({"created":"TOVEBSBase.SecurityInfo"})", R"({"step":1})",
        R"({"called":"TOVEBSBase.SecurityInfo","method":"NeedAutorized","args":["p"]})",
        R"({"step":2,"raised":"down"})"}},
      {"a service that is there already",
       1,
       R"({"new":"G","class":"TOVEBCGLView.GLData"},{"component":"TOVEBCGLView.GLData","methods":{"AccessCheck":{"raises":"no"}}},
          {"call":"G","method":"AccessCheck","args":[1006,2,4]},{"release":"G"})",
       {R"({"step":1})", R"({"called":"TOVEBCGLView.GLData","method":"AccessCheck","args":[1006,2,4]})",
        R"({"step":2,"raised":"no"})", R"({"released":"TOVEBCGLView.GLData"})", R"({"step":3})"}},
      {"the profile that a service hands out",
       2,
       R"({"component":"TOVEBSBase.SystemProfile","methods":{"GetSystemProfile":{"returns":9}}},{"new":"G","class":"TOVEBCGLView.GLData"},
          {"get":"G","property":"SystemProfile","as":"P"},{"call":"P","method":"GetSystemProfile","args":["IC","X",0]},{"release":"P"})",
       {R"({"got":"TOVEBCGLView.GLData","property":"SystemProfile"})", R"({"step":2,"value":{"object":"P"}})",
        R"({"called":"TOVEBSBase.SystemProfile","method":"GetSystemProfile","args":["IC","X",0]})",
        R"({"step":3,"value":9})", R"({"step":4})"}},
      {"what a call means is told all the same",
       1,
       R"({"component":"TOVMAppConnection.AppConnection","methods":{"Execute":{"raises":"offline"}}},
          {"new":"C","class":"TOVMAppConnection.AppConnection"},{"call":"C","method":"Execute","args":["p","select 1"]})",
       {R"({"created":"TOVMAppConnection.AppConnection"})", R"({"step":1})",
        R"({"called":"TOVMAppConnection.AppConnection","method":"Execute","args":["p","select 1"]})",
        R"({"sql":"select 1"})", R"({"step":2,"raised":"offline"})"}},
      {"the foundation's own",
       1,
       R"({"component":"RNX.Vector","methods":{"Count":{"returns":3}}},{"new":"V","class":"RNX.Vector"},{"call":"V","method":"Count"})",
       {R"({"created":"RNX.Vector"})", R"({"step":1})",
        R"({"called":"RNX.Vector","method":"Count","args":[]})", R"({"step":2,"value":3})"}},
  });
}

TEST(PlayerScriptedClass, GivesArgumentsBack) {
  Check({
      {"after a call",
       2,
       R"({"component":"A.B","methods":{"M":{"args":{"0":{"dictionary":{"k":1}},"7":2}}}},
          {"new":"S","class":"Test.Shower"},{"call":"S","method":"Relay","args":["A.B"]})",
       {R"({"created":"A.B"})", R"({"called":"A.B","method":"M","args":["in"]})", R"({"released":"A.B"})",
        R"({"step":2,"value":{"dictionary":{"k":1}}})"}},
      {"also when it raises",
       2,
       R"({"component":"A.B","methods":{"M":{"args":{"0":5},"raises":"x"}}},
          {"new":"S","class":"Test.Shower"},{"call":"S","method":"Relay","args":["A.B"]})",
       {R"({"created":"A.B"})", R"({"called":"A.B","method":"M","args":["in"]})", R"({"released":"A.B"})",
        R"({"step":2,"value":5})"}},
      {"without one it stays",
       2,
       R"({"component":"A.B","methods":{"M":{}}},{"new":"S","class":"Test.Shower"},{"call":"S","method":"Relay","args":["A.B"]})",
       {R"({"created":"A.B"})", R"({"called":"A.B","method":"M","args":["in"]})", R"({"released":"A.B"})",
        R"({"step":2,"value":"in"})"}},
  });
}

}  // namespace
