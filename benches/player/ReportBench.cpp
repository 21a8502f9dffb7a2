#include <benchmark/benchmark.h>

#include "benches/books/MediumBook.h"
#include "desk/Host.h"
#include "platform/rows/Recordset.h"
#include "player/BookBackend.h"
#include "player/ReportRun.h"

// A whole report on the medium book as a user without a screen runs it: dialog, filter, heading, rows. What
// it takes beyond the rows themselves (OverShortOfTheWholeBook) is the component's and the desk's share.
namespace {

void OverShortFromDialogToRows(benchmark::State& state) {
  player::ReportRun run({.component = desk::DefaultComponentPath(),
                         .book = player::OpenBook(bench::MediumBookFile().string(), [] { return 0; }),
                         .appType = {},
                         .industryType = {}});
  std::int32_t rows = 0;
  for (auto _ : state) {
    const player::ReportOutcome outcome = run.Run("Rpt10414", {});
    if (!outcome.ok) return state.SkipWithError(outcome.error.c_str());
    rows = outcome.rows.AsRef<platform::Recordset>()->RecordCount();
  }
  state.counters["rows"] = rows;
}
BENCHMARK(OverShortFromDialogToRows)->Unit(benchmark::kMillisecond);

}  // namespace
