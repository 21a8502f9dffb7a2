#include "books/check/Check.h"

#include <iterator>

#include "books/check/Balances.h"
#include "books/check/Movements.h"
#include "books/check/Rules.h"

namespace books::check {
namespace {

using database::Connection;
using database::Statement;

void Append(std::vector<Violation>& all, std::vector<Violation> more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::vector<Violation> CheckStorage(Connection& connection) {
  std::vector<Violation> violations;
  for (std::string& finding : connection.CheckStorage()) {
    violations.push_back({.rule = "storage", .description = std::move(finding), .documents = {}});
  }
  return violations;
}

// Rows of the same description are one violation with several documents.
std::vector<Violation> CheckRule(Connection& connection, const Rule& rule, std::size_t limit) {
  std::vector<Violation> violations;
  Statement rows = connection.Query(rule.sql);
  while (rows.Step()) {
    const std::string description = rows.Text(0);
    if (violations.empty() || violations.back().description != description) {
      if (violations.size() == limit) break;
      violations.push_back({.rule = std::string(rule.name), .description = description, .documents = {}});
    }
    if (!rows.IsNull(1)) violations.back().documents.push_back(rows.Text(1));
  }
  return violations;
}

bool HasBegun(Connection& connection) {
  Statement row =
      connection.Query("SELECT 1 FROM system_profile WHERE category = 'IC' AND key = 'StartYear'");
  return row.Step();
}

}  // namespace

std::vector<Violation> Check(Connection& connection, std::size_t limit) {
  database::Transaction picture(connection, database::Transaction::Kind::kRead);
  std::vector<Violation> violations = CheckStorage(connection);
  for (const Rule& rule : Rules()) Append(violations, CheckRule(connection, rule, limit));
  // Before accounting has begun nothing can have moved.
  if (HasBegun(connection)) {
    Append(violations, CheckMovements(connection, limit));
    Append(violations, CheckBalances(connection, limit));
    Append(violations, CheckCosts(connection, limit));
  }
  picture.Commit();
  return violations;
}

}  // namespace books::check
