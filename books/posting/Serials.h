#pragma once

#include "books/database/Connection.h"
#include "books/posting/Document.h"

namespace books::posting {

// Writes the state of serial numbers as their last audited movement left it: in stock in a warehouse, issued,
// or not yet moved.
void RefreshSerials(database::Connection& connection, Id bill);  // those that the bill lists
void RefreshAllSerials(database::Connection& connection);

}  // namespace books::posting
