// Both sides come sorted the same way, so that one walk over the two finds what stands on one side only.
#include "books/check/Movements.h"

#include <string>
#include <tuple>

#include "books/posting/Movements.h"

namespace books::check {
namespace {

using database::Connection;
using database::Statement;
using posting::Movement;
using posting::MovementStream;

auto KeyOf(const Movement& movement) {
  return std::tuple(movement.date, movement.dayOrder, movement.billId, movement.direction, movement.line);
}

auto ContentOf(const Movement& movement) {
  return std::tuple(movement.period, movement.billClass, movement.warehouseId, movement.batchId,
                    movement.auxId, movement.quantity, movement.auxQuantity);
}

class MovementCheck {
 public:
  MovementCheck(Connection& connection, std::size_t limit) : connection_(connection), limit_(limit) {}

  std::vector<Violation> Run() {
    MovementStream bills = MovementStream::OfBills(connection_, 0);
    MovementStream table = MovementStream::OfTable(connection_);
    std::vector<Movement> made = bills.NextItem();
    std::vector<Movement> posted = table.NextItem();
    while ((!made.empty() || !posted.empty()) && violations_.size() < limit_) {
      const bool onlyMade = posted.empty() || (!made.empty() && made.front().itemId < posted.front().itemId);
      const bool onlyPosted =
          made.empty() || (!posted.empty() && posted.front().itemId < made.front().itemId);
      if (onlyMade) {
        Compare(made, {});
      } else if (onlyPosted) {
        Compare({}, posted);
      } else {
        Compare(made, posted);
      }
      if (!onlyPosted) made = bills.NextItem();
      if (!onlyMade) posted = table.NextItem();
    }
    return std::move(violations_);
  }

 private:
  void Compare(const std::vector<Movement>& made, const std::vector<Movement>& posted) {
    auto one = made.begin();
    auto other = posted.begin();
    while (one != made.end() || other != posted.end()) {
      if (other == posted.end() || (one != made.end() && KeyOf(*one) < KeyOf(*other))) {
        Report(*one++, "has no movement for line ");
      } else if (one == made.end() || KeyOf(*other) < KeyOf(*one)) {
        Report(*other++, "has a movement that no audited bill makes, of line ");
      } else {
        if (ContentOf(*one) != ContentOf(*other)) Report(*one, "does not move as the bill says in line ");
        ++one;
        ++other;
      }
    }
  }

  void Report(const Movement& movement, const std::string& what) {
    if (violations_.size() >= limit_) return;
    Statement number = connection_.Query("SELECT number FROM base_data WHERE id = ?", movement.itemId);
    const std::string item = number.Step() ? number.Text(0) : "#" + std::to_string(movement.itemId);
    Statement bill = connection_.Query(
        "SELECT c.name || ' ' || b.number FROM bill b JOIN bill_class c ON c.id = b.bill_class WHERE b.id = "
        "?",
        movement.billId);
    const std::string document = bill.Step() ? bill.Text(0) : "#" + std::to_string(movement.billId);
    violations_.push_back({.rule = "movement",
                           .description = "item " + item + ' ' + what + std::to_string(movement.line),
                           .documents = {document}});
  }

  Connection& connection_;
  std::size_t limit_;
  std::vector<Violation> violations_;
};

}  // namespace

std::vector<Violation> CheckMovements(Connection& connection, std::size_t limit) {
  return MovementCheck(connection, limit).Run();
}

}  // namespace books::check
