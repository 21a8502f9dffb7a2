#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

// Numbers that callers tell apart. A component's own failures use kUserDefined.
enum class ErrorNumber : std::int32_t {
  kInvalidCall = 5,
  kOverflow = 6,
  kSubscriptOutOfRange = 9,
  kDivisionByZero = 11,
  kTypeMismatch = 13,
  kObjectNotSet = 91,
  kObjectRequired = 424,
  kCannotCreate = 429,
  kUnknownMember = 438,
  kArgumentCount = 450,
  kKeyExists = 457,
  kUserDefined = 1000,
  kBadArgument = 3001,
  kNoCurrentRow = 3021,
  kUnknownField = 3265,
  kObjectClosed = 3704,
};

// The one failure that crosses rooms. `description` is the text a user may be shown; `source` names the
// class or routine that raised it and is for operators.
class Error : public std::runtime_error {
 public:
  Error(ErrorNumber number, std::string source, const std::string& description)
      : std::runtime_error(description), number_(number), source_(std::move(source)) {}

  ErrorNumber Number() const { return number_; }
  const std::string& Source() const { return source_; }
  std::string Description() const { return what(); }

 private:
  ErrorNumber number_;
  std::string source_;
};

// Runs `action` and drops any failure: for the places where the contract goes on with what it has.
template <class Action>
void SkipErrors(Action&& action) {
  try {
    action();
  } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): dropping it is what the name says
  }
}

}  // namespace platform
