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

  const Bill& BillOf(std::int64_t id);
  // A partner, a warehouse, an auxiliary property; empty for 0.
  const Named& BaseDataOf(std::int64_t id);
  const std::string& BatchNumber(std::int64_t id);
  const std::string& UnitName(std::int64_t id);
  const std::string& ClassName(std::int32_t billClass);
  // How much of the item's base unit is in one of this unit, in millionths; the base unit stands for itself
  // where it is not among the item's units, and for 0. Kept while the same item is asked for.
  std::int64_t FactorOf(std::int64_t itemId, std::int64_t unitId);

 private:
  using Texts = std::unordered_map<std::int64_t, std::string>;
  static const std::string& Find(Texts& known, database::Statement& statement, std::int64_t id);

  database::Statement bill_;
  database::Statement baseData_;
  database::Statement batch_;
  database::Statement unit_;
  database::Statement billClass_;
  database::Statement factor_;
  std::unordered_map<std::int64_t, Bill> bills_;
  std::unordered_map<std::int64_t, Named> named_;
  Texts batches_;
  Texts units_;
  Texts classes_;
  std::unordered_map<std::int64_t, std::int64_t> factors_;  // of one item, by unit
  std::int64_t factorItemId_ = 0;
};

}  // namespace books::reports
