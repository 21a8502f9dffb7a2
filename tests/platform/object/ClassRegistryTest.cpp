#include <gtest/gtest.h>

#include "platform/object/ClassRegistry.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

ClassRegistry::Resolver Serving(const std::string& wanted, const Ref<Object>& object) {
  return [=](std::string_view programmaticId) { return programmaticId == wanted ? object : Ref<Object>(); };
}

TEST(ClassRegistryTest, CreatesWithoutRegardToCase) {
  ClassRegistry registry;
  registry.Register("Stock.Data", [] { return Ref<Object>(MakeRef<Vector>()); });
  EXPECT_TRUE(registry.IsRegistered("stock.DATA"));
  const Ref<Object> first = registry.Create("STOCK.data");
  EXPECT_EQ(first->ClassName(), "RNX.Vector");
  EXPECT_FALSE(first == registry.Create("Stock.Data")) << "every creation is a new object";
  registry.Register("STOCK.DATA", [] { return Ref<Object>(MakeRef<Dictionary>()); });
  EXPECT_EQ(registry.Create("Stock.Data")->ClassName(), "RNX.Dictionary") << "the last registration counts";
}

TEST(ClassRegistryTest, OverrideComesFirstAndFallbackLast) {
  const Ref<Object> scripted = MakeRef<Dictionary>();
  const Ref<Object> served = MakeRef<Dictionary>();
  ClassRegistry registry;
  registry.Register("A", [] { return Ref<Object>(MakeRef<Vector>()); });
  registry.SetOverride(Serving("A", scripted));
  registry.SetFallback(Serving("B", served));
  EXPECT_EQ(registry.Create("A"), scripted);
  EXPECT_EQ(registry.Create("a")->ClassName(), "RNX.Vector") << "what the override leaves is created";
  EXPECT_EQ(registry.Create("B"), served);
  registry.SetOverride(Serving("B", scripted));
  EXPECT_EQ(registry.Create("B"), scripted);
  registry.SetOverride({});
  EXPECT_EQ(registry.Create("A")->ClassName(), "RNX.Vector");
  registry.SetFallback({});
  EXPECT_EQ(Raised([&] { registry.Create("B"); }).Number(), ErrorNumber::kCannotCreate);
}

TEST(ClassRegistryTest, WhatNobodyServesSaysSo) {
  ClassRegistry registry;
  registry.Register("Gone", [] { return Ref<Object>(MakeRef<Vector>()); });
  registry.Unregister("GONE");
  registry.Register("Unbuilt", [] { return Ref<Object>(); });
  for (const std::string programmaticId : {"Gone", "Nobody.Knows", "Unbuilt", ""}) {
    SCOPED_TRACE(programmaticId);
    const Error error = Raised([&] { registry.Create(programmaticId); });
    EXPECT_EQ(error.Number(), ErrorNumber::kCannotCreate);
    EXPECT_EQ(error.Description(), "class not registered: " + programmaticId);
  }
  EXPECT_FALSE(registry.IsRegistered("Gone"));
}

TEST(ClassRegistryTest, TheFoundationStandsInTheProcess) {
  const std::pair<std::string, std::string> cases[] = {{"rnx.dictionary", "RNX.Dictionary"},
                                                       {"RNX.VECTOR", "RNX.Vector"},
                                                       {"tovplatform.recordset", "TOVPlatform.Recordset"}};
  for (const auto& [programmaticId, className] : cases) {
    SCOPED_TRACE(programmaticId);
    const Ref<Object> object = CreateObject(programmaticId);
    EXPECT_EQ(object->ClassName(), className);
    EXPECT_EQ(object->Holders(), 1U);
  }
}

}  // namespace
}  // namespace platform
