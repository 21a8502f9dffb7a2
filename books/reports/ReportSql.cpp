#include "books/reports/ReportSql.h"

#include <algorithm>

#include "platform/value/Error.h"

namespace books::reports {

reader::SqlText Compose(std::string_view sql, std::span<const Slot> slots) {
  reader::SqlText whole;
  while (true) {
    const std::size_t open = std::min(sql.find('{'), sql.size());
    whole.sql += sql.substr(0, open);
    if (open == sql.size()) return whole;
    const std::size_t close = std::min(sql.find('}', open), sql.size());
    const std::string_view name = sql.substr(open + 1, close - open - 1);
    const auto slot = std::ranges::find(slots, name, &Slot::name);
    if (slot == slots.end()) {
      throw platform::Error(platform::ErrorNumber::kInvalidCall, "books::reports",
                            "the report's SQL has a slot that nothing fills: " + std::string(name));
    }
    whole.sql += slot->text.sql;
    whole.parameters.insert(whole.parameters.end(), slot->text.parameters.begin(),
                            slot->text.parameters.end());
    sql.remove_prefix(std::min(close + 1, sql.size()));
  }
}

}  // namespace books::reports
