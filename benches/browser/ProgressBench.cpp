// What a step of work costs while a page looks on. The ledger of all items tells its progress with every row,
// so that some millions of these stand between a user and the pages.
#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>

#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <unistd.h>

#include "browser/wire/Wire.h"
#include "browser/worker/PageScreen.h"
#include "desk/Schemes.h"
#include "platform/form/Form.h"

namespace {

// A page that takes what it is told.
class Page {
 public:
  Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  Page(Page&&) = delete;
  Page& operator=(Page&&) = delete;
  ~Page() {
    for (const int end : ends_) close(end);
  }

  int Descriptor() const { return ends_[0]; }
  void TakeAll() const {
    while (other_.HasMore()) benchmark::DoNotOptimize(other_.Receive());
  }

 private:
  static std::array<int, 2> Pair() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) throw std::runtime_error("no socket pair");
    return ends;
  }

  std::array<int, 2> ends_ = Pair();
  const browser::Wire other_{ends_[1]};
};

class Box final : public platform::Form {
 public:
  explicit Box(benchmark::State& state)
      : Form("frmProgBar", platform::FormRole::kProgress),
        state_(state),
        bar_(Add<platform::ProgressBar>("ProgressBar1")),
        message_(Add<platform::Label>("lblMsg")) {}

 protected:
  void OnActivate() override {
    platform::Screen& screen = platform::Screen::Current();
    message_.SetCaption("正在计算2026年第11期数据...");
    for (auto _ : state_) {
      bar_.value += 1;
      screen.TellProgress("SetBarValue", platform::Variant(1));
      screen.RunPendingEvents();
    }
    Unload();
  }

 private:
  benchmark::State& state_;
  platform::ProgressBar& bar_;
  platform::Label& message_;
};

void ProgressOfARow(benchmark::State& state) {
  const Page page;
  const browser::Wire wire(page.Descriptor());
  desk::MemorySchemes schemes;
  browser::Windows windows(wire, schemes);
  std::size_t looks = 0;
  auto servePending = [&] {
    if (++looks % 1024 == 0) page.TakeAll();
  };
  browser::PageScreen screen(
      windows, schemes, wire,
      {.serveUntil = [](const std::function<bool()>&) {}, .servePending = servePending});
  platform::Screen::Use(&screen);
  platform::MakeRef<Box>(state)->Show();
  platform::Screen::Use(nullptr);
}
BENCHMARK(ProgressOfARow)->Name("ProgressOfARow");

}  // namespace
