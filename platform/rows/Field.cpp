#include "platform/rows/Field.h"

#include <array>

#include "platform/value/Convert.h"

namespace platform {
namespace {

constexpr std::array<std::string_view, 9> kNames = {"text",    "wide text", "smallint", "integer", "double",
                                                    "numeric", "currency",  "date",     "boolean"};

bool StartsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

}  // namespace

std::string_view ToString(FieldType type) { return kNames[static_cast<std::size_t>(type)]; }

std::optional<FieldType> FieldTypeFromText(std::string_view name) {
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (EqualsIgnoreCase(kNames[i], name)) return static_cast<FieldType>(i);
  }
  return std::nullopt;
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) count += StartsCharacter(c) ? 1U : 0U;
  return count;
}

std::string_view CutToWidth(std::string_view text, std::size_t width) {
  if (width == 0 || text.size() <= width) return text;
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (StartsCharacter(text[i]) && count++ == width) return text.substr(0, i);
  }
  return text;
}

}  // namespace platform
