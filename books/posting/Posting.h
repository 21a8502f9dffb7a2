#pragma once

#include <cstddef>
#include <span>

#include "books/database/Connection.h"
#include "books/posting/Document.h"

// What turns documents into stock. Each function is one transaction: after a failure the book is as it was.
// Refused documents raise kBadArgument with the bill's number and what to do.
namespace books::posting {

enum class Costing {
  kNow,
  kLater,  // quantities move at once; the items wait for ValueWaitingBusiness
};

// Writes a new bill and, when it is audited, moves the stock. It may lie on any day of a period that is not
// closed: whatever follows it is worked out again. Returns the bill's id.
Id Post(database::Connection& connection, const Document& document, Costing costing = Costing::kNow);

// An unaudited bill moves stock from now on, or an audited one no more.
void Audit(database::Connection& connection, Id bill, Costing costing = Costing::kNow);
void Unaudit(database::Connection& connection, Id bill, Costing costing = Costing::kNow);
// The bill, audited or not, is gone.
void Delete(database::Connection& connection, Id bill, Costing costing = Costing::kNow);

// Opening stock; only while the start period is current. Rows of a cell that exists already replace it.
void SetOpeningStock(database::Connection& connection, std::span<const OpeningStock> rows);

// As SetOpeningStock, without working the stock out: for the caller's own transaction.
void WriteOpeningStock(database::Connection& connection, std::span<const OpeningStock> rows);

// Values the business that waits, with all that depends on it. Returns the number of items that waited.
std::size_t ValueWaitingBusiness(database::Connection& connection);

// Works the stock of these items out again from the documents, and of all that assemblies tie to them.
void RecalculateItems(database::Connection& connection, std::span<const Id> items);

}  // namespace books::posting
