#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/value/SameText.h"

namespace platform {

// Texts that are named by a 32-bit id. An id and the text behind it hold for the life of the store; nothing
// is ever removed. Texts lie in blocks that are never moved. Each text is kept once while there are few; of
// very many only those that came lately are found again, so that looking never leaves the processor's cache,
// and one that has not been seen for long may be kept anew under another id.
class TextStore {
 public:
  using Id = std::uint32_t;

  // As many different texts as are sure to be kept once.
  static constexpr std::size_t kOnce = std::size_t{1} << 16U;

  // The id of this text, kept from now on if it is new. Raises kOverflow when the ids are used up (16 GiB).
  Id Keep(std::string_view text);
  // The same without looking for it, for a text that is likely to be new: it may be kept twice.
  Id KeepNew(std::string_view text) {
    ++unsought_;
    return Append(text);
  }

  std::string_view Text(Id id) const {
    const char* start = blocks_[id >> kUnitBits].get() + (id & kUnitMask) * kUnit;
    std::uint32_t length = 0;
    std::memcpy(&length, start, sizeof length);
    return {start + sizeof length, length};
  }

  // The texts that are kept.
  std::size_t Count() const { return count_ + unsought_; }
  // The bytes of the longest one.
  std::size_t Longest() const { return longest_; }
  // What the texts and their index take from the heap.
  std::size_t Bytes() const { return bytes_ + slots_.capacity() * sizeof(Slot); }

 private:
  // An id counts units of 4 bytes: the block in its upper bits, the place within the block in the lower.
  static constexpr std::size_t kUnit = 4;
  static constexpr unsigned kUnitBits = 14;
  static constexpr Id kUnitMask = (Id{1} << kUnitBits) - 1;
  static constexpr std::size_t kBlockBytes = kUnit << kUnitBits;

  struct Slot {
    std::uint32_t hash = 0;
    Id id = kFree;
  };
  static constexpr Id kFree = ~Id{0};

  Id KeepLately(std::string_view text, std::uint32_t hash);
  Id Append(std::string_view text);
  void Widen();

  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t used_ = kBlockBytes;  // of the block that is being filled
  std::size_t filling_ = 0;
  std::vector<Slot> slots_;
  std::size_t count_ = 0;     // of those that are sought
  std::size_t unsought_ = 0;  // the others
  std::size_t longest_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace platform
