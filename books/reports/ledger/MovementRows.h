#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "books/database/Connection.h"
#include "books/database/Quantity.h"
#include "platform/value/Currency.h"
#include "platform/value/Date.h"

namespace books::reports {

// One movement among those of MovementRows, good until they are read anew.
class MovementRow {
 public:
  // The first ones tell the order of costing.
  enum Column : std::size_t {
    kDate,
    kDayOrder,
    kBill,
    kDirection,
    kLine,
    kOrderColumns,
    kBatch = kOrderColumns,
    kAux,
    kQuantity,
    kAmount,
    kWarehouse,
  };

  explicit MovementRow(const std::int64_t* values) : values_(values) {}

  platform::Date Day() const { return platform::Date::FromDays(Int32(kDate)); }
  std::int32_t BillId() const { return Int32(kBill); }
  std::int32_t Line() const { return Int32(kLine); }
  bool IsIn() const { return values_[kDirection] > 0; }
  std::int64_t BatchId() const { return values_[kBatch]; }
  std::int64_t AuxId() const { return values_[kAux]; }
  database::Quantity Quantity() const { return database::Quantity::FromUnits(values_[kQuantity]); }
  platform::Currency Amount() const { return platform::Currency::FromUnits(values_[kAmount]); }
  // Of rows that were read with their warehouses.
  std::int64_t WarehouseId() const { return values_[kWarehouse]; }

 private:
  std::int32_t Int32(Column column) const { return static_cast<std::int32_t>(values_[column]); }

  const std::int64_t* values_;
};

// The movements of one item over a stretch of days, read in one go, in the order of costing.
class MovementRows {
 public:
  explicit MovementRows(database::Connection& connection);

  // From the first day to the one before `past`. Warehouses are read only where some are left out: each
  // column costs its time over millions of movements.
  void Read(std::int32_t itemId, platform::Date first, platform::Date past, bool withWarehouse);
  std::size_t Count() const { return values_.size() / width_; }
  MovementRow operator[](std::size_t i) const { return MovementRow(&values_[i * width_]); }

 private:
  database::Statement movements_;
  database::Statement placedMovements_;
  std::vector<std::int64_t> values_;  // row after row
  std::size_t width_ = 1;
};

// Rows of `width` values each, sorted by the columns that tell the order.
void PutInOrder(std::vector<std::int64_t>& values, std::size_t width);

}  // namespace books::reports
