#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "books/database/Connection.h"

namespace books::database {

// Inserts many rows of integers with few statements: rows are gathered and written a block at a time. What
// was added stands in the table only after Flush.
class IntegerRows {
 public:
  // `columns` as in an insert: "item_id, period, amount".
  IntegerRows(Connection& connection, std::string_view table, std::string_view columns);

  // As many values as there are columns.
  void Add(std::initializer_list<std::int64_t> row);
  void Flush();

 private:
  std::size_t width_;
  Statement block_;
  Statement single_;
  std::vector<std::int64_t> waiting_;
};

}  // namespace books::database
