#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "books/services/Store.h"

namespace books::reports {

// What a detail shows of a movement beside its figures. Each is read on its first use and kept for the
// output, as the same bills, partners and warehouses come again and again.
class DetailFacts {
 public:
  explicit DetailFacts(services::Store& store);

  struct Bill {
    std::string number;
    std::string explanation;
    std::int64_t partnerId = 0;
  };
  struct Named {
    std::string number;  // as users of the book write it
    std::string name;
  };
  struct Entry {
    std::int64_t unitId = 0;
    std::int64_t unitQuantity = 0;  // millionths, in the bill's own sense
    std::int64_t factor = 0;        // of the unit, millionths
    std::string note;
  };

  const Bill& BillOf(std::int64_t id);
  // A partner, a warehouse, an auxiliary property; empty for 0.
  const Named& BaseDataOf(std::int64_t id);
  const std::string& BatchNumber(std::int64_t id);
  const std::string& UnitName(std::int64_t id);
  const std::string& ClassName(std::int32_t billClass);
  // Read anew every time: an entry moves once or twice.
  Entry EntryOf(std::int64_t itemId, std::int64_t billId, std::int32_t line);

 private:
  using Texts = std::unordered_map<std::int64_t, std::string>;
  static const std::string& Find(Texts& known, database::Statement& statement, std::int64_t id);

  database::Statement bill_;
  database::Statement baseData_;
  database::Statement batch_;
  database::Statement unit_;
  database::Statement billClass_;
  database::Statement entry_;
  std::unordered_map<std::int64_t, Bill> bills_;
  std::unordered_map<std::int64_t, Named> named_;
  Texts batches_;
  Texts units_;
  Texts classes_;
};

}  // namespace books::reports
