// A ledger of a hundred thousand rows: filled, read, searched, filtered and cloned.
#include <benchmark/benchmark.h>

#include "benches/platform/Allocations.h"
#include "benches/platform/LedgerRows.h"

namespace bench {
namespace {

using platform::Currency;
using platform::Date;
using platform::Recordset;
using platform::Ref;

constexpr std::size_t kRows = 100000;

const Ref<Recordset>& Ledger() {
  static const Ref<Recordset> ledger = [] {
    Ref<Recordset> filled = NewLedger();
    AppendLedger(*filled, kRows);
    return filled;
  }();
  return ledger;
}

void CountRows(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRows));
}

void AppendLedgerRows(benchmark::State& state) {
  LedgerSource();
  std::size_t bytes = 0;
  const std::size_t allocationsBefore = AllocationCount();
  for (auto _ : state) {
    const Ref<Recordset> ledger = NewLedger();
    AppendLedger(*ledger, kRows);
    bytes = ledger->Bytes();
  }
  CountRows(state);
  const auto rows = static_cast<double>(kRows);
  const auto allocations = static_cast<double>(AllocationCount() - allocationsBefore);
  state.counters["bytes_per_row"] = static_cast<double>(bytes) / rows;
  state.counters["allocations_per_row"] = allocations / rows / static_cast<double>(state.iterations());
}
BENCHMARK(AppendLedgerRows)->Name("AppendLedgerRows")->Unit(benchmark::kMillisecond);

// The measure: the same columns in the vectors that anybody would write first.
struct PlainLedger {
  std::vector<std::int16_t> year, period, qtyDecimal, priceDecimal;
  std::vector<std::int32_t> id, entryId, classTypeId, sumSort;
  std::vector<Date> date;
  std::vector<std::string> periodName, voucherNo, batchNo, billNo, tranTypeName, auxName, note;
  std::vector<double> inQty, inPrice, outQty, outPrice, balQty, balPrice;
  std::vector<Currency> inAmount, inDiff, outAmount, outDiff, balAmount, balDiff;

  void Append(const LedgerRow& row) {
    year.push_back(row.year);
    period.push_back(row.period);
    periodName.push_back(row.periodName);
    id.push_back(row.id);
    entryId.push_back(row.entryId);
    date.push_back(row.date);
    voucherNo.push_back(row.voucherNo);
    batchNo.push_back(row.batchNo);
    billNo.push_back(row.billNo);
    tranTypeName.push_back(row.tranTypeName);
    classTypeId.push_back(row.classTypeId);
    auxName.push_back(row.auxName);
    qtyDecimal.push_back(row.qtyDecimal);
    priceDecimal.push_back(row.priceDecimal);
    inQty.push_back(row.inQty);
    inPrice.push_back(row.inPrice);
    inAmount.push_back(row.inAmount);
    inDiff.push_back(row.inDiff);
    outQty.push_back(row.outQty);
    outPrice.push_back(row.outPrice);
    outAmount.push_back(row.outAmount);
    outDiff.push_back(row.outDiff);
    balQty.push_back(row.balQty);
    balPrice.push_back(row.balPrice);
    balAmount.push_back(row.balAmount);
    balDiff.push_back(row.balDiff);
    note.push_back(row.note);
    sumSort.push_back(row.sumSort);
  }
};

void AppendToPlainVectors(benchmark::State& state) {
  const std::vector<LedgerRow>& source = LedgerSource();
  for (auto _ : state) {
    PlainLedger ledger;
    for (std::size_t i = 0, from = 0; i < kRows; ++i, from = from + 1 == source.size() ? 0 : from + 1) {
      ledger.Append(source[from]);
    }
    benchmark::DoNotOptimize(ledger.sumSort.data());
  }
  CountRows(state);
}
BENCHMARK(AppendToPlainVectors)->Name("AppendToPlainVectors")->Unit(benchmark::kMillisecond);

// A row at a time through the cursor, by name, as a caller does that knows nothing of columns.
void AddNewByName(benchmark::State& state) {
  for (auto _ : state) {
    const Ref<Recordset> ledger = NewLedger();
    for (std::size_t i = 0; i < kRows; ++i) {
      ledger->AddNew();
      for (const platform::Field& field : ledger->Fields()) ledger->SetValue(field.name, 0);
      ledger->Update();
    }
  }
  CountRows(state);
}
BENCHMARK(AddNewByName)->Name("AddNewByName")->Unit(benchmark::kMillisecond);

void ReadByColumn(benchmark::State& state) {
  const Recordset& ledger = *Ledger();
  for (auto _ : state) {
    for (std::size_t row = 0; row < kRows; ++row) {
      for (const std::size_t column : {0U, 1U, 3U, 4U, 10U, 12U, 13U, 27U}) {
        benchmark::DoNotOptimize(ledger.IntegerAt(column, row));
      }
      for (const std::size_t column : {2U, 6U, 7U, 8U, 9U, 11U, 26U}) {
        benchmark::DoNotOptimize(ledger.TextAt(column, row));
      }
      benchmark::DoNotOptimize(ledger.DateAt(5, row));
      for (const std::size_t column : {14U, 15U, 18U, 19U, 22U, 23U}) {
        benchmark::DoNotOptimize(ledger.DoubleAt(column, row));
      }
      for (const std::size_t column : {16U, 17U, 20U, 21U, 24U, 25U}) {
        benchmark::DoNotOptimize(ledger.CurrencyAt(column, row));
      }
    }
  }
  CountRows(state);
}
BENCHMARK(ReadByColumn)->Name("ReadByColumn")->Unit(benchmark::kMillisecond);

void ReadByCursor(benchmark::State& state) {
  const Ref<Recordset> ledger = Ledger()->Clone();
  const std::size_t columns = ledger->Fields().size();
  for (auto _ : state) {
    for (ledger->MoveFirst(); !ledger->AtEnd(); ledger->MoveNext()) {
      for (std::size_t column = 0; column < columns; ++column)
        benchmark::DoNotOptimize(ledger->Value(column));
    }
  }
  CountRows(state);
}
BENCHMARK(ReadByCursor)->Name("ReadByCursor")->Unit(benchmark::kMillisecond);

void Find(benchmark::State& state, const char* condition) {
  const Ref<Recordset> ledger = Ledger()->Clone();
  for (auto _ : state) {
    ledger->MoveFirst();
    ledger->Find(condition);
    if (!ledger->AtEnd()) state.SkipWithError("found what is not there");
  }
  CountRows(state);
}
BENCHMARK_CAPTURE(Find, text, "FBillNo='WIN9'")->Name("FindText")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, like, "FNote like '%退货%'")->Name("FindLike")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Find, number, "FID=-1")->Name("FindNumber")->Unit(benchmark::kMillisecond);

void Filter(benchmark::State& state) {
  const Ref<Recordset> ledger = Ledger()->Clone();
  for (auto _ : state) {
    ledger->SetFilter("FYear=2024 AND FPeriod=3 AND FTranTypeName='外购入库'");
    if (ledger->RecordCount() == 0) state.SkipWithError("nothing passed the filter");
  }
  CountRows(state);
}
BENCHMARK(Filter)->Name("Filter")->Unit(benchmark::kMillisecond);

void Clone(benchmark::State& state) {
  const Ref<Recordset>& ledger = Ledger();
  for (auto _ : state) {
    const Ref<Recordset> clone = ledger->Clone();
    benchmark::DoNotOptimize(clone.Get());
  }
}
BENCHMARK(Clone)->Name("Clone");

}  // namespace
}  // namespace bench
