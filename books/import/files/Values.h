#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "books/database/Quantity.h"
#include "platform/value/Currency.h"
#include "platform/value/Date.h"

// Values as they stand in a CSV file. Each reads the whole text or answers nothing: a number has an optional
// minus, digits and at most one point, no separators of thousands, no exponent.
namespace books::importer {

// At most as many decimals as are kept: six for quantities, four for amounts. More are refused unless they
// are zeros, because a file must not mean something else than the book.
std::optional<database::Quantity> ReadQuantity(std::string_view text);
std::optional<platform::Currency> ReadAmount(std::string_view text);
std::optional<double> ReadPrice(std::string_view text);  // not negative
std::optional<std::int32_t> ReadWhole(std::string_view text);
// YYYY-MM-DD or YYYY/M/D, years 1990 to 2100, a time of day of 00:00:00 allowed.
std::optional<platform::Date> ReadDate(std::string_view text);
// 1, yes, true, 是 and 0, no, false, 否.
std::optional<bool> ReadFlag(std::string_view text);

// `quantity` × `factor`, half to even at the sixth decimal; nothing when it does not fit.
std::optional<database::Quantity> Multiply(database::Quantity quantity, database::Quantity factor);

}  // namespace books::importer
