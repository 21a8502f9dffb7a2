#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "books/database/Connection.h"

// Books of random bills for the property tests of the movement reports: January to March 2025, six items in
// two groups (1 to 6, the last two by batch and with an auxiliary unit), three warehouses in two groups (11
// and 12 ordinary, 13 gifts), two departments (21, 22), two employees (31, 32), two auxiliary properties (41,
// 42). Numbers are ids.
namespace books::test {

using Random = std::mt19937;

int Below(Random& random, int limit);

void WriteRandomBook(database::Connection& connection, Random& random, int bills);

// What the book says that moved, and what lay there before all of it (day 0, no bill): all as it stands.
struct PlainRow {
  std::int32_t day = 0;
  std::int64_t item = 0;
  std::int64_t warehouse = 0;
  std::int64_t batch = 0;
  std::int64_t aux = 0;
  std::int64_t department = 0;
  std::int32_t direction = 1;
  std::int64_t quantity = 0;
  std::int64_t auxQuantity = 0;
  std::int64_t amount = 0;
};
std::vector<PlainRow> ReadPlainRows(database::Connection& connection);

}  // namespace books::test
