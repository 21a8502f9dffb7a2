#pragma once

#include <cstdint>
#include <vector>

#include "books/reports/movement/MovementChoice.h"
#include "platform/value/Currency.h"

namespace books::reports {

// Figures in the book's own whole numbers, so that sums are exact.
struct Sums {
  std::int64_t quantity = 0;     // millionths
  std::int64_t auxQuantity = 0;  // likewise
  std::int64_t amount = 0;       // ten-thousandths

  Sums& operator+=(const Sums& other) {
    quantity += other.quantity;
    auxQuantity += other.auxQuantity;
    amount += other.amount;
    return *this;
  }
  Sums& operator-=(const Sums& other) { return *this += -other; }
  Sums operator-() const { return {.quantity = -quantity, .auxQuantity = -auxQuantity, .amount = -amount}; }
  friend Sums operator+(Sums left, const Sums& right) { return left += right; }
  friend Sums operator-(Sums left, const Sums& right) { return left -= right; }
  bool IsZero() const { return quantity == 0 && auxQuantity == 0 && amount == 0; }
  // Whether a report about these goods has nothing to show. A batch of an item whose batches share one cost
  // may keep an amount when it is gone; the batch reports show no amounts, and do not list it for that.
  bool IsNothing(MovementGoods goods) const {
    return goods == MovementGoods::kBatchManaged ? quantity == 0 && auxQuantity == 0 : IsZero();
  }
};

// Unit price; 0 without a quantity.
inline double PriceOf(const Sums& sums) {
  constexpr double kQuantityScale = 1'000'000;
  return sums.quantity == 0 ? 0
                            : platform::Currency::FromUnits(sums.amount).ToDouble() /
                                  (static_cast<double>(sums.quantity) / kQuantityScale);
}

// Whether what such a bill moves belongs to the receipts; the bills that move goods both ways by direction.
// A class belongs to one side whatever the sign of its figures: a return diminishes the side of its bill.
bool IsReceipt(std::int32_t billClass, std::int32_t direction);

// What one item has in a place: warehouse, batch (0: none), auxiliary property (0: none).
struct Place {
  std::int64_t warehouseId = 0;
  std::int64_t batchId = 0;
  std::int64_t auxId = 0;
};

struct OpeningFigures {
  Place place;
  Sums sums;
};

struct Move {
  platform::Date date;
  std::int64_t billId = 0;
  std::int32_t line = 0;
  std::int32_t direction = 0;
  std::int32_t billClass = 0;
  Place place;
  bool receipt = false;
  Sums sums;  // positive in the sense of its side
};

// What a choice shows of one item: its places at the beginning of the first day, and what moved since, in the
// order of costing. A place may occur several times among the opening figures.
struct ItemMovement {
  std::vector<OpeningFigures> opening;
  std::vector<Move> moves;
};

enum class Openings { kNone, kSum, kByPlace };

// What a report tells of a movement beside its figures, and what it has to know of the opening figures. The
// rest reads as 0, or in one sum, where the choice has no need of it either: what is not read costs nothing.
struct MovementParts {
  Openings openings = Openings::kByPlace;
  bool bills = true;
  bool warehouses = true;
  bool batches = true;
  bool auxiliaries = true;
};

// Reads items one after the other: the stored balances of the period before the first day, and the movements
// since. Both tables are clustered by item, so each item is read in two places of the book.
class MovementReader {
 public:
  MovementReader(services::Store& store, const MovementChoice& choice, MovementParts parts);

  // Good until the next item is read.
  const ItemMovement& Read(std::int64_t itemId);

 private:
  bool IsChosen(const Place& place) const;
  void ReadOpening(std::int64_t itemId);
  void ReadMoves(std::int64_t itemId);
  void AddMove(const Place& place);
  void DropSamePrice();

  const MovementChoice& choice_;
  MovementParts parts_;
  platform::Date firstDay_;  // of the movements that are read
  database::Statement balances_;
  database::Statement movements_;
  ItemMovement item_;
};

}  // namespace books::reports
