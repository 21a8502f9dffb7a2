#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/Book.h"
#include "books/services/Store.h"

// Filter schemes that users saved, a user and dialog. A value keeps its kind; an object raises kTypeMismatch
// with its key, and nothing is saved.
namespace books::services {

std::vector<std::string> SchemeNames(Store& store, std::int32_t userId, std::string_view dialog);
std::optional<SchemeValues> LoadScheme(Store& store, std::int32_t userId, std::string_view dialog,
                                       std::string_view name);
void SaveScheme(const Store& store, std::int32_t userId, std::string_view dialog, std::string_view name,
                const SchemeValues& values);
bool DeleteScheme(const Store& store, std::int32_t userId, std::string_view dialog, std::string_view name);

}  // namespace books::services
