#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class FieldType : std::uint8_t {
  kText,
  kWideText,
  kInt16,
  kInt32,
  kDouble,
  kNumeric,  // kept as a double
  kCurrency,
  kDate,
  kBoolean,
};

// "text", "wide text", "smallint", "integer", "double", "numeric", "currency", "date", "boolean".
std::string_view ToString(FieldType type);
// The type of such a name, in any case.
std::optional<FieldType> FieldTypeFromText(std::string_view name);

constexpr bool IsTextType(FieldType type) { return type == FieldType::kText || type == FieldType::kWideText; }

// One column of a recordset. `width` is the defined size: for both kinds of text the number of characters
// (not bytes) that a value may have, 0 for any number; it has no meaning for the other types.
struct Field {
  std::string name;
  FieldType type = FieldType::kText;
  std::size_t width = 0;
};

// Characters of a UTF-8 text: a character of any plane counts once.
std::size_t CharacterCount(std::string_view text);
// The longest beginning of `text` that has at most `width` characters, cut between two of them; the whole
// text for a width of 0. For the callers whose contract shortens instead of refusing.
std::string_view CutToWidth(std::string_view text, std::size_t width);

}  // namespace platform
