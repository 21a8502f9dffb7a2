#include <string>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

#include "books/posting/Valuation.h"
#include "platform/value/Date.h"

// Costing by example: one item, its movements in words, and the amounts that come of them.
namespace {

using books::database::Quantity;
using books::posting::CostingRules;
using books::posting::Id;
using books::posting::Movement;
using books::posting::OpeningStock;
using books::schema::BillClass;
using books::schema::DayOrder;
using books::schema::Valuation;
using platform::Currency;
using platform::Date;

constexpr Id kItem = 1;
constexpr Id kOther = 2;
constexpr Id kMain = 11;
constexpr Id kBranch = 12;
constexpr Id kGift = 13;

struct Step {
  std::string what;  // in, out, adjust, leave, arrive, use, make
  int day = 1;       // of January 2025; 32 is the first of February
  double quantity = 0;
  std::string given;  // empty: none
  Id warehouse = kMain;
  Id batch = 0;
  Id item = kItem;
  Id bill = 0;  // 0: one of its own
};

Movement MakeMovement(const Step& step, Id ownBill) {
  static const std::unordered_map<std::string, std::pair<DayOrder, int>> kKinds = {
      {"in", {DayOrder::kReceipt, 1}},        {"out", {DayOrder::kIssue, -1}},
      {"adjust", {DayOrder::kAmountOnly, 1}}, {"leave", {DayOrder::kConversion, -1}},
      {"arrive", {DayOrder::kConversion, 1}}, {"use", {DayOrder::kConversion, -1}},
      {"make", {DayOrder::kConversion, 1}}};
  const auto& [order, direction] = kKinds.at(step.what);
  const bool transfer = step.what == "leave" || step.what == "arrive";
  const Date date = Date::Of(2025, 1, 1).AddDays(step.day - 1);
  Movement movement;
  movement.itemId = step.item;
  movement.date = date.Days();
  movement.dayOrder = order;
  movement.billId = step.bill == 0 ? ownBill : step.bill;
  movement.direction = direction;
  // A transfer has both its halves in one line, other bills a line for each.
  movement.line = transfer ? 1 : static_cast<std::int32_t>(ownBill);
  movement.period = books::schema::PeriodOf(2025, date.Calendar().month);
  movement.billClass = transfer ? BillClass::kTransfer : BillClass::kAssembly;
  movement.warehouseId = step.warehouse;
  movement.batchId = step.batch;
  movement.quantity = Quantity::FromDouble(step.quantity);
  if (!step.given.empty()) movement.given = Currency::FromText(step.given);
  return movement;
}

struct CostCase {
  std::string name;
  Valuation method = Valuation::kMovingAverage;
  std::vector<Step> steps;
  std::string amounts;  // of the steps, in their order
  bool costPerWarehouse = false;
  std::vector<OpeningStock> openings;
};

std::string AmountsOf(const CostCase& each) {
  std::vector<Movement> movements;
  for (const Step& step : each.steps) {
    movements.push_back(MakeMovement(step, static_cast<Id>(movements.size()) + 100));
  }
  const CostingRules rules = {.costPerWarehouse = each.costPerWarehouse, .giftWarehouses = {kGift}};
  ValueMovements(movements, each.openings, {{kItem, each.method}, {kOther, Valuation::kMovingAverage}},
                 rules);
  std::string text;
  for (const Movement& movement : movements) text += (text.empty() ? "" : " ") + movement.amount.ToText();
  return text;
}

OpeningStock Opening(int pieces, const std::string& amount, Id warehouse = kMain) {
  return {.itemId = kItem,
          .warehouseId = warehouse,
          .quantity = Quantity::FromInteger(pieces),
          .amount = Currency::FromText(amount)};
}

void Expect(const std::vector<CostCase>& cases) {
  for (const CostCase& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(AmountsOf(each), each.amounts);
  }
}

TEST(Valuation, MovingAverage) {
  Expect({
      {"issue at the average so far",
       {},
       {{"in", 1, 10, "100"}, {"in", 2, 10, "200"}, {"out", 3, 5}},
       "100 200 75"},
      {"a receipt after the issue does not count",
       {},
       {{"in", 1, 10, "100"}, {"out", 2, 5}, {"in", 3, 10, "500"}},
       "100 50 500"},
      {"the order of days counts, not that of entry",
       {},
       {{"out", 3, 5}, {"in", 2, 10, "200"}, {"in", 1, 10, "100"}},
       "75 200 100"},
      {"receipts of a day come before its issues", {}, {{"out", 1, 5}, {"in", 1, 10, "100"}}, "50 100"},
      {"the rest of the division goes out with the last piece",
       {},
       {{"in", 1, 3, "10"}, {"out", 2, 1}, {"out", 3, 1}, {"out", 4, 1}},
       "10 3.3333 3.3334 3.3333"},
      {"half a ten-thousandth to even",
       {},
       {{"in", 1, 2, "0.0001"}, {"out", 2, 1}, {"in", 3, 1, "0.0002"}, {"out", 4, 1}},
       "0.0001 0 0.0002 0.0002"},
      {"tenths add up", {}, {{"in", 1, 0.1, "1"}, {"in", 1, 0.2, "2"}, {"out", 2, 0.3}}, "1 2 3"},
      {"opening stock", {}, {{"out", 2, 5}}, "10", false, {Opening(10, "20")}},
      {"a receipt without an amount comes at cost",
       {},
       {{"in", 1, 10, "100"}, {"in", 2, 5}, {"out", 3, 15}},
       "100 50 150"},
      {"the first receipt without an amount costs nothing", {}, {{"in", 1, 10}, {"out", 2, 10}}, "0 0"},
      {"a returned receipt leaves at cost",
       {},
       {{"in", 1, 10, "100"}, {"in", 2, 10, "200"}, {"in", 3, -10, "-100"}, {"out", 4, 10}},
       "100 200 -150 150"},
      {"a returned issue comes in at cost",
       {},
       {{"in", 1, 10, "100"}, {"out", 2, 10}, {"in", 3, 5, "60"}, {"out", 4, -5}, {"out", 5, 10}},
       "100 100 60 -60 120"},
      {"an adjustment changes what is in stock",
       {},
       {{"in", 1, 10, "100"}, {"adjust", 2, 0, "20"}, {"out", 3, 5}},
       "100 20 60"},
      {"an adjustment of an empty stock waits for the next receipt",
       {},
       {{"adjust", 1, 0, "20"}, {"in", 2, 10, "100"}, {"out", 3, 5}},
       "20 100 60"},
  });
}

TEST(Valuation, BelowZero) {
  Expect({
      {"takes the cost of the receipt that covers it",
       {},
       {{"out", 1, 5}, {"in", 2, 8, "24"}, {"out", 3, 3}},
       "15 24 9"},
      {"in part from stock, in part from what covers it",
       {},
       {{"in", 1, 2, "20"}, {"out", 2, 5}, {"in", 3, 10, "120"}, {"out", 4, 7}},
       "20 56 120 84"},
      {"covered by several receipts",
       {},
       {{"out", 1, 5}, {"in", 2, 2, "4"}, {"in", 3, 2, "6"}, {"in", 4, 2, "8"}, {"out", 5, 1}},
       "14 4 6 8 4"},
      {"the oldest is covered first",
       {},
       {{"out", 1, 2}, {"out", 2, 2}, {"in", 3, 2, "4"}, {"in", 4, 2, "6"}},
       "4 6 4 6"},
      {"not covered: the last known cost", {}, {{"in", 1, 10, "100"}, {"out", 2, 12}}, "100 120"},
      {"covered in a later period: its cost stands, the difference stays with the stock",
       {},
       {{"in", 1, 10, "100"}, {"out", 2, 12}, {"in", 40, 4, "60"}, {"out", 41, 2}},
       "100 120 60 40"},
      {"a transfer out of nothing keeps the cost that it left with",
       {},
       {{"in", 1, 1, "10"},
        {"leave", 2, 3, "", kMain, 0, kItem, 50},
        {"arrive", 2, 3, "", kBranch, 0, kItem, 50},
        {"in", 3, 4, "80"},
        {"out", 4, 2}},
       "10 30 30 80 60",
       true},
      {"a negative opening stock",
       {},
       {{"in", 1, 4, "60"}, {"out", 2, 2}},
       "60 40",
       false,
       {Opening(-2, "-20")}},
  });
}

TEST(Valuation, MonthlyAverage) {
  using enum Valuation;
  Expect({
      {"issues meet the average of the whole month",
       kMonthlyAverage,
       {{"out", 2, 5}, {"in", 1, 10, "100"}, {"in", 20, 10, "200"}, {"out", 25, 5}},
       "75 100 200 75"},
      {"months are apart",
       kMonthlyAverage,
       {{"in", 1, 10, "100"}, {"out", 2, 5}, {"in", 32, 5, "100"}, {"out", 33, 10}},
       "100 50 100 150"},
      {"the rest goes out with the last piece of the month",
       kMonthlyAverage,
       {{"out", 2, 1}, {"out", 3, 2}, {"in", 20, 3, "10"}},
       "3.3333 6.6667 10"},
      {"what goes into an assembly is valued on its day",
       kMonthlyAverage,
       {{"in", 1, 10, "100"},
        {"use", 5, 5, "", kMain, 0, kItem, 50},
        {"make", 5, 1, "", kMain, 0, kOther, 50},
        {"in", 20, 5, "150"},
        {"out", 3, 2}},
       "100 50 50 150 40"},
      {"a month without stock takes the last known cost",
       kMonthlyAverage,
       {{"in", 1, 10, "100"}, {"out", 2, 10}, {"out", 35, 1}},
       "100 100 10"},
  });
}

TEST(Valuation, FirstInFirstOut) {
  using enum Valuation;
  Expect({
      {"the oldest goes first",
       kFirstInFirstOut,
       {{"in", 1, 10, "100"}, {"in", 2, 10, "200"}, {"out", 3, 5}, {"out", 4, 10}, {"out", 5, 5}},
       "100 200 50 150 100"},
      {"each layer keeps its rest to its last piece",
       kFirstInFirstOut,
       {{"in", 1, 3, "10"}, {"in", 2, 3, "20"}, {"out", 3, 2}, {"out", 4, 2}, {"out", 5, 2}},
       "10 20 6.6667 10 13.3333"},
      {"a transfer under one cost leaves the goods in their place",
       kFirstInFirstOut,
       {{"in", 1, 10, "100"},
        {"in", 2, 10, "200"},
        {"leave", 3, 10, "", kMain, 0, kItem, 50},
        {"arrive", 3, 10, "", kBranch, 0, kItem, 50},
        {"out", 4, 10}},
       "100 200 100 100 100"},
      {"an adjustment is shared by quantity, the newest takes the rest",
       kFirstInFirstOut,
       {{"in", 1, 1, "1"}, {"in", 2, 2, "2"}, {"adjust", 3, 0, "0.0001"}, {"out", 4, 1}, {"out", 5, 2}},
       "1 2 0.0001 1 2.0001"},
      {"what comes without an amount takes the average",
       kFirstInFirstOut,
       {{"in", 1, 10, "100"}, {"in", 2, 10, "200"}, {"in", 3, 2}, {"out", 4, 22}},
       "100 200 30 330"},
      {"below zero",
       kFirstInFirstOut,
       {{"in", 1, 1, "10"}, {"out", 2, 3}, {"in", 3, 4, "80"}, {"out", 4, 2}},
       "10 50 80 40"},
  });
}

TEST(Valuation, BatchCost) {
  using enum Valuation;
  Expect({
      {"each batch has its cost",
       kBatchCost,
       {{"in", 1, 10, "100", kMain, 1},
        {"in", 2, 10, "200", kMain, 2},
        {"out", 3, 5, "", kMain, 2},
        {"out", 4, 5, "", kMain, 1}},
       "100 200 100 50"},
      {"within a batch the moving average",
       kBatchCost,
       {{"in", 1, 10, "100", kMain, 1}, {"in", 2, 10, "200", kMain, 1}, {"out", 3, 5, "", kMain, 1}},
       "100 200 75"},
      {"a batch that never came takes the item's last cost",
       kBatchCost,
       {{"in", 1, 10, "100", kMain, 1}, {"out", 3, 5, "", kMain, 2}},
       "100 50"},
  });
}

TEST(Valuation, Warehouses) {
  const std::vector<Step> steps = {{"in", 1, 10, "100"},
                                   {"in", 2, 10, "300", kBranch},
                                   {"leave", 3, 5, "", kMain, 0, kItem, 50},
                                   {"arrive", 3, 5, "", kBranch, 0, kItem, 50},
                                   {"out", 4, 5},
                                   {"out", 5, 3, "", kBranch}};
  Expect({
      {"one cost over all of them", {}, steps, "100 300 100 100 100 60"},
      {"a cost for each", {}, steps, "100 300 50 50 50 70", true},
      {"a transfer at an amount of its own",
       {},
       {{"in", 1, 10, "100"},
        {"leave", 3, 5, "80", kMain, 0, kItem, 50},
        {"arrive", 3, 5, "80", kBranch, 0, kItem, 50},
        {"out", 4, 10}},
       "100 50 80 130"},
      {"gifts have no amount",
       {},
       {{"in", 1, 10, "100"},
        {"in", 1, 5, "50", kGift},
        {"leave", 2, 4, "", kMain, 0, kItem, 50},
        {"arrive", 2, 4, "", kGift, 0, kItem, 50},
        {"out", 3, 6, "", kGift},
        {"adjust", 3, 0, "7", kGift},
        {"out", 4, 6}},
       "100 0 40 0 0 0 60"},
      {"goods back from the gift warehouse come without an amount",
       {},
       {{"in", 1, 10, "100"},
        {"leave", 2, 10, "", kGift, 0, kItem, 50},
        {"arrive", 2, 10, "", kMain, 0, kItem, 50},
        {"out", 4, 10}},
       "100 0 0 50"},
  });
}

TEST(Valuation, Assemblies) {
  Expect({
      {"by quantity, the last line takes the rest",
       {},
       {{"in", 1, 10, "100"},
        {"use", 2, 1, "", kMain, 0, kItem, 50},
        {"make", 2, 1, "", kMain, 0, kOther, 50},
        {"make", 2, 2, "", kMain, 0, kOther, 50}},
       "100 10 3.3333 6.6667"},
      {"by weight when every line has one",
       {},
       {{"in", 1, 10, "100"},
        {"use", 2, 10, "", kMain, 0, kItem, 50},
        {"make", 2, 1, "3", kMain, 0, kOther, 50},
        {"make", 2, 9, "1", kMain, 0, kOther, 50}},
       "100 100 75 25"},
      {"by quantity when one has none",
       {},
       {{"in", 1, 10, "100"},
        {"use", 2, 10, "", kMain, 0, kItem, 50},
        {"make", 2, 1, "3", kMain, 0, kOther, 50},
        {"make", 2, 9, "", kMain, 0, kOther, 50}},
       "100 100 10 90"},
      {"taken apart and put together again on one day",
       {},
       {{"in", 1, 2, "10"},
        {"use", 2, 1, "", kMain, 0, kItem, 50},
        {"make", 2, 4, "", kMain, 0, kOther, 50},
        {"use", 2, 4, "", kMain, 0, kOther, 51},
        {"make", 2, 1, "", kMain, 0, kItem, 51},
        {"out", 3, 2}},
       "10 5 5 5 5 10"},
  });
}

}  // namespace
