// The reader of the page's messages. Everything that a page sends passes here first, whoever wrote it.
#include "browser/protocol/Command.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

namespace browser {
namespace {

enum class FieldKind : std::uint8_t {
  kText,
  kInteger,
  kFlag,
  kTexts,
  kTextMap,
  kSortKeys,
  kValue,
  kWord,
  kAny
};

struct CommandField {
  std::string_view name;
  FieldKind kind;
  bool needed;
  std::string_view words;  // of a kWord, with bars between them
};

struct CommandShape {
  std::string_view type;
  When when;
  std::span<const CommandField> fields;
};

#include "browser/protocol/CommandTable.inc"

constexpr std::size_t kDeepest = 32;

bool IsInteger(const Json& value) {
  if (!value.is_number_integer()) return false;
  if (value.is_number_unsigned()) {
    return value.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<std::int32_t>::max()};
  }
  const auto number = value.get<std::int64_t>();
  return number >= std::numeric_limits<std::int32_t>::min() &&
         number <= std::numeric_limits<std::int32_t>::max();
}

bool IsTexts(const Json& value) {
  return value.is_array() && std::ranges::all_of(value, [](const Json& item) { return item.is_string(); });
}

bool IsTextMap(const Json& value) {
  return value.is_object() && std::ranges::all_of(value, [](const Json& item) { return item.is_string(); });
}

bool IsSortKeys(const Json& value) {
  return value.is_array() && std::ranges::all_of(value, [](const Json& key) {
           return key.is_object() && key.size() == 2 && key.contains("field") && key["field"].is_string() &&
                  key.contains("descending") && key["descending"].is_boolean();
         });
}

bool IsOneOf(const Json& value, std::string_view words) {
  if (!value.is_string()) return false;
  const auto& text = value.get_ref<const std::string&>();
  while (!words.empty()) {
    const std::size_t bar = std::min(words.find('|'), words.size());
    if (words.substr(0, bar) == text) return true;
    words.remove_prefix(std::min(bar + 1, words.size()));
  }
  return false;
}

bool Fits(const Json& value, const CommandField& field) {
  switch (field.kind) {
    case FieldKind::kText:
      return value.is_string();
    case FieldKind::kInteger:
      return IsInteger(value);
    case FieldKind::kFlag:
      return value.is_boolean();
    case FieldKind::kTexts:
      return IsTexts(value);
    case FieldKind::kTextMap:
      return IsTextMap(value);
    case FieldKind::kSortKeys:
      return IsSortKeys(value);
    case FieldKind::kValue:
      return value.is_string() || value.is_boolean() || IsInteger(value);
    case FieldKind::kWord:
      return IsOneOf(value, field.words);
    case FieldKind::kAny:
      return true;
  }
  return false;
}

// A message that nests deeper than any honest one would is dropped before it takes memory.
Json Parse(std::string_view text) {
  bool tooDeep = false;
  Json json = Json::parse(
      text,
      [&tooDeep](int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
        if (depth > static_cast<int>(kDeepest)) tooDeep = true;
        return !tooDeep;
      },
      false);
  if (tooDeep || json.is_discarded() || !json.is_object()) {
    throw RefusedMessage("malformed", "the message is no JSON object");
  }
  return json;
}

std::optional<std::int64_t> TakeId(Json& json) {
  if (!json.contains("id")) return std::nullopt;
  if (!IsInteger(json["id"]) || json["id"].get<std::int64_t>() < 1) {
    throw RefusedMessage("fields", "id must be a whole number from 1");
  }
  const auto id = json["id"].get<std::int64_t>();
  json.erase("id");
  return id;
}

const CommandShape& ShapeOf(Json& json, const std::optional<std::int64_t>& id) {
  if (!json.contains("type") || !json["type"].is_string()) {
    throw RefusedMessage("malformed", "the message has no type", id);
  }
  const auto type = json["type"].get<std::string>();
  json.erase("type");
  const auto* const shape = std::ranges::find(kCommands, type, &CommandShape::type);
  if (shape == std::end(kCommands)) throw RefusedMessage("unknown", "there is no command " + type, id);
  return *shape;
}

void CheckFields(const Json& json, const CommandShape& shape, const std::optional<std::int64_t>& id) {
  for (const CommandField& field : shape.fields) {
    const std::string name(field.name);
    const bool there = json.contains(name);
    if (there ? !Fits(json[name], field) : field.needed) {
      throw RefusedMessage(
          "fields", std::string(shape.type) + ": " + name + (there ? " is of a wrong kind" : " is missing"),
          id);
    }
  }
  for (const auto& [name, value] : json.items()) {
    if (std::ranges::find(shape.fields, name, &CommandField::name) == shape.fields.end()) {
      throw RefusedMessage("fields", std::string(shape.type) + ": there is no field " + name, id);
    }
  }
}

}  // namespace

int ProtocolVersion() { return kProtocolVersion; }

Command ReadCommand(std::string_view text) {
  if (text.size() > kLargestCommand) throw RefusedMessage("malformed", "the message is too large");
  Json json = Parse(text);
  const std::optional<std::int64_t> id = TakeId(json);
  const CommandShape& shape = ShapeOf(json, id);
  CheckFields(json, shape, id);
  return {.type = std::string(shape.type), .when = shape.when, .id = id, .body = std::move(json)};
}

Json Message(std::string_view type, const std::optional<std::int64_t>& re) {
  Json message = Json::object();
  message["type"] = std::string(type);
  if (re) message["re"] = *re;
  return message;
}

Json ErrorMessage(std::string_view code, std::string_view text, const std::optional<std::int64_t>& re) {
  Json message = Message("error", re);
  message["code"] = std::string(code);
  message["text"] = std::string(text);
  return message;
}

std::string ToText(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace browser
