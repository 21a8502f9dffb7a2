#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/value/Convert.h"
#include "tests/books/TinyBook.h"
#include "tests/books/reports/stock/RandomStock.h"
#include "tests/books/reports/stock/StockBook.h"

// Available stock, shelf life and purchase prices on random books against a plain reckoning from bills and
// movements.
namespace {

using books::database::Connection;
using books::test::AmountText;
using books::test::BookFile;
using books::test::LinesOf;
using books::test::Move;
using books::test::NumberOf;
using books::test::QuantityText;
using platform::Date;
using Lines = std::vector<std::string>;

constexpr unsigned kSeeds = 12;
constexpr std::int64_t kMillion = 1'000'000;

// An audited or unaudited entry of a bill, as it stands there.
struct Written {
  std::int64_t item = 0;
  std::int64_t order = 0;
  std::int32_t billClass = 0;
  std::int32_t day = 0;
  bool audited = false;
  std::int64_t quantity = 0;
  std::int64_t amount = 0;
  std::int64_t supplier = 0;
};

std::vector<Written> AllEntries(Connection& connection) {
  books::database::Statement row = connection.Query(
      "SELECT e.item_id, COALESCE(e.order_id, 0), b.bill_class, b.date, b.audited, e.quantity, "
      "COALESCE(e.amount, 0), COALESCE(b.supplier_id, 0) FROM bill b, bill_entry e WHERE e.bill_id = b.id "
      "ORDER BY b.date, b.id, e.line");
  std::vector<Written> entries;
  while (row.Step()) {
    entries.push_back({.item = row.Integer(0),
                       .order = row.Integer(1),
                       .billClass = row.Int32(2),
                       .day = row.Int32(3),
                       .audited = row.Boolean(4),
                       .quantity = row.Integer(5),
                       .amount = row.Integer(6),
                       .supplier = row.Integer(7)});
  }
  return entries;
}

struct Waiting {
  std::int64_t bought = 0;
  std::int64_t sold = 0;
};

// What the orders wait for at the end of a day, by item.
std::map<std::int64_t, Waiting> WaitingAt(Connection& connection, Date day, bool unaudited) {
  const std::vector<Written> entries = AllEntries(connection);
  books::database::Statement row = connection.Query(
      "SELECT o.id, o.bill_class, o.date, o.audited, o.closed + l.closed, l.item_id, l.quantity FROM "
      "order_bill "
      "o, order_entry l WHERE l.order_id = o.id");
  std::map<std::int64_t, Waiting> waiting;
  while (row.Step()) {
    if (row.Int32(2) > day.Days() || row.Int32(4) > 0 || (!row.Boolean(3) && !unaudited)) continue;
    std::int64_t left = row.Integer(6);
    for (const Written& entry : entries) {
      const bool counts = (entry.audited || unaudited) && entry.day <= day.Days();
      if (counts && entry.order == row.Integer(0)) left -= entry.quantity;
    }
    if (left <= 0) continue;
    (row.Int32(1) == 1020001 ? waiting[row.Integer(5)].bought : waiting[row.Integer(5)].sold) += left;
  }
  return waiting;
}

TEST(StockListsRandom, AvailableStock) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    const BookFile file(books::test::RandomStock(seed));
    Connection connection = file.Write();
    const std::vector<Move> moves = books::test::AllMoves(connection);
    for (const int days : {3, 20, 40, 60, 300}) {
      SCOPED_TRACE(std::to_string(seed) + " after " + std::to_string(days));
      const Date day = Date::Of(2025, 1, 1).AddDays(days);
      std::map<std::int64_t, std::int64_t> stock;
      for (const Move& move : moves) {
        if (move.day <= day.Days()) stock[move.item] += move.quantity;
      }
      auto waiting = WaitingAt(connection, day, false);
      Lines expected;
      for (const std::int64_t item : {411, 412, 413, 414, 421, 422, 423}) {
        constexpr std::int64_t kLowest = 20 * kMillion;
        const auto& [bought, sold] = waiting[item];
        expected.push_back(NumberOf(connection, item) + " " +
                           QuantityText(stock[item] + bought - sold - kLowest) + " " +
                           QuantityText(stock[item]) + " " + QuantityText(bought) + " " + QuantityText(sold));
      }
      Lines rows = LinesOf(*books::test::Fetch(file.Open(), "TOVMStockRpt.Data10424", "GetRptData",
                                               {{"OnTime", "0"},
                                                {"EDate", day},
                                                {"IncludeExpireGoodQty", "1"},
                                                {"chkInv", "1"},
                                                {"chkCGBook", "1"},
                                                {"chkXSBook", "1"},
                                                {"chkLmtQ", "1"}}),
                           {"FItemNumber", "FSuggestQty", "FInvQty", "FMovingCgQty", "FMovingXsQty"});
      rows.pop_back();
      std::ranges::sort(expected);
      EXPECT_EQ(rows, expected);
    }
  }
}

