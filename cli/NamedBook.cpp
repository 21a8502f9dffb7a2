#include <cstdlib>

#include "cli/Commands.h"

namespace cli {

std::string NamedBook(const std::string& given) {
  if (!given.empty()) return given;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): read before anything else runs
  const char* named = std::getenv("STOCKRPT_BOOK");
  if (named != nullptr && *named != '\0') return named;
  throw UsageError("no stock book is given; use --book FILE, or make one with `stockrpt demo FILE`");
}

}  // namespace cli
