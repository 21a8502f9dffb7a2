#include "browser/worker/RowText.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/value/Convert.h"

namespace browser {
namespace {

using platform::FieldType;
using platform::Recordset;

constexpr std::string_view kNull = "null";

// Bytes of the UTF-8 character that the text begins with; 0 for bytes that are none. A message with such
// bytes would cost the page its connection.
std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  const auto second = static_cast<unsigned char>(text[1]);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool outside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return overlong || outside ? 0 : length;
}

template <class Number>
void AppendNumber(std::string& out, Number number) {
  std::array<char, 32> buffer{};
  const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  out.append(buffer.data(), done.ptr);
}

// As few decimals as the amount needs: "-12.34", "7".
void AppendAmount(std::string& out, std::int64_t units) {
  const auto magnitude =
      units < 0 ? ~static_cast<std::uint64_t>(units) + 1 : static_cast<std::uint64_t>(units);
  constexpr auto kScale = static_cast<std::uint64_t>(platform::Currency::kScale);
  if (units < 0) out += '-';
  AppendNumber(out, magnitude / kScale);
  auto rest = magnitude % kScale;
  if (rest == 0) return;
  out += '.';
  for (std::uint64_t digit = kScale / 10; rest > 0; digit /= 10) {
    out += static_cast<char>('0' + rest / digit);
    rest %= digit;
  }
}

}  // namespace

std::string_view CellType(FieldType type) {
  switch (type) {
    case FieldType::kText:
    case FieldType::kWideText:
      return "text";
    case FieldType::kInt16:
    case FieldType::kInt32:
      return "integer";
    case FieldType::kDouble:
    case FieldType::kNumeric:
      return "double";
    case FieldType::kCurrency:
      return "currency";
    case FieldType::kDate:
      return "date";
    case FieldType::kBoolean:
      return "boolean";
  }
  return "";
}

void AppendJsonText(std::string& out, std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  for (out += '"'; !text.empty();) {
    const auto code = static_cast<unsigned char>(text.front());
    const std::size_t length = CharacterLength(text);
    if (length == 0) {
      out += "\\ufffd";
    } else if (code == '"' || code == '\\') {
      out += '\\';
      out += text.front();
    } else if (code < 0x20) {
      out += "\\u00";
      out += kHex[code >> 4];
      out += kHex[code & 15];
    } else {
      out += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  out += '"';
}

void AppendCell(std::string& out, const Recordset& rows, std::size_t column, std::size_t row) {
  if (rows.IsNullAt(column, row)) {
    out += kNull;
    return;
  }
  switch (rows.Fields()[column].type) {
    case FieldType::kText:
    case FieldType::kWideText:
      return AppendJsonText(out, rows.TextAt(column, row));
    case FieldType::kInt16:
    case FieldType::kInt32:
      return AppendNumber(out, rows.IntegerAt(column, row));
    case FieldType::kDouble:
    case FieldType::kNumeric: {
      const double number = rows.DoubleAt(column, row);
      if (!std::isfinite(number)) {
        out += kNull;
        return;
      }
      return AppendNumber(out, number);
    }
    case FieldType::kCurrency:
      out += '"';
      AppendAmount(out, rows.CurrencyAt(column, row).Units());
      out += '"';
      return;
    case FieldType::kDate:
      return AppendJsonText(out, rows.DateAt(column, row).ToText());
    case FieldType::kBoolean:
      out += rows.BooleanAt(column, row) ? "true" : "false";
      return;
  }
}

std::string CellText(const Recordset& rows, std::size_t column, std::size_t row) {
  if (rows.IsNullAt(column, row)) return {};
  if (platform::IsTextType(rows.Fields()[column].type)) return std::string(rows.TextAt(column, row));
  return platform::ToText(rows.ValueAt(column, row));
}

}  // namespace browser
