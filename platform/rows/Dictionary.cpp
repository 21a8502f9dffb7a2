// Most dictionaries hold a few dozen keys and live for one call, so entries stand in a vector that is walked;
// an index is kept only once there are more than kWalked of them.
#include "platform/rows/Dictionary.h"

#include <atomic>

namespace platform {
namespace {

constexpr std::size_t kWalked = 12;
// Room for a usual dictionary's keys is taken at once.
constexpr std::size_t kUsual = 6;
constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

}  // namespace

std::uint64_t Dictionary::NextSerial() {
  static std::atomic<std::uint64_t> last{0};
  return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

// Keys are mostly asked for in the order in which they stand, and in the spelling that they have.
std::size_t Dictionary::PositionOf(std::string_view key) const {
  const std::size_t next = next_ < entries_.size() ? next_ : 0;
  const bool isNext = next < entries_.size() && SameText(entries_[next].key, key);
  const std::size_t position = isNext ? next : LookFor(key);
  if (position != kNotFound) next_ = position + 1;
  return position;
}

std::size_t Dictionary::LookFor(std::string_view key) const {
  if (!positions_.empty()) {
    const auto found = positions_.find(key);
    return found == positions_.end() ? kNotFound : found->second;
  }
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const std::string& candidate = entries_[i].key;
    if (candidate.size() == key.size() && EqualsIgnoreCase(candidate, key)) return i;
  }
  return kNotFound;
}

const Variant* Dictionary::Find(std::string_view key) const {
  const std::size_t position = PositionOf(key);
  return position == kNotFound ? nullptr : &entries_[position].value;
}

const Variant& Dictionary::Value(std::string_view key) const {
  static const Variant empty;
  const Variant* value = Find(key);
  return value == nullptr ? empty : *value;
}

Variant Dictionary::Lookup(const std::string& key, const std::optional<Variant>& fallback) const {
  const Variant* value = Find(key);
  if (value != nullptr) return *value;
  return fallback.value_or(Variant());
}

void Dictionary::Set(std::string_view key, Variant value) {
  ++changes_;
  if (const std::size_t position = PositionOf(key); position != kNotFound) {
    // The old value goes last: an object that ends may reach this dictionary again.
    std::swap(entries_[position].value, value);
    return;
  }
  if (entries_.empty()) entries_.reserve(kUsual);
  entries_.push_back({std::string(key), std::move(value)});
  if (entries_.size() <= kWalked) return;
  if (positions_.empty()) {
    for (std::size_t i = 0; i + 1 < entries_.size(); ++i) positions_.emplace(entries_[i].key, i);
  }
  // The caller's key may be a text that lived in an entry and has moved.
  positions_.emplace(entries_.back().key, entries_.size() - 1);
}

std::string Dictionary::Key(std::int32_t index) const {
  if (index < 0 || index >= Count()) {
    throw Error(ErrorNumber::kSubscriptOutOfRange, "Dictionary",
                "subscript out of range: there is no key " + std::to_string(index));
  }
  return entries_[static_cast<std::size_t>(index)].key;
}

void Dictionary::Remove(const std::string& key) {
  const std::size_t position = PositionOf(key);
  if (position == kNotFound) return;
  ++changes_;
  const Entry removed = std::move(entries_[position]);
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
  positions_.clear();
  if (entries_.size() <= kWalked) return;
  for (std::size_t i = 0; i < entries_.size(); ++i) positions_.emplace(entries_[i].key, i);
}

void Dictionary::RemoveAll() {
  ++changes_;
  const std::vector<Entry> removed = std::exchange(entries_, {});
  positions_.clear();
}

}  // namespace platform
