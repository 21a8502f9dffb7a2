#include "component/frame/MParse.h"

#include <algorithm>

#include "component/frame/ProcessState.h"

namespace component {
namespace {

using platform::EqualsIgnoreCase;
using platform::Error;
using platform::ErrorNumber;
using platform::TrimBlanks;

// Takes what stands before the first separator off the front, the separator with it. A text without one is
// taken whole.
std::string_view Cut(std::string_view& rest, char separator) {
  const std::size_t end = rest.find(separator);
  const std::string_view piece = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  return piece;
}

std::string_view CutValue(std::string_view& rest) {
  rest = TrimBlanks(rest);
  if (rest.empty() || rest.front() != '{') return TrimBlanks(Cut(rest, ';'));
  rest.remove_prefix(1);
  const std::string_view value = Cut(rest, '}');
  Cut(rest, ';');
  return TrimBlanks(value);
}

auto FindProp(std::string_view key) {
  auto& props = ProcessState::Get().props;
  return std::ranges::find_if(props, [key](const auto& prop) { return EqualsIgnoreCase(prop.first, key); });
}

}  // namespace

bool ParsePropsString(std::string_view text) {
  ProcessState& state = ProcessState::Get();
  state.propsText = text;
  state.props.clear();
  for (std::string_view rest = state.propsText;;) {
    const std::string_view key = TrimBlanks(Cut(rest, '='));
    const std::string_view value = CutValue(rest);
    if (key.empty()) return true;
    if (FindProp(key) != state.props.end()) {
      throw Error(ErrorNumber::kKeyExists, "ParsePropsString",
                  "the session text holds the key '" + std::string(key) + "' twice");
    }
    state.props.emplace_back(key, value);
  }
}

std::string GetPropsItem(std::string_view key) {
  const auto found = FindProp(key);
  if (found == ProcessState::Get().props.end()) {
    throw Error(ErrorNumber::kInvalidCall, "GetPropsItem",
                "the session text holds no key '" + std::string(key) + "'");
  }
  return found->second;
}

std::int16_t GetUserID() { return platform::ToInt16(GetPropsItem("UserID")); }

}  // namespace component
