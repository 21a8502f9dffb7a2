#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>

#include "books/Book.h"
#include "books/database/Connection.h"
#include "books/schema/Schema.h"

// Two years of purchases and sales from CSV files into a new book: read, checked, posted and valued. Beside
// it the same number of rows written into a bare table, which is what the database alone needs.
namespace {

constexpr int kBills = 20000;
constexpr int kEntriesOfABill = 10;
constexpr int kItems = 2000;
constexpr int kEntries = kBills * kEntriesOfABill;

std::string Numbered(const char* prefix, int number) {
  std::string digits = std::to_string(number);
  return prefix + std::string(digits.size() < 6 ? 6 - digits.size() : 0, '0') + digits;
}

std::string DayOf(int bill) {
  const int day = bill * 672 / kBills;  // 24 months of 28 days
  const int month = day / 28;
  const int ofMonth = day % 28 + 1;
  const int ofYear = month % 12 + 1;
  return std::to_string(2024 + month / 12) + (ofYear < 10 ? "-0" : "-") + std::to_string(ofYear) +
         (ofMonth < 10 ? "-0" : "-") + std::to_string(ofMonth);
}

// Every third bill sells, the others buy, so that stock never runs out for long.
bool Sells(int bill) { return bill % 3 == 2; }

class Folder {
 public:
  Folder() : path_(std::filesystem::path(BENCH_BINARY_DIR) / "import-bench") {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_ / "csv");
    Write("units.csv") << "name\n个\n";
    Write("warehouses.csv") << "number,name\n01,主仓库\n";
    Write("suppliers.csv") << "number,name\n01,供应商\n";
    Write("customers.csv") << "number,name\n01,客户\n";
    Write("profile.csv") << "category,key,value\nIC,StartYear,2024\nIC,StartPeriod,1\n";
    std::ofstream items = Write("items.csv");
    items << "number,name,unit,valuation\n";
    for (int item = 0; item < kItems; ++item)
      items << Numbered("", item) << ",商品" << item << ",个,moving\n";
    WriteBills();
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::filesystem::path Csv() const { return path_ / "csv"; }
  std::filesystem::path Book() const { return path_ / "import.book"; }
  void RemoveBook() const {
    for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(Book().string() + ending);
  }

 private:
  std::ofstream Write(const char* name) const {
    return std::ofstream(path_ / "csv" / name, std::ios::binary);
  }

  void WriteBills() const {
    std::ofstream bills = Write("bills.csv");
    std::ofstream entries = Write("bill_entries.csv");
    bills << "class,number,date,supplier,customer,audited\n";
    entries << "class,number,line,item,warehouse,unit,quantity,amount\n";
    for (int bill = 0; bill < kBills; ++bill) {
      const std::string head = (Sells(bill) ? "销售发货," : "采购收货,") + Numbered("N", bill) + ",";
      bills << head << DayOf(bill) << (Sells(bill) ? ",,01,1\n" : ",01,,1\n");
      for (int line = 1; line <= kEntriesOfABill; ++line) {
        const int item = (bill * kEntriesOfABill + line) * 7 % kItems;
        const int quantity = 1 + (bill + line) % 20;
        entries << head << line << "," << Numbered("", item) << ",01,个," << quantity << ","
                << (Sells(bill) ? "" : std::to_string(quantity * 3)) << "\n";
      }
    }
  }

  std::filesystem::path path_;
};

void ImportBillEntries(benchmark::State& state) {
  const Folder folder;
  for (auto _ : state) {
    state.PauseTiming();
    folder.RemoveBook();
    state.ResumeTiming();
    const books::ImportReport report = books::Import(folder.Book(), folder.Csv());
    if (!report.written) return state.SkipWithError(report.ToText().c_str());
  }
  state.SetItemsProcessed(state.iterations() * kEntries);
}
BENCHMARK(ImportBillEntries)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void InsertTheSameRowsIntoABareTable(benchmark::State& state) {
  const Folder folder;
  for (auto _ : state) {
    state.PauseTiming();
    folder.RemoveBook();
    state.ResumeTiming();
    books::database::Connection book = books::schema::CreateBook(folder.Book());
    book.RunScript("CREATE TABLE bare (a INTEGER PRIMARY KEY, b, c, d, e, f, g, h); BEGIN");
    books::database::Statement insert = book.Prepare("INSERT INTO bare VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    for (int entry = 0; entry < kEntries; ++entry) {
      insert.Run(entry, entry / kEntriesOfABill, entry % kEntriesOfABill, entry % kItems, 1, 1, entry % 20,
                 entry);
    }
    book.RunScript("COMMIT");
  }
  state.SetItemsProcessed(state.iterations() * kEntries);
}
BENCHMARK(InsertTheSameRowsIntoABareTable)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
