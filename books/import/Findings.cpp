#include "books/import/Findings.h"

#include <utility>

namespace books {
namespace {

constexpr std::size_t kShownBytes = 60;

// Cut between characters, line ends and other control characters shown as blanks.
std::string Shown(std::string_view value) {
  const bool cut = value.size() > kShownBytes;
  if (cut) {
    std::size_t end = kShownBytes;
    while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xC0) == 0x80) --end;
    value = value.substr(0, end);
  }
  std::string shown(value);
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < 0x20) c = ' ';
  }
  if (cut) shown += "…";
  return shown;
}

}  // namespace

std::string ImportError::ToText() const {
  std::string text = file;
  if (line > 0) text += ":" + std::to_string(line);
  text += ":";
  if (!column.empty()) text += " " + column;
  if (!value.empty()) text += " '" + value + "'";
  if (!column.empty() || !value.empty()) text += ":";
  return text + " " + problem + "; " + remedy;
}

namespace importer {

void Findings::Add(const Place& place, std::string_view column, std::string_view value, std::string problem,
                   std::string remedy) {
  ++count_;
  if (errors_.size() >= kept_ && !listener_) return;
  ImportError error{.file = std::string(place.file),
                    .line = place.line,
                    .column = std::string(column),
                    .value = Shown(value),
                    .problem = std::move(problem),
                    .remedy = std::move(remedy)};
  if (listener_) listener_(error);
  if (errors_.size() < kept_) errors_.push_back(std::move(error));
}

}  // namespace importer
}  // namespace books
