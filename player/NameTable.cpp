#include "player/NameTable.h"

#include <algorithm>

namespace player {
namespace {

using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::Ref;
using platform::Variant;

[[noreturn]] void RaiseUnknown(const std::string& name) {
  throw Error(ErrorNumber::kObjectNotSet, "player", "there is no object named '" + name + "'");
}

auto Find(auto& objects, const std::string& name) {
  return std::ranges::find_if(objects, [&](const auto& entry) { return entry.first == name; });
}

}  // namespace

Variant NameTable::Named(const std::string& name) const {
  const auto found = Find(objects_, name);
  if (found == objects_.end()) RaiseUnknown(name);
  return found->second;
}

std::optional<std::string> NameTable::NameOf(const Object& object) const {
  for (const auto& [name, named] : objects_) {
    if (named.Get() == &object) return name;
  }
  return std::nullopt;
}

void NameTable::Set(const std::string& name, const Variant& value) {
  const Ref<Object>* object = value.As<Ref<Object>>();
  const auto found = Find(objects_, name);
  if (found == objects_.end()) {
    objects_.emplace_back(name, object == nullptr ? Ref<Object>() : *object);
  } else {
    // Held until the table is in order again: its end may run code that looks names up.
    const Ref<Object> old = std::exchange(found->second, object == nullptr ? Ref<Object>() : *object);
  }
}

Ref<Object> NameTable::Need(const std::string& name) const {
  const auto found = Find(objects_, name);
  if (found == objects_.end()) RaiseUnknown(name);
  if (!found->second) throw Error(ErrorNumber::kObjectNotSet, "player", "'" + name + "' stands for nothing");
  return found->second;
}

void NameTable::Release(const std::string& name) {
  const auto found = Find(objects_, name);
  if (found == objects_.end()) RaiseUnknown(name);
  const Ref<Object> old = found->second;
  objects_.erase(found);
}

void NameTable::Clear() { const auto old = std::exchange(objects_, {}); }

}  // namespace player
