#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/object/Object.h"
#include "platform/rows/Recordset.h"

namespace browser {

// Where a report stands in the list of items that it walks. From 1; 0 in an empty list.
struct ItemPlace {
  std::int32_t position = 0;
  std::int32_t count = 0;
  std::string number;
  std::string name;
};

// Of a list that a report moves on; nothing in it without a list.
ItemPlace PlaceOf(const platform::Ref<platform::Recordset>& items);

// A report with item navigation keeps its list to itself, yet the host hands it the data component that
// makes the list: what comes back here is that component, and `take` is told of each list that it makes
// (method GetItems). The report goes on with the same list, so that its cursor stands on the item shown.
platform::Ref<platform::Object> WatchItems(
    platform::Ref<platform::Object> data,
    std::function<void(const platform::Ref<platform::Recordset>& items)> take);

}  // namespace browser
