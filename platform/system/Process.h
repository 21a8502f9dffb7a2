#pragma once

#include <cstdint>

namespace platform {

// The operating system's number of this process.
std::int32_t ProcessId();

}  // namespace platform
