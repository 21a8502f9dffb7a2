// What time does to sessions, with times short enough to wait for.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "browser/server/Serve.h"
#include "tests/browser/server/Client.h"

namespace browser_tests {
namespace {

using std::chrono::milliseconds;

// A server in this process, whose workers are the built program.
class Inside {
 public:
  explicit Inside(browser::ServeOptions options) : options_(std::move(options)) {
    std::promise<std::uint16_t> port;
    options_.listen = {.host = "127.0.0.1", .port = 0};
    options_.page = TEST_SOURCE_DIR "/page";
    options_.onListening = [&](std::uint16_t taken) { port.set_value(taken); };
    options_.isOver = [this] { return over_.load(); };
    options_.workerCommand = [](std::int32_t userId) {
      return std::vector<std::string>{
          TEST_BINARY_DIR "/stockrpt", "session-worker", "--descriptor", "{}", "--book", Book(), "--user",
          std::to_string(userId)};
    };
    thread_ = std::thread([this] { browser::Serve(options_); });
    port_ = port.get_future().get();
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;
  Inside(Inside&&) = delete;
  Inside& operator=(Inside&&) = delete;
  ~Inside() {
    over_ = true;
    thread_.join();
  }

  std::uint16_t Port() const { return port_; }

  static std::string Book() {
    return (std::filesystem::temp_directory_path() / ("stockrpt-times-" + std::to_string(getpid()) + ".db"))
        .string();
  }

 private:
  browser::ServeOptions options_;
  std::atomic<bool> over_ = false;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

class Times : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    const std::string command =
        TEST_BINARY_DIR "/stockrpt demo " + Inside::Book() + " --items 40 --months 3 --quiet";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  static void TearDownTestSuite() { std::filesystem::remove(Inside::Book()); }
};

// The worker of the only session, by what the system says of this process's children.
int OnlyWorker() {
  FILE* list = popen(("pgrep -P " + std::to_string(getpid()) + " -f session-worker").c_str(), "r");
  int worker = 0;
  if (list == nullptr || fscanf(list, "%d", &worker) != 1) worker = 0;
  if (list != nullptr) pclose(list);
  return worker;
}

TEST_F(Times, AWorkerThatHangsIsToldAndSoIsItsReturn) {
  const Inside inside({.hangs = milliseconds(600)});
  Page page(inside.Port());
  const int worker = OnlyWorker();
  ASSERT_GT(worker, 1);
  kill(worker, SIGSTOP);
  EXPECT_EQ(page.Await("workerFailed")["state"], "hangs");
  EXPECT_EQ(page.Do("ping")["type"], "done");
  kill(worker, SIGCONT);
  EXPECT_EQ(page.Await("workerFailed")["state"], "answers");
  EXPECT_EQ(page.Do("listReports")["type"], "reports");
}

TEST_F(Times, AHangingWorkerCanBeReplaced) {
  const Inside inside({.hangs = milliseconds(600)});
  Page page(inside.Port());
  kill(OnlyWorker(), SIGSTOP);
  EXPECT_EQ(page.Await("workerFailed")["state"], "hangs");
  EXPECT_EQ(page.Do("restart")["type"], "welcome");
  EXPECT_EQ(page.Do("listReports")["type"], "reports");
}

TEST_F(Times, AnIdleSessionEndsThoughItsPageKeepsItAlive) {
  const Inside inside({.idle = milliseconds(500)});
  Page page(inside.Port());
  page.Do("ping");
  EXPECT_EQ(page.Await("sessionEnded")["reason"], "idle");
  EXPECT_EQ(page.Next()["type"], "closed");
}

TEST_F(Times, ALostSessionEndsAfterItsTime) {
  const Inside inside({.reconnect = milliseconds(300)});
  Page page(inside.Port());
  Page::Opening again = page.How();
  again.session = page.Session();
  page.Drop();
  std::this_thread::sleep_for(milliseconds(1500));
  const Page late(inside.Port(), again);
  EXPECT_NE(late.Session(), page.Session());
  EXPECT_NE(late.Session(), "");
}

TEST_F(Times, TheEndOfTheServerIsTold) {
  auto inside = std::make_unique<Inside>(browser::ServeOptions{});
  Page page(inside->Port());
  inside.reset();
  EXPECT_EQ(page.Await("sessionEnded")["reason"], "shutdown");
}

}  // namespace
}  // namespace browser_tests
