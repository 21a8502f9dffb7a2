// A script is parsed once, with the lines on which its steps and actions begin noted down as they go by; then
// every step is held against the table of steps, and every action against the table of actions.
#include "player/Script.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace player {
namespace {

constexpr std::size_t kMostKeys = 4;

// A kind of step or action: its first key names it, the others go with it.
struct Kind {
  std::array<Key, kMostKeys> keys{};

  std::string_view Name() const { return keys[0].name; }
  const Key* Find(std::string_view name) const {
    for (const Key& key : keys) {
      if (!key.name.empty() && key.name == name) return &key;
    }
    return nullptr;
  }
};

// "scheme" stands before "dialog", which is one of its own keys.
constexpr std::array kSteps = {
    Kind{{{{"process", Shape::kEntriesNull}}}},
    Kind{{{{"get_process"}}}},
    Kind{{{{"session", Shape::kEntries}}}},
    Kind{{{{"outer_login", Shape::kNumber}}}},
    Kind{{{{"profile", Shape::kEntries}}}},
    Kind{{{{"need_right", Shape::kBoolean}}}},
    Kind{{{{"right_classes"}}}},
    Kind{{{{"sql", Shape::kSqlAnswers}}}},
    Kind{{{{"component"}, {"methods", Shape::kMethods, false}, {"properties", Shape::kEntries, false}}}},
    Kind{{{{"book"}}}},
    Kind{{{{"clock", Shape::kDay}}}},
    Kind{{{{"scheme"}, {"dialog"}, {"values", Shape::kEntries}}}},
    Kind{{{{"new"}, {"class"}}}},
    Kind{{{{"call"}, {"method"}, {"args", Shape::kValues, false}, {"as", Shape::kText, false}}}},
    Kind{{{{"get"}, {"property"}, {"as", Shape::kText, false}}}},
    Kind{{{{"put"},
           {"property", Shape::kText, false},
           {"key", Shape::kText, false},
           {"value", Shape::kValue}}}},
    Kind{{{{"release"}}}},
    Kind{{{{"dialog", Shape::kActions}}}},
    Kind{{{{"answer", Shape::kAnswer}}}},
    Kind{{{{"pick", Shape::kValue}}}},
};

constexpr std::array kActions = {
    Kind{{{{"set"}, {"to", Shape::kValue}}}},
    Kind{{{{"click"}, {"node", Shape::kText, false}}}},
    Kind{{{{"key", Shape::kKeyName}, {"on"}}}},
    Kind{{{{"leave"}}}},
    Kind{{{{"enter"}}}},
    Kind{{{{"state", Shape::kTrue}}}},
    Kind{{{{"activate", Shape::kTrue}}}},
    Kind{{{{"close", Shape::kTrue}}}},
};

// The words of the filter control, each with the keys that may go with it.
constexpr std::array kControlActions = {
    Kind{{{{"ok"}, {"result", Shape::kValue, false}, {"raises", Shape::kText, false}}}},
    Kind{{{{"cancel"}}}},
    Kind{{{{"quick"}, {"result", Shape::kValue, false}, {"raises", Shape::kText, false}}}},
    Kind{{{{"reset"}}}},
    Kind{{{{"notice"}}}},
    Kind{{{{"result"}, {"value", Shape::kValue, false}, {"raises", Shape::kText, false}}}},
    Kind{{{{"save"}, {"scheme"}}}},
    Kind{{{{"load"}, {"scheme"}}}},
    Kind{{{{"lookup"}, {"on"}}}},
};

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

const Kind* FindKind(std::span<const Kind> kinds, const Json& object) {
  const auto found = std::ranges::find_if(
      kinds, [&](const Kind& kind) { return object.contains(std::string(kind.Name())); });
  return found == kinds.end() ? nullptr : &*found;
}

// `first` is the key that has been looked at already, where the kind is known by a word.
void CheckKeys(const Kind& kind, const Json& object, std::size_t line, std::string_view first = {}) {
  const std::string name = Quoted(kind.Name());
  for (const auto& [key, value] : object.items()) {
    if (key == first) continue;
    const Key* known = kind.Find(key);
    if (known == nullptr || (!first.empty() && known == &kind.keys[0])) {
      throw ScriptError(line, name + " has no key " + Quoted(key));
    }
    if (const auto reason = WhyNot(known->shape, value)) {
      throw ScriptError(line, Quoted(key) + ": " + *reason);
    }
  }
  for (const Key& key : kind.keys) {
    if (key.name.empty() || !key.required || (!first.empty() && &key == &kind.keys[0])) continue;
    if (!object.contains(std::string(key.name))) {
      throw ScriptError(line, name + " needs the key " + Quoted(key.name));
    }
  }
}

void CheckControlAction(const Json& action, std::size_t line) {
  if (const auto reason = WhyNot(Shape::kControlWord, action["control"])) {
    throw ScriptError(line, "'control': " + *reason);
  }
  const auto word = action["control"].get<std::string>();
  const auto kind = std::ranges::find_if(kControlActions, [&](const Kind& k) { return k.Name() == word; });
  CheckKeys(*kind, action, line, "control");
  if (action.contains("result") && action.contains("raises")) {
    throw ScriptError(line, "a result is either given or raises, not both");
  }
  if (word == "result" && !action.contains("value") && !action.contains("raises")) {
    throw ScriptError(line, "'result' needs the key 'value'");
  }
}

void CheckAction(const Json& action, std::size_t line) {
  if (!action.is_object()) throw ScriptError(line, "an action is an object");
  if (action.contains("control")) return CheckControlAction(action, line);
  const Kind* kind = FindKind(kActions, action);
  if (kind == nullptr) throw ScriptError(line, "there is no such action: " + ToLine(action));
  CheckKeys(*kind, action, line);
}

// The lines on which a step and, in a dialog step, its actions begin.
struct Lines {
  std::size_t step = 1;
  std::vector<std::size_t> actions;
};

Step CheckStep(const Json& step, const Lines& lines) {
  if (!step.is_object()) throw ScriptError(lines.step, "a step is an object");
  const Kind* kind = FindKind(kSteps, step);
  if (kind == nullptr) throw ScriptError(lines.step, "there is no such step: " + ToLine(step).substr(0, 80));
  if (kind->Name() == "dialog" && step["dialog"].is_array()) {
    const Json& actions = step["dialog"];
    for (std::size_t i = 0; i < actions.size(); ++i) {
      CheckAction(actions[i], i < lines.actions.size() ? lines.actions[i] : lines.step);
    }
  }
  CheckKeys(*kind, step, lines.step);
  if (kind->Name() == "put" && step.contains("property") == step.contains("key")) {
    throw ScriptError(lines.step, "'put' needs either the key 'property' or the key 'key'");
  }
  return {.kind = std::string(kind->Name()), .body = step};
}

// Walks the text for the parser and remembers how far it has got.
class Walker {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Walker(const char* at, const char** reached) : at_(at), reached_(reached) {}
  reference operator*() const { return *at_; }
  Walker& operator++() {
    *reached_ = ++at_;
    return *this;
  }
  Walker operator++(int) {
    Walker before = *this;
    ++*this;
    return before;
  }
  friend bool operator==(const Walker& left, const Walker& right) { return left.at_ == right.at_; }

