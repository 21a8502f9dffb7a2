// The ledger of one item, period by period: the cases that its contract names, and random books against a
// plain recomputation.
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/component/ledger/LedgerDesk.h"

namespace component {
namespace {

using platform::Recordset;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kNothing = "0@0=0";

std::string Line(const std::string& period, const std::string& kind, const std::string& in,
                 const std::string& out, const std::string& balance) {
  return period + " " + kind + " in " + in + " out " + out + " bal " + balance;
}
std::string BalanceLine(const std::string& period, const std::string& kind, const std::string& balance) {
  return Line(period, kind, kNothing, kNothing, balance);
}

struct WalkCase {
  const char* name;
  BookSpec book;
  std::int16_t range[4];
  std::int32_t showNoHappen;
  std::vector<std::string> lines;
  std::vector<std::string> fetches;
};

std::vector<WalkCase> WalkCases() {
  const MovementSpec in = {.inQuantity = 1, .inAmount = 2};
  return {
      {"an opening, movements, a total, a closing and the year",
       {{{1, 202403},
         {.opening = {{.quantity = 10, .amount = 50}},
          .happened = {{.inQuantity = 5, .inAmount = 30}, {.outQuantity = 3, .outAmount = 16}},
          .closing = {{.quantity = 12, .amount = 64}}}}},
       {2024, 3, 2024, 3},
       0,
       {BalanceLine("2024.3", "期初结存", "10@5=50"),
        Line("2024.3", "采购收货", "5@6=30", kNothing, "15@5.333333333333333=80"),
        Line("2024.3", "销售发货", kNothing, "3@5.333333333333333=16", "12@5.333333333333333=64"),
        Line("2024.3", "本期合计", "5@6=30", "3@5.333333333333333=16", kNothing),
        BalanceLine("2024.3", "期末结存", "12@5.333333333333333=64"),
        Line("2024.3", "本年累计", "5@6=30", "3@5.333333333333333=16", kNothing)},
       {"1 2024 3"}},
      {"a begin period after the end period of the same year is fetched alone",
       {},
       {2024, 5, 2024, 3},
       1,
       {},
       {"1 2024 5"}},
      {"a begin year after the end year fetches nothing", {}, {2025, 1, 2024, 12}, 0, {}, {}},
      {"a year's total after a twelfth period carries period 1",
       {{{1, 202412}, {.happened = {in}}}, {{1, 202501}, {.happened = {in}}}},
       {2024, 12, 2025, 1},
       1,
       {BalanceLine("2024.12", "期初结存", kNothing), Line("2024.12", "采购收货", "1@2=2", kNothing, "1@2=2"),
        Line("2024.12", "本期合计", "1@2=2", kNothing, kNothing), BalanceLine("2024.12", "期末结存", "1@2=2"),
        Line("2024.1", "本年累计", "1@2=2", kNothing, kNothing), BalanceLine("2025.1", "期初结存", kNothing),
        Line("2025.1", "采购收货", "1@2=2", kNothing, "1@2=2"),
        Line("2025.1", "本期合计", "1@2=2", kNothing, kNothing), BalanceLine("2025.1", "期末结存", "1@2=2"),
        Line("2025.1", "本年累计", "1@2=2", kNothing, kNothing)},
       {"1 2024 12", "1 2025 1"}},
      {"an empty period is left out", {}, {2024, 3, 2024, 3}, 1, {}, {"1 2024 3"}},
      {"an empty period is kept",
       {},
       {2024, 3, 2024, 3},
       0,
       {BalanceLine("2024.3", "期初结存", kNothing), BalanceLine("2024.3", "期末结存", kNothing)},
       {"1 2024 3"}},
      {"a period with balances stays whatever the option says; its closing has no price",
       {{{1, 202403}, {.opening = {{.quantity = 10, .amount = 50}}}}},
       {2024, 3, 2024, 3},
       1,
       {BalanceLine("2024.3", "期初结存", "10@5=50"), BalanceLine("2024.3", "期末结存", "10@0=50")},
       {"1 2024 3"}},
      {"a quantity of exactly 0 with an amount left shows no price",
       {{{1, 202403},
         {.opening = {{.quantity = 2, .amount = 5}},
          .happened = {{.outQuantity = 2, .outAmount = 4}},
          .closing = {{.amount = 1}}}}},
       {2024, 3, 2024, 3},
       0,
       {BalanceLine("2024.3", "期初结存", "2@2.5=5"), Line("2024.3", "销售发货", kNothing, "2@2=4", "0@0=1"),
        Line("2024.3", "本期合计", kNothing, "2@2=4", kNothing), BalanceLine("2024.3", "期末结存", "0@0=1"),
        Line("2024.3", "本年累计", kNothing, "2@2=4", kNothing)},
       {"1 2024 3"}},
      {"of several closing rows those of 0 are left out",
       {{{1, 202403},
         {.closing =
              {{.quantity = 1, .amount = 2, .batch = "A"}, {.batch = "B"}, {.amount = 3, .batch = "C"}}}}},
       {2024, 3, 2024, 3},
       0,
       {BalanceLine("2024.3", "期初结存", kNothing), BalanceLine("2024.3", "期末结存", "1@2=2"),
        BalanceLine("2024.3", "期末结存", "0@0=3")},
       {"1 2024 3"}},
      {"a single closing row of 0 is shown",
       {{{1, 202403}, {.opening = {{.quantity = 1, .amount = 2}}, .closing = {{}}}}},
       {2024, 3, 2024, 3},
       0,
       {BalanceLine("2024.3", "期初结存", "1@2=2"), BalanceLine("2024.3", "期末结存", kNothing)},
       {"1 2024 3"}},
      {"a year without movements has no total, and nothing is carried into the next period",
       {{{1, 202403}, {.opening = {{.quantity = 4, .amount = 8}}}},
        {{1, 202404}, {.closing = {{.quantity = 9, .amount = 9}}}}},
       {2024, 3, 2024, 4},
       1,
       {BalanceLine("2024.3", "期初结存", "4@2=8"), BalanceLine("2024.3", "期末结存", "4@0=8"),
        BalanceLine("2024.4", "期初结存", kNothing), BalanceLine("2024.4", "期末结存", "9@1=9")},
       {"1 2024 3", "1 2024 4"}},
  };
}

class LedgerWalkTest : public LedgerTest {};

TEST_F(LedgerWalkTest, NamedCases) {
  for (const WalkCase& each : WalkCases()) {
    SCOPED_TRACE(each.name);
    book = each.book;
    fetches.clear();
    Open(1, Months(each.range[0], each.range[1], each.range[2], each.range[3], each.showNoHappen));
    EXPECT_EQ(Result(), "{OK: True, Error: ''}");
    EXPECT_EQ(Lines(), each.lines);
    EXPECT_EQ(fetches, each.fetches);
  }
}

TEST_F(LedgerWalkTest, TheBarEndsAtItsMaximumAlsoForAnEmptyPeriod) {
  Open(1, Months(2024, 3, 2024, 3, 1));
  EXPECT_THAT(
      desk.Lines("bar "),
      ElementsAre("bar SetMsg('正在连接服务器')", "bar SetBarValue(0)", "bar HideProgBar",
                  "bar SetMsg('正在从服务器读取2024年第3期数据...')", "bar SetBarMinValue(0)",
                  "bar SetBarMaxValue(1)", "bar SetBarValue(0)", "bar SetMsg('正在计算2024年第3期数据...')",
                  "bar SetBarValueWithMax", "bar Unload"));
}

TEST_F(LedgerWalkTest, AnEmptyItemListIsAnEmptyPage) {
  Open(0, Months(2024, 3, 2024, 3));
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_EQ(Page()->RecordCount(), 0);
  EXPECT_THAT(fetches, IsEmpty());
  EXPECT_EQ(Spell(report->Filter()->Value("FTrack")), "78");
}

TEST_F(LedgerWalkTest, SummaryRowsSayWhatTheyAre) {
  book[{1, 202403}] = {.opening = {{.quantity = 1, .amount = 2, .batch = "B1", .diff = 7}},
                       .happened = {{.inQuantity = 1, .inAmount = 2, .inDiff = 5}},
                       .closing = {}};
  Open(1, Months(2024, 3, 2024, 3));
  const Recordset& page = *Page();
  std::vector<std::string> rows;
  for (std::size_t row = 0; row < page.ViewCount(); ++row) {
    std::string line;
    for (const char* field : {"FID", "FEntryID", "FDate", "FBatchNo", "FClassTypeID", "FQtyDecimal",
                              "FPriceDecimal", "FInDiff", "FBalDiff", "FSumSort"}) {
      line += platform::ToText(page.ValueAt(page.FieldIndex(field), row)) + " ";
    }
    rows.push_back(line);
  }
  EXPECT_THAT(rows, ElementsAre("-1 0 2024-03-01 B1 0 1 4 0 7 101 ", "1 1 2024-03-05  1020002 1 4 0 0 0 ",
                                "-2 0 2024-03-31  0 1 4 0 0 101 ", "-3 0 2024-03-31  0 1 4 0 0 101 ",
                                "-2 0 2024-03-31  0 1 4 0 0 101 "));
}

TEST_F(LedgerWalkTest, AFailureInTheMiddleLeavesNoPageAndTheNextRunIsClean) {
  const auto none = [] { return TextRows({"F"}, {}); };
  bool fails = true;
  desk.On("TOVMStockRpt.Data10402", "GetPerioddata",
          [&](std::span<platform::Variant> arguments) -> platform::Variant {
            const std::string period = platform::ToText(arguments[3]);
            fetches.push_back(period);
            if (fails && period == "4")
              throw platform::Error(platform::ErrorNumber::kUserDefined, "data", "服务器连接中断");
            return Keys({{"rsBegBal", none()},
                         {"rsHappen", none()},
                         {"rsEndBal", none()},
                         {"BDate", platform::Date::Of(2024, 3, 1)},
                         {"EDate", platform::Date::Of(2024, 4, 1)}});
          });
  Open(1, Months(2024, 3, 2024, 5));
  EXPECT_EQ(Result(), "{OK: False, Error: '服务器连接中断'}");
  EXPECT_EQ(Spell(report->Rows()), "nothing");
  EXPECT_THAT(fetches, ElementsAre("3", "4"));
  EXPECT_EQ(desk.Count("abandoned"), 0);
  EXPECT_EQ(desk.Count("new TOVMStockRpt.Data10402"), desk.Count("end TOVMStockRpt.Data10402"));
  fails = false;
  fetches.clear();
  report->Refresh();
  EXPECT_EQ(Result(), "{OK: True, Error: ''}");
  EXPECT_THAT(fetches, ElementsAre("3", "4", "5"));
  EXPECT_EQ(Page()->RecordCount(), 6) << "nothing is left of the run that failed";
}

TEST_F(LedgerWalkTest, AnswersThatAreNoneAreTold) {
  struct Row {
    const char* name;
    platform::Variant answer;
    const char* error;
  };
  for (const Row& row : {Row{"nothing", platform::Variant(nullptr), "object variable not set"},
                         Row{"no recordset", Keys({{"rsBegBal", 1}}),
                             "type mismatch: the data component answers no recordset under rsBegBal"}}) {
    SCOPED_TRACE(row.name);
    desk.Answer("TOVMStockRpt.Data10402", "GetPerioddata", row.answer);
    Open(1, Months(2024, 3, 2024, 3));
    EXPECT_FALSE(platform::ToBoolean(report->Result()->Value("OK")));
    if (std::string(row.name) == "no recordset") {
      EXPECT_EQ(platform::ToText(report->Result()->Value("Error")), row.error);
    }
  }
}

// The plain recomputation: figures in hundredths, no types of the ledger's own.
class PlainLedger {
 public:
  static std::vector<std::string> Lines(const BookSpec& book, std::int32_t first, std::int32_t last,
                                        bool keepEmpty) {
    std::vector<std::string> lines;
    double year[4] = {};
    for (std::int32_t at = first; at <= last; ++at) {
      const std::int32_t yearNumber = at / 12;
      const std::int32_t period = at % 12 + 1;
      const auto found = book.find({1, yearNumber * 100 + period});
      const PeriodSpec spec = found == book.end() ? PeriodSpec() : found->second;
      const std::string name = std::to_string(yearNumber) + "." + std::to_string(period);
      if (keepEmpty || !spec.opening.empty() || !spec.happened.empty() || !spec.closing.empty()) {
        AddPeriod(lines, name, spec, year);
      }
      if (at != last && period != 12) continue;
      if (year[0] != 0 || year[1] != 0 || year[2] != 0 || year[3] != 0) {
        const std::string yearName = period == 12 && at != last ? std::to_string(yearNumber) + ".1" : name;
        lines.push_back(Line(yearName, "本年累计", Text(year[0], year[1]), Text(year[2], year[3]), kNothing));
      }
      for (double& sum : year) sum = 0;
    }
    return lines;
  }

