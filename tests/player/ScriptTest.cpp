// Scripts that cannot be read: the exit status, the line and the reason.
#include <gtest/gtest.h>

#include "tests/player/Played.h"

namespace {

using player_tests::Played;
using player_tests::Refusal;

TEST(PlayerScript, PlaysAnEmptyScript) { EXPECT_TRUE(Played("").empty()); }

TEST(PlayerScript, RefusesWhatItCannotRead) {
  struct Case {
    const char* name;
    const char* script;
    const char* line;
    const char* reason;
  };
  const Case kCases[] = {
      {"nothing at all", "", "line 1:", "unexpected"},
      {"no JSON", "[\n{\"new\":}\n]", "line 2:", "syntax error"},
      {"text left after the end", "[]\n]", "line 2:", "syntax error"},
      {"no list", "{}", "line 1:", "list of steps"},
      {"a step that is a text", "[\n{\"answer\":\"ok\"},\n\"x\"]", "line 2:", "a step is an object"},
      {"unknown step", "[\n\n{\"nwe\":\"R\",\"class\":\"C\"}]", "line 3:", "no such step"},
      {"unknown key", "[{\"new\":\"R\",\"class\":\"C\",\"as\":\"X\"}]", "line 1:", "no key 'as'"},
      {"key left out", "[{\"new\":\"R\"}]", "line 1:", "needs the key 'class'"},
      {"text for a list", "[{\"call\":\"R\",\"method\":\"M\",\"args\":\"x\"}]", "line 1:", "list of values"},
      {"number for a text", "[{\"release\":5}]", "line 1:", "a text is needed"},
      {"value that is none", "[\n{\"session\":{\"UserID\":[1]}}]", "line 2:", "UserID"},
      {"text for a number", "[{\"outer_login\":\"1\"}]", "line 1:", "a number is needed"},
      {"number for a boolean", "[{\"need_right\":1}]", "line 1:", "true or false"},
      {"day that does not exist", "[{\"clock\":\"2024-02-30\"}]", "line 1:", "2024-03-31"},
      {"answer that no box has", "[{\"answer\":\"maybe\"}]", "line 1:", "ok, cancel, yes, no"},
      {"put of nothing", "[{\"put\":\"D\",\"value\":1}]", "line 1:", "either"},
      {"put of both", "[{\"put\":\"D\",\"key\":\"a\",\"property\":\"b\",\"value\":1}]", "line 1:", "either"},
      {"sql answer without rows", "[{\"sql\":[{\"contains\":\"x\"}]}]", "line 1:", "contains"},
      {"sql rows that are none", "[{\"sql\":[{\"contains\":\"x\",\"rows\":1}]}]", "line 1:", "recordset"},
      {"answers without one", "[{\"component\":\"A.B\",\"methods\":{\"M\":[]}}]", "line 1:", "empty"},
      {"answer with another key", "[{\"component\":\"A.B\",\"methods\":{\"M\":{\"return\":1}}}]",
       "line 1:", "no key 'return'"},
      {"argument without a position", "[{\"component\":\"A.B\",\"methods\":{\"M\":{\"args\":{\"x\":1}}}}]",
       "line 1:", "position"},
      {"actions that are no list", "[{\"dialog\":{}}]", "line 1:", "list of actions"},
      {"unknown action", "[\n{\"dialog\":[\n{\"click\":\"a\"},\n{\"clik\":\"b\"}]}]",
       "line 4:", "no such action"},
      {"action with another key", "[{\"dialog\":[\n{\"set\":\"a\",\"to\":1,\"on\":2}]}]",
       "line 2:", "no key 'on'"},
      {"action without its key", "[{\"dialog\":[\n{\"set\":\"a\"}]}]", "line 2:", "needs the key 'to'"},
      {"key that is none", "[{\"dialog\":[{\"key\":\"F77\",\"on\":\"a\"}]}]", "line 1:", "F7, F8"},
      {"word that is none", "[{\"dialog\":[{\"control\":\"okay\"}]}]", "line 1:", "one of ok"},
      {"result on a cancel", "[{\"dialog\":[{\"control\":\"cancel\",\"result\":1}]}]",
       "line 1:", "no key 'result'"},
      {"result and error", "[{\"dialog\":[{\"control\":\"ok\",\"result\":1,\"raises\":\"x\"}]}]",
       "line 1:", "not both"},
      {"save without a name", "[{\"dialog\":[{\"control\":\"save\"}]}]", "line 1:", "'scheme'"},
      {"close with false", "[{\"dialog\":[{\"close\":false}]}]", "line 1:", "true is needed"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    int status = 0;
    const std::string refusal = Refusal(c.script, status);
    EXPECT_EQ(status, 2);
    EXPECT_TRUE(refusal.starts_with(c.line)) << refusal;
    EXPECT_NE(refusal.find(c.reason), std::string::npos) << refusal;
  }
}

TEST(PlayerScript, RunsNothingOfAScriptThatItCannotRead) {
  const auto lines = Played(R"({"new":"D","class":"RNX.Dictionary"},{"oops":1})");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with("exit status 2"));
}

}  // namespace
