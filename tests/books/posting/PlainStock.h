#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

// The rules of costing once more, written down as plainly as possible and without the code under test:
// numbers only, everything worked out from the first movement on. For books small enough that products of an
// amount and a quantity fit 64 bits.
namespace books::test {

struct PlainMove {
  enum class Kind { kReceipt, kAmountOnly, kTransfer, kAssembly, kIssue };

  Kind kind = Kind::kReceipt;
  std::int64_t item = 0;
  int period = 0;
  int day = 0;
  std::int64_t bill = 0;
  int line = 0;
  int direction = 1;
  std::int64_t warehouse = 0;
  std::int64_t otherWarehouse = 0;  // of a transfer: where the other half is
  std::int64_t batch = 0;
  std::int64_t quantity = 0;
  std::optional<std::int64_t> given;
  std::int64_t amount = 0;  // the answer
};

enum class PlainMethod { kMoving, kMonthly, kOldestFirst, kBatch };

struct PlainRules {
  bool costPerWarehouse = false;
  std::set<std::int64_t> gifts;
  std::map<std::int64_t, PlainMethod> methods;
};

// Sets the amounts of all moves.
void ReckonPlainly(std::vector<PlainMove>& moves, const PlainRules& rules);

// What lies where at the end of each period: quantity and amount by item, period, warehouse and batch.
using PlainCell = std::tuple<std::int64_t, int, std::int64_t, std::int64_t>;
using PlainFigures = std::pair<std::int64_t, std::int64_t>;
std::map<PlainCell, PlainFigures> ClosePlainly(const std::vector<PlainMove>& moves, int firstPeriod,
                                               int lastPeriod);

}  // namespace books::test
