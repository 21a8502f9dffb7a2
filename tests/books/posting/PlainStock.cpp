#include "tests/books/posting/PlainStock.h"

#include <algorithm>
#include <cstdlib>
#include <list>

namespace books::test {
namespace {

// Half to even.
std::int64_t Rounded(std::int64_t product, std::int64_t divisor) {
  const bool negative = (product < 0) != (divisor < 0);
  const std::int64_t top = std::abs(product);
  const std::int64_t bottom = std::abs(divisor);
  std::int64_t result = top / bottom;
  const std::int64_t twice = 2 * (top % bottom);
  if (twice > bottom || (twice == bottom && result % 2 == 1)) ++result;
  return negative ? -result : result;
}

struct Goods {
  std::int64_t quantity = 0;
  std::int64_t amount = 0;
};
struct Debt {
  Goods goods;
  PlainMove* issue = nullptr;  // null: its amount is final
};

// One shelf for all goods that share a cost.
struct Shelf {
  std::list<Goods> lots;
  std::list<Debt> debts;
  std::int64_t without = 0;  // an amount without goods
  std::optional<Goods> lastCost;

  std::int64_t Total() const {
    std::int64_t total = 0;
    for (const Goods& lot : lots) total += lot.quantity;
    return total;
  }
};

class Reckoning {
 public:
  Reckoning(std::vector<PlainMove>& moves, const PlainRules& rules) : moves_(moves), rules_(rules) {}

  void Run() {
    std::vector<PlainMove*> order;
    for (PlainMove& move : moves_) order.push_back(&move);
    std::sort(order.begin(), order.end(),
              [&](const PlainMove* a, const PlainMove* b) { return Key(*a) < Key(*b); });
    for (PlainMove* move : order) {
      move->amount = 0;
      One(*move);
    }
  }

 private:
  bool Gift(std::int64_t warehouse) const { return rules_.gifts.contains(warehouse); }
  PlainMethod Method(const PlainMove& move) const { return rules_.methods.at(move.item); }

  std::tuple<int, int, int, int, std::int64_t, int, int, std::int64_t> Key(const PlainMove& move) const {
    const bool issue = move.kind == PlainMove::Kind::kIssue;
    int rank = 3;
    if (move.kind == PlainMove::Kind::kReceipt) rank = 1;
    if (move.kind == PlainMove::Kind::kAmountOnly) rank = 2;
    if (issue) rank = 4;
    return {move.period, issue && Method(move) == PlainMethod::kMonthly ? 1 : 0,
            move.day,    rank,
            move.bill,   move.direction,
            move.line,   move.item};
  }

  Shelf& ShelfOf(const PlainMove& move) {
    return shelves_[{move.item, rules_.costPerWarehouse ? move.warehouse : 0,
                     Method(move) == PlainMethod::kBatch ? move.batch : 0}];
  }

  std::int64_t LastCost(const PlainMove& move, std::int64_t quantity) {
    const Shelf& shelf = ShelfOf(move);
    if (shelf.lastCost) return Rounded(shelf.lastCost->amount * quantity, shelf.lastCost->quantity);
    const auto known = itemCost_.find(move.item);
    return known == itemCost_.end() ? 0 : Rounded(known->second.amount * quantity, known->second.quantity);
  }

  // What goods without a price of their own cost when they come in.
  std::int64_t PresentCost(const PlainMove& move, std::int64_t quantity) {
    std::int64_t amount = 0;
    const Shelf& shelf = ShelfOf(move);
    for (const Goods& lot : shelf.lots) amount += lot.amount;
    if (shelf.Total() > 0 && amount > 0) return Rounded(amount * quantity, shelf.Total());
    return LastCost(move, quantity);
  }

  void ComeIn(const PlainMove& move, std::int64_t quantity, std::int64_t amount) {
    Shelf& shelf = ShelfOf(move);
    if (amount > 0) itemCost_[move.item] = {quantity, amount};
    if (amount > 0) shelf.lastCost = Goods{quantity, amount};
    while (quantity > 0 && !shelf.debts.empty()) {
      Debt& debt = shelf.debts.front();
      const std::int64_t paid = std::min(quantity, debt.goods.quantity);
      const std::int64_t cost = paid == quantity ? amount : Rounded(amount * paid, quantity);
      const std::int64_t assumed = paid == debt.goods.quantity
                                       ? debt.goods.amount
                                       : Rounded(debt.goods.amount * paid, debt.goods.quantity);
      if (debt.issue != nullptr && debt.issue->period == move.period) {
        debt.issue->amount += cost - assumed;
      } else {
        shelf.without += cost - assumed;
      }
      debt.goods = {debt.goods.quantity - paid, debt.goods.amount - assumed};
      if (debt.goods.quantity == 0) shelf.debts.pop_front();
      quantity -= paid;
      amount -= cost;
    }
    if (quantity == 0) {
      shelf.without += amount;
      return;
    }
    const Goods lot = {quantity, amount + shelf.without};
    shelf.without = 0;
    if (Method(move) != PlainMethod::kOldestFirst && !shelf.lots.empty()) {
      shelf.lots.back().quantity += lot.quantity;
      shelf.lots.back().amount += lot.amount;
    } else {
      shelf.lots.push_back(lot);
    }
  }

