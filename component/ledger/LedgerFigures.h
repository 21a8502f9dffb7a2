#pragma once

#include "platform/value/Currency.h"

// The arithmetic of a ledger. Quantities and prices are doubles, amounts exact; nothing is rounded here.
namespace component {

// The price of a quantity: 0 where there is none, also when an amount is left.
inline double SafePrice(double quantity, double amount) { return quantity == 0 ? 0 : amount / quantity; }
inline double SafePrice(double quantity, platform::Currency amount) {
  return SafePrice(quantity, amount.ToDouble());
}

// One third of a ledger row: what came in, what went out, or what is left.
struct LedgerFigures {
  double quantity = 0;
  double price = 0;
  platform::Currency amount;
  platform::Currency diff;
};

// A balance that movements roll on. Opening figures leave its price alone: only a movement prices it.
class RunningBalance {
 public:
  const LedgerFigures& Figures() const { return figures_; }

  void Open(const LedgerFigures& opening) {
    figures_.quantity += opening.quantity;
    figures_.amount += opening.amount;
    figures_.diff += opening.diff;
  }
  void Move(const LedgerFigures& in, const LedgerFigures& out) {
    figures_.quantity = figures_.quantity + in.quantity - out.quantity;
    figures_.amount = figures_.amount + in.amount - out.amount;
    figures_.diff = figures_.diff + in.diff - out.diff;
    figures_.price = SafePrice(figures_.quantity, figures_.amount);
  }

 private:
  LedgerFigures figures_;
};

// What came in and went out over a stretch of time. The prices are worked out when they are asked for.
class LedgerTotals {
 public:
  void Add(const LedgerFigures& in, const LedgerFigures& out) {
    AddSide(in_, in);
    AddSide(out_, out);
  }
  void Add(const LedgerTotals& other) { Add(other.in_, other.out_); }

  bool IsZero() const {
    return in_.quantity == 0 && in_.amount == platform::Currency() && out_.quantity == 0 &&
           out_.amount == platform::Currency();
  }
  LedgerFigures In() const { return Priced(in_); }
  LedgerFigures Out() const { return Priced(out_); }

 private:
  static void AddSide(LedgerFigures& sum, const LedgerFigures& part) {
    sum.quantity += part.quantity;
    sum.amount += part.amount;
    sum.diff += part.diff;
  }
  static LedgerFigures Priced(LedgerFigures sum) {
    sum.price = SafePrice(sum.quantity, sum.amount);
    return sum;
  }

  LedgerFigures in_;
  LedgerFigures out_;
};

}  // namespace component
