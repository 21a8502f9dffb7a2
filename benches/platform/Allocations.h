#pragma once

#include <cstddef>

namespace bench {

// How often this process has asked the heap through operator new.
std::size_t AllocationCount();

}  // namespace bench
