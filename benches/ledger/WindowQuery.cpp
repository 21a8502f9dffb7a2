// The measure beside the ledger: the rows of all its pages as anybody would ask the database for them, in one
// query with window functions over the same book, read to the last row.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "benches/books/DemoBook.h"
#include "books/database/Connection.h"
#include "books/schema/Codes.h"

namespace {

using books::database::Access;
using books::database::Connection;
using books::database::Statement;
using books::schema::PeriodOf;

// Stands in a file of its own, so that other databases can be asked the same.
std::string LedgerSql() {
  std::ifstream file(std::filesystem::path(BENCH_SOURCE_DIR) / "ledger" / "window_query.sql");
  if (!file) throw std::runtime_error("cannot read ledger/window_query.sql beside the benches");
  return {std::istreambuf_iterator<char>(file), {}};
}

void Ask(benchmark::State& state, books::DemoSize size) {
  Connection book = Connection::Open(bench::DemoBookFile(size), Access::kReadOnly);
  std::int64_t rows = 0;
  for (auto _ : state) {
    Statement ledger = book.Query(LedgerSql(), PeriodOf(2024, 12), PeriodOf(2026, 11));
    const int columns = ledger.ColumnCount();
    while (ledger.Step()) {
      for (int column = 0; column < columns; ++column) benchmark::DoNotOptimize(ledger.IsNull(column));
      ++rows;
    }
  }
  state.counters["rows"] = static_cast<double>(rows) / static_cast<double>(state.iterations());
  state.counters["rows_per_second"] =
      benchmark::Counter(static_cast<double>(rows), benchmark::Counter::kIsRate);
}

void LedgerWindowQuery(benchmark::State& state) { Ask(state, books::DemoSize::kLarge); }
BENCHMARK(LedgerWindowQuery)->Name("LedgerWindowQuery")->Unit(benchmark::kMillisecond)->Iterations(1);

void LedgerWindowQueryOfTheMediumBook(benchmark::State& state) { Ask(state, books::DemoSize::kMedium); }
BENCHMARK(LedgerWindowQueryOfTheMediumBook)
    ->Name("LedgerWindowQueryOfTheMediumBook")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace
