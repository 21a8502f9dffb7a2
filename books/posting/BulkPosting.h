#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "books/database/Connection.h"
#include "books/posting/BillWriter.h"
#include "books/posting/Document.h"

namespace books::posting {

// Many bills at once: they are written as they come, in any order; Finish then makes the movements of all of
// them in one sorted step and values item after item, by the same code as a single bill. Memory is bounded by
// the movements of the largest group of items.
//
// Everything between construction and Finish is one transaction: without Finish nothing is written.
class BulkPosting {
 public:
  explicit BulkPosting(database::Connection& connection);

  void AddOpeningStock(std::span<const OpeningStock> rows);
  // Refused documents raise kBadArgument; the transaction must then be given up.
  Id Add(const Document& document);
  std::size_t BillCount() const { return bills_; }

  void Finish();

 private:
  std::int32_t LastPeriod();
  bool HasMovements();
  void FillStock();
  std::vector<Id> ItemsWithStock();
  void CountDeliveries();

  database::Transaction transaction_;
  database::Connection& connection_;
  BillWriter writer_;
  Id firstId_ = 0;
  std::size_t bills_ = 0;
};

}  // namespace books::posting
