#include "platform/value/Clock.h"

#include <ctime>

namespace platform {
namespace {

std::optional<Date>& Fixed() {
  static std::optional<Date> fixed;
  return fixed;
}

}  // namespace

Date Clock::Now() {
  if (Fixed()) return *Fixed();
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);  // NOLINT(concurrency-mt-unsafe): one user-interface thread
  return Date::Of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                  local.tm_sec > 59 ? 59 : local.tm_sec);
}

void Clock::Fix(std::optional<Date> now) { Fixed() = now; }

}  // namespace platform