TEST(StockListsRandom, OrdersWithUnauditedBills) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    Connection connection = file.Write();
    Waiting sum;
    for (const auto& [item, each] : WaitingAt(connection, Date::Of(2026, 1, 1), true)) {
      sum.bought += each.bought;
      sum.sold += each.sold;
    }
    const auto rows =
        books::test::Fetch(file.Open(), "TOVMStockRpt.Data10424", "GetRptData", {{"ContainBills", "1"}});
    EXPECT_EQ(LinesOf(*rows, {"FMovingCgQty", "FMovingXsQty"}).back(),
              QuantityText(sum.bought) + " " + QuantityText(sum.sold));
  }
}

// Batches A and B of yogurt are good to January 23 and 26.
TEST(StockListsRandom, ShelfLife) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    Connection connection = file.Write();
    std::map<std::pair<std::int64_t, std::int64_t>, Move> batches;
    for (const Move& move : books::test::AllMoves(connection)) {
      if (move.batch == 0) continue;
      Move& sum = batches[{move.batch, move.warehouse}];
      sum.quantity += move.quantity;
      sum.amount += move.amount;
    }
    Lines expected;
    for (const auto& [place, sum] : batches) {
      if (sum.quantity == 0) continue;
      const bool first = place.first == books::test::tiny::kBatchA;
      expected.push_back(books::test::NameOf(connection, place.second) + (first ? " A " : " B ") +
                         QuantityText(sum.quantity) + " " + AmountText(sum.amount) + (first ? " 9" : " 6"));
    }
    Lines rows = LinesOf(*books::test::Fetch(file.Open(), "TOVMStockRpt.Data", "GetRpt10411Data",
                                             {{"EDate", "2025-02-01"}, {"OrderBy", "Overdays DESC"}}),
                         {"FStockName", "FBatchNo", "FQty", "FBal", "Overdays"});
    if (!rows.empty()) rows.pop_back();
    std::ranges::sort(rows);
    std::ranges::sort(expected);
    EXPECT_EQ(rows, expected);
  }
}

// The prices of an item's purchases from first to last, each with its supplier and day.
using Price = std::tuple<double, std::int64_t, std::int32_t>;

std::string PriceLine(Connection& connection, const std::vector<Price>& prices) {
  Price lowest = prices.front();
  double highest = 0;
  for (const Price& price : prices) {
    if (std::get<0>(price) <= std::get<0>(lowest)) lowest = price;
    highest = std::max(highest, std::get<0>(price));
  }
  const auto text = [](double price) {
    return platform::NumberToText(std::round(price * kMillion) / kMillion);
  };
  std::string line = text(highest) + " " + text(std::get<0>(lowest));
  for (std::size_t back = 0; back < 7; ++back) {
    line += " " + (back < prices.size() ? text(std::get<0>(prices[prices.size() - 1 - back])) : "-");
  }
  return line + " " + books::test::NameOf(connection, std::get<1>(lowest)) + " " +
         platform::ToText(platform::Variant(Date::FromDays(std::get<2>(lowest))));
}

TEST(StockListsRandom, PurchasePrices) {
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    const BookFile file(books::test::RandomStock(seed));
    Connection connection = file.Write();
    const Date begin = Date::Of(2025, 1, 10);
    const Date end = Date::Of(2025, 3, 10);
    std::map<std::string, std::vector<Price>> prices;
    for (const Written& entry : AllEntries(connection)) {
      const bool buys = entry.billClass == 1020002 || entry.billClass == 1020003;
      // In a gift warehouse too, a price is what the bill says.
      if (!buys || !entry.audited || entry.day < begin.Days() || entry.day > end.Days()) continue;
      const double price = static_cast<double>(entry.amount) / 10'000 /
                           (static_cast<double>(entry.quantity) / static_cast<double>(kMillion));
      prices[NumberOf(connection, entry.item)].emplace_back(price, entry.supplier, entry.day);
    }
    Lines expected;
    for (const auto& [number, each] : prices) expected.push_back(number + " " + PriceLine(connection, each));
    Lines rows = LinesOf(*books::test::Fetch(file.Open(), "TOVMStockRpt.Data10415", "GetRpt10415Data",
                                             {{"BDate", begin}, {"EDate", end}, {"chkNoAmt", "1"}}),
                         {"FItemNumber", "FMaxPrice", "FMinPrice", "FPrice1", "FPrice2", "FPrice3", "FPrice4",
                          "FPrice5", "FPrice6", "FPrice7", "FSupplyName", "Fdate"});
    if (!rows.empty()) rows.pop_back();
    EXPECT_EQ(rows, expected);
  }
}

}  // namespace
