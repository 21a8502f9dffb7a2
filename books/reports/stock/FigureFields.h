#pragma once

#include "books/database/Quantity.h"
#include "books/reports/stock/StockCells.h"

// The book's whole numbers as the doubles that reports show.
namespace books::reports {

inline double AsQuantity(std::int64_t millionths) {
  return database::Quantity::FromUnits(millionths).ToDouble();
}

// A unit price; the quantity must not be 0.
inline double PriceOf(std::int64_t amount, std::int64_t quantity) {
  return platform::Currency::FromUnits(amount).ToDouble() / AsQuantity(quantity);
}

}  // namespace books::reports
