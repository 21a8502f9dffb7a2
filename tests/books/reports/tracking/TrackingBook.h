#pragma once

#include "books/database/Connection.h"
#include "books/posting/Document.h"

namespace books::test {

namespace tracking {

inline constexpr posting::Id kMatchedCustomer = 102;   // 02, the same firm as the supplier 01
inline constexpr posting::Id kSecondDepartment = 202;  // 02
inline constexpr posting::Id kSecondEmployee = 302;    // 02
inline constexpr posting::Id kRed = 1001;              // 01, auxiliary property

}  // namespace tracking

// The tiny book, and after it what the reports on linked bills and serial numbers tell apart.
// TrackingBook.cpp reckons its bills through.
void WriteTrackingBook(database::Connection& connection);

}  // namespace books::test
