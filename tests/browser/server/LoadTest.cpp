// A hundred clerks at once: each opens a session, runs a report, filters, sorts and reads it. What a session
// costs in memory is measured and printed.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/browser/server/Client.h"

namespace browser_tests {
namespace {

// A sanitizer makes every process many times as large: the flow is tried with fewer, the memory is not
// judged.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

constexpr int kSessions = kSanitized ? 16 : 100;
constexpr int kClerksAtOnce = 8;
constexpr int kBlocksRead = 5;
constexpr double kMostMegabytes = 12;

// What the process alone costs the machine: its own memory, and its share of what it has in common with
// others.
double MegabytesOf(int process) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string word; rollup >> word;) {
    double kilobytes = 0;
    if (word == "Pss:" && rollup >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

struct Memory {
  double mean = 0;
  double most = 0;
};

Memory MemoryOf(const std::vector<int>& processes) {
  Memory memory;
  for (const int process : processes) {
    const double megabytes = MegabytesOf(process);
    memory.mean += megabytes / static_cast<double>(processes.size());
    memory.most = std::max(memory.most, megabytes);
  }
  return memory;
}

void Print(const char* what, const Memory& memory) {
  std::printf("%d %s: %.1f MB each, at most %.1f MB\n", kSessions, what, memory.mean, memory.most);
}

class Load : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    const std::string command = TEST_BINARY_DIR "/stockrpt demo " + Book() + " --items 60 --months 3 --quiet";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  static void TearDownTestSuite() { std::filesystem::remove(Book()); }

  static std::string Book() {
    return (std::filesystem::temp_directory_path() / ("stockrpt-load-" + std::to_string(getpid()) + ".db"))
        .string();
  }

  // What a clerk does; answers what he read, "" when something was not as it should be.
  static std::string Work(Page& page) {
    page.Send("openReport", {{"programmaticId", "TOVStockRpt.Rpt10414"}});
    const Json form = page.Await("formOpened");
    if (form["type"] != "formOpened") return {};
    page.Send("click", {{"form", form["form"]}, {"control", "cmdOK"}});
    const Json report = page.Await("reportReady");
    if (report["type"] != "reportReady") return {};
    page.Next();
    const Json view = page.Do("setView", {{"report", report["report"]},
                                          {"sort", {{{"field", "FQty"}, {"descending", true}}}},
                                          {"text", "0"},
                                          {"fields", {"FItemNumber", "FItemName"}}});
    if (view["type"] != "view") return {};
    std::string read;
    for (int block = 0; block < kBlocksRead; ++block) {
      const Json rows = page.Do("fetchRows", {{"report", report["report"]},
                                              {"start", block * 10},
                                              {"count", 10},
                                              {"fields", {"FItemNumber", "FItemName", "FQty"}}});
      if (rows["type"] != "rows") return {};
      read += rows["values"].dump();
    }
    return read;
  }
};

TEST_F(Load, AHundredSessionsOpenFilterAndRead) {
  const Served served({"--book", Book(), "--sessions", std::to_string(kSessions)});
  std::vector<std::unique_ptr<Page>> pages;
  for (int i = 0; i < kSessions; ++i) {
    pages.push_back(std::make_unique<Page>(served.Port()));
    ASSERT_NE(pages.back()->Session(), "") << i;
  }
  const std::vector<int> workers = served.Workers();
  ASSERT_EQ(workers.size(), static_cast<std::size_t>(kSessions));
  const Memory idle = MemoryOf(workers);
  Print("idle sessions", idle);

  std::vector<std::string> read(kSessions);
  std::atomic<int> next = 0;
  std::vector<std::thread> clerks;
  for (int i = 0; i < kClerksAtOnce; ++i) {
    clerks.emplace_back([&] {
      for (int at = next++; at < kSessions; at = next++) {
        const auto place = static_cast<std::size_t>(at);
        read[place] = Work(*pages[place]);
      }
    });
  }
  for (std::thread& clerk : clerks) clerk.join();
  for (int i = 0; i < kSessions; ++i) {
    const auto place = static_cast<std::size_t>(i);
    EXPECT_GT(read[place].size(), 100U) << i;
    EXPECT_EQ(read[place], read[0]) << i;
  }
  Print("sessions with an open report", MemoryOf(workers));
  EXPECT_EQ(served.Workers(), workers);
  EXPECT_GT(idle.mean, 0);
  EXPECT_LE(idle.most, kSanitized ? std::numeric_limits<double>::max() : kMostMegabytes);
}

}  // namespace
}  // namespace browser_tests
