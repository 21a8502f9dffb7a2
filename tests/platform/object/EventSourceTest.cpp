#include <gtest/gtest.h>

#include "platform/object/EventSource.h"
#include "platform/value/Convert.h"
#include "tests/platform/Raised.h"

namespace platform {
namespace {

TEST(EventSourceTest, WithoutAListenerNothingHappens) {
  const EventSource source;
  EXPECT_NO_THROW(source.RaiseWith("Click", 1));
}

TEST(EventSourceTest, TheListenerGetsNameAndArguments) {
  EventSource source;
  std::string heard;
  source.Listen([&](std::string_view event, std::span<Variant> arguments) {
    heard = std::string(event) + std::to_string(arguments.size());
    for (const Variant& argument : arguments) heard += " " + ToText(argument);
  });
  source.RaiseWith("Click");
  EXPECT_EQ(heard, "Click0");
  source.RaiseWith("NodeCheck", "key", 3, true);
  EXPECT_EQ(heard, "NodeCheck3 key 3 True");
}

TEST(EventSourceTest, ByReferenceArgumentsComeBack) {
  EventSource source;
  source.Listen([](std::string_view, std::span<Variant> arguments) { arguments[0] = true; });
  std::array<Variant, 1> cancel = {false};
  source.Raise("QueryUnload", cancel);
  EXPECT_EQ(cancel[0], Variant(true));
}

TEST(EventSourceTest, TheLastListenerCountsAndAnEmptyOneStops) {
  EventSource source;
  int first = 0;
  int second = 0;
  source.Listen([&](auto, auto) { ++first; });
  source.Listen([&](auto, auto) { ++second; });
  source.RaiseWith("Click");
  source.Listen({});
  source.RaiseWith("Click");
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST(EventSourceTest, AListenerMayStopListeningWhileItRuns) {
  EventSource source;
  const auto count = std::make_shared<int>(0);
  source.Listen([&source, count](auto, auto) {
    source.Listen({});
    ++*count;
  });
  source.RaiseWith("Click");
  source.RaiseWith("Click");
  EXPECT_EQ(*count, 1);
  EXPECT_EQ(count.use_count(), 1) << "the listener is gone with what it held";
}

TEST(EventSourceTest, AnErrorComesOutAndListeningGoesOn) {
  EventSource source;
  int heard = 0;
  source.Listen([&](auto, auto) {
    if (++heard == 1) throw Error(ErrorNumber::kUserDefined, "Test", "refused");
  });
  EXPECT_EQ(Raised([&] { source.RaiseWith("Click"); }).Description(), "refused");
  source.RaiseWith("Click");
  EXPECT_EQ(heard, 2);
}

}  // namespace
}  // namespace platform
