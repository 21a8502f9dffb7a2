#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/object/OperationTable.h"

namespace platform {

// Variants and objects by text key. Keys are compared without regard to case; the first spelling of a key and
// the order of writing are kept. Writing an existing key changes its value in place.
class Dictionary final : public Exposed<Dictionary> {
 public:
  struct Entry {
    std::string key;
    Variant value;
  };

  // An unknown key reads as Empty.
  Variant Item(const std::string& key) const { return Value(key); }
  void SetItem(const std::string& key, const Variant& value) { Set(key, value); }
  // The value, or `fallback` (Empty when none is given) for a key that is not there.
  Variant Lookup(const std::string& key, const std::optional<Variant>& fallback) const;
  bool Exists(const std::string& key) const { return Find(key) != nullptr; }
  std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
  // The key in the writing order, from 0.
  std::string Key(std::int32_t index) const;
  void Remove(const std::string& key);
  void RemoveAll();

  // The same for C++ callers, without copies.
  const Variant* Find(std::string_view key) const;
  const Variant& Value(std::string_view key) const;
  void Set(std::string_view key, Variant value);
  const std::vector<Entry>& Entries() const { return entries_; }
  // The same again as long as nothing is written to this dictionary or removed from it, and never the same as
  // another dictionary's: who has looked at the keys need not look again.
  struct State {
    std::uint64_t dictionary = 0;
    std::uint64_t changes = 0;
    friend bool operator==(const State&, const State&) = default;
  };
  State Now() const { return {.dictionary = serial_, .changes = changes_}; }

  static constexpr std::string_view kClassName = "RNX.Dictionary";
  static constexpr auto kOperations = Operations(
      PropertyGet<&Dictionary::Item>("Item", "Key"),
      PropertyPut<&Dictionary::SetItem>("Item", "Key", "Value"),
      Method<&Dictionary::Lookup>("Lookup", "Key", "Default"), Method<&Dictionary::Exists>("Exists", "Key"),
      PropertyGet<&Dictionary::Count>("Count"), PropertyGet<&Dictionary::Key>("Key", "Index"),
      Method<&Dictionary::Remove>("Remove", "Key"), Method<&Dictionary::RemoveAll>("RemoveAll"));

 private:
  struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const { return detail::NameHash(key); }
  };
  struct KeyEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const {
      return EqualsIgnoreCase(left, right);
    }
  };

  static std::uint64_t NextSerial();
  std::size_t PositionOf(std::string_view key) const;
  std::size_t LookFor(std::string_view key) const;

  std::vector<Entry> entries_;
  std::uint64_t serial_ = NextSerial();
  std::uint64_t changes_ = 0;
  mutable std::size_t next_ = 0;  // the position behind the key that was found last
  // Positions by key, kept once a dictionary outgrows a short walk.
  std::unordered_map<std::string, std::size_t, KeyHash, KeyEqual> positions_;
};

}  // namespace platform
