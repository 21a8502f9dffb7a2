#pragma once

#include <utility>
#include <vector>

#include "books/database/Connection.h"
#include "books/posting/Document.h"
#include "books/posting/Valuation.h"

namespace books::posting {

// Writes the movements that the audited bills of this range of ids make. Their amounts are what the entries
// give, 0 where they have to be worked out.
void InsertMovements(database::Connection& connection, Id firstBill, Id lastBill);

// Takes a bill's movements of one item away.
void DeleteMovements(database::Connection& connection, Id bill, Id item);

// Movements item by item in order of their ids.
class MovementStream {
 public:
  // Those that the audited bills from an id on make, with their entries' amounts as given ones.
  static MovementStream OfBills(database::Connection& connection, Id firstBill);
  // Those that were posted, with their amounts.
  static MovementStream OfTable(database::Connection& connection);

  // All movements of the next item in the order of their key; empty at the end.
  std::vector<Movement> NextItem();

 private:
  explicit MovementStream(database::Statement rows) : rows_(std::move(rows)), ready_(rows_.Step()) {}
  Movement Read() const;

  database::Statement rows_;
  bool ready_;  // a row stands ready that was not handed out
};

}  // namespace books::posting
