#include <gtest/gtest.h>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"
#include "platform/value/Variant.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

using Kind = Variant::Kind;

TEST(VariantTest, Kinds) {
  struct Case {
    Variant value;
    Kind kind = Kind::kEmpty;
    std::string name;
  };
  const Case cases[] = {
      {Variant(), Kind::kEmpty, "empty"},
      {Empty{}, Kind::kEmpty, "empty"},
      {Null{}, Kind::kNull, "database null"},
      {Missing{}, Kind::kMissing, "missing"},
      {true, Kind::kBoolean, "boolean"},
      {std::int16_t{1}, Kind::kInt16, "16-bit integer"},
      {1, Kind::kInt32, "32-bit integer"},
      {std::int64_t{1}, Kind::kInt64, "64-bit integer"},
      {1.0, Kind::kDouble, "double"},
      {Currency(), Kind::kCurrency, "currency"},
      {Date(), Kind::kDate, "date"},
      {"text", Kind::kText, "text"},
      {std::string("text"), Kind::kText, "text"},
      {std::string_view("text"), Kind::kText, "text"},
      {nullptr, Kind::kObject, "object"},
      {MakeRef<Vector>(), Kind::kObject, "object"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.value.GetKind(), row.kind);
    EXPECT_EQ(ToString(row.value.GetKind()), row.name);
    EXPECT_EQ(row.value.IsEmpty(), row.kind == Kind::kEmpty);
    EXPECT_EQ(row.value.IsNull(), row.kind == Kind::kNull);
    EXPECT_EQ(row.value.IsMissing(), row.kind == Kind::kMissing);
    EXPECT_EQ(row.value.IsText(), row.kind == Kind::kText);
    EXPECT_EQ(row.value.IsObject(), row.kind == Kind::kObject);
  }
}

TEST(VariantTest, EqualIsSameKindAndValue) {
  const Ref<Vector> vector = MakeRef<Vector>();
  EXPECT_EQ(Variant("a"), Variant(std::string("a")));
  EXPECT_EQ(Variant(vector), Variant(Ref<Object>(vector)));
  EXPECT_NE(Variant(vector), Variant(MakeRef<Vector>()));
  EXPECT_NE(Variant(1), Variant(1.0));
  EXPECT_NE(Variant(std::int16_t{1}), Variant(1));
  EXPECT_NE(Variant(), Variant(Null{}));
  EXPECT_NE(Variant(), Variant(nullptr));
  EXPECT_NE(Variant("a"), Variant("A"));
}

TEST(VariantTest, Objects) {
  const Variant value = MakeRef<Vector>();
  EXPECT_TRUE(value.AsRef<Vector>());
  EXPECT_TRUE(value.AsRef<Object>());
  EXPECT_FALSE(value.AsRef<Dictionary>());
  EXPECT_FALSE(value.IsNothing());
  EXPECT_EQ(value.AsObject().ClassName(), "RNX.Vector");
  EXPECT_TRUE(Variant(nullptr).IsNothing());
  EXPECT_FALSE(Variant(nullptr).AsRef<Vector>());
  EXPECT_FALSE(Variant("text").AsRef<Vector>());
  EXPECT_EQ(ObjectAs<Vector>(&value.AsObject()), &value.AsObject());
  EXPECT_EQ(ObjectAs<Object>(&value.AsObject()), &value.AsObject()) << "of a class that others derive from";
  EXPECT_EQ(ObjectAs<Dictionary>(&value.AsObject()), nullptr);
  EXPECT_EQ(ObjectAs<Dictionary>(nullptr), nullptr);

  EXPECT_EQ(Raised([] { Variant(nullptr).AsObject(); }).Number(), ErrorNumber::kObjectNotSet);
  const Error error = Raised([] { Variant("text").AsObject(); });
  EXPECT_EQ(error.Number(), ErrorNumber::kObjectRequired);
  EXPECT_EQ(error.Description(), "object required: the value is of kind text");
}

TEST(ErrorTest, SkipErrorsDropsAFailureAndGoesOn) {
  int reached = 0;
  SkipErrors([&] { reached = 1; });
  EXPECT_EQ(reached, 1);
  SkipErrors([&] {
    reached = 2;
    throw Error(ErrorNumber::kUserDefined, "Test", "dropped");
  });
  EXPECT_EQ(reached, 2);
}

}  // namespace
}  // namespace platform
