#pragma once

#include "books/database/Connection.h"
#include "books/posting/Document.h"

namespace books::posting {

// Writes the movements that the audited bills of this range of ids make. Their amounts are what the entries
// give, 0 where they have to be worked out.
void InsertMovements(database::Connection& connection, Id firstBill, Id lastBill);

// Takes a bill's movements of one item away.
void DeleteMovements(database::Connection& connection, Id bill, Id item);

}  // namespace books::posting
