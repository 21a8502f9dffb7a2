// A day begins with deliveries and what was put off; then the shelves are looked at, the keepers do their
// jobs, and the rest of the day's entries are sales. Since sales fill up whatever the others leave, the book
// ends with the number of entries that was planned.
#include "books/demo/Trade.h"

#include <array>
#include <numeric>
#include <vector>

#include "books/demo/Business.h"
#include "books/demo/Buying.h"
#include "books/demo/Keeping.h"
#include "books/demo/Selling.h"

namespace books::demo {
namespace {

// Business by calendar month, and that it grows, from 1000 on the first day by so much a year.
constexpr std::array<int, 12> kMonths = {125, 80, 92, 96, 98, 100, 98, 100, 110, 97, 105, 115};
constexpr int kGrowthAYear = 120;
constexpr int kSunday = 55;
constexpr int kWorkday = 108;

std::vector<std::int64_t> WeightsOfDays(const Plan& plan) {
  std::vector<std::int64_t> weights;
  for (platform::Date day = plan.firstDay; day <= plan.today; day = day.AddDays(1)) {
    const std::int32_t passed = day.Days() - plan.firstDay.Days();
    // Day 1 of the count was a Sunday.
    const std::int64_t week = day.Days() % 7 == 1 ? kSunday : kWorkday;
    const std::int64_t month = kMonths.at(static_cast<std::size_t>(day.Calendar().month) - 1);
    weights.push_back(week * month * (1000 + (std::int64_t{kGrowthAYear} * passed / 365)));
  }
  return weights;
}

}  // namespace

void PlayTrade(const Plan& plan, const Company& company, Shelves& shelves, const Prices& prices,
               Journal& journal, const std::function<void(double)>& progress) {
  Business business{.plan = plan,
                    .company = company,
                    .shelves = shelves,
                    .prices = prices,
                    .journal = journal,
                    .day = plan.firstDay};
  Buying buying(business);
  Selling selling(business);
  Keeping keeping(business);
  buying.FillShelves();

  const std::vector<std::int64_t> weights = WeightsOfDays(plan);
  const std::int64_t total = std::accumulate(weights.begin(), weights.end(), std::int64_t{0});
  std::int64_t passed = 0;
  int month = 0;
  for (const std::int64_t weight : weights) {
    if (business.day.Calendar().month != month) {
      month = business.day.Calendar().month;
      shelves.SetMonth(month);
      progress(static_cast<double>(passed) / static_cast<double>(total));
    }
    passed += weight;
    const std::int64_t entriesTimesThousand = plan.entries * 1000 * weight / total;
    journal.WriteLateBills(business.day);
    buying.Receive();
    buying.Replenish(entriesTimesThousand);
    keeping.Work(entriesTimesThousand);
    selling.SellSpecially(entriesTimesThousand);
    selling.Sell(plan.entries * passed / total);
    business.day = business.day.AddDays(1);
  }
}

}  // namespace books::demo
