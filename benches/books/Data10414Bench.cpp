#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "books/Book.h"
#include "books/schema/Schema.h"
#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"

// 商品超储短缺表 and the lookups on a book of 5,000 items in 12 warehouses, two batches of each everywhere.
// Each is to answer in less than 100 ms.
namespace {

class MediumBook {
 public:
  MediumBook() : file_(std::filesystem::path(BENCH_BINARY_DIR) / "data10414-bench.book") {
    Remove();
    books::database::Connection connection = books::schema::CreateBook(file_);
    connection.RunScript(R"sql(
BEGIN;
INSERT INTO unit (id, name) VALUES (1, '个');
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 12)
INSERT INTO base_data (id, class_id, number, short_number, name, right_users)
SELECT i, 5, printf('%02d', i), printf('%02d', i), '仓库', CASE WHEN i % 2 = 0 THEN '12' ELSE '3,12' END FROM n;
INSERT INTO warehouse (id) SELECT id FROM base_data;
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000)
INSERT INTO base_data (id, class_id, number, short_number, name)
SELECT 1000 + i, 4, printf('%02d.%04d', i % 20, i), printf('%04d', i), printf('商品%d', i) FROM n;
INSERT INTO item (id, unit_id, model, min_quantity, max_quantity)
SELECT id, 1, printf('M%d', id), 2350000000, 2450000000 FROM base_data WHERE class_id = 4;
INSERT INTO item_limit (item_id, warehouse_id, min_quantity, max_quantity)
SELECT i.id, w.id, 190000000, 210000000 FROM item i, warehouse w;
INSERT INTO batch (id, item_id, number)
SELECT i.id * 2 + b.value, i.id, printf('B%d', b.value) FROM item i, (SELECT 0 AS value UNION SELECT 1) b;
INSERT INTO stock (item_id, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount)
SELECT b.item_id, w.id, b.id, 0, (b.id * 7919 + w.id * 104729) % 200 * 1000000, 0, 0 FROM batch b, warehouse w;
COMMIT;
)sql");
  }
  ~MediumBook() { Remove(); }
  MediumBook(const MediumBook&) = delete;
  MediumBook& operator=(const MediumBook&) = delete;

  static const books::Book& Get() {
    static const MediumBook medium;
    static const books::Book book = books::Book::Open(medium.file_);
    return book;
  }

 private:
  void Remove() const {
    for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(file_.string() + ending);
  }

  std::filesystem::path file_;
};

void Fetch(benchmark::State& state, const platform::Ref<platform::Dictionary>& filter) {
  const platform::Ref<platform::Object> data = MediumBook::Get().CreateComponent("TOVMStockRpt.Data10414");
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
    benchmark::DoNotOptimize(MediumBook::Get().BaseData({.search = "商品49", .filter = " t1.FDeleted=0 "}));
  }
}
BENCHMARK(ItemLookup)->Unit(benchmark::kMillisecond);

void BatchLookup(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(MediumBook::Get().Batches({.filter = "t3.FNumber >='10'", .keyWord = "B1"}));
  }
}
BENCHMARK(BatchLookup)->Unit(benchmark::kMillisecond);

}  // namespace
