#pragma once

#include <string>
#include <string_view>

#include "books/database/Connection.h"
#include "books/posting/Posting.h"

// A book small enough to be reckoned through by hand. TinyBook.cpp tells its bills with every figure that
// comes of them; whoever changes it reckons again.
namespace books::test {

// Ids in the tiny book.
namespace tiny {

inline constexpr posting::Id kBottle = 1;  // units
inline constexpr posting::Id kBox = 2;     // 12 bottles, or 12 pieces
inline constexpr posting::Id kPiece = 3;

inline constexpr posting::Id kFood = 401;         // 01
inline constexpr posting::Id kDrinks = 402;       // 01.01
inline constexpr posting::Id kHardware = 403;     // 02
inline constexpr posting::Id kJuice = 411;        // 01.01.001, moving average
inline constexpr posting::Id kYogurt = 412;       // 01.01.002, batch cost, by batch
inline constexpr posting::Id kCandy = 413;        // 01.02, moving average
inline constexpr posting::Id kGiftBox = 414;      // 01.03, monthly average
inline constexpr posting::Id kScrewdriver = 421;  // 02.001, first in first out
inline constexpr posting::Id kScanner = 422;      // 02.002, moving average, serial numbers
inline constexpr posting::Id kTape = 423;         // 02.003, moving average

inline constexpr posting::Id kMain = 501;    // 01, ordinary
inline constexpr posting::Id kBranch = 502;  // 02, ordinary
inline constexpr posting::Id kGift = 503;    // 03, gift warehouse

inline constexpr posting::Id kSupplier = 801;
inline constexpr posting::Id kSecondSupplier = 802;
inline constexpr posting::Id kCustomer = 101;
inline constexpr posting::Id kDepartment = 201;
inline constexpr posting::Id kEmployee = 301;

inline constexpr posting::Id kBatchA = 1;  // of the yogurt, made 2025-01-02
inline constexpr posting::Id kBatchB = 2;  // made 2025-01-05
inline constexpr posting::Id kSerial1 = 1;
inline constexpr posting::Id kSerial2 = 2;

}  // namespace tiny

// Base data alone, accounting begun with January 2025.
void WriteTinyBaseData(database::Connection& connection);

// The whole book: January 2025 closed, February current.
void WriteTinyBook(database::Connection& connection);
database::Connection MakeTinyBook();

// The id of a bill by its number.
posting::Id BillOf(database::Connection& connection, std::string_view number);

// Rows of a query as text, columns separated by blanks and rows by newlines, nulls as "-".
std::string Rows(database::Connection& connection, std::string_view sql);

}  // namespace books::test
