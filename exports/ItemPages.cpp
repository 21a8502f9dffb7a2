#include "exports/ItemPages.h"

namespace exports {

ItemPages::ItemPages(const platform::Recordset& rows, const std::vector<std::int32_t>& ends) : rows_(rows) {
  std::size_t last = 0;
  for (const std::int32_t end : ends) {
    const auto wanted = static_cast<std::size_t>(end);
    if (end < 0 || wanted <= last || wanted > rows.ViewCount()) continue;
    ends_.push_back(wanted);
    last = wanted;
  }
  if (last < rows.ViewCount()) ends_.push_back(rows.ViewCount());
  while (const auto field = rows.FindField("FTitle" + std::to_string(titleFields_.size() + 1))) {
    titleFields_.push_back(*field);
  }
}

std::vector<std::string> ItemPages::TitleLines(std::size_t item) const {
  std::vector<std::string> lines;
  for (const std::size_t field : titleFields_) {
    const std::string_view line = rows_.TextAt(field, rows_.RowAt(Begin(item)));
    if (!line.empty()) lines.emplace_back(line);
  }
  return lines;
}

}  // namespace exports
