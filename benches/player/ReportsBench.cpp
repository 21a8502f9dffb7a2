// Every report but the ledger, from its dialog's defaults to the last row, on the medium and the large demo
// book, with its rows and the most memory that it held on the way; beside most of them the same question as
// anybody would ask it of the database in one statement, read to its last row. Times are processor times.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "benches/books/DemoBook.h"
#include "benches/platform/Allocations.h"
#include "benches/player/PlainStatements.h"
#include "books/database/Connection.h"
#include "desk/Host.h"
#include "desk/ReportRows.h"
#include "player/BookBackend.h"
#include "player/ReportRun.h"

namespace {

using books::DemoSize;

const std::vector<std::pair<std::string, std::string>> kMonth = {{"BDate", "2026-10-01"},
                                                                 {"EDate", "2026-10-31"}};
const std::vector<std::pair<std::string, std::string>> kTwoYears = {{"BDate", "2024-12-01"},
                                                                    {"EDate", "2026-11-30"}};
const std::vector<std::pair<std::string, std::string>> kPastDay = {{"OnTime", "0"}, {"EDate", "2026-06-20"}};

std::vector<std::pair<std::string, std::string>> And(std::vector<std::pair<std::string, std::string>> keys,
                                                     std::pair<std::string, std::string> key) {
  keys.push_back(std::move(key));
  return keys;
}

struct Asked {
  const char* name;
  const char* report;
  desk::FilterSettings keys;
};

const std::vector<Asked>& AllAsked() {
  static const std::vector<Asked> kAsked = {
      {"InstantStock", "Rpt302", {}},
      {"InstantStockAtADay", "Rpt302", kPastDay},
      {"InstantStockByRows", "Rpt332", {}},
      {"InstantStockByRowsAtADay", "Rpt332", kPastDay},
      {"Structure", "Rpt303", {}},
      {"AvailableStock", "Rpt10424", {{"chkCGBook", "1"}, {"chkXSBook", "1"}, {"chkLmtQ", "1"}}},
      {"ShelfLife", "Rpt10411", {}},
      {"OverShort", "Rpt10414", {}},
      {"PurchasePricesOfAMonth", "Rpt10415", kMonth},
      {"BusinessSummaryOfAMonth", "Rpt10401", kMonth},
      {"BusinessSummaryOfTwoYears", "Rpt10401", kTwoYears},
      {"MovementSummaryOfAMonth", "Rpt10412", kMonth},
      {"MovementSummaryOfTwoYears", "Rpt10412", kTwoYears},
      {"MovementDetailOfAMonth", "Rpt10413", kMonth},
      {"MovementDetailOfAnItem", "Rpt10413",
       And(And(kTwoYears, {"BItemNumber", "01.01.01.0001"}), {"EItemNumber", "01.01.01.0001"})},
      {"BatchSummaryOfAMonth", "Rpt10416", kMonth},
      {"BatchDetailOfAMonth", "Rpt10417", kMonth},
      {"LinkedBillsOfAMonth", "Rpt10403", kMonth},
      {"SerialNumbersInStock", "Rpt10418", {{"cboSerialNoStatus", "1"}}},
  };
  return kAsked;
}

player::ReportRun::Options OptionsFor(DemoSize size) {
  return {.component = desk::DefaultComponentPath(),
          .book = player::OpenBook(bench::DemoBookFile(size).string(), [] { return 0; }),
          .appType = 2,
          .industryType = {}};
}

// Of one run on a book that was just opened, until its rows are handed out.
double PeakMegabytes(const Asked& asked, DemoSize size) {
  player::ReportRun run(OptionsFor(size));
  const bench::AllocationPeak peak;
  const player::ReportOutcome outcome = run.Run(asked.report, asked.keys);
  return peak.Megabytes();
}

void RunReport(benchmark::State& state, const Asked& asked, DemoSize size) {
  state.counters["peak_MB"] = PeakMegabytes(asked, size);
  player::ReportRun run(OptionsFor(size));
  std::int32_t rows = 0;
  for (auto _ : state) {
    const player::ReportOutcome outcome = run.Run(asked.report, asked.keys);
    if (!outcome.ok) return state.SkipWithError(outcome.error.c_str());
    rows = desk::ReportRows(outcome.rows)->RecordCount();
  }
  state.counters["rows"] = rows;
}

books::database::Connection OpenBook(DemoSize size) {
  return books::database::Connection::Open(bench::DemoBookFile(size), books::database::Access::kReadOnly);
}

std::vector<std::int64_t> WarehousesOf(DemoSize size) {
  books::database::Connection book = OpenBook(size);
  books::database::Statement row = book.Prepare("SELECT id FROM warehouse ORDER BY id");
  std::vector<std::int64_t> ids;
  while (row.Step()) ids.push_back(row.Integer(0));
  return ids;
}

// The statement beside the report of this name.
void RunSql(benchmark::State& state, std::string_view report, DemoSize size) {
  const std::vector<bench::PlainStatement> all = bench::PlainStatements(WarehousesOf(size));
  const auto plain = std::ranges::find(all, report, &bench::PlainStatement::report);
  books::database::Connection book = OpenBook(size);
  std::int64_t rows = 0;
  for (auto _ : state) {
    rows = 0;
    books::database::Statement row = book.Prepare(plain->sql);
    int parameter = 0;
    for (const std::int64_t value : plain->values) row.BindAt(parameter++, value);
    const int columns = row.ColumnCount();
    while (row.Step()) {
      for (int column = 0; column < columns; ++column) benchmark::DoNotOptimize(row.TextView(column));
      ++rows;
    }
  }
  state.counters["rows"] = static_cast<double>(rows);
}

// reports/NAME/BOOK and reports/sql/NAME/BOOK, by name.
const bool kRegistered = [] {
  struct Size {
    const char* name;
    DemoSize size;
  };
  for (const Size& book : {Size{"medium", DemoSize::kMedium}, Size{"large", DemoSize::kLarge}}) {
    const std::string end = std::string("/") + book.name;
    for (const Asked& asked : AllAsked()) {
      benchmark::RegisterBenchmark(
          ("reports/" + std::string(asked.name) + end).c_str(),
          [&asked, size = book.size](benchmark::State& state) { RunReport(state, asked, size); })
          ->Unit(benchmark::kMillisecond);
    }
    for (const bench::PlainStatement& plain : bench::PlainStatements({})) {
      benchmark::RegisterBenchmark(
          ("reports/sql/" + std::string(plain.report) + end).c_str(),
          [report = plain.report, size = book.size](benchmark::State& state) { RunSql(state, report, size); })
          ->Unit(benchmark::kMillisecond);
    }
  }
  return true;
}();

}  // namespace
