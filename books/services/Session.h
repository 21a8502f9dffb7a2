#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/Book.h"
#include "books/services/Store.h"

// What a book knows of users, rights and periods, and the record of what they used.
namespace books::services {

std::vector<BookUser> Users(Store& store);
// 0 is no user but whoever holds the file, and is not restricted. A user that the book does not know is:
// rights must not open by a mistyped id.
bool NeedRight(Store& store, std::int32_t userId);
// The classes in which any row has a list of users: a class that nobody gave rights in is open to all.
std::string RightClasses(Store& store);
std::optional<platform::Date> PeriodFirstDay(Store& store, std::int32_t year, std::int32_t period);
void WriteUsage(const Store& store, std::int32_t userId, std::string_view code, std::string_view text);

}  // namespace books::services
