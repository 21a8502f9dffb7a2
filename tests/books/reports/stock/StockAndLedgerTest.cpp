#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/rows/Dictionary.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/RandomStock.h"
#include "tests/books/reports/stock/StockBook.h"

// Stock at the last day of a period is what the stock ledger closes the period with, item by item and batch
// by batch, in quantity and in money, whatever the period's items have cost since.
namespace {

using books::test::BookFile;
using books::test::FilterEntries;
using books::test::LinesOf;
using platform::Date;
using Lines = std::vector<std::string>;
namespace tiny = books::test::tiny;

constexpr std::int32_t kItems[] = {tiny::kJuice,       tiny::kYogurt,  tiny::kCandy, tiny::kGiftBox,
                                   tiny::kScrewdriver, tiny::kScanner, tiny::kTape};
constexpr std::int16_t kYear = 2025;

// What the two reports say of a batch: number, quantity, amount. What has come to nothing as a whole is left
// out: the ledger does not know that it lies short in one warehouse and over in another.
Lines Lying(const platform::Recordset& rows, const Lines& fields) {
  Lines lines = LinesOf(rows, fields);
  std::erase_if(lines, [](const std::string& line) { return line.ends_with(" 0 0"); });
  std::ranges::sort(lines);
  return lines;
}

Lines ClosedWith(const books::Book& book, std::int32_t item, std::int16_t period,
                 const FilterEntries& warehouses) {
  platform::Variant filter = books::test::FilterOf(books::test::With(warehouses, {{"Balance", 1}}));
  const auto answer = book.CreateComponent("TOVMStockRpt.Data10402")
                          ->Call("GetPerioddata", "UserID=7;", item, kYear, period, "", filter)
                          .AsRef<platform::Dictionary>();
  return Lying(*answer->Value("rsEndBal").AsRef<platform::Recordset>(),
               {"FBatchNo", "FEndQty", "FEndAmount"});
}

Lines InStock(const books::Book& book, const std::string& number, std::int16_t period,
              const FilterEntries& warehouses) {
  const Date lastDay = Date::Of(kYear, period + 1, 1).AddDays(-1);
  const auto filter = books::test::With(warehouses, {{"OnTime", 0},
                                                     {"EDate", lastDay},
                                                     {"ShowType", 2},
                                                     {"ShowDeletedItem", 1},
                                                     {"BItemNumber", number},
                                                     {"EItemNumber", number}});
  const books::test::Bands bands = books::test::FetchBands(book, filter);
  platform::Recordset& rows = *bands.rows;
  rows.SetFilter("FSumSort = 0");
  return Lying(rows, {"FBatchNo", "FQtySum", "FBalSum"});
}

// The number of batches that were compared.
std::size_t Compare(const BookFile& file, const FilterEntries& warehouses) {
  books::database::Connection connection = file.Write();
  const books::Book book = file.Open();
  std::size_t compared = 0;
  for (const std::int32_t item : kItems) {
    const std::string number = books::test::NumberOf(connection, item);
    for (const std::int16_t period : {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
      SCOPED_TRACE(number + " in period " + std::to_string(period));
      const Lines closed = ClosedWith(book, item, period, warehouses);
      EXPECT_EQ(InStock(book, number, period, warehouses), closed);
      compared += closed.size();
    }
  }
  return compared;
}

TEST(StockAndLedger, AgreeOnTheTinyBook) {
  const BookFile file(books::test::WriteTinyBook);
  EXPECT_GT(Compare(file, {}), 0U);
  EXPECT_GT(Compare(file, {{"BStockNumber", "01"}, {"EStockNumber", "01"}}), 0U);
}

TEST(StockAndLedger, AgreeOnRandomBooks) {
  constexpr unsigned kSeeds = 8;
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    EXPECT_GT(Compare(file, {}), 0U);
    EXPECT_GT(Compare(file, {{"BStockNumber", "02"}}), 0U);
  }
}

}  // namespace
