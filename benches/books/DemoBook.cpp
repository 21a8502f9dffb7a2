#include "benches/books/DemoBook.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace bench {
namespace {

constexpr std::array<std::string_view, 3> kNames = {"demo-small.book", "demo-medium.book", "demo-large.book"};

}  // namespace

const std::filesystem::path& DemoBookFile(books::DemoSize size) {
  static std::array<std::filesystem::path, kNames.size()> files;
  const auto place = static_cast<std::size_t>(size);
  std::filesystem::path& file = files.at(place);
  if (!file.empty()) return file;
  const std::filesystem::path wanted = std::filesystem::path(BENCH_BINARY_DIR) / kNames.at(place);
  if (!std::filesystem::exists(wanted)) {
    std::fprintf(stderr, "making %s\n", wanted.c_str());
    books::MakeDemoBook(wanted, {.size = size,
                                 .items = {},
                                 .months = {},
                                 .today = platform::Date::Of(2026, 11, 21),
                                 .replace = false});
  }
  file = wanted;
  return file;
}

}  // namespace bench
