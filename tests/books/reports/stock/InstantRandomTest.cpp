#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "books/posting/Posting.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/RandomStock.h"
#include "tests/books/reports/stock/StockBook.h"

// Stock in bands, by rows and as a structure on random books: each against the sum of all movements, and all
// three against each other.
namespace {

using books::test::AmountText;
using books::test::BookFile;
using books::test::FilterEntries;
using books::test::LinesOf;
using books::test::Move;
using books::test::QuantityText;
using platform::Date;
using Lines = std::vector<std::string>;

constexpr unsigned kSeeds = 12;

struct Figures {
  std::int64_t quantity = 0;
  std::int64_t amount = 0;
};

// By item and warehouse, at the end of a day; places without anything are left out.
std::map<std::pair<std::int64_t, std::int64_t>, Figures> StockAt(const std::vector<Move>& moves, Date day) {
  std::map<std::pair<std::int64_t, std::int64_t>, Figures> stock;
  for (const Move& move : moves) {
    if (move.day > day.Days()) continue;
    Figures& place = stock[{move.item, move.warehouse}];
    place.quantity += move.quantity;
    place.amount += move.amount;
  }
  std::erase_if(stock, [](const auto& each) { return each.second.quantity == 0 && each.second.amount == 0; });
  return stock;
}

std::string TotalLine(const Figures& sum) {
  return QuantityText(sum.quantity) + " " + AmountText(sum.amount);
}

Lines Sorted(Lines lines) {
  std::ranges::sort(lines);
  return lines;
}

void CompareAt(const BookFile& file, const FilterEntries& filter, Date day) {
  books::database::Connection connection = file.Write();
  const auto stock = StockAt(books::test::AllMoves(connection), day);
  Lines places;
  Figures total;
  for (const auto& [place, figures] : stock) {
    places.push_back(books::test::NumberOf(connection, place.first) + " " +
                     books::test::NameOf(connection, place.second) + " " + TotalLine(figures));
    total.quantity += figures.quantity;
    total.amount += figures.amount;
  }
  const books::Book book = file.Open();
  Lines rows = LinesOf(*books::test::Fetch(book, "TOVMStockRpt.Data332", "GetRptData", filter),
                       {"FItemNumber", "FStockName", "FQty", "FBal"});
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows.back(), "合计 - " + TotalLine(total));
  rows.pop_back();
  EXPECT_EQ(Sorted(rows), Sorted(places));
  const books::test::Bands bands = books::test::FetchBands(book, filter);
  EXPECT_EQ(LinesOf(*bands.rows, {"FQtySum", "FBalSum"}).back(), TotalLine(total));
}

TEST(InstantStockRandom, IsTheSumOfAllMovements) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    const Date end = Date::Of(2025, 12, 31);
    CompareAt(file, {{"OnTime", 1}}, end);
    CompareAt(file, {{"OnTime", 1}, {"CheckItem", 1}}, end);
    for (const int days : {0, 17, 30, 31, 45, 58, 59, 90}) {
      SCOPED_TRACE(days);
      const Date day = Date::Of(2025, 1, 1).AddDays(days);
      CompareAt(file, {{"OnTime", 0}, {"EDate", day}}, day);
    }
  }
}

TEST(InstantStockRandom, BandsRowsAndStructureAddUpToTheSame) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    const books::Book book = file.Open();
    const std::vector<FilterEntries> filters = {
        {},
        {{"BItemNumber", "01.01.002"}},
        {{"EStockNumber", "02"}},
        {{"BStockNumber", "02"}, {"EItemNumber", "01.02"}},
    };
    for (const FilterEntries& filter : filters) {
      const std::string total =
          LinesOf(*books::test::FetchBands(book, filter).rows, {"FQtySum", "FBalSum"}).back();
      for (const int display : {0, 1, 2, 3}) {
        const FilterEntries shown = books::test::With(filter, {{"ShowType", display}});
        EXPECT_EQ(
            LinesOf(*books::test::Fetch(book, "TOVMStockRpt.Data332", "GetRptData", shown), {"FQty", "FBal"})
                .back(),
            total);
        EXPECT_EQ(LinesOf(*books::test::FetchBands(book, shown).rows, {"FQtySum", "FBalSum"}).back(), total);
        const FilterEntries summed = books::test::With(filter, {{"cmbtype", display}});
        EXPECT_EQ(LinesOf(*books::test::Fetch(book, "TOVMStockRpt.Data303", "GetRpt303Data", summed),
                          {"FQty", "FBal"})
                      .back(),
                  total);
      }
    }
  }
}

}  // namespace
