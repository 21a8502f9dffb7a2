#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/rows/Recordset.h"
#include "platform/value/Currency.h"
#include "platform/value/Variant.h"

namespace exports {

// What a ledger carries from one sheet of an item to the next: what came in and went out since the accounting
// period began, so that with the rest of the period it adds up to the period's total, and the balance as it
// stands: what the period's opening rows add up to (there may be one a batch), and from the first movement on
// that movement's balance. Prices are not carried: those of a sum say nothing. Borrows the rows.
class LedgerTotals {
 public:
  // The figures that are carried, by their fields; quantity and amount of receipts, issues and balance.
  static constexpr std::array<std::string_view, 6> kFields = {"FInQty",     "FInAmount", "FOutQty",
                                                              "FOutAmount", "FBalQty",   "FBalAmount"};

  // Nothing is carried in rows that are no ledger's.
  explicit LedgerTotals(const platform::Recordset& rows);

  bool Carries() const { return carries_; }
  // From nothing, as with another item.
  void Begin();
  // The item's next row, by its number.
  void Add(std::size_t row);
  // The figure of a field, a double or an amount; null of a field that is not carried.
  platform::Variant Of(std::string_view field) const;

 private:
  struct Figures {
    double quantity = 0;
    platform::Currency amount;

    void Add(const Figures& other) {
      quantity += other.quantity;
      amount += other.amount;
    }
  };
  enum Side : std::size_t { kIn, kOut, kBalance, kSides };

  Figures FiguresAt(Side side, std::size_t row) const;

  const platform::Recordset& rows_;
  bool carries_ = true;
  std::array<std::size_t, kFields.size()> fields_{};
  std::size_t year_ = 0;
  std::size_t period_ = 0;
  std::size_t mark_ = 0;
  std::size_t sumSort_ = 0;

  std::int32_t running_ = 0;  // the accounting period
  std::array<Figures, kSides> totals_;
};

}  // namespace exports
