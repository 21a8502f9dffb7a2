#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "books/database/Connection.h"
#include "books/posting/Document.h"
#include "books/posting/Periods.h"

namespace books::posting {

// What the entries of a bill of this class do to stock.
schema::BillKind KindOf(schema::BillClass billClass);

// Writes bills and their entries, after looking at what the tables cannot refuse by themselves. Movements are
// not its business. Used inside a transaction; statements stay prepared while it lives.
class BillWriter {
 public:
  explicit BillWriter(database::Connection& connection);

  // Returns the new bill's id, which is greater than those of all bills before it.
  Id Write(const Document& document);

 private:
  struct ItemFacts {
    bool batchManaged = false;
    bool serialManaged = false;
  };

  void CheckEntry(const Document& document, const Entry& entry, schema::BillKind kind);
  std::int32_t OpenPeriod(const Document& document);
  const ItemFacts& FactsOf(Id item);
  void WriteEntry(Id bill, const Document& document, const Entry& entry, std::int32_t line);

  Calendar calendar_;
  Id nextId_ = 1;
  std::unordered_map<Id, ItemFacts> facts_;
  std::unordered_map<std::int32_t, std::int32_t> periods_;  // of days
  database::Connection& connection_;
  database::Statement readItem_;
  database::Statement writeBill_;
  database::Statement writeEntry_;
  database::Statement writeSerial_;
};

}  // namespace books::posting
