#pragma once

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

// The movements that the audited bills from an id on would make, item by item in order of their ids.
class MovementStream {
 public:
  MovementStream(database::Connection& connection, Id firstBill);

  // All movements of the next item in the order of their key; empty at the end.
  std::vector<Movement> NextItem();

 private:
  Movement Read() const;

  database::Statement rows_;
  bool ready_ = false;  // a row stands ready that was not handed out
};

}  // namespace books::posting
