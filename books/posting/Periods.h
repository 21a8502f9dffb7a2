#pragma once

#include <cstdint>

#include "books/database/Connection.h"
#include "platform/value/Date.h"

namespace books::posting {

struct Calendar {
  std::int32_t start = 0;    // the period in which accounting began
  std::int32_t current = 0;  // those before it are closed
};

// Begins accounting with a period: writes the profile and the periods from its year to the year of `last`.
// Raises when accounting has begun already.
void BeginAccounting(database::Connection& connection, std::int32_t year, std::int32_t number,
                     std::int32_t lastYear);

// Raises when accounting has not begun.
Calendar ReadCalendar(database::Connection& connection);

// The period of a day; raises for a day that no period holds.
std::int32_t PeriodOfDay(database::Connection& connection, platform::Date day);

// Where to find the figures at the beginning of `day`: the rows of `balance` of `period`, plus the movements
// from `firstDay` up to the day before.
struct BalanceBase {
  std::int32_t period = 0;
  platform::Date firstDay;
};
BalanceBase BalanceBefore(database::Connection& connection, platform::Date day);

// Makes `balance` reach this period, carrying the last figures forward; nothing when it does already.
void ExtendBalances(database::Connection& connection, std::int32_t period);
// The last period with balances; with none yet, that before the start.
std::int32_t BalancesUntil(database::Connection& connection);

// Closes the current period: values what waits and moves on to the next one, whose year is added to the
// calendar when it is missing. Raises while the period has bills that are not audited.
void ClosePeriod(database::Connection& connection);
// Opens the period before the current one again. Raises in the start period.
void ReopenPeriod(database::Connection& connection);

}  // namespace books::posting
