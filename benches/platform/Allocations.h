#pragma once

#include <cstddef>

namespace bench {

// How often this thread has asked the heap through operator new.
std::size_t AllocationCount();

// While it lives, the most bytes that were held at once through operator new beyond what was held when it was
// made, in whatever part of the process. One at a time. What the database keeps for itself is not in it.
class AllocationPeak {
 public:
  AllocationPeak();
  ~AllocationPeak();
  AllocationPeak(const AllocationPeak&) = delete;
  AllocationPeak& operator=(const AllocationPeak&) = delete;

  // NOLINTNEXTLINE(readability-convert-member-functions-to-static): means nothing without one
  double Megabytes() const;
};

}  // namespace bench
