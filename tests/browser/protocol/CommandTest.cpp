// The reader of the page's messages: what it takes, and for everything else the code that it refuses with.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "browser/protocol/Command.h"

namespace browser {
namespace {

struct Taken {
  const char* name;
  std::string text;
  std::string type;
  When when;
};

TEST(Command, TakesDeclaredMessages) {
  const std::vector<Taken> cases = {
      {"no fields", R"({"type":"listReports"})", "listReports", When::kAny},
      {"number", R"({"id":7,"type":"refresh","report":1})", "refresh", When::kIdle},
      {"optional left out", R"({"type":"hello","token":"t","protocol":1})", "hello", When::kFirst},
      {"text map", R"({"type":"openReport","programmaticId":"a","filter":{"BItemNumber":"01"}})",
       "openReport", When::kIdle},
      {"value of a text", R"({"type":"setValue","form":1,"control":"c","value":"01"})", "setValue",
       When::kForm},
      {"value of a flag", R"({"type":"setValue","form":1,"control":"c","value":true})", "setValue",
       When::kForm},
      {"value of a number", R"({"type":"setValue","form":1,"control":"c","value":2})", "setValue",
       When::kForm},
      {"word", R"({"type":"answer","message":1,"answer":"yes"})", "answer", When::kMessage},
      {"sort keys", R"({"type":"setView","report":1,"sort":[{"field":"FQty","descending":true}]})", "setView",
       When::kAny},
      {"export", R"({"type":"exportReport","report":1,"format":"pdf","fields":["FQty"],"emptyForZero":true})",
       "exportReport", When::kIdle},
      {"any value", R"({"type":"setPreference","key":"k","value":{"a":[1,null]}})", "setPreference",
       When::kAny},
  };
  for (const Taken& one : cases) {
    SCOPED_TRACE(one.name);
    const Command command = ReadCommand(one.text);
    EXPECT_EQ(command.type, one.type);
    EXPECT_EQ(command.when, one.when);
  }
}

struct Refused {
  const char* name;
  std::string text;
  std::string code;
};

TEST(Command, RefusesEverythingElse) {
  const std::vector<Refused> cases = {
      {"nothing", "", "malformed"},
      {"no JSON", "hello", "malformed"},
      {"cut off", R"({"type":"ping")", "malformed"},
      {"text after it", R"({"type":"ping"} x)", "malformed"},
      {"a list", "[1]", "malformed"},
      {"no type", R"({"id":1})", "malformed"},
      {"type is no text", R"({"type":1})", "malformed"},
      {"bad bytes", "{\"type\":\"\xff\"}", "malformed"},
      {"too deep",
       R"({"type":"setPreference","key":"k","value":)" + std::string(100, '[') + std::string(100, ']') + "}",
       "malformed"},
      {"too large", R"({"type":"setPreference","key":")" + std::string(kLargestCommand, 'x') + "\"}",
       "malformed"},
      {"unknown command", R"({"type":"shutDown"})", "unknown"},
      {"other case", R"({"type":"Ping"})", "unknown"},
      {"message of the other side", R"({"type":"welcome"})", "unknown"},
      {"id is no number", R"({"type":"ping","id":"1"})", "fields"},
      {"id below 1", R"({"type":"ping","id":0})", "fields"},
      {"missing field", R"({"type":"refresh"})", "fields"},
      {"text for a number", R"({"type":"refresh","report":"1"})", "fields"},
      {"fraction for a number", R"({"type":"refresh","report":1.5})", "fields"},
      {"number too large", R"({"type":"refresh","report":2147483648})", "fields"},
      {"null for a text", R"({"type":"getPreference","key":null})", "fields"},
      {"field that is not declared", R"({"type":"refresh","report":1,"sql":"x"})", "fields"},
      {"word that is not declared", R"({"type":"answer","message":1,"answer":"maybe"})", "fields"},
      {"two words at once", R"({"type":"answer","message":1,"answer":"ok|cancel"})", "fields"},
      {"numbers in a list of texts", R"({"type":"fetchRows","report":1,"start":0,"count":1,"fields":[1]})",
       "fields"},
      {"sort key with more",
       R"({"type":"setView","report":1,"sort":[{"field":"a","descending":true,"x":1}]})", "fields"},
      {"filter of numbers", R"({"type":"openReport","programmaticId":"a","filter":{"k":1}})", "fields"},
  };
  for (const Refused& one : cases) {
    SCOPED_TRACE(one.name);
    try {
      ReadCommand(one.text);
      ADD_FAILURE() << "taken";
    } catch (const RefusedMessage& refused) {
      EXPECT_EQ(refused.Code(), one.code) << refused.what();
    }
  }
}

TEST(Command, ARefusalNamesTheCommandWhenItCanBeRead) {
  try {
    ReadCommand(R"({"type":"refresh","id":12})");
    FAIL() << "taken";
  } catch (const RefusedMessage& refused) {
    EXPECT_EQ(refused.Id(), 12);
  }
}

TEST(Command, MessagesReplaceBytesThatAreNoText) {
  Json message = Message("error", 3);
  message["text"] = "\xff";
  EXPECT_EQ(ToText(message), "{\"type\":\"error\",\"re\":3,\"text\":\"\xEF\xBF\xBD\"}");
}

}  // namespace
}  // namespace browser
