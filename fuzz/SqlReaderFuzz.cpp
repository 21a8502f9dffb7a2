#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "books/reader/SqlReader.h"
#include "platform/value/Error.h"

// Feeds any bytes to the SQL reader, as a statement and as a condition. It must refuse them with an error of
// its own kind or write a text in which nothing of the input is left but names: as many marks as bound
// values, no quote that is not the empty text's, no comment and no second statement.
namespace {

using books::reader::ConditionAlias;
using books::reader::SqlText;

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckWritten(const SqlText& written) {
  const std::string_view sql = written.sql;
  Require(static_cast<std::size_t>(std::ranges::count(sql, '?')) == written.parameters.size());
  Require(std::ranges::count(sql, '(') == std::ranges::count(sql, ')'));
  Require(sql.find(';') == std::string_view::npos && sql.find("--") == std::string_view::npos &&
          sql.find("/*") == std::string_view::npos);
  for (std::size_t at = sql.find('\''); at != std::string_view::npos; at = sql.find('\'', at + 2)) {
    Require(sql.substr(at, 2) == "''");
  }
}

template <class Read>
void Try(Read&& read) {
  try {
    CheckWritten(read());
  } catch (const platform::Error& error) {
    Require(error.Number() == platform::ErrorNumber::kBadArgument);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const ConditionAlias aliases[] = {{"t4", books::reader::BaseDataTable()},
                                    {"t1", books::reader::BatchStockTable(), true}};
  Try([&]() -> SqlText { return books::reader::ReadStatement(text); });
  Try([&] { return books::reader::ReadConditionText(text, aliases); });
  return 0;
}
