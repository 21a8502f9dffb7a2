#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "books/database/Connection.h"

// Random books over the tiny book's base data, and what lies in them, straight from their bills.
namespace books::test {

// Writes the book of a seed: opening stock, 60 bills from January to March 2025, a fifth of them not audited,
// and ten orders that some of them deliver.
std::function<void(database::Connection&)> RandomStock(unsigned seed);

// What a movement or the opening stock (day 0) adds to a place, in the book's whole numbers.
struct Move {
  std::int64_t item = 0;
  std::int64_t warehouse = 0;
  std::int64_t batch = 0;
  std::int32_t day = 0;
  std::int64_t quantity = 0;
  std::int64_t amount = 0;
};
std::vector<Move> AllMoves(database::Connection& connection);

// As the reports' rows read.
std::string QuantityText(std::int64_t millionths);
std::string AmountText(std::int64_t tenThousandths);
std::string NumberOf(database::Connection& connection, std::int64_t baseData);
std::string NameOf(database::Connection& connection, std::int64_t baseData);

}  // namespace books::test
