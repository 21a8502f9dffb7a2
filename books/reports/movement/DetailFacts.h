#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "books/services/Store.h"
#include "platform/value/Date.h"

namespace books::reports {

// What a detail shows of a movement beside its figures. Each is read on its first use and kept for the
// output, as the same bills, partners and warehouses come again and again; bills with all their entries.
class DetailFacts {
 public:
  explicit DetailFacts(services::Store& store);

  struct Bill {
    std::string number;
    std::string explanation;
    std::int64_t partnerId = 0;
    std::size_t firstEntry = 0;
    std::size_t entryCount = 0;
  };
  struct Entry {
    std::int32_t line = 0;
    std::uint32_t note = 0;         // see NoteOf
    std::int64_t unitId = 0;        // 0 where there is no such entry
    std::int64_t unitQuantity = 0;  // millionths, in the bill's own sense
  };
  struct Named {
    std::string number;  // as users of the book write it
    std::string name;
  };

  // Reads the bills of these days in one go: worth it when most of them will be asked for.
  void ReadBills(platform::Date from, platform::Date to);

  const Bill& BillOf(std::int64_t id);
  Entry EntryOf(const Bill& bill, std::int32_t line) const;
  const std::string& NoteOf(const Entry& entry) const { return notes_[entry.note]; }
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
  void KeepBills(database::Statement& rows);
  static const std::string& Find(Texts& known, database::Statement& statement, std::int64_t id);

  services::Store& store_;
  database::Statement bill_;
  database::Statement baseData_;
  database::Statement batch_;
  database::Statement unit_;
  database::Statement billClass_;
  database::Statement factor_;
  std::unordered_map<std::int64_t, Bill> bills_;
  std::vector<Entry> entries_;                     // those of a bill together, by line
  std::vector<std::string> notes_{std::string()};  // most entries have none
  std::unordered_map<std::int64_t, Named> named_;
  Texts batches_;
  Texts units_;
  Texts classes_;
  std::unordered_map<std::int64_t, std::int64_t> factors_;  // of one item, by unit
  std::int64_t factorItemId_ = 0;
};

}  // namespace books::reports
