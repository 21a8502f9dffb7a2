// Values in their JSON forms, both ways.
#include <gtest/gtest.h>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "player/Json.h"

namespace {

using platform::Currency;
using platform::Date;
using platform::Dictionary;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;
using player::FromJson;
using player::Json;
using player::ToJson;
using player::ToLine;
using player::WhyNoValue;

TEST(PlayerJson, WritesAndReadsEveryForm) {
  struct Case {
    const char* name;
    const char* json;
    Variant value;
  };
  const Case kCases[] = {
      {"text", R"("商品\"'")", "商品\"'"},
      {"true", "true", true},
      {"integer", "-7", std::int32_t{-7}},
      {"most of 32 bits", "2147483647", std::int32_t{2147483647}},
      {"more than 32 bits", "2147483648", std::int64_t{2147483648}},
      {"whole double", "7.0", 7.0},
      {"a tenth", "0.1", 0.1},
      {"a double that needs all its digits", "0.30000000000000004", 0.1 + 0.2},
      {"great double", "1e+300", 1e300},
      {"smallest double", "5e-324", 5e-324},
      {"empty", "null", Variant()},
      {"day", R"({"date":"2024-03-02"})", Date::Of(2024, 3, 2)},
      {"day with time", R"({"date":"2024-03-02 13:30:00"})", Date::Of(2024, 3, 2, 13, 30)},
      {"currency", R"({"currency":"12.3400"})", Currency::FromUnits(123400)},
      {"negative currency", R"({"currency":"-0.0001"})", Currency::FromUnits(-1)},
      {"database null", R"({"dbnull":true})", platform::Null{}},
      {"nothing", R"({"nothing":true})", nullptr},
      {"left out", R"({"missing":true})", platform::Missing{}},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const Json json = Json::parse(c.json);
    EXPECT_EQ(WhyNoValue(json), std::nullopt);
    EXPECT_TRUE(FromJson(json) == c.value);
    EXPECT_EQ(ToLine(ToJson(c.value)), c.json);
    EXPECT_TRUE(FromJson(ToJson(c.value)) == c.value);
  }
}

TEST(PlayerJson, WritesNarrowIntegersAsIntegers) { EXPECT_EQ(ToLine(ToJson(Variant(std::int16_t{6}))), "6"); }

TEST(PlayerJson, WritesContainersByContent) {
  const char* kForms[] = {
      R"({"dictionary":{}})",
      R"({"dictionary":{"b":1,"a":{"dictionary":{"x":null}},"中":{"vector":[1,"2"]}}})",
      R"({"vector":[{"nothing":true},{"vector":[]}]})",
      R"({"recordset":{"fields":[["FItemID","integer"],["FQty","double"]],"rows":[[1,2.5],[2,{"dbnull":true}]],"position":1}})",
      R"({"recordset":{"fields":[["A","text"],["B","smallint"],["C","numeric"],["D","currency"],["E","date"],["F","boolean"]],"rows":[["x",1,2.0,{"currency":"3.0000"},{"date":"2024-01-01"},true]],"position":1}})",
      R"({"recordset":{"fields":[["A","text"]],"rows":[["x"],["y"]],"position":2}})",
      R"({"recordset":{"fields":[["A","text"]],"rows":[["x"]],"position":0}})",
      R"({"recordset":{"fields":[["A","text"]],"rows":[["x"]],"position":-1}})",
      R"({"recordset":{"fields":[["A","text"]],"rows":[],"position":-1}})",
  };
  for (const char* form : kForms) {
    SCOPED_TRACE(form);
    EXPECT_EQ(WhyNoValue(Json::parse(form)), std::nullopt);
    EXPECT_EQ(ToLine(ToJson(FromJson(Json::parse(form)))), form);
  }
}

TEST(PlayerJson, KeepsTheCursorWhereItStands) {
  const auto rows =
      FromJson(Json::parse(R"({"recordset":{"fields":[["A","text"]],"rows":[["x"],["y"],["z"]]}})"))
          .AsRef<Recordset>();
  rows->MoveNext();
  ToJson(Variant(rows));
  EXPECT_EQ(rows->Value("A"), Variant("y"));
}

TEST(PlayerJson, ShowsWhatPassesTheFilter) {
  const auto rows =
      FromJson(Json::parse(R"({"recordset":{"fields":[["A","integer"]],"rows":[[1],[2],[3]]}})"))
          .AsRef<Recordset>();
  rows->SetFilter("A >= 2");
  EXPECT_EQ(ToLine(ToJson(Variant(rows))),
            R"({"recordset":{"fields":[["A","integer"]],"rows":[[2],[3]],"position":1}})");
  rows->Close();
  EXPECT_EQ(ToLine(ToJson(Variant(rows))), R"({"recordset":{"fields":[],"rows":[],"position":-1}})");
}

TEST(PlayerJson, ReadsAnEmptyFieldAsNull) {
  const auto rows = FromJson(Json::parse(R"({"recordset":{"fields":[["A","integer"]],"rows":[[null]]}})"))
                        .AsRef<Recordset>();
  EXPECT_TRUE(rows->Value("A").IsNull());
}

TEST(PlayerJson, StopsAtAnObjectInsideItself) {
  const Ref<Dictionary> outer = MakeRef<Dictionary>();
  const Ref<Vector> inner = MakeRef<Vector>();
  outer->Set("inner", inner);
  inner->Add(outer);
  EXPECT_EQ(ToLine(ToJson(Variant(outer))),
            R"({"dictionary":{"inner":{"vector":[{"object":"?","class":"RNX.Dictionary"}]}}})");
  outer->RemoveAll();
}

TEST(PlayerJson, WritesTheSameObjectTwiceSideBySide) {
  const Ref<Dictionary> shared = MakeRef<Dictionary>();
  const Ref<Vector> list = MakeRef<Vector>();
  list->Add(shared);
  list->Add(shared);
  EXPECT_EQ(ToLine(ToJson(Variant(list))), R"({"vector":[{"dictionary":{}},{"dictionary":{}}]})");
}

TEST(PlayerJson, SaysWhyAFormIsNoValue) {
  struct Case {
    const char* json;
    const char* reason;
  };
  const Case kCases[] = {
      {"[1]", "vector"},
      {R"({"a":1})", "dictionary"},
      {R"({"date":"2024-02-30"})", "exists"},
      {R"({"date":5})", "exists"},
      {R"({"currency":"x"})", "currency"},
      {R"({"currency":1.5})", "12.3400"},
      {R"({"dbnull":false})", "true"},
      {R"({"dictionary":[]})", "dictionary"},
      {R"({"dictionary":{"k":[1]}})", "'k'"},
      {R"({"vector":{}})", "vector"},
      {R"({"vector":[{"x":1}]})", "no value"},
      {R"({"recordset":[]})", "fields"},
      {R"({"recordset":{"fields":[["A"]]}})", "TYPE"},
      {R"({"recordset":{"fields":[["A","blob"]]}})", "'blob'"},
      {R"({"recordset":{"fields":[["A","text"]],"rows":[["x","y"]]}})", "1 fields"},
      {R"({"recordset":{"fields":[],"row":[]}})", "'row'"},
      {R"({"object":"?"})", "without a name"},
      {R"({"object":"?","class":"X"})", "no value"},
      {R"({"date":"2024-01-01","currency":"1"})", "no value"},
      {"18446744073709551615", "64 bits"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.json);
    const auto reason = WhyNoValue(Json::parse(c.json));
    ASSERT_TRUE(reason);
    EXPECT_NE(reason->find(c.reason), std::string::npos) << *reason;
  }
}

}  // namespace
