#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "books/reports/ReportFilter.h"

namespace books::reports {

// A place {name} in a report's SQL, and what is put there.
struct Slot {
  Slot(std::string_view slotName, const Conditions& conditions)
      : name(slotName), text{.sql = conditions.Sql(), .parameters = conditions.Parameters()} {}
  Slot(std::string_view slotName, std::string sql)
      : name(slotName), text{.sql = std::move(sql), .parameters = {}} {}

  std::string_view name;
  reader::SqlText text;
};

// A report's SQL with its slots filled and their values in the order of their marks. A slot may stand in
// several places; one that is not given raises.
reader::SqlText Compose(std::string_view sql, std::span<const Slot> slots);

}  // namespace books::reports
