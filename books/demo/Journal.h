#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "books/database/Connection.h"
#include "books/demo/Company.h"
#include "books/posting/BulkPosting.h"
#include "books/posting/Document.h"

namespace books::demo {

struct OrderLine {
  Id itemId = 0;
  std::optional<Id> auxId;
  Id unitId = 0;
  std::int64_t unitQuantity = 0;
  std::int64_t quantity = 0;
  std::int64_t price = 0;  // of the unit, in ten-thousandths
  bool closed = false;
};
struct Order {
  schema::BillClass billClass = schema::BillClass::kPurchaseOrder;
  platform::Date date;
  platform::Date due;
  std::optional<Id> supplierId;
  std::optional<Id> customerId;
  Id departmentId = 0;
  Id employeeId = 0;
  bool audited = true;
  std::vector<OrderLine> lines;
};

// Where everything that the company writes down goes into the book. Bills are numbered by class and month in
// the order in which they are written; one that is written late has an early date and a late number.
class Journal {
 public:
  explicit Journal(database::Connection& connection);

  void Write(posting::Document document);
  void WriteLate(posting::Document document, platform::Date on) {
    late_[on.Days()].push_back(std::move(document));
  }
  // What was put off until this day.
  void WriteLateBills(platform::Date day);
  void Open(const std::vector<posting::OpeningStock>& rows) { posting_.AddOpeningStock(rows); }

  Id WriteOrder(const Order& order);
  Id NewBatch(const Item& item, platform::Date produced);
  Id NewSerial(const Item& item);

  // Entries of bills so far.
  std::int64_t Entries() const { return entries_; }
  std::size_t Bills() const { return posting_.BillCount(); }
  // Has the movements made and valued, and the whole kept.
  void Finish() { posting_.Finish(); }

 private:
  std::string NextNumber(schema::BillClass billClass, platform::Date date);

  posting::BulkPosting posting_;
  database::Statement insertOrder_;
  database::Statement insertOrderEntry_;
  database::Statement insertBatch_;
  database::Statement insertSerial_;
  std::map<std::int32_t, std::vector<posting::Document>> late_;
  std::unordered_map<std::int64_t, std::int64_t> numbers_;
  std::unordered_map<std::int64_t, int> batchesOfDay_;
  Id lastOrder_ = 0;
  Id lastBatch_ = 0;
  Id lastSerial_ = 0;
  std::int64_t entries_ = 0;
};

}  // namespace books::demo