 private:
  static std::string Text(double quantity, double amount) {
    return platform::NumberToText(quantity) + "@" +
           platform::NumberToText(quantity == 0 ? 0 : amount / quantity) + "=" +
           platform::NumberToText(amount);
  }

  static void AddPeriod(std::vector<std::string>& lines, const std::string& name, const PeriodSpec& spec,
                        double (&year)[4]) {
    double quantity = 0;
    double amount = 0;
    if (spec.opening.empty()) lines.push_back(BalanceLine(name, "期初结存", kNothing));
    for (const BalanceSpec& each : spec.opening) {
      lines.push_back(BalanceLine(name, "期初结存", Text(each.quantity, each.amount)));
      quantity += each.quantity;
      amount += each.amount;
    }
    double period[4] = {};
    for (const MovementSpec& each : spec.happened) {
      quantity += each.inQuantity - each.outQuantity;
      amount += each.inAmount - each.outAmount;
      const double parts[] = {each.inQuantity, each.inAmount, each.outQuantity, each.outAmount};
      for (std::size_t i = 0; i < 4; ++i) {
        period[i] += parts[i];
        year[i] += parts[i];
      }
      lines.push_back(Line(name, each.inQuantity != 0 ? "采购收货" : "销售发货",
                           Text(each.inQuantity, each.inAmount), Text(each.outQuantity, each.outAmount),
                           Text(quantity, amount)));
    }
    if (!spec.happened.empty()) {
      lines.push_back(
          Line(name, "本期合计", Text(period[0], period[1]), Text(period[2], period[3]), kNothing));
    }
    if (spec.closing.empty()) {
      const std::string price =
          spec.happened.empty() || quantity == 0 ? "0" : platform::NumberToText(amount / quantity);
      lines.push_back(
          BalanceLine(name, "期末结存",
                      platform::NumberToText(quantity) + "@" + price + "=" + platform::NumberToText(amount)));
    }
    for (const BalanceSpec& each : spec.closing) {
      if (spec.closing.size() > 1 && each.quantity == 0 && each.amount == 0) continue;
      lines.push_back(BalanceLine(name, "期末结存", Text(each.quantity, each.amount)));
    }
  }
};

// Whole and quarter figures add up exactly in any order, so that lines compare as texts.
TEST_F(LedgerWalkTest, AgreesWithAPlainRecomputationOnRandomBooks) {
  std::mt19937 random(10402);
  auto below = [&random](std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); };
  auto figure = [&below](bool mayBeZero) {
    return mayBeZero && below(4) == 0 ? 0.0 : (static_cast<double>(below(80)) - 20) / 4;
  };
  for (int round = 0; round < 2000; ++round) {
    desk.journal.clear();
    SCOPED_TRACE(round);
    const auto first = static_cast<std::int32_t>(2023 * 12 + below(24));
    const auto last = first + static_cast<std::int32_t>(below(15));
    book.clear();
    for (std::int32_t at = first; at <= last; ++at) {
      PeriodSpec spec;
      for (std::uint32_t i = below(3); i > 0; --i)
        spec.opening.push_back({.quantity = figure(true), .amount = figure(true)});
      for (std::uint32_t i = below(4); i > 0; --i) {
        MovementSpec movement;
        (below(2) == 0 ? movement.inQuantity : movement.outQuantity) = figure(true);
        (below(2) == 0 ? movement.inAmount : movement.outAmount) = figure(true);
        spec.happened.push_back(movement);
      }
      for (std::uint32_t i = below(4); i > 0; --i)
        spec.closing.push_back({.quantity = figure(true), .amount = figure(true)});
      if (below(5) != 0) book[{1, at / 12 * 100 + at % 12 + 1}] = spec;
    }
    const bool keepEmpty = below(2) == 0;
    Open(1, Months(static_cast<std::int16_t>(first / 12), static_cast<std::int16_t>(first % 12 + 1),
                   static_cast<std::int16_t>(last / 12), static_cast<std::int16_t>(last % 12 + 1),
                   keepEmpty ? 0 : 1));
    ASSERT_EQ(Lines(), PlainLedger::Lines(book, first, last, keepEmpty));
  }
}

}  // namespace
}  // namespace component
