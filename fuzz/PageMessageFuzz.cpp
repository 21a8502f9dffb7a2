// Feeds bytes to the reader of the page's messages. Whatever comes, the reader either refuses it by its own
// words or answers a command that every accessor can read.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "browser/protocol/Command.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const browser::Command command = browser::ReadCommand(text);
    Require(!command.type.empty() && command.body.is_object() && size <= browser::kLargestCommand);
    Require(!command.id || *command.id >= 1);
    Require(!command.Has("report") || command.Number("report") == command.body["report"]);
    Require(!browser::ToText(command.body).empty());
  } catch (const browser::RefusedMessage& refused) {
    Require(!refused.Code().empty() &&
            !browser::ToText(browser::ErrorMessage(refused.Code(), refused.what(), {})).empty());
  }
  return 0;
}
