// Replaces the process's operator new by one that counts. Bytes are counted only while somebody asks for
// their peak, so that the benches that are timed pay for one number, which no other thread has a part in.
#include "benches/platform/Allocations.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

thread_local std::size_t allocationCount = 0;
std::atomic<bool> countsBytes = false;
std::atomic<std::int64_t> heldBytes = 0;
std::atomic<std::int64_t> peakBytes = 0;

std::int64_t SizeOf(void* memory) { return static_cast<std::int64_t>(malloc_usable_size(memory)); }

void CountTaken(void* memory) {
  const std::int64_t held = heldBytes.fetch_add(SizeOf(memory), std::memory_order_relaxed) + SizeOf(memory);
  std::int64_t peak = peakBytes.load(std::memory_order_relaxed);
  while (held > peak && !peakBytes.compare_exchange_weak(peak, held, std::memory_order_relaxed)) {
  }
}

void Free(void* memory) {
  if (memory != nullptr && countsBytes.load(std::memory_order_relaxed)) {
    heldBytes.fetch_sub(SizeOf(memory), std::memory_order_relaxed);
  }
  std::free(memory);
}

}  // namespace

namespace bench {

std::size_t AllocationCount() { return allocationCount; }

AllocationPeak::AllocationPeak() {
  heldBytes = 0;
  peakBytes = 0;
  countsBytes = true;
}

AllocationPeak::~AllocationPeak() { countsBytes = false; }

double AllocationPeak::Megabytes() const { return static_cast<double>(peakBytes) / 1e6; }

}  // namespace bench

void* operator new(std::size_t size) {
  ++allocationCount;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  if (countsBytes.load(std::memory_order_relaxed)) CountTaken(memory);
  return memory;
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
