#pragma once

#include <string>
#include <utility>
#include <vector>

#include "player/Json.h"

namespace player {

// The objects that a script has named. A name keeps what it stands for alive until it is released or given
// to something else.
class NameTable final : public Names {
 public:
  platform::Variant Named(const std::string& name) const override;
  // The first name that the object was given.
  std::optional<std::string> NameOf(const platform::Object& object) const override;

  // Anything but an object leaves the name standing for nothing.
  void Set(const std::string& name, const platform::Variant& value);
  // The object; raises kObjectNotSet for a name that stands for nothing or was never given.
  platform::Ref<platform::Object> Need(const std::string& name) const;
  void Release(const std::string& name);
  void Clear();

 private:
  std::vector<std::pair<std::string, platform::Ref<platform::Object>>> objects_;  // in the order of naming
};

}  // namespace player
