#include "books/posting/CostPool.h"

#include <algorithm>

namespace books::posting {
namespace {

using database::Quantity;
using platform::Currency;

constexpr Quantity kNone;
constexpr Currency kNothing;

// The whole amount for the whole quantity, whatever rounding would say.
Currency ShareOf(Currency amount, Quantity part, Quantity whole) {
  return part == whole ? amount : MultiplyDivide(amount, part.Units(), whole.Units());
}

}  // namespace

Currency CostPool::Cost::For(Quantity many) const {
  return MultiplyDivide(amount, many.Units(), quantity.Units());
}

void CostPool::Receive(Quantity quantity, Currency amount, std::int32_t period, std::span<Currency> amounts) {
  if (amount > kNothing) last_ = Cost{amount, quantity};
  Cover(quantity, amount, period, amounts);
  if (quantity > kNone) {
    AddLayer(quantity, amount);
  } else {
    parked_ += amount;
  }
}

void CostPool::Cover(Quantity& quantity, Currency& amount, std::int32_t period, std::span<Currency> amounts) {
  while (!shorts_.empty() && quantity > kNone) {
    Short& open = shorts_.front();
    const Quantity covered = std::min(open.quantity, quantity);
    const Currency cost = ShareOf(amount, covered, quantity);
    const Currency assumed = ShareOf(open.amount, covered, open.quantity);
    if (open.taker.index && open.taker.period == period) {
      amounts[*open.taker.index] += cost - assumed;
    } else {
      parked_ += cost - assumed;
    }
    quantity -= covered;
    amount -= cost;
    open.quantity -= covered;
    open.amount -= assumed;
    if (open.quantity == kNone) shorts_.pop_front();
  }
}

void CostPool::AddLayer(Quantity quantity, Currency amount) {
  amount += parked_;
  parked_ = kNothing;
  if (order_ == Order::kAverage && !layers_.empty()) {
    layers_.back().quantity += quantity;
    layers_.back().amount += amount;
  } else {
    layers_.push_back({quantity, amount});
  }
}

Currency CostPool::Take(Quantity quantity, const Taker& taker, const std::optional<Cost>& fallback) {
  Currency taken;
  while (quantity > kNone && !layers_.empty()) {
    Layer& oldest = layers_.front();
    const Quantity part = std::min(oldest.quantity, quantity);
    const Currency cost = ShareOf(oldest.amount, part, oldest.quantity);
    if (cost > kNothing) last_ = Cost{cost, part};
    taken += cost;
    quantity -= part;
    oldest.quantity -= part;
    oldest.amount -= cost;
    if (oldest.quantity == kNone) layers_.pop_front();
  }
  if (quantity > kNone) {
    const std::optional<Cost>& known = last_ ? last_ : fallback;
    const Currency assumed = known ? known->For(quantity) : kNothing;
    shorts_.push_back({quantity, assumed, taker});
    taken += assumed;
  }
  return taken;
}

Currency CostPool::Peek(Quantity quantity, const std::optional<Cost>& fallback) const {
  CostPool copy = *this;
  return copy.Take(quantity, {}, fallback);
}

void CostPool::Adjust(Currency amount) {
  if (layers_.empty()) {
    parked_ += amount;
    return;
  }
  Quantity total;
  for (const Layer& layer : layers_) total += layer.quantity;
  // Shared out by quantity, oldest layer first; the newest takes the rest.
  for (Layer& layer : layers_) {
    const Currency share = ShareOf(amount, layer.quantity, total);
    layer.amount += share;
    amount -= share;
    total -= layer.quantity;
  }
}

void CostPool::BringForward(Quantity quantity, Currency amount) {
  if (quantity > kNone) {
    if (amount > kNothing) last_ = Cost{amount, quantity};
    AddLayer(quantity, amount);
  } else if (quantity < kNone) {
    if (amount < kNothing) last_ = Cost{-amount, -quantity};
    shorts_.push_back({-quantity, -amount, {}});
  } else {
    parked_ += amount;
  }
}

std::optional<CostPool::Cost> CostPool::UnitCost() const {
  Cost whole;
  for (const Layer& layer : layers_) {
    whole.quantity += layer.quantity;
    whole.amount += layer.amount;
  }
  if (whole.quantity > kNone && whole.amount > kNothing) return whole;
  return last_;
}

}  // namespace books::posting