  std::int64_t GoOut(const PlainMove& move, std::int64_t quantity, PlainMove* issue) {
    Shelf& shelf = ShelfOf(move);
    std::int64_t cost = 0;
    while (quantity > 0 && !shelf.lots.empty()) {
      Goods& lot = shelf.lots.front();
      if (lot.quantity > quantity) {
        const std::int64_t part = Rounded(lot.amount * quantity, lot.quantity);
        if (part > 0) shelf.lastCost = Goods{quantity, part};
        lot = {lot.quantity - quantity, lot.amount - part};
        return cost + part;
      }
      if (lot.amount > 0) shelf.lastCost = lot;
      quantity -= lot.quantity;
      cost += lot.amount;
      shelf.lots.pop_front();
    }
    if (quantity == 0) return cost;
    const std::int64_t assumed = LastCost(move, quantity);
    shelf.debts.push_back({{quantity, assumed}, issue});
    return cost + assumed;
  }

  void ChangeAmount(const PlainMove& move, std::int64_t amount) {
    Shelf& shelf = ShelfOf(move);
    if (shelf.lots.empty()) shelf.without += amount;
    std::int64_t total = shelf.Total();
    for (Goods& lot : shelf.lots) {
      const std::int64_t share = lot.quantity == total ? amount : Rounded(amount * lot.quantity, total);
      lot.amount += share;
      amount -= share;
      total -= lot.quantity;
    }
  }

  bool SameShelf(const PlainMove& move) const {
    return !rules_.costPerWarehouse && !Gift(move.warehouse) && !Gift(move.otherWarehouse);
  }

  void One(PlainMove& move) {
    if (Gift(move.warehouse) && move.kind != PlainMove::Kind::kAssembly) {
      if (move.kind == PlainMove::Kind::kTransfer && move.direction < 0)
        onTheWay_[{move.bill, move.line}] = 0;
      return;
    }
    switch (move.kind) {
      case PlainMove::Kind::kReceipt:
        if (move.quantity < 0) {
          move.amount = -GoOut(move, -move.quantity, nullptr);
        } else {
          move.amount = move.given ? *move.given : PresentCost(move, move.quantity);
          ComeIn(move, move.quantity, move.amount);
        }
        break;
      case PlainMove::Kind::kAmountOnly:
        move.amount = *move.given;
        ChangeAmount(move, move.amount);
        break;
      case PlainMove::Kind::kIssue:
        if (move.quantity < 0) {
          move.amount = -PresentCost(move, -move.quantity);
          ComeIn(move, -move.quantity, -move.amount);
        } else {
          move.amount = GoOut(move, move.quantity, &move);
        }
        break;
      case PlainMove::Kind::kTransfer:
        Transfer(move);
        break;
      case PlainMove::Kind::kAssembly:
        Assemble(move);
        break;
    }
  }

  void Transfer(PlainMove& move) {
    std::int64_t& carried = onTheWay_[{move.bill, move.line}];
    if (move.direction < 0) {
      if (SameShelf(move)) {
        const Shelf before = ShelfOf(move);
        move.amount = GoOut(move, move.quantity, nullptr);
        ShelfOf(move) = before;
      } else {
        move.amount = GoOut(move, move.quantity, nullptr);
      }
      carried = move.amount;
      return;
    }
    move.amount = move.given.value_or(carried);
    if (SameShelf(move)) {
      ChangeAmount(move, move.amount - carried);
    } else {
      ComeIn(move, move.quantity, move.amount);
    }
  }

  void Assemble(PlainMove& move) {
    std::int64_t& carried = onTheWay_[{move.bill, 0}];
    if (move.direction < 0) {
      if (!Gift(move.warehouse)) move.amount = GoOut(move, move.quantity, nullptr);
      carried += move.amount;
      return;
    }
    // Shared with the lines that are still to come.
    bool weights = true;
    std::int64_t allWeight = 0;
    std::int64_t allQuantity = 0;
    bool last = true;
    for (const PlainMove& other : moves_) {
      if (other.bill != move.bill || other.direction < 0) continue;
      weights = weights && other.given.value_or(0) > 0;
      if (other.line < move.line) continue;
      if (other.line > move.line) last = false;
      allWeight += other.given.value_or(0);
      allQuantity += other.quantity;
    }
    std::int64_t share = carried;
    if (!last) {
      share =
          weights ? Rounded(carried * *move.given, allWeight) : Rounded(carried * move.quantity, allQuantity);
    }
    carried -= share;
    if (Gift(move.warehouse)) return;
    move.amount = share;
    ComeIn(move, move.quantity, share);
  }

  std::vector<PlainMove>& moves_;
  const PlainRules& rules_;
  std::map<std::tuple<std::int64_t, std::int64_t, std::int64_t>, Shelf> shelves_;
  std::map<std::pair<std::int64_t, int>, std::int64_t> onTheWay_;
  std::map<std::int64_t, Goods> itemCost_;
};

}  // namespace

void ReckonPlainly(std::vector<PlainMove>& moves, const PlainRules& rules) { Reckoning(moves, rules).Run(); }

std::map<PlainCell, PlainFigures> ClosePlainly(const std::vector<PlainMove>& moves, int firstPeriod,
                                               int lastPeriod) {
  std::map<PlainCell, PlainFigures> closings;
  for (const PlainMove& move : moves) {
    for (int period = std::max(firstPeriod, move.period); period <= lastPeriod; ++period) {
      PlainFigures& figures = closings[{move.item, period, move.warehouse, move.batch}];
      figures.first += move.direction * move.quantity;
      figures.second += move.direction * move.amount;
    }
  }
  std::erase_if(closings, [](const auto& each) { return each.second == PlainFigures(); });
  return closings;
}

}  // namespace books::test
