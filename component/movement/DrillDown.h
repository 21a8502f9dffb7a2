#pragma once

#include <cstdint>
#include <string_view>

#include "platform/object/Object.h"
#include "platform/rows/Dictionary.h"

namespace component {

// The detail report behind the rows of a summary, and how its rows are to be shown.
struct DetailReport {
  std::string_view programmaticId;
  std::string_view number;
  std::int32_t rptId = 0;
  std::int32_t groupByGood = 0;  // "chkGroupByGood"
  std::int32_t noZero = 0;       // "chkNoZero"
};

// Runs the detail of one row, counted from 0, with a filter made of the row and of the summary's own filter,
// and answers the finished report, which belongs to the caller. Null without a word for a row that sums up
// others and where there are no rows; null after a message box when something fails. `rows` stays at the row.
platform::Ref<platform::Object> OpenDetail(const DetailReport& detail,
                                           const platform::Ref<platform::Dictionary>& filter,
                                           const platform::Variant& rows, std::int32_t row);

}  // namespace component
