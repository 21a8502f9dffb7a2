// An import that is killed at any moment leaves the book as it was or as it should be.
#include <chrono>
#include <cstdlib>
#include <random>

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/books/import/ImportFolder.h"

namespace {

using books::test::Files;
using books::test::ImportFolder;
using books::test::SoundFiles;
using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr int kKills = 100;

// True when the import was still at work when it was killed.
bool KillImport(const ImportFolder& folder, microseconds after) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      folder.Import();
    } catch (...) {
      _exit(2);
    }
    _exit(0);
  }
  usleep(static_cast<useconds_t>(after.count()));
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << status;
  return WIFSIGNALED(status);
}

microseconds TimeOf(const ImportFolder& folder) {
  const auto begin = steady_clock::now();
  folder.Import();
  return std::chrono::duration_cast<microseconds>(steady_clock::now() - begin);
}

Files MoreFiles() {
  Files files = SoundFiles();
  files["customers.csv"] += "02,超市\n";
  files["bills.csv"] += "采购收货,R2,2026-09-02,01.001,\n";
  files["bill_entries.csv"] +=
      "采购收货,R2,1,01.002,01,,,,10,,75,,,\n采购收货,R2,2,01.001,02,,A1,箱,1,80,,,,\n";
  return files;
}

TEST(ImportKill, ANewBookIsThereWholeOrNotAtAll) {
  ImportFolder folder(SoundFiles());
  const microseconds whole = TimeOf(folder);
  std::mt19937 random(20261121);
  int killed = 0;
  int made = 0;
  for (int i = 0; i < kKills / 2; ++i) {
    SCOPED_TRACE(i);
    std::filesystem::remove(folder.Book());
    const microseconds after(std::uniform_int_distribution<long>(0, whole.count())(random));
    if (KillImport(folder, after)) ++killed;
    if (!std::filesystem::exists(folder.Book())) continue;
    ++made;
    EXPECT_EQ(folder.Rows("SELECT COUNT(*) FROM bill"), "3\n");
    EXPECT_EQ(folder.Violations(), "");
  }
  EXPECT_GT(killed, kKills / 10);
  // Whatever the killed ones left does not stand in the way.
  std::filesystem::remove(folder.Book());
  EXPECT_TRUE(folder.Import().written);
  EXPECT_EQ(folder.Violations(), "");
  RecordProperty("killed", killed);
  RecordProperty("made", made);
}

TEST(ImportKill, ABookHasAllOfTheNewRowsOrNone) {
  ImportFolder folder(SoundFiles());
  ASSERT_TRUE(folder.Import().written);
  const auto first = folder.Book().parent_path() / "first.db";
  std::filesystem::copy_file(folder.Book(), first);
  folder.Write(MoreFiles());
  const microseconds whole = TimeOf(folder);
  std::mt19937 random(11262021);
  int killed = 0;
  for (int i = 0; i < kKills / 2; ++i) {
    SCOPED_TRACE(i);
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(folder.Book().string() + suffix);
    std::filesystem::copy_file(first, folder.Book());
    const microseconds after(std::uniform_int_distribution<long>(0, whole.count())(random));
    if (KillImport(folder, after)) ++killed;
    const std::string counts = folder.Rows(
        "SELECT (SELECT COUNT(*) FROM bill), (SELECT COUNT(*) FROM bill_entry), (SELECT COUNT(*) FROM "
        "movement), "
        "(SELECT COUNT(*) FROM base_data WHERE class_id = 1)");
    EXPECT_TRUE(counts == "3 5 6 1\n" || counts == "4 7 8 2\n") << counts;
    EXPECT_EQ(folder.Violations(), "");
  }
  EXPECT_GT(killed, kKills / 10);
  EXPECT_EQ(ImportFolder::ErrorsOf(folder.Import()), "");
  EXPECT_EQ(folder.Rows("SELECT COUNT(*) FROM bill"), "4\n");
}

}  // namespace
