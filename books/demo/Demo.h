#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/value/Date.h"

namespace books {

enum class DemoSize : std::uint8_t { kSmall, kMedium, kLarge };

// "small", "medium" or "large"; nothing for any other word.
std::optional<DemoSize> DemoSizeOf(std::string_view word);

struct DemoOptions {
  DemoSize size = DemoSize::kSmall;
  // In place of those of the size; the number of documents follows them.
  std::optional<std::int32_t> items;   // 1 to 100,000
  std::optional<std::int32_t> months;  // 1 to 120, the last one being the current month
  std::uint64_t seed = 1;
  std::optional<platform::Date> today;  // without it the platform's clock
  bool replace = false;                 // an existing file is replaced once the new book is whole
};

// Told once in a while: what is being made, and how much of the whole is done, 0 to 1.
using DemoProgress = std::function<void(std::string_view step, double done)>;

// Makes a stock book of an invented trading company: small 200 items, 5 warehouses and about 10,000 entries,
// medium 5,000, 12 and 300,000, large 20,000, 60 and 2,000,000. The same options give the same book. The file
// appears only when the book is whole. Raises platform::Error when the file is there already, for figures
// out of range, and when the file cannot be written.
void MakeDemoBook(const std::filesystem::path& file, const DemoOptions& options = {},
                  const DemoProgress& progress = {});

}  // namespace books
