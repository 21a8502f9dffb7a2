#include "books/posting/Periods.h"

#include <algorithm>
#include <optional>
#include <string>

#include "books/posting/Posting.h"
#include "books/schema/Codes.h"
#include "books/schema/Schema.h"
#include "platform/value/Error.h"

namespace books::posting {
namespace {

using database::Connection;
using database::Statement;
using database::Transaction;
using platform::Date;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Posting", description);
}

std::string NameOf(std::int32_t period) {
  return std::to_string(schema::YearOf(period)) + "-" + std::to_string(schema::NumberOf(period));
}

std::int32_t ReadNumber(Connection& connection, std::string_view key) {
  Statement row = connection.Query(
      "SELECT CAST(value AS INTEGER) FROM system_profile WHERE category = 'IC' AND key = ?", key);
  if (!row.Step()) Refuse("accounting has not begun: the profile has no " + std::string(key));
  return row.Int32(0);
}

void WriteNumber(Connection& connection, std::string_view key, std::int32_t value) {
  connection.Execute(
      "INSERT INTO system_profile (category, key, value) VALUES ('IC', ?, ?) "
      "ON CONFLICT (category, key) DO UPDATE SET value = excluded.value",
      key, std::to_string(value));
}

void WriteCurrent(Connection& connection, std::int32_t period) {
  schema::AddCalendarYears(connection, schema::YearOf(period), schema::YearOf(period));
  WriteNumber(connection, "CurrentYear", schema::YearOf(period));
  WriteNumber(connection, "CurrentPeriod", schema::NumberOf(period));
}

}  // namespace

void BeginAccounting(Connection& connection, std::int32_t year, std::int32_t number, std::int32_t lastYear) {
  Transaction transaction(connection);
  Statement begun = connection.Query(
      "SELECT 1 FROM system_profile WHERE category = 'IC' AND key IN ('StartYear', 'StartPeriod')");
  if (begun.Step()) Refuse("accounting has begun already");
  schema::AddCalendarYears(connection, year, std::max(year, lastYear));
  WriteNumber(connection, "StartYear", year);
  WriteNumber(connection, "StartPeriod", number);
  WriteCurrent(connection, schema::PeriodOf(year, number));
  ExtendBalances(connection, schema::PeriodOf(year, number));
  transaction.Commit();
}

Calendar ReadCalendar(Connection& connection) {
  return {
      .start = schema::PeriodOf(ReadNumber(connection, "StartYear"), ReadNumber(connection, "StartPeriod")),
      .current =
          schema::PeriodOf(ReadNumber(connection, "CurrentYear"), ReadNumber(connection, "CurrentPeriod"))};
}

std::int32_t PeriodOfDay(Connection& connection, Date day) {
  Statement row = connection.Query(
      "SELECT period FROM accounting_period WHERE first_day <= ? AND last_day >= ?", day, day);
  if (!row.Step()) Refuse("no accounting period holds " + day.DayOnly().ToText() + "; add its year first");
  return row.Int32(0);
}

BalanceBase BalanceBefore(Connection& connection, Date day) {
  const std::int32_t until = BalancesUntil(connection);
  const std::int32_t start = ReadCalendar(connection).start;
  // The last period that ended before the day, or, when the balances do not reach that far, their last one.
  Statement row = connection.Query(
      "SELECT period, last_day FROM accounting_period WHERE last_day < ? AND period BETWEEN ? AND ? "
      "ORDER BY period DESC LIMIT 1",
      day, start, until);
  if (row.Step()) return {.period = row.Int32(0), .firstDay = row.GetDate(1).AddDays(1)};
  Statement first = connection.Query("SELECT first_day FROM accounting_period WHERE period = ?", start);
  if (!first.Step()) Refuse("the calendar has no period " + NameOf(start));
  return {.period = start - 1, .firstDay = first.GetDate(0)};
}

std::int32_t BalancesUntil(Connection& connection) {
  Statement row = connection.Query("SELECT balances_until FROM book_state WHERE id = 1");
  if (row.Step() && !row.IsNull(0)) return row.Int32(0);
  return ReadCalendar(connection).start - 1;
}

void ExtendBalances(Connection& connection, std::int32_t period) {
  Transaction transaction(connection);
  for (std::int32_t last = BalancesUntil(connection); last < period; ++last) {
    connection.Execute(
        "INSERT INTO balance (item_id, period, warehouse_id, batch_id, aux_id, quantity, aux_quantity, "
        "amount) "
        "SELECT item_id, ?, warehouse_id, batch_id, aux_id, quantity, aux_quantity, amount FROM balance "
        "WHERE period = ? AND (quantity <> 0 OR aux_quantity <> 0 OR amount <> 0)",
        last + 1, last);
    connection.Execute("UPDATE book_state SET balances_until = ? WHERE id = 1", last + 1);
  }
  transaction.Commit();
}

void ClosePeriod(Connection& connection) {
  Transaction transaction(connection);
  const std::int32_t current = ReadCalendar(connection).current;
  ValueWaitingBusiness(connection);
  Statement open = connection.Query(
      "SELECT number FROM bill WHERE audited = 0 AND period <= ? ORDER BY number LIMIT 1", current);
  if (open.Step()) {
    Refuse("period " + NameOf(current) + " has bills that are not audited, such as " + open.Text(0) +
           "; audit or delete them first");
  }
  WriteCurrent(connection, current + 1);
  ExtendBalances(connection, current + 1);
  transaction.Commit();
}

void ReopenPeriod(Connection& connection) {
  Transaction transaction(connection);
  const Calendar calendar = ReadCalendar(connection);
  if (calendar.current == calendar.start)
    Refuse("accounting began with the current period, none is before it");
  WriteCurrent(connection, calendar.current - 1);
  transaction.Commit();
}

}  // namespace books::posting
