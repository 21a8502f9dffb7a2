#include "books/services/Session.h"

#include "platform/value/Clock.h"

namespace books::services {

using database::Statement;

std::vector<BookUser> Users(Store& store) {
  std::vector<BookUser> users;
  Statement row = store.Reading().Query("SELECT id, name FROM book_user WHERE disabled = 0 ORDER BY id");
  while (row.Step()) users.push_back({.id = row.Int32(0), .name = row.Text(1)});
  return users;
}

bool NeedRight(Store& store, std::int32_t userId) {
  if (userId == 0) return false;
  Statement row = store.Reading().Query(
      "SELECT 1 FROM book_user WHERE id = ? AND restricted = 0 AND disabled = 0", userId);
  return !row.Step();
}

std::string RightClasses(Store& store) {
  std::string classes;
  Statement row = store.Reading().Query(
      "SELECT id FROM base_class c WHERE EXISTS "
      "(SELECT 1 FROM base_data b WHERE b.class_id = c.id AND b.right_users <> '') ORDER BY id");
  while (row.Step()) {
    if (!classes.empty()) classes += ',';
    classes += row.Text(0);
  }
  return classes;
}

std::optional<platform::Date> PeriodFirstDay(Store& store, std::int32_t year, std::int32_t period) {
  Statement row = store.Reading().Query(
      "SELECT first_day FROM accounting_period WHERE year = ? AND number = ?", year, period);
  if (!row.Step()) return std::nullopt;
  return row.GetDate(0);
}

void WriteUsage(const Store& store, std::int32_t userId, std::string_view code, std::string_view text) {
  const platform::Date now = platform::Clock::Now();
  store.OpenForWriting().Execute(
      "INSERT INTO usage_record (date, second_of_day, user_id, code, text) VALUES (?, ?, ?, ?, ?)",
      now.DayOnly(), now.SecondsOfDay(), userId, code, text);
}

}  // namespace books::services
