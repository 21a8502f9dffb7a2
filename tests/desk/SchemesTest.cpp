#include <gtest/gtest.h>

#include "desk/Schemes.h"

namespace {

using desk::MemorySchemes;
using platform::Variant;

TEST(DeskSchemes, AreKeptByDialogAndName) {
  MemorySchemes schemes;
  EXPECT_FALSE(schemes.Load("frmA", "one"));
  schemes.Save("frmA", "one", {{"k", Variant(1)}});
  schemes.Save("frmA", "two", {});
  schemes.Save("FRMA", "ONE", {{"k", Variant(2)}});
  EXPECT_EQ(schemes.Names("frma"), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(desk::ValueOf(*schemes.Load("frmA", "one"), "K"), Variant(2));
  EXPECT_TRUE(schemes.Names("frmB").empty());
}

TEST(DeskSchemes, StandBeforeOthersWithoutWritingToThem) {
  MemorySchemes behind;
  behind.Save("frmA", "shared", {{"k", Variant("behind")}});
  behind.Save("frmA", "mine", {{"k", Variant("behind")}});
  MemorySchemes schemes;
  schemes.StandBefore(&behind);
  schemes.Save("frmA", "Mine", {{"k", Variant("own")}});
  EXPECT_EQ(schemes.Names("frmA"), (std::vector<std::string>{"Mine", "shared"}));
  EXPECT_EQ(desk::ValueOf(*schemes.Load("frmA", "mine"), "k"), Variant("own"));
  EXPECT_EQ(desk::ValueOf(*schemes.Load("frmA", "shared"), "k"), Variant("behind"));
  EXPECT_EQ(desk::ValueOf(*behind.Load("frmA", "mine"), "k"), Variant("behind"));
}

TEST(DeskSchemes, KeepTheOrderOfWriting) {
  desk::SchemeValues values;
  desk::SetValue(values, "b", 1);
  desk::SetValue(values, "a", 2);
  desk::SetValue(values, "B", 3);
  ASSERT_EQ(values.size(), 2u);
  EXPECT_EQ(values[0].first, "b");
  EXPECT_EQ(values[0].second, Variant(3));
  EXPECT_TRUE(desk::ValueOf(values, "c").IsEmpty());
}

}  // namespace
