#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "exports/Grid.h"
#include "exports/ItemPages.h"
#include "platform/value/Currency.h"

namespace exports {

// What a ledger carries from one sheet of an item to the next, in the lines 过次页 and 承前页: what came in
// and went out since the accounting period began, so that with the rest of the period it adds up to the
// period's total, and the balance as it stands: what the period's opening rows add up to (there may be one a
// batch), and from the first movement on that movement's balance. The lines show no prices.
class CarriedTotals {
 public:
  // Nothing is carried in rows that are no ledger's.
  CarriedTotals(const ItemPages& pages, const Grid& grid);

  bool Carries() const { return carries_; }
  void BeginItem();
  // The next row of the item.
  void Add(std::size_t position);
  // A column's cell in the line that is headed by `caption`.
  std::string Cell(std::size_t column, const std::string& caption) const;

 private:
  struct Figures {
    double quantity = 0;
    platform::Currency amount;

    void Add(const Figures& other) {
      quantity += other.quantity;
      amount += other.amount;
    }
  };
  // The figures of receipts, issues and balance, quantity and amount of each.
  enum Figure : std::size_t { kInQty, kInAmount, kOutQty, kOutAmount, kBalQty, kBalAmount, kFigures };

  void ResolveFields();
  Figures FiguresAt(Figure quantity, std::size_t row) const;

  const ItemPages& pages_;
  const Grid& grid_;
  bool carries_ = false;
  std::array<std::size_t, kFigures> figureFields_{};
  std::size_t year_ = 0;
  std::size_t period_ = 0;
  std::size_t mark_ = 0;
  std::size_t sumSort_ = 0;
  std::size_t captionColumn_ = 0;  // of the grid
  std::vector<std::optional<Figure>> columns_;

  std::int32_t running_ = 0;  // the accounting period
  Figures in_;
  Figures out_;
  Figures balance_;
};

}  // namespace exports