 private:
  const char* at_;
  const char** reached_;
};

std::size_t LineOf(const std::string& text, std::size_t offset) {
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
  return 1 + static_cast<std::size_t>(std::count(text.begin(), end, '\n'));
}

std::string Reason(const std::string& message) {
  // The library puts its own name and the place in front.
  const std::size_t colon = message.find(": ");
  return colon == std::string::npos ? message : message.substr(colon + 2);
}

Json Parse(const std::string& text, std::vector<Lines>& lines) {
  const char* reached = text.data();
  const char* counted = text.data();
  std::size_t line = 1;
  // Steps begin one level below the list, actions three levels below it.
  auto note = [&](int depth, Json::parse_event_t event, Json&) {
    if (event != Json::parse_event_t::object_start || (depth != 1 && depth != 3)) return true;
    line += static_cast<std::size_t>(std::count(counted, reached, '\n'));
    counted = reached;
    if (depth == 1) lines.push_back({.step = line, .actions = {}});
    if (depth == 3 && !lines.empty()) lines.back().actions.push_back(line);
    return true;
  };
  try {
    return Json::parse(Walker(text.data(), &reached), Walker(text.data() + text.size(), &reached), note);
  } catch (const Json::parse_error& error) {
    throw ScriptError(LineOf(text, error.byte == 0 ? 0 : error.byte - 1), Reason(error.what()));
  }
}

}  // namespace

std::string ActionKind(const Json& action) {
  if (action.contains("control")) return "control";
  return std::string(FindKind(kActions, action)->Name());
}

std::vector<Step> ReadScript(const std::string& text) {
  std::vector<Lines> lines;
  const Json script = Parse(text, lines);
  if (!script.is_array()) throw ScriptError(1, "a script is a list of steps");
  std::vector<Step> steps;
  std::size_t line = 0;
  for (const Json& step : script) {
    // Only objects have their line noted; anything else is refused with the line of the step before it.
    if (!step.is_object()) throw ScriptError(line == 0 ? 1 : lines[line - 1].step, "a step is an object");
    steps.push_back(CheckStep(step, lines[line++]));
  }
  return steps;
}

}  // namespace player
