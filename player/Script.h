#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "player/Json.h"

namespace player {

// What a key of a step or an action may hold.
enum class Shape {
  kText,
  kInteger,
  kNumber,
  kBoolean,
  kTrue,
  kValue,
  kValues,       // a list of values
  kEntries,      // an object of keys and values
  kEntriesNull,  // the same, or null
  kDay,          // a date as text
  kAnswer,       // ok, cancel, yes, no
  kActions,
  kSqlAnswers,
  kMethods,
  kControlWord,  // ok, cancel, quick, reset, notice, result, save, load, lookup
  kKeyName,      // F7, F8, Enter, Tab, or one character
};

struct Key {
  std::string_view name;
  Shape shape = Shape::kText;
  bool required = true;
};

// A script that cannot be played: the line, counted from 1, and the reason.
class ScriptError : public std::runtime_error {
 public:
  ScriptError(std::size_t line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  std::size_t Line() const { return line_; }

 private:
  std::size_t line_;
};

struct Step {
  std::string kind;  // "new", "call"…: the key that says what the step does
  Json body;
};

// Reads a script and checks every step and action of it: known keys, each with what it may hold. What only
// the run can tell (an object's name, a control's) is not looked at. Raises ScriptError.
std::vector<Step> ReadScript(const std::string& text);

// The key by which an action is known ("set", "click"…).
std::string ActionKind(const Json& action);

// Why a value does not have a shape; nothing when it does.
std::optional<std::string> WhyNot(Shape shape, const Json& value);

}  // namespace player
