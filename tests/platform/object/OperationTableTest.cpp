#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/object/OperationTable.h"
#include "platform/rows/Dictionary.h"
#include "tests/platform/Raised.h"
#include "tests/platform/object/Probe.h"

namespace platform {
namespace {

using testing::ElementsAre;

TEST(OperationTableTest, CallsByName) {
  struct Case {
    std::string name;
    std::string member;
    CallKind kind = CallKind::kMethod;
    std::vector<Variant> arguments;
    Variant result;
  };
  const Case cases[] = {
      {"texts", "Join", CallKind::kMethod, {"a", "b"}, "ab"},
      {"any case", "jOIN", CallKind::kMethod, {"a", "b"}, "ab"},
      {"arguments are converted", "Join", CallKind::kMethod, {1, 2.5}, "12.5"},
      {"empty is an empty text", "Join", CallKind::kMethod, {Variant(), "b"}, "b"},
      {"optional given", "Scale", CallKind::kMethod, {1.5, 3.0}, 4.5},
      {"optional left out", "Scale", CallKind::kMethod, {1.5}, 3.0},
      {"optional marked as left out", "Scale", CallKind::kMethod, {1.5, Missing{}}, 3.0},
      {"a variant passes as it is", "Echo", CallKind::kMethod, {Null{}}, Null{}},
      {"currency", "Half", CallKind::kMethod, {"3"}, Currency::FromUnits(15000)},
      {"date", "NextDay", CallKind::kMethod, {"2024-02-29"}, Date::Of(2024, 3, 1)},
      {"boolean", "Not", CallKind::kMethod, {"False"}, true},
      {"no object", "Length", CallKind::kMethod, {nullptr}, -1},
      {"empty for no object", "Length", CallKind::kMethod, {Variant()}, -1},
      {"object", "Length", CallKind::kMethod, {MakeRef<Vector>()}, 0},
      {"a property answers a call", "Text", CallKind::kMethod, {}, ""},
      {"a method answers a read", "Not", CallKind::kGet, {true}, false},
      {"no result reads as empty", "Text", CallKind::kPut, {"x"}, Variant()},
      {"nothing held", "Held", CallKind::kGet, {}, nullptr},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    std::vector<Variant> arguments = row.arguments;
    EXPECT_EQ(MakeRef<Probe>()->Invoke(row.member, row.kind, arguments), row.result);
  }
}

TEST(OperationTableTest, RefusalsNameTheMember) {
  struct Case {
    std::string name;
    std::string member;
    CallKind kind = CallKind::kMethod;
    std::vector<Variant> arguments;
    ErrorNumber number = ErrorNumber::kUnknownMember;
    std::string description;
  };
  const Case cases[] = {
      {"unknown method",
       "Nix",
       CallKind::kMethod,
       {},
       ErrorNumber::kUnknownMember,
       "Test.Probe.Nix: the object has no such method that can be called"},
      {"unknown property",
       "Nix",
       CallKind::kGet,
       {},
       ErrorNumber::kUnknownMember,
       "Test.Probe.Nix: the object has no such property that can be read"},
      {"a property without a put",
       "Held",
       CallKind::kPut,
       {nullptr},
       ErrorNumber::kUnknownMember,
       "Test.Probe.Held: the object has no such property that can be written"},
      {"a property without a get",
       "Only",
       CallKind::kGet,
       {},
       ErrorNumber::kUnknownMember,
       "Test.Probe.Only: the object has no such property that can be read"},
      {"empty name",
       "",
       CallKind::kMethod,
       {},
       ErrorNumber::kUnknownMember,
       "Test.Probe.: the object has no such method that can be called"},
      {"too few",
       "join",
       CallKind::kMethod,
       {"a"},
       ErrorNumber::kArgumentCount,
       "Test.Probe.Join: wrong number of arguments, 1 given, 2 declared"},
      {"too many",
       "Not",
       CallKind::kMethod,
       {true, true},
       ErrorNumber::kArgumentCount,
       "Test.Probe.Not: wrong number of arguments, 2 given, 1 declared"},
      {"put without a value",
       "Text",
       CallKind::kPut,
       {},
       ErrorNumber::kArgumentCount,
       "Test.Probe.Text: wrong number of arguments, 0 given, 1 declared"},
      {"a needed one marked as left out",
       "Join",
       CallKind::kMethod,
       {"a", Missing{}},
       ErrorNumber::kArgumentCount,
       "Test.Probe.Join: argument 2 is not optional"},
      {"text for a number",
       "Scale",
       CallKind::kMethod,
       {"x"},
       ErrorNumber::kTypeMismatch,
       "Test.Probe.Scale: argument 1: type mismatch: text 'x' is no number"},
      {"a null",
       "Join",
       CallKind::kMethod,
       {"a", Null{}},
       ErrorNumber::kTypeMismatch,
       "Test.Probe.Join: argument 2: type mismatch: database null is no text"},
      {"too wide",
       "Next",
       CallKind::kMethod,
       {40000},
       ErrorNumber::kOverflow,
       "Test.Probe.Next: argument 1: overflow: 40000 does not fit in 16 bits"},
      {"an object of another class",
       "Length",
       CallKind::kMethod,
       {MakeRef<Dictionary>()},
       ErrorNumber::kTypeMismatch,
       "Test.Probe.Length: argument 1: type mismatch: an object of class RNX.Dictionary does not fit here"},
      {"no object at all",
       "Length",
       CallKind::kMethod,
       {"x"},
       ErrorNumber::kTypeMismatch,
       "Test.Probe.Length: argument 1: type mismatch: text does not fit here"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    std::vector<Variant> arguments = row.arguments;
    const Error error = Raised([&] { MakeRef<Probe>()->Invoke(row.member, row.kind, arguments); });
    EXPECT_EQ(error.Number(), row.number);
    EXPECT_EQ(error.Description(), row.description);
    EXPECT_EQ(error.Source(), "Test.Probe");
    EXPECT_EQ(arguments, row.arguments) << "a refused call changes no argument";
  }
}

TEST(OperationTableTest, ByReference) {
  const Ref<Probe> probe = MakeRef<Probe>();
  Variant counter = 7.0;
  EXPECT_EQ(probe->Call("Next", counter), Variant(8));
  EXPECT_EQ(counter, Variant(std::int16_t{8})) << "comes back in the declared type";

  std::int16_t own = 7;
  probe->Call("Next", own);
  EXPECT_EQ(own, 7) << "only a variant is by reference";
  const Variant fixed = std::int16_t{7};
  probe->Call("Next", fixed);
  EXPECT_EQ(fixed, Variant(std::int16_t{7}));

  Variant text = "a";
  Variant list;
  probe->Call("Fill", text, list, false);
  EXPECT_EQ(text, Variant("a!"));
  EXPECT_TRUE(list.AsRef<Vector>());

  const std::string longText(40, 'x');
  std::string kept = longText;
  probe->Put("Text", kept);
  EXPECT_EQ(kept, longText) << "a text that the caller keeps is copied";
}

TEST(OperationTableTest, ByReferenceAlsoWhenItRaises) {
  Variant text = "a";
  Variant list;
  const Error error = Raised([&] { MakeRef<Probe>()->Call("Fill", text, list, true); });
  EXPECT_EQ(error.Description(), "Fill went wrong");
  EXPECT_EQ(text, Variant("a!"));
  EXPECT_TRUE(list.AsRef<Vector>());
}

TEST(OperationTableTest, OptionalByReference) {
  const Ref<Probe> probe = MakeRef<Probe>();
  Variant number = 1;
  probe->Call("Touch", number);
  EXPECT_EQ(number, Variant(2));
  Variant missing = Missing{};
  probe->Call("Touch", missing);
  EXPECT_EQ(missing, Variant(Missing{}));
  EXPECT_NO_THROW(probe->Call("Touch"));
}

TEST(OperationTableTest, PropertiesKeepGetAndPutApart) {
  const Ref<Probe> probe = MakeRef<Probe>();
  probe->Put("Text", "first");
  EXPECT_EQ(probe->Get("text"), Variant("first"));
  probe->Put("ONLY", 2);
  EXPECT_EQ(probe->Get("Text"), Variant("2"));
}

TEST(OperationTableTest, TellsItsOperationsInSlotOrder) {
  std::vector<std::string> told;
  for (const Operation& operation : Probe::Info().operations) {
    std::string line(operation.name);
    if (operation.kind != CallKind::kMethod) line += operation.kind == CallKind::kGet ? " get" : " put";
    for (const Parameter& parameter : operation.parameters) {
      line += " " + std::string(parameter.name);
      if (parameter.byReference) line += "&";
      if (parameter.optional) line += "?";
    }
    told.push_back(line);
  }
  EXPECT_THAT(told, ElementsAre("Join Left Right", "Next Counter&", "Fill Text& List& Raise",
                                "Scale Number Factor?", "Touch Number&?", "Echo Value", "Hold Object",
                                "Held get", "Wrong Object", "Length List", "Text get", "Text put Value",
                                "Only put Amount", "Half Amount", "NextDay Day", "Not Flag"));
}

TEST(OperationTableTest, TellsTypes) {
  struct Case {
    std::string member;
    CallKind kind = CallKind::kMethod;
    ValueType result = ValueType::kNone;
    std::vector<ValueType> parameters;
  };
  const Case cases[] = {
      {"Join", CallKind::kMethod, ValueType::kText, {ValueType::kText, ValueType::kText}},
      {"Next", CallKind::kMethod, ValueType::kInt32, {ValueType::kInt16}},
      {"Fill",
       CallKind::kMethod,
       ValueType::kNone,
       {ValueType::kText, ValueType::kObject, ValueType::kBoolean}},
      {"Scale", CallKind::kMethod, ValueType::kDouble, {ValueType::kDouble, ValueType::kDouble}},
      {"Echo", CallKind::kMethod, ValueType::kVariant, {ValueType::kVariant}},
      {"Held", CallKind::kGet, ValueType::kObject, {}},
      {"Only", CallKind::kPut, ValueType::kNone, {ValueType::kCurrency}},
      {"NextDay", CallKind::kMethod, ValueType::kDate, {ValueType::kDate}},
      {"Not", CallKind::kMethod, ValueType::kBoolean, {ValueType::kBoolean}},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.member);
    const Operation* operation = Probe::Info().Find(row.member, row.kind);
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->result, row.result);
    std::vector<ValueType> types;
    for (const Parameter& parameter : operation->parameters) types.push_back(parameter.type);
    EXPECT_EQ(types, row.parameters);
  }
  EXPECT_EQ(Probe::Info().Find("Scale", CallKind::kMethod)->RequiredCount(), 1U);
}

}  // namespace
}  // namespace platform
