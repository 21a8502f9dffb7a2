#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "books/demo/Company.h"
#include "books/demo/Journal.h"
#include "books/demo/Prices.h"
#include "books/demo/Random.h"
#include "books/demo/Shelves.h"

namespace books::demo {

// What the departments of the company share on the day that is being played.
struct Business {
  const Plan& plan;
  const Company& company;
  Shelves& shelves;
  const Prices& prices;
  Journal& journal;
  platform::Date day;

  std::int32_t DaysLeft() const { return plan.today.Days() - day.Days(); }
  bool SameMonth(platform::Date other) const {
    return other.Calendar().month == day.Calendar().month && other.Calendar().year == day.Calendar().year;
  }
  // Bills of the last days may still wait for their audit; those of a month that is over may not.
  bool MayWaitForAudit() const {
    return DaysLeft() < 6 && plan.today.Calendar().month == day.Calendar().month;
  }
  Id WarehouseIdOf(const Shelf& shelf) const { return company.warehouses[shelf.warehouse].id; }
};

// An empty bill of the day.
posting::Document NewBill(const Business& business, schema::BillClass billClass, Id department, Id employee);

// A line for goods taken from a shelf, or laid on it, in the unit that suits the quantity. `price` is for the
// base unit, in ten-thousandths; without one the line has neither price nor amount.
posting::Entry NewEntry(const Business& business, const Shelf& shelf, const Taken& goods,
                        std::optional<std::int64_t> price);

// Does a job as often as its share of the day's entries asks for.
class Pace {
 public:
  // `permille` of all entries; `lines` is what one bill has on average.
  Pace(int permille, int lines) : permille_(permille), lines_(lines), due_(std::int64_t{lines} * 500) {}

  // Whether one more bill is due today. `entries` are those expected of the day, counted once a day.
  void Add(std::int64_t entriesTimesThousand) { due_ += entriesTimesThousand * permille_ / 1000; }
  bool Due() {
    if (due_ < std::int64_t{lines_} * 1000) return false;
    due_ -= std::int64_t{lines_} * 1000;
    return true;
  }

 private:
  std::int64_t permille_;
  std::int64_t lines_;
  std::int64_t due_;  // lines, in thousandths
};

}  // namespace books::demo
