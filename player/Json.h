#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "platform/value/Variant.h"

namespace player {

// Keeps the keys of an object in writing order, which the forms below rely on.
using Json = nlohmann::ordered_json;

// The objects that values may speak of by name.
class Names {
 public:
  Names() = default;
  Names(const Names&) = delete;
  Names& operator=(const Names&) = delete;
  Names(Names&&) = delete;
  Names& operator=(Names&&) = delete;
  virtual ~Names() = default;

  // What the name stands for; raises for a name that nothing has been given.
  virtual platform::Variant Named(const std::string& name) const = 0;
  virtual std::optional<std::string> NameOf(const platform::Object& object) const = 0;
};

// A value in its JSON form. Dictionaries, vectors and recordsets are written by content, other objects by
// name, or as {"object":"?","class":…} without one. An object that contains itself is written by content
// once and as an object inside. Without `names` no object has one.
Json ToJson(const platform::Variant& value, const Names* names = nullptr);

// Why a text of JSON is no value; nothing when it is one. Names are not looked up.
std::optional<std::string> WhyNoValue(const Json& json);
// The value of a JSON form that WhyNoValue has nothing against, built afresh.
platform::Variant FromJson(const Json& json, const Names* names = nullptr);

// One line, UTF-8; bytes that are no UTF-8 are replaced.
std::string ToLine(const Json& json);

}  // namespace player
