#pragma once

#include <optional>

#include "platform/value/Date.h"

namespace platform {

// What "today" and "now" mean to this process. A host may fix the day; without that the system's local
// clock answers.
class Clock {
 public:
  static Date Now();
  static Date Today() { return Now().DayOnly(); }
  static void Fix(std::optional<Date> now);
};

}  // namespace platform
