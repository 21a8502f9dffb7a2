#include "desk/Schemes.h"

#include <algorithm>

#include "platform/value/Convert.h"

namespace desk {

using platform::EqualsIgnoreCase;
using platform::Variant;

std::vector<std::string> MemorySchemes::Names(std::string_view dialog) const {
  std::vector<std::string> names;
  if (const auto found = schemes_.find(platform::ToLowerAscii(dialog)); found != schemes_.end()) {
    for (const Scheme& scheme : found->second) names.push_back(scheme.name);
  }
  if (behind_ == nullptr) return names;
  for (std::string& name : behind_->Names(dialog)) {
    const bool known =
        std::ranges::any_of(names, [&](const std::string& own) { return EqualsIgnoreCase(own, name); });
    if (!known) names.push_back(std::move(name));
  }
  return names;
}

std::optional<SchemeValues> MemorySchemes::Load(std::string_view dialog, std::string_view name) const {
  if (const auto found = schemes_.find(platform::ToLowerAscii(dialog)); found != schemes_.end()) {
    for (const Scheme& scheme : found->second) {
      if (EqualsIgnoreCase(scheme.name, name)) return scheme.values;
    }
  }
  if (behind_ != nullptr) return behind_->Load(dialog, name);
  return std::nullopt;
}

void MemorySchemes::Save(std::string_view dialog, std::string_view name, const SchemeValues& values) {
  std::vector<Scheme>& schemes = schemes_[platform::ToLowerAscii(dialog)];
  for (Scheme& scheme : schemes) {
    if (!EqualsIgnoreCase(scheme.name, name)) continue;
    scheme.values = values;
    return;
  }
  schemes.push_back({.name = std::string(name), .values = values});
}

bool MemorySchemes::Delete(std::string_view dialog, std::string_view name) {
  const auto found = schemes_.find(platform::ToLowerAscii(dialog));
  if (found == schemes_.end()) return false;
  return std::erase_if(found->second,
                       [&](const Scheme& scheme) { return EqualsIgnoreCase(scheme.name, name); }) > 0;
}

Variant ValueOf(const SchemeValues& values, std::string_view key) {
  const auto found =
      std::ranges::find_if(values, [&](const auto& entry) { return EqualsIgnoreCase(entry.first, key); });
  return found == values.end() ? Variant() : found->second;
}

void SetValue(SchemeValues& values, std::string_view key, Variant value) {
  const auto found =
      std::ranges::find_if(values, [&](const auto& entry) { return EqualsIgnoreCase(entry.first, key); });
  if (found == values.end()) {
    values.emplace_back(key, std::move(value));
  } else {
    found->second = std::move(value);
  }
}

}  // namespace desk
