#include <benchmark/benchmark.h>

#include "benches/books/MediumBook.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"

// The rows of 商品超储短缺表 and the lookups on the medium book. Each is to answer in less than 100 ms.
namespace {

void Fetch(benchmark::State& state, const platform::Ref<platform::Dictionary>& filter) {
  const platform::Ref<platform::Object> data = bench::MediumBook().CreateComponent("TOVMStockRpt.Data10414");
  std::int32_t rows = 0;
  for (auto _ : state) {
    platform::Variant argument(filter);
    rows = data->Call("GetRpt10414Data", "UserID=3;", argument).AsRef<platform::Recordset>()->RecordCount();
  }
  state.counters["rows"] = rows;
}

void OverShortOfTheWholeBook(benchmark::State& state) { Fetch(state, nullptr); }
BENCHMARK(OverShortOfTheWholeBook)->Unit(benchmark::kMillisecond);

void OverShortWithRightsAndRanges(benchmark::State& state) {
  const auto filter = platform::MakeRef<platform::Dictionary>();
  filter->Set("BStockNumber", "02");
  filter->Set("OrderBy", "FOverQty DESC ");
  filter->Set("DataRightWhere", " (CharIndex('3',t4.FRightUserID)>0 OR ISNULL(t4.FItemID,0)=0) ");
  Fetch(state, filter);
}
BENCHMARK(OverShortWithRightsAndRanges)->Unit(benchmark::kMillisecond);

void ItemLookup(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(bench::MediumBook().BaseData({.search = "商品49", .filter = " t1.FDeleted=0 "}));
  }
}
BENCHMARK(ItemLookup)->Unit(benchmark::kMillisecond);

void BatchLookup(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(bench::MediumBook().Batches({.filter = "t3.FNumber >='10'", .keyWord = "B1"}));
  }
}
BENCHMARK(BatchLookup)->Unit(benchmark::kMillisecond);

}  // namespace
