// What each shape admits, one small function a shape.
#include <algorithm>
#include <array>
#include <charconv>

#include "platform/rows/Field.h"
#include "platform/value/Date.h"
#include "player/Script.h"

namespace player {
namespace {

using Reason = std::optional<std::string>;

Reason WhyNoEntries(const Json& value) {
  if (!value.is_object()) return "an object of keys and values is needed here";
  for (const auto& [key, entry] : value.items()) {
    if (Reason reason = WhyNoValue(entry)) return "key '" + key + "': " + *reason;
  }
  return {};
}

Reason WhyNoValues(const Json& value) {
  if (!value.is_array()) return "a list of values is needed here";
  for (const Json& entry : value) {
    if (Reason reason = WhyNoValue(entry)) return reason;
  }
  return {};
}

Reason WhyNoSqlAnswers(const Json& value) {
  if (!value.is_array()) return "a list of answers is needed here";
  for (const Json& answer : value) {
    if (!answer.is_object() || answer.size() != 2 || !answer.contains("contains") ||
        !answer["contains"].is_string() || !answer.contains("rows")) {
      return "an answer is {\"contains\":\"TEXT\",\"rows\":…}";
    }
    const Json& rows = answer["rows"];
    if (rows.is_object() && rows.size() == 1 && rows.contains("raises") && rows["raises"].is_string())
      continue;
    if (!rows.is_object() || !rows.contains("recordset")) {
      return "\"rows\" is a recordset or {\"raises\":\"TEXT\"}";
    }
    if (Reason reason = WhyNoValue(rows)) return reason;
  }
  return {};
}

bool IsIndex(const std::string& text) {
  std::size_t index = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
  return error == std::errc() && end == text.data() + text.size();
}

Reason WhyNoMethodAnswer(const Json& answer) {
  if (!answer.is_object()) return "an answer is an object with \"returns\", \"args\" or \"raises\"";
  for (const auto& [key, part] : answer.items()) {
    if (key == "returns") {
      if (Reason reason = WhyNoValue(part)) return reason;
    } else if (key == "raises") {
      if (!part.is_string()) return "\"raises\" is a text";
    } else if (key == "args") {
      if (Reason reason = WhyNoEntries(part)) return "\"args\": " + *reason;
      for (const auto& [position, value] : part.items()) {
        if (!IsIndex(position)) return "\"args\": '" + position + "' is no position; they count from \"0\"";
      }
    } else {
      return "an answer has no key '" + key + "'";
    }
  }
  return {};
}

Reason WhyNoMethods(const Json& value) {
  if (!value.is_object()) return "an object of methods is needed here";
  for (const auto& [name, answers] : value.items()) {
    if (answers.is_array() && answers.empty()) return "method '" + name + "': the list of answers is empty";
    const Json list = answers.is_array() ? answers : Json::array({answers});
    for (const Json& answer : list) {
      if (Reason reason = WhyNoMethodAnswer(answer)) return "method '" + name + "': " + *reason;
    }
  }
  return {};
}

template <std::size_t N>
Reason WhyNoWord(const Json& value, const std::array<std::string_view, N>& words) {
  std::string list;
  for (const std::string_view word : words) {
    if (value.is_string() && value.get<std::string>() == word) return {};
    list += (list.empty() ? "" : ", ") + std::string(word);
  }
  return "one of " + list + " is needed here";
}

constexpr std::array<std::string_view, 4> kAnswerWords = {"ok", "cancel", "yes", "no"};
constexpr std::array<std::string_view, 9> kControlWords = {"ok",     "cancel", "quick", "reset", "notice",
                                                           "result", "save",   "load",  "lookup"};
constexpr std::array<std::string_view, 4> kKeyNames = {"F7", "F8", "Enter", "Tab"};

Reason WhyNoKey(const Json& value) {
  if (value.is_string() && platform::CharacterCount(value.get<std::string>()) == 1) return {};
  if (!WhyNoWord(value, kKeyNames)) return {};
  return "F7, F8, Enter, Tab or one character is needed here";
}

Reason WhyNoDay(const Json& value) {
  if (value.is_string() && platform::Date::FromText(value.get<std::string>())) return {};
  return "a date like 2024-03-31 is needed here";
}

Reason Unless(bool holds, const char* reason) { return holds ? Reason() : Reason(reason); }

}  // namespace

std::optional<std::string> WhyNot(Shape shape, const Json& value) {
  switch (shape) {
    case Shape::kText:
      return Unless(value.is_string(), "a text is needed here");
    case Shape::kInteger:
      return Unless(value.is_number_integer(), "an integer is needed here");
    case Shape::kNumber:
      return Unless(value.is_number(), "a number is needed here");
    case Shape::kBoolean:
      return Unless(value.is_boolean(), "true or false is needed here");
    case Shape::kTrue:
      return Unless(value.is_boolean() && value.get<bool>(), "true is needed here");
    case Shape::kValue:
      return WhyNoValue(value);
    case Shape::kValues:
      return WhyNoValues(value);
    case Shape::kEntries:
      return WhyNoEntries(value);
    case Shape::kEntriesNull:
      return value.is_null() ? Reason() : WhyNoEntries(value);
    case Shape::kDay:
      return WhyNoDay(value);
    case Shape::kAnswer:
      return WhyNoWord(value, kAnswerWords);
    case Shape::kActions:
      return Unless(value.is_array(), "a list of actions is needed here");
    case Shape::kSqlAnswers:
      return WhyNoSqlAnswers(value);
    case Shape::kMethods:
      return WhyNoMethods(value);
    case Shape::kControlWord:
      return WhyNoWord(value, kControlWords);
    case Shape::kKeyName:
      return WhyNoKey(value);
  }
  return {};
}

}  // namespace player
