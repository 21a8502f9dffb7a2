#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "books/import/BillRows.h"
#include "books/import/DocumentIndex.h"
#include "books/import/Run.h"

namespace books::importer {

// The entries of bills: what they must say for their kind of bill, and writing them, or comparing those of
// bills that the book has already.
class BillEntries {
 public:
  BillEntries(Run& run, DocumentIndex& bills);

  // An entry that is not sound is only counted.
  void Take(const BillEntryRow& row, const Place& place, bool sound);
  // After the last entry: every bill of the files has its entries, an assembly has both directions.
  void CheckWholeBills();

 private:
  // A row whose references and figures are found.
  struct Entry {
    std::int64_t billId = 0;
    schema::Direction direction = schema::Direction::kIn;
    Reference batch;
    Figures figures;
    database::Quantity auxQuantity;
    std::optional<std::int64_t> orderId;
    std::vector<std::int64_t> serials;
  };

  std::optional<schema::Direction> DirectionOf(const BillEntryRow& row, const Place& place);
  bool CheckWarehouses(const BillEntryRow& row, const Place& place);
  bool CheckQuantity(const BillEntryRow& row, const Place& place);
  bool FindOrder(const BillEntryRow& row, const Place& place, Entry& entry);
  bool FindSerials(const BillEntryRow& row, const Place& place, Entry& entry);
  void Insert(const BillEntryRow& row, const Place& place, const Entry& entry);
  void Compare(const BillEntryRow& row, const Place& place, const Entry& entry);
  void CountEntry(std::int64_t bill);

  Run& run_;
  DocumentIndex& bills_;
  DocumentIndex orders_;
  std::vector<std::uint32_t> entries_;  // by bill id, of those in the file
};

}  // namespace books::importer
