// References counted: after every operation of a Ref, and after every late-bound call, failures included.
#include <gtest/gtest.h>

#include "platform/object/Ref.h"
#include "platform/rows/Dictionary.h"
#include "tests/platform/Raised.h"
#include "tests/platform/object/Probe.h"

namespace platform {
namespace {

class Counted final : public Object {
 public:
  explicit Counted(int& alive) : alive_(alive) { ++alive_; }
  ~Counted() override { --alive_; }
  std::string ClassName() const override { return "Test.Counted"; }
  Variant Invoke(std::string_view, CallKind, std::span<Variant>) override { return {}; }

 private:
  int& alive_;
};

TEST(RefTest, CopiesShareAndMovesHandOver) {
  int alive = 0;
  {
    Ref<Counted> first = MakeRef<Counted>(alive);
    EXPECT_EQ(first->Holders(), 1U);
    Ref<Counted> second = first;
    EXPECT_EQ(first->Holders(), 2U);
    const Ref<Counted> third = std::move(second);
    EXPECT_EQ(first->Holders(), 2U);
    EXPECT_FALSE(second);  // NOLINT(bugprone-use-after-move): what a move leaves is the case
    const Ref<Object> base = first;
    EXPECT_EQ(first->Holders(), 3U);
    EXPECT_EQ(base.Get(), first.Get());
    Counted& self = *first;
    first = first.Get() == &self ? third : second;
    EXPECT_EQ(third->Holders(), 3U);
    first = nullptr;
    EXPECT_EQ(third->Holders(), 2U);
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

TEST(RefTest, AssigningEndsTheOldObjectAfterTheNewOneIsHeld) {
  struct Node final : RefCounted {
    Ref<Node>* place = nullptr;
    const Node** seen = nullptr;
    ~Node() override {
      if (seen != nullptr) *seen = place->Get();
    }
  };
  Ref<Node> place = MakeRef<Node>();
  const Node* seen = nullptr;
  place->place = &place;
  place->seen = &seen;
  place = MakeRef<Node>();
  EXPECT_NE(seen, nullptr);
  EXPECT_EQ(seen, place.Get());
}

TEST(RefTest, LateBoundCalls) {
  struct Case {
    std::string name;
    std::function<void(Probe& probe, const Ref<Object>& object)> run;
    std::size_t held = 0;  // references that stay behind, beside the caller's own
  };
  auto raised = [](auto action) { Raised(action); };
  const Case cases[] = {
      {"passed and dropped", [](Probe& probe, const auto& object) { probe.Call("Echo", object); }, 0},
      {"held by the object", [](Probe& probe, const auto& object) { probe.Call("Hold", object); }, 1},
      {"held twice is held once",
       [](Probe& probe, const auto& object) {
         probe.Call("Hold", object);
         probe.Call("Hold", object);
       },
       1},
      {"held and read",
       [](Probe& probe, const auto& object) {
         probe.Call("Hold", object);
         EXPECT_EQ(probe.Get("Held"), Variant(object));
       },
       1},
      {"held and let go",
       [](Probe& probe, const auto& object) {
         probe.Call("Hold", object);
         probe.Call("Hold", nullptr);
       },
       0},
      {"held by a call that raises",
       [&](Probe& probe, const auto& object) { raised([&] { probe.Call("Wrong", object); }); }, 1},
      {"unknown member",
       [&](Probe& probe, const auto& object) { raised([&] { probe.Call("Nix", object); }); }, 0},
      {"too many arguments",
       [&](Probe& probe, const auto& object) { raised([&] { probe.Call("Echo", object, object); }); }, 0},
      {"wrong class",
       [&](Probe& probe, const auto& object) { raised([&] { probe.Call("Length", object); }); }, 0},
      {"wrong type behind it",
       [&](Probe& probe, const auto& object) { raised([&] { probe.Call("Join", "a", object); }); }, 0},
      {"replaced by reference",
       [](Probe& probe, const auto& object) {
         Variant text = "a";
         Variant list = MakeRef<Vector>();
         list.AsRef<Vector>()->Add(object);
         EXPECT_EQ(object->Holders(), 2U);
         probe.Call("Fill", text, list, false);
       },
       0},
      {"replaced by reference by a call that raises",
       [&](Probe& probe, const auto& object) {
         Variant text = "a";
         Variant list = MakeRef<Vector>();
         list.AsRef<Vector>()->Add(object);
         raised([&] { probe.Call("Fill", text, list, true); });
       },
       0},
      {"in a dictionary and out of it",
       [](Probe&, const auto& object) {
         const Ref<Dictionary> dictionary = MakeRef<Dictionary>();
         dictionary->Put("Item", "key", object);
         dictionary->Put("Item", "key", object);
         EXPECT_EQ(object->Holders(), 2U);
         dictionary->Put("Item", "KEY", 1);
         EXPECT_EQ(object->Holders(), 1U);
       },
       0},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    int alive = 0;
    {
      const Ref<Object> object = MakeRef<Counted>(alive);
      {
        const Ref<Probe> probe = MakeRef<Probe>();
        row.run(*probe, object);
        EXPECT_EQ(object->Holders(), 1 + row.held);
        EXPECT_EQ(probe->Holders(), 1U);
      }
      EXPECT_EQ(object->Holders(), 1U);
      EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
  }
}

}  // namespace
}  // namespace platform
