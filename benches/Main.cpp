// Runs the benches and then holds what was measured against the targets: ratios of two benches of the same
// run, so that they mean the same on every machine. A target that is missed makes the run fail; one whose
// benches were filtered away is not judged. Every report that a plain statement stands beside is held against
// that as well.
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

// `measured` is a bench (its processor time in nanoseconds) or one of its counters ("bench:counter"); with
// `against` the target limits the quotient of the two. Of several rows with the same `what` one must be met.
struct Target {
  std::string_view what;
  std::string_view measured;
  std::string_view against;
  double limit = 0;
  std::string_view unit;
};

constexpr Target kTargets[] = {
    {"appending a ledger row, against plain vectors", "AppendLedgerRows", "AppendToPlainVectors", 2, "times"},
    {"memory of a ledger row with repeating texts", "AppendLedgerRows:bytes_per_row", "", 220, "bytes"},
    {"heap allocations a ledger row", "AppendLedgerRows:allocations_per_row", "", 0.1, ""},
    {"the page of a ledger's item, large book", "LedgerPage", "", 15e6, "ns"},
    {"the ledger's next item, large book", "LedgerNextItem", "", 5e6, "ns"},
    {"all pages of the ledger, large book", "LedgerAllPages/20000/iterations:1", "", 2e9, "ns"},
    {"all pages of the ledger, beside SQL", "LedgerAllPages/20000/iterations:1",
     "LedgerWindowQuery/iterations:1", 0.125, "of a window query's time"},
    {"memory of the same", "LedgerAllPages/20000/iterations:1:bytes_per_row", "", 220, "bytes a row"},
    {"memory of the same, all told", "LedgerAllPages/20000/iterations:1:megabytes", "", 900, "MB"},
    {"all pages of the ledger, medium book", "LedgerAllPagesOfTheMediumBook/iterations:1",
     "LedgerWindowQueryOfTheMediumBook/iterations:1", 0.125, "of a window query's time"},
    {"progress of a row, told to a page", "ProgressOfARow", "", 500, "ns"},
    {"instant stock, medium book", "reports/InstantStock/medium", "", 300e6, "ns"},
    {"instant stock at a day, medium book", "reports/InstantStockAtADay/medium", "", 300e6, "ns"},
    {"instant stock by rows, medium book", "reports/InstantStockByRows/medium", "", 300e6, "ns"},
    {"instant stock by rows at a day, medium book", "reports/InstantStockByRowsAtADay/medium", "", 300e6,
     "ns"},
    {"stock structure, medium book", "reports/Structure/medium", "", 300e6, "ns"},
    {"available stock, medium book", "reports/AvailableStock/medium", "", 300e6, "ns"},
    {"shelf life, medium book", "reports/ShelfLife/medium", "", 300e6, "ns"},
    {"purchase prices of a month, medium book", "reports/PurchasePricesOfAMonth/medium", "", 300e6, "ns"},
    {"instant stock, large book", "reports/InstantStock/large", "", 1.5e9, "ns"},
    {"instant stock at a day, large book", "reports/InstantStockAtADay/large", "", 3e9, "ns"},
    {"instant stock by rows, large book", "reports/InstantStockByRows/large", "", 1.5e9, "ns"},
    {"instant stock by rows at a day, large book", "reports/InstantStockByRowsAtADay/large", "", 3e9, "ns"},
    {"stock structure, large book", "reports/Structure/large", "", 1.5e9, "ns"},
    {"available stock, large book", "reports/AvailableStock/large", "", 1e9, "ns"},
    {"shelf life, large book", "reports/ShelfLife/large", "", 1e9, "ns"},
    {"over and short stock, large book", "reports/OverShort/large", "", 1e9, "ns"},
    {"purchase prices of a month, large book", "reports/PurchasePricesOfAMonth/large", "", 1e9, "ns"},
    {"business summary of a month, large book", "reports/BusinessSummaryOfAMonth/large", "", 1.5e9, "ns"},
    {"business summary of two years, large book", "reports/BusinessSummaryOfTwoYears/large", "", 4e9, "ns"},
    {"movement summary of a month, large book", "reports/MovementSummaryOfAMonth/large", "", 1e9, "ns"},
    {"movement summary of two years, large book", "reports/MovementSummaryOfTwoYears/large", "", 3e9, "ns"},
    {"movement detail of a month, large book", "reports/MovementDetailOfAMonth/large", "", 2e9, "ns"},
    {"movement detail of an item, large book", "reports/MovementDetailOfAnItem/large", "", 100e6, "ns"},
    {"linked bills of a month, large book", "reports/LinkedBillsOfAMonth/large", "", 1e9, "ns"},
    {"serial numbers in stock, large book", "reports/SerialNumbersInStock/large", "", 1e9, "ns"},
    {"a call by name", "CallByName", "", 150, "ns"},
    {"a call by name", "CallByName", "CallVirtual", 15, "virtual calls"},
};

// "reports/sql/NAME/BOOK" is the statement beside "reports/NAME/BOOK", which is to be no slower. What is
// quick enough for anybody is not judged by that: a dialog and a heading take their time whatever is asked.
constexpr std::string_view kReports = "reports/";
constexpr std::string_view kStatements = "reports/sql/";
constexpr double kQuick = 20e6;  // ns

class Reporter : public benchmark::ConsoleReporter {
 public:
  Reporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      failed_ = failed_ || run.error_occurred;
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const std::string name = run.benchmark_name();
      // The quickest of several repetitions is the one that nothing disturbed.
      const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations) * 1e9;
      const auto [at, isFirst] = figures_.try_emplace(name, time);
      if (!isFirst && time < at->second) at->second = time;
      for (const auto& [counter, value] : run.counters) figures_[name + ":" + counter] = value.value;
    }
  }

  // True when nothing failed and every target that could be judged was met.
  bool Judge() const {
    std::map<std::string_view, bool> met;
    for (const Target& target : kTargets) {
      const std::optional<double> figure = Figure(target);
      if (!figure) continue;
      const bool good = *figure <= target.limit;
      std::printf("%-46s %9.3f %s, at most %g: %s\n", std::string(target.what).c_str(), *figure,
                  std::string(target.unit).c_str(), target.limit, good ? "met" : "over");
      bool& any = met.try_emplace(target.what, false).first->second;
      any = any || good;
    }
    bool all = IsNoSlowerThanStatements() && !failed_;
    for (const auto& [what, good] : met) all = all && good;
    std::puts(all ? "all targets met" : "a bench failed or a target is missed");
    return all;
  }

 private:
  bool IsNoSlowerThanStatements() const {
    bool all = true;
    for (const auto& [name, statement] : figures_) {
      if (!name.starts_with(kStatements) || name.find(':') != std::string::npos) continue;
      const std::string report = name.substr(kStatements.size());
      const auto own = figures_.find(std::string(kReports) + report);
      if (own == figures_.end()) continue;
      const bool good = own->second <= statement || own->second <= kQuick;
      std::printf("%-46s %9.3f of one statement's time: %s\n", report.c_str(), own->second / statement,
                  good ? "met" : "over");
      all = all && good;
    }
    return all;
  }

  std::optional<double> Figure(const Target& target) const {
    const auto measured = figures_.find(target.measured);
    if (measured == figures_.end()) return std::nullopt;
    if (target.against.empty()) return measured->second;
    const auto against = figures_.find(target.against);
    if (against == figures_.end()) return std::nullopt;
    return measured->second / against->second;
  }

  std::map<std::string, double, std::less<>> figures_;
  bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return reporter.Judge() ? 0 : 1;
}
