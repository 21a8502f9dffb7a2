// Base data are trees. A row's level and its ancestors follow from its parent; they are kept as rows of their
// own, because every report that sums up by category levels asks for them.
#include <cstdint>
#include <string>

#include "books/schema/Codes.h"
#include "books/schema/Schema.h"
#include "platform/value/Date.h"
#include "platform/value/Error.h"

namespace books::schema {
namespace {

// Deeper than any real tree: a walk that gets here goes in a circle.
constexpr int kDeepest = 50;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Schema", description);
}

}  // namespace

void RebuildTrees(database::Connection& connection) {
  database::Transaction transaction(connection);
  database::Statement foreign = connection.Query(
      "SELECT c.number, p.number FROM base_data c JOIN base_data p ON p.id = c.parent_id "
      "WHERE c.class_id <> p.class_id ORDER BY c.id LIMIT 1");
  if (foreign.Step()) {
    Refuse("base data " + foreign.Text(0) + " has a parent of another class, " + foreign.Text(1));
  }
  connection.Execute("DELETE FROM base_ancestor");
  connection.Execute(
      "WITH RECURSIVE above (id, ancestor_id, distance) AS ("
      "  SELECT id, parent_id, 1 FROM base_data WHERE parent_id IS NOT NULL"
      "  UNION ALL"
      "  SELECT a.id, b.parent_id, a.distance + 1 FROM above a JOIN base_data b ON b.id = a.ancestor_id"
      "  WHERE b.parent_id IS NOT NULL AND a.distance < ?"
      "), depth (id, levels) AS (SELECT id, MAX(distance) FROM above GROUP BY id) "
      "INSERT INTO base_ancestor (id, level, ancestor_id) "
      "SELECT a.id, d.levels - a.distance + 1, a.ancestor_id FROM above a JOIN depth d ON d.id = a.id",
      kDeepest);
  connection.Execute(
      "UPDATE base_data SET "
      "level = 1 + (SELECT COUNT(*) FROM base_ancestor a WHERE a.id = base_data.id), "
      "detail = CASE WHEN EXISTS (SELECT 1 FROM base_data c WHERE c.parent_id = base_data.id) "
      "THEN 0 ELSE detail END");
  database::Statement circle =
      connection.Query("SELECT number FROM base_data WHERE level > ? ORDER BY id LIMIT 1", kDeepest);
  if (circle.Step()) Refuse("base data " + circle.Text(0) + " is its own ancestor");
  transaction.Commit();
}

void AddCalendarYears(database::Connection& connection, std::int32_t firstYear, std::int32_t lastYear) {
  database::Transaction transaction(connection);
  database::Statement insert = connection.Prepare(
      "INSERT INTO accounting_period (period, year, number, first_day, last_day) VALUES (?, ?, ?, ?, ?) "
      "ON CONFLICT (period) DO NOTHING");
  for (std::int32_t year = firstYear; year <= lastYear; ++year) {
    for (std::int32_t number = 1; number <= 12; ++number) {
      const platform::Date first = platform::Date::Of(year, number, 1);
      const platform::Date next =
          number == 12 ? platform::Date::Of(year + 1, 1, 1) : platform::Date::Of(year, number + 1, 1);
      insert.Run(PeriodOf(year, number), year, number, first, next.AddDays(-1));
    }
  }
  transaction.Commit();
}

}  // namespace books::schema
