// Texts are found again through an open hash table of ids. A slot keeps the hash beside the id, so that a
// table that grows and most comparisons that fail never touch the texts themselves.
#include "platform/rows/TextStore.h"

#include <algorithm>

#include "platform/value/Error.h"

namespace platform {
namespace {

// Eight bytes a step; quality enough for a table that compares the text anyway.
std::uint32_t HashOf(std::string_view text) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
  std::uint64_t hash = text.size() * kFactor;
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left >= 8; at += 8, left -= 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, 8);
    hash = (hash ^ word) * kFactor;
    hash ^= hash >> 29U;
  }
  if (left > 0) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, left);
    hash = (hash ^ word) * kFactor;
  }
  return static_cast<std::uint32_t>(hash >> 32U);
}

}  // namespace

TextStore::Id TextStore::Keep(std::string_view text) {
  if (count_ * 2 >= slots_.size() && slots_.size() < kOnce * 2) Widen();
  const std::uint32_t hash = HashOf(text);
  if (count_ >= kOnce) return KeepLately(text, hash);
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  for (; slots_[at].id != kFree; at = (at + 1) & mask) {
    if (slots_[at].hash == hash && SameText(Text(slots_[at].id), text)) return slots_[at].id;
  }
  slots_[at] = {.hash = hash, .id = Append(text)};
  ++count_;
  return slots_[at].id;
}

// The slots are a cache now: a text is looked for in a few of them and takes the place of another one.
TextStore::Id TextStore::KeepLately(std::string_view text, std::uint32_t hash) {
  constexpr std::size_t kLookedAt = 4;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = 0; i < kLookedAt; ++i) {
    const Slot& slot = slots_[(hash + i) & mask];
    if (slot.id != kFree && slot.hash == hash && SameText(Text(slot.id), text)) return slot.id;
  }
  Slot& taken = slots_[(hash + count_ % kLookedAt) & mask];
  taken = {.hash = hash, .id = Append(text)};
  ++count_;
  return taken.id;
}

TextStore::Id TextStore::Append(std::string_view text) {
  const auto length = static_cast<std::uint32_t>(text.size());
  const std::size_t needed = (sizeof length + text.size() + kUnit - 1) / kUnit * kUnit;
  const bool ownBlock = needed > kBlockBytes;
  if (ownBlock || used_ + needed > kBlockBytes) {
    if (blocks_.size() >= (std::size_t{kFree} >> kUnitBits) || text.size() > 0xFFFFFFF0U) {
      throw Error(ErrorNumber::kOverflow, "TextStore", "overflow: no room for more texts");
    }
    const std::size_t size = ownBlock ? needed : kBlockBytes;
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
    bytes_ += size;
    if (!ownBlock) {
      filling_ = blocks_.size() - 1;
      used_ = 0;
    }
  }
  const std::size_t block = ownBlock ? blocks_.size() - 1 : filling_;
  const std::size_t offset = ownBlock ? 0 : used_;
  char* start = blocks_[block].get() + offset;
  std::memcpy(start, &length, sizeof length);
  if (!text.empty()) std::memcpy(start + sizeof length, text.data(), text.size());
  if (!ownBlock) used_ += needed;
  longest_ = std::max(longest_, text.size());
  return static_cast<Id>((block << kUnitBits) + offset / kUnit);
}

void TextStore::Widen() {
  std::vector<Slot> wider(slots_.empty() ? 64 : slots_.size() * 2);
  const std::size_t mask = wider.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.id == kFree) continue;
    std::size_t at = slot.hash & mask;
    while (wider[at].id != kFree) at = (at + 1) & mask;
    wider[at] = slot;
  }
  slots_ = std::move(wider);
}

}  // namespace platform
