// Random folders. A sound one makes a book in which the sums are those of its rows; a folder with bytes
// changed anywhere is either imported whole or refused whole.
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/value/Error.h"
#include "tests/books/import/ImportFolder.h"

namespace {

using books::test::Files;
using books::test::ImportFolder;
using books::test::SoundFiles;

struct RandomEntry {
  bool receipt = true;
  int quantity = 1;  // bags of rice
  int warehouse = 1;
  int day = 1;
};

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

// One bill for each entry, numbered on; the first `count` of them.
Files WithEntries(const std::vector<RandomEntry>& entries, std::size_t count) {
  Files files = SoundFiles();
  for (std::size_t i = 0; i < count; ++i) {
    const RandomEntry& entry = entries[i];
    const std::string bill = (entry.receipt ? "1020002,N" : "1030002,N") + std::to_string(i);
    files["bills.csv"] += bill + ",2026-10-" + TwoDigits(entry.day) + ",,\n";
    files["bill_entries.csv"] += bill + ",1,01.002,0" + std::to_string(entry.warehouse) + ",,,," +
                                 std::to_string(entry.quantity) + ",3.25,,,,\n";
  }
  return files;
}

rc::Gen<std::vector<RandomEntry>> Entries() {
  return rc::gen::container<std::vector<RandomEntry>>(rc::gen::build<RandomEntry>(
      rc::gen::set(&RandomEntry::receipt), rc::gen::set(&RandomEntry::quantity, rc::gen::inRange(1, 500)),
      rc::gen::set(&RandomEntry::warehouse, rc::gen::inRange(1, 3)),
      rc::gen::set(&RandomEntry::day, rc::gen::inRange(1, 32))));
}

constexpr const char* kStock =
    "SELECT w.number, SUM(s.quantity) / 1000000 FROM stock s JOIN base_data w ON w.id = s.warehouse_id "
    "JOIN base_data i ON i.id = s.item_id WHERE i.number = '01.002' GROUP BY w.number HAVING SUM(s.quantity) "
    "<> 0 ORDER BY w.number";
constexpr const char* kAmounts =
    "SELECT b.number, m.amount FROM movement m JOIN bill b ON b.id = m.bill_id ORDER BY b.number, m.amount";

TEST(ImportRandom, SumsAreThoseOfTheRows) {
  const bool holds = rc::check("sums, and the same book in one import or two", [] {
    const std::vector<RandomEntry> entries = *rc::gen::resize(12, Entries());
    std::map<int, std::int64_t> sums = {{1, 10}};
    for (const RandomEntry& entry : entries) {
      sums[entry.warehouse] += entry.receipt ? entry.quantity : -entry.quantity;
    }
    std::string expected;
    for (const auto& [warehouse, sum] : sums) {
      if (sum == 0) continue;
      expected += "0" + std::to_string(warehouse) + " " + std::to_string(sum) + "\n";
    }
    ImportFolder whole(WithEntries(entries, entries.size()));
    RC_ASSERT(ImportFolder::ErrorsOf(whole.Import()) == "");
    RC_ASSERT(whole.Rows(kStock) == expected);

    // Looking at everything takes longer than importing it, so one case in five does.
    if (*rc::gen::inRange(0, 5) != 0) return;
    RC_ASSERT(whole.Violations() == "");
    ImportFolder halves(WithEntries(entries, entries.size() / 2));
    RC_ASSERT(ImportFolder::ErrorsOf(halves.Import()) == "");
    halves.Write(WithEntries(entries, entries.size()));
    RC_ASSERT(ImportFolder::ErrorsOf(halves.Import()) == "");
    RC_ASSERT(halves.Rows(kStock) == expected);
    RC_ASSERT(halves.Rows(kAmounts) == whole.Rows(kAmounts));
  });
  EXPECT_TRUE(holds);
}

TEST(ImportRandom, BrokenFoldersAreRefusedWhole) {
  const bool holds = rc::check("one byte changed, added or taken out", [] {
    Files files = SoundFiles();
    auto file = files.begin();
    std::advance(file, *rc::gen::inRange<int>(0, static_cast<int>(files.size())));
    std::string& text = file->second;
    const auto at = static_cast<std::size_t>(*rc::gen::inRange<int>(0, static_cast<int>(text.size())));
    const char byte =
        *rc::gen::oneOf(rc::gen::arbitrary<char>(), rc::gen::element(',', '"', '\n', '\r', '-', '.', '0'));
    switch (*rc::gen::inRange(0, 3)) {
      case 0:
        text[at] = byte;
        break;
      case 1:
        text.insert(at, 1, byte);
        break;
      default:
        text.erase(at, 1);
    }
    ImportFolder folder(files);
    const books::ImportReport report = folder.Import();
    RC_ASSERT(report.written == (report.errorCount == 0));
    RC_ASSERT(std::filesystem::exists(folder.Book()) == report.written);
    if (report.written) RC_ASSERT(folder.Violations() == "");
    for (const books::ImportError& error : report.errors) {
      RC_ASSERT(!error.file.empty());
      RC_ASSERT(!error.problem.empty());
      RC_ASSERT(!error.remedy.empty());
    }
  });
  EXPECT_TRUE(holds);
}

}  // namespace
