// The stock ledger on the large demo book, through the component's contract: pages, moves from item to item,
// and the pages of all items in growing numbers. What is timed begins with the call and ends with the
// finished rows; the dialog and the item list stand before it.
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>

#include "benches/books/DemoBook.h"
#include "books/database/Connection.h"
#include "desk/FilterFiller.h"
#include "desk/Host.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "player/BookBackend.h"

namespace {

using platform::Object;
using platform::Recordset;
using platform::Ref;

// A desk with the component on it and a book behind it, opened afresh: nothing is known of the book yet.
class LedgerSession {
 public:
  explicit LedgerSession(const std::filesystem::path& book)
      : book_(player::OpenBook(book.string(), [] { return 0; })),
        host_(*book_, witness_, screen_, desk::DefaultComponentPath()) {
    host_.SetDataComponents([this](std::string_view id) { return book_->CreateComponent(id); });
  }

  // A ledger of 24 months that shows the first item's page.
  Ref<Object> Open(const std::string& lastItem = {}) {
    Ref<Object> report = platform::CreateObject("TOVStockRpt.Rpt10402");
    screen_.Fill({{"BDate", "2024-12-01"}, {"EDate", "2026-11-30"}, {"EItemNumber", lastItem}});
    report->Call("ShowFilter");
    report->Call("GetReportData");
    return report;
  }

 private:
  std::unique_ptr<desk::DataBackend> book_;
  desk::Witness witness_;
  desk::FilterFiller screen_;
  desk::Host host_;
};

std::string Failure(Object& report) {
  const Ref<platform::Dictionary> result = report.Get("Result").AsRef<platform::Dictionary>();
  return platform::ToBoolean(result->Value("OK")) ? std::string() : platform::ToText(result->Value("Error"));
}

// The number that ends a list of so many items; empty for all of them.
std::string LastItem(const std::filesystem::path& book, std::int64_t items) {
  books::database::Connection connection =
      books::database::Connection::Open(book, books::database::Access::kReadOnly);
  books::database::Statement row = connection.Query(
      "SELECT b.number FROM base_data b JOIN item i ON i.id = b.id ORDER BY b.number LIMIT 1 OFFSET ?",
      items - 1);
  return row.Step() ? row.Text(0) : std::string();
}

void LedgerPage(benchmark::State& state) {
  LedgerSession session(bench::DemoBookFile(books::DemoSize::kLarge));
  const Ref<Object> report = session.Open();
  for (auto _ : state) report->Call("Refresh");
  if (const std::string error = Failure(*report); !error.empty()) state.SkipWithError(error.c_str());
}
BENCHMARK(LedgerPage)->Name("LedgerPage")->Unit(benchmark::kMillisecond);

void LedgerNextItem(benchmark::State& state) {
  LedgerSession session(bench::DemoBookFile(books::DemoSize::kLarge));
  const Ref<Object> report = session.Open();
  for (auto _ : state) {
    if (platform::ToInt32(report->Call("NextItem")) == 0) report->Call("FirstItem");
  }
  if (const std::string error = Failure(*report); !error.empty()) state.SkipWithError(error.c_str());
}
BENCHMARK(LedgerNextItem)->Name("LedgerNextItem")->Unit(benchmark::kMillisecond);

// What the process holds of its own, without the pages of files.
double OwnMegabytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  double kilobytes = 0;
  while (status >> word) {
    if (word == "RssAnon:") status >> kilobytes;
  }
  return kilobytes / 1024;
}

// The pages of the list's items up to one, or of all; each round on a book that has just been opened.
void RunAllPages(benchmark::State& state, const std::filesystem::path& book, const std::string& lastItem) {
  std::int64_t rows = 0;
  std::size_t bytes = 0;
  double megabytes = 0;
  const double before = OwnMegabytes();
  for (auto _ : state) {
    state.PauseTiming();
    {
      LedgerSession session(book);
      const Ref<Object> report = session.Open(lastItem);
      state.ResumeTiming();
      report->Call("GetMutilPageData");
      state.PauseTiming();
      if (const std::string error = Failure(*report); !error.empty()) state.SkipWithError(error.c_str());
      if (const Ref<Recordset> pages = report->Get("MutilPageRs").AsRef<Recordset>()) {
        rows += pages->RecordCount();
        bytes = pages->Bytes();
        megabytes = OwnMegabytes() - before;
      }
    }
    state.ResumeTiming();
  }
  const auto perRound = static_cast<double>(rows) / static_cast<double>(state.iterations());
  state.counters["rows"] = perRound;
  state.counters["rows_per_second"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsRate);
  state.counters["bytes_per_row"] = static_cast<double>(bytes) / perRound;
  state.counters["megabytes"] = megabytes;
}

void LedgerAllPages(benchmark::State& state) {
  const std::filesystem::path& book = bench::DemoBookFile(books::DemoSize::kLarge);
  RunAllPages(state, book, LastItem(book, state.range(0)));
}
BENCHMARK(LedgerAllPages)
    ->Name("LedgerAllPages")
    ->Unit(benchmark::kMillisecond)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Arg(5000);
BENCHMARK(LedgerAllPages)->Name("LedgerAllPages")->Unit(benchmark::kMillisecond)->Arg(20000)->Iterations(1);

void LedgerAllPagesOfTheMediumBook(benchmark::State& state) {
  RunAllPages(state, bench::DemoBookFile(books::DemoSize::kMedium), {});
}
BENCHMARK(LedgerAllPagesOfTheMediumBook)
    ->Name("LedgerAllPagesOfTheMediumBook")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace
