// Every report but the ledger, from its dialog's defaults to the last row, on the medium and the large demo
// book; beside some of them the same question as anybody would ask it of the database in one statement, read
// to its last row. Times are processor times.
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "benches/books/DemoBook.h"
#include "books/database/Connection.h"
#include "books/schema/Codes.h"
#include "desk/Host.h"
#include "desk/ReportRows.h"
#include "platform/value/Date.h"
#include "player/BookBackend.h"
#include "player/ReportRun.h"

namespace {

using books::DemoSize;
using platform::Date;

constexpr std::string_view kStockSql = R"sql(
SELECT b.number, b.name, i.model, u.name, w.name, s.quantity / 1e6, s.aux_quantity / 1e6, s.amount
FROM (SELECT item_id, warehouse_id, SUM(quantity) AS quantity, SUM(aux_quantity) AS aux_quantity,
             SUM(amount) AS amount
      FROM stock GROUP BY item_id, warehouse_id) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
JOIN base_data w ON w.id = s.warehouse_id
WHERE b.disabled = 0 AND (s.quantity <> 0 OR s.aux_quantity <> 0 OR s.amount <> 0)
ORDER BY b.number, w.number
)sql";

// At the end of the last day of the period before ?, and the movements from its first day to ?.
constexpr std::string_view kPastStockSql = R"sql(
SELECT b.number, b.name, i.model, u.name, w.name, SUM(s.quantity) / 1e6, SUM(s.aux_quantity) / 1e6,
       SUM(s.amount)
FROM (SELECT item_id, warehouse_id, quantity, aux_quantity, amount FROM balance WHERE period = ? - 1
      UNION ALL
      SELECT item_id, warehouse_id, direction * quantity, direction * aux_quantity, direction * amount
      FROM movement WHERE period = ? AND date <= ?) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
JOIN base_data w ON w.id = s.warehouse_id
WHERE b.disabled = 0
GROUP BY s.item_id, s.warehouse_id
HAVING SUM(s.quantity) <> 0 OR SUM(s.amount) <> 0
ORDER BY b.number, w.number
)sql";

constexpr std::string_view kSummarySql = R"sql(
SELECT b.number, b.name, i.model, i.barcode, u.name, SUM(s.opening), SUM(s.opening_amount), SUM(s.come),
       SUM(s.come_amount), SUM(s.gone), SUM(s.gone_amount),
       SUM(s.opening + s.come - s.gone), SUM(s.opening_amount + s.come_amount - s.gone_amount)
FROM (SELECT item_id, quantity AS opening, amount AS opening_amount, 0 AS come, 0 AS come_amount, 0 AS gone,
             0 AS gone_amount
      FROM balance WHERE period = ? - 1
      UNION ALL
      SELECT item_id, 0, 0, CASE WHEN direction > 0 THEN quantity ELSE 0 END,
             CASE WHEN direction > 0 THEN amount ELSE 0 END,
             CASE WHEN direction < 0 THEN quantity ELSE 0 END,
             CASE WHEN direction < 0 THEN amount ELSE 0 END
      FROM movement WHERE period BETWEEN ? AND ?) s
JOIN base_data b ON b.id = s.item_id
JOIN item i ON i.id = s.item_id
JOIN unit u ON u.id = i.unit_id
GROUP BY s.item_id
ORDER BY b.number
)sql";

constexpr std::string_view kBusinessSql = R"sql(
SELECT b.number, b.name, i.model, i.barcode, u.name, m.bill_class, m.direction, SUM(m.quantity) / 1e6,
       SUM(m.aux_quantity) / 1e6, SUM(m.amount)
FROM movement m
JOIN base_data b ON b.id = m.item_id
JOIN item i ON i.id = m.item_id
JOIN unit u ON u.id = i.unit_id
WHERE m.period BETWEEN ? AND ?
GROUP BY m.item_id, m.bill_class, m.direction
ORDER BY b.number, m.bill_class
)sql";

constexpr std::string_view kDetailSql = R"sql(
SELECT m.date, c.name, v.number, v.explanation, b.number, b.name, i.model, u.name,
       CASE WHEN m.direction > 0 THEN m.quantity / 1e6 END, CASE WHEN m.direction > 0 THEN m.amount END,
       CASE WHEN m.direction < 0 THEN m.quantity / 1e6 END, CASE WHEN m.direction < 0 THEN m.amount END,
       SUM(m.direction * m.quantity) OVER (PARTITION BY m.item_id
         ORDER BY m.date, m.day_order, m.bill_id, m.direction, m.line ROWS UNBOUNDED PRECEDING)
FROM movement m
JOIN bill v ON v.id = m.bill_id
JOIN bill_class c ON c.id = m.bill_class
JOIN base_data b ON b.id = m.item_id
JOIN item i ON i.id = m.item_id
JOIN unit u ON u.id = i.unit_id
WHERE m.period BETWEEN ? AND ?
ORDER BY b.number, m.date, m.day_order, m.bill_id, m.direction, m.line
)sql";

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

void RunReport(benchmark::State& state, const Asked& asked, DemoSize size) {
  player::ReportRun run({.component = desk::DefaultComponentPath(),
                         .book = player::OpenBook(bench::DemoBookFile(size).string(), [] { return 0; }),
                         .appType = 2,
                         .industryType = {}});
  std::int32_t rows = 0;
  for (auto _ : state) {
    const player::ReportOutcome outcome = run.Run(asked.report, asked.keys);
    if (!outcome.ok) return state.SkipWithError(outcome.error.c_str());
    rows = desk::ReportRows(outcome.rows)->RecordCount();
  }
  state.counters["rows"] = rows;
}

struct Peer {
  const char* name;
  std::string_view sql;
  std::vector<std::int64_t> values;
};

const std::vector<Peer>& AllPeers() {
  const std::int64_t day = Date::Of(2026, 6, 20).Days();
  const std::int64_t june = books::schema::PeriodOf(2026, 6);
  const std::int64_t october = books::schema::PeriodOf(2026, 10);
  const std::int64_t first = books::schema::PeriodOf(2024, 12);
  const std::int64_t last = books::schema::PeriodOf(2026, 11);
  static const std::vector<Peer> kPeers = {
      {"InstantStockByRows", kStockSql, {}},
      {"InstantStockByRowsAtADay", kPastStockSql, {june, june, day}},
      {"BusinessSummaryOfAMonth", kBusinessSql, {october, october}},
      {"BusinessSummaryOfTwoYears", kBusinessSql, {first, last}},
      {"MovementSummaryOfAMonth", kSummarySql, {october, october, october}},
      {"MovementSummaryOfTwoYears", kSummarySql, {first, first, last}},
      {"MovementDetailOfAMonth", kDetailSql, {october, october}},
  };
  return kPeers;
}

void RunSql(benchmark::State& state, const Peer& peer, DemoSize size) {
  books::database::Connection book =
      books::database::Connection::Open(bench::DemoBookFile(size), books::database::Access::kReadOnly);
  std::int64_t rows = 0;
  for (auto _ : state) {
    rows = 0;
    books::database::Statement row = book.Prepare(peer.sql);
    int parameter = 0;
    for (const std::int64_t value : peer.values) row.BindAt(parameter++, value);
    const int columns = row.ColumnCount();
    while (row.Step()) {
      for (int column = 0; column < columns; ++column) benchmark::DoNotOptimize(row.TextView(column));
      ++rows;
    }
  }
  state.counters["rows"] = static_cast<double>(rows);
}

// reports/NAME/BOOK and sql/NAME/BOOK, by name.
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
    for (const Peer& peer : AllPeers()) {
      benchmark::RegisterBenchmark(
          ("reports/sql/" + std::string(peer.name) + end).c_str(),
          [&peer, size = book.size](benchmark::State& state) { RunSql(state, peer, size); })
          ->Unit(benchmark::kMillisecond);
    }
  }
  return true;
}();

}  // namespace
