#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// The question of a report as anybody would ask it of the database: one statement that answers with the same
// figures. It has no sums behind its rows, and knows nothing of the rules by which a report leaves some out.
// `report` is the bench that it stands beside.
struct PlainStatement {
  const char* report;
  std::string sql;
  std::vector<std::int64_t> values;  // of its marks
};

// `warehouses` are the ids of all warehouses, each of which is a column of the instant stock.
std::vector<PlainStatement> PlainStatements(const std::vector<std::int64_t>& warehouses);

}  // namespace bench
