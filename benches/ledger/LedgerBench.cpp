#include <benchmark/benchmark.h>

#include "benches/books/MediumBook.h"
#include "desk/Host.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "player/BookBackend.h"
#include "player/ReportRun.h"

// The stock ledger on the bench's own book: what the data component takes for an item's twelve periods, and
// whole reports from the dialog to the rows, one page and the pages of all items.
namespace {

using platform::Recordset;
using platform::Ref;
using platform::Variant;

void LedgerPeriodsOfAnItem(benchmark::State& state) {
  Variant filter(platform::MakeRef<platform::Dictionary>());
  filter.AsRef<platform::Dictionary>()->Set("EYear", 2026);
  filter.AsRef<platform::Dictionary>()->Set("EPeriod", 12);
  Variant condition(" ORDER BY  t0.FNumber");
  const Ref<Recordset> items = bench::MediumBook()
                                   .CreateComponent("TOVMStockRpt.Data10402")
                                   ->Call("GetItems", "UserID=0;", condition, filter)
                                   .AsRef<Recordset>();
  for (auto _ : state) {
    for (std::int16_t period = 1; period <= 12; ++period) {
      benchmark::DoNotOptimize(bench::MediumBook()
                                   .CreateComponent("TOVMStockRpt.Data10402")
                                   ->Call("GetPerioddata", "UserID=0;", items->Value("FItemID"),
                                          std::int16_t{2026}, period, "", filter));
    }
    items->MoveNext();
    if (items->AtEnd()) items->MoveFirst();
  }
}
BENCHMARK(LedgerPeriodsOfAnItem)->Unit(benchmark::kMicrosecond);

void RunLedger(benchmark::State& state, const player::PageWish& pages) {
  player::ReportRun run({.component = desk::DefaultComponentPath(),
                         .book = player::OpenBook(bench::MediumBookFile().string(), [] { return 0; }),
                         .appType = {},
                         .industryType = {}});
  std::int64_t rows = 0;
  for (auto _ : state) {
    const player::ReportOutcome outcome =
        run.Run("Rpt10402", {{"BDate", "2026-01-01"}, {"EDate", "2026-12-31"}}, pages);
    if (!outcome.ok) return state.SkipWithError(outcome.error.c_str());
    rows += outcome.rows.AsRef<Recordset>()->RecordCount();
  }
  state.counters["rows"] = benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kAvgIterations);
  state.counters["rows_per_second"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsRate);
}

void LedgerPageOfTwelveMonths(benchmark::State& state) { RunLedger(state, {}); }
BENCHMARK(LedgerPageOfTwelveMonths)->Unit(benchmark::kMillisecond);

void LedgerAllPagesOfTwelveMonths(benchmark::State& state) { RunLedger(state, {.item = {}, .all = true}); }
BENCHMARK(LedgerAllPagesOfTwelveMonths)->Unit(benchmark::kMillisecond);

}  // namespace
