// The screen by itself: its loop is a script, and what it tells lies in the socket.
#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "browser/wire/Wire.h"
#include "browser/worker/PageScreen.h"

namespace browser {
namespace {

using testing::HasSubstr;

class OnScreen : public testing::Test {
 protected:
  ~OnScreen() override {
    platform::Screen::Use(nullptr);
    for (const int end : ends_) close(end);
  }

  // All that was told so far, a line each.
  std::string Told() const {
    const Wire other(ends_[1]);
    std::string lines;
    while (other.HasMore()) lines += other.Receive().text + "\n";
    return lines;
  }

  static std::array<int, 2> Pair() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    return ends;
  }

  std::array<int, 2> ends_ = Pair();
  Wire wire_{ends_[0]};
  desk::MemorySchemes schemes_;
  Windows windows_{wire_, schemes_};
  std::function<void()> user_ = [] {};
  PageScreen screen_{windows_,
                     schemes_,
                     wire_,
                     {.serveUntil =
                          [this](const std::function<bool()>& over) {
                            for (int i = 0; i < 10 && !over(); ++i) user_();
                          },
                      .servePending = [this] { user_(); }}};
};

// Works in steps while it is up.
class Box final : public platform::Form {
 public:
  explicit Box(int most = 3)
      : Form("frmProgBar", platform::FormRole::kProgress),
        most_(most),
        message_(Add<platform::Label>("lblMsg")) {}

  int Steps() const { return steps_; }

 protected:
  void OnActivate() override {
    for (; steps_ < most_; ++steps_) {
      message_.SetCaption("step " + std::to_string(steps_));
      platform::Screen::Current().TellProgress("SetMsg", {});
      platform::Screen::Current().RunPendingEvents();
    }
    Unload();
  }

 private:
  int most_;
  platform::Label& message_;
  int steps_ = 0;
};

TEST_F(OnScreen, AProgressBoxIsToldAndGoesByItself) {
  platform::Screen::Use(&screen_);
  const auto box = platform::MakeRef<Box>();
  box->Show();
  EXPECT_EQ(box->Steps(), 3);
  const std::string told = Told();
  EXPECT_THAT(told, HasSubstr("{\"type\":\"progressShown\",\"progress\":1,\"text\":\"\""));
  EXPECT_THAT(told, HasSubstr("{\"type\":\"progressChanged\",\"progress\":1,\"text\":\"step 2\""));
  EXPECT_THAT(told, HasSubstr("{\"type\":\"progressClosed\",\"progress\":1}"));
  EXPECT_FALSE(screen_.TakeCancelled());
}

// A ledger of all items tells its progress with every row: millions of times.
TEST_F(OnScreen, AFloodOfProgressIsToldInSteps) {
  platform::Screen::Use(&screen_);
  const auto started = std::chrono::steady_clock::now();
  platform::MakeRef<Box>(20'000)->Show();
  const auto took = std::chrono::steady_clock::now() - started;
  const std::string told = Told();
  std::size_t changes = 0;
  for (std::size_t at = told.find("progressChanged"); at != std::string::npos; ++changes) {
    at = told.find("progressChanged", at + 1);
  }
  const auto stretches = static_cast<std::size_t>(took / std::chrono::milliseconds(50)) + 2;
  EXPECT_GE(changes, 8U) << "the first ones come at once";
  EXPECT_LE(changes, 8 * stretches);
  EXPECT_THAT(told, HasSubstr("progressClosed"));
}

TEST_F(OnScreen, ACancelEndsTheWorkAtItsNextStep) {
  platform::Screen::Use(&screen_);
  const auto box = platform::MakeRef<Box>();
  int events = 0;
  user_ = [&] {
    if (++events == 2) screen_.CancelProgress();
  };
  EXPECT_THROW(box->Show(), platform::Error);
  EXPECT_EQ(box->Steps(), 1);
  EXPECT_TRUE(screen_.TakeCancelled());
  EXPECT_TRUE(windows_.IsEmpty());
}

TEST_F(OnScreen, AMessageBoxWaitsForOneOfItsButtons) {
  EXPECT_FALSE(screen_.Offers(platform::Answer::kYes));
  user_ = [&] {
    if (screen_.Offers(platform::Answer::kNo)) screen_.Answer(platform::Answer::kNo);
  };
  EXPECT_EQ(screen_.Ask({.text = "继续吗？", .buttons = platform::MessageButtons::kYesNo}),
            platform::Answer::kNo);
  EXPECT_THAT(Told(),
              HasSubstr("\"text\":\"继续吗？\",\"title\":\"\",\"icon\":\"none\",\"buttons\":\"yesno\""));
  EXPECT_FALSE(screen_.Offers(platform::Answer::kCancel));
}

}  // namespace
}  // namespace browser
