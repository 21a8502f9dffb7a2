#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "browser/protocol/Json.h"

namespace browser {

// In which state of the session a command is taken, as messages.json tells.
enum class When : std::uint8_t { kFirst, kAny, kForm, kMessage, kProgress, kIdle };

// A command from the page, checked against the declared list: `body` holds the fields of its type, all the
// needed ones and no other, each of its kind. Whole numbers are within 32 bits.
struct Command {
  std::string type;
  When when = When::kAny;
  std::optional<std::int64_t> id;
  Json body;

  std::int32_t Number(const char* field) const { return body.at(field).get<std::int32_t>(); }
  const std::string& Text(const char* field) const { return body.at(field).get_ref<const std::string&>(); }
  bool Has(const char* field) const { return body.contains(field); }
};

// Why a message is no command. `code` is the code of the error message that tells so.
class RefusedMessage : public std::runtime_error {
 public:
  RefusedMessage(std::string code, const std::string& text, std::optional<std::int64_t> id = std::nullopt)
      : std::runtime_error(text), code_(std::move(code)), id_(id) {}

  const std::string& Code() const { return code_; }
  // The command's number, when so much could be read.
  std::optional<std::int64_t> Id() const { return id_; }

 private:
  std::string code_;
  std::optional<std::int64_t> id_;
};

// The largest message that a page may send.
inline constexpr std::size_t kLargestCommand = 256UL * 1024;
// The version of the list.
int ProtocolVersion();

// Reads a message of the page; raises RefusedMessage for anything that is not exactly a declared command.
Command ReadCommand(std::string_view text);

// {"type":…} with "re" for a command that has a number.
Json Message(std::string_view type, const std::optional<std::int64_t>& re = std::nullopt);
Json ErrorMessage(std::string_view code, std::string_view text, const std::optional<std::int64_t>& re);
// One line of text. Bytes that are no UTF-8 are replaced rather than refused: rows may hold such.
std::string ToText(const Json& json);

}  // namespace browser
