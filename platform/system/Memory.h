#pragma once

#include <cstddef>

namespace platform {

// Pages of this size serve large tables with far fewer faults than the usual ones, where the system has them.
inline constexpr std::size_t kLargePage = std::size_t{1} << 21U;

// Asks for them, for memory that begins at a multiple of their size. A system without them takes no notice.
void PreferLargePages(void* memory, std::size_t size);

}  // namespace platform
