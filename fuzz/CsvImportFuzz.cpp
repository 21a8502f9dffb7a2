#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "books/import/files/CsvReader.h"
#include "books/import/files/TableReader.h"
#include "books/import/files/TextFile.h"
#include "books/schema/Schema.h"

// Feeds any bytes to the reader of CSV files: once as rows, once as a table of bill entries with values of
// every kind. Rows must come in the order of their lines, values must be valid UTF-8, and whatever is refused
// must name a file, a problem and a remedy.
namespace {

using books::importer::Column;
using books::importer::CsvRow;
using books::importer::Findings;
using books::importer::Place;

void Require(bool holds) {
  if (!holds) std::abort();
}

struct AnyRow {
  std::string_view text;
  std::optional<books::database::Quantity> quantity;
  std::optional<platform::Currency> amount;
  std::optional<double> price;
  std::optional<std::int32_t> whole;
  std::optional<platform::Date> date;
  std::optional<bool> flag;
  const books::importer::BillClassFacts* billClass = nullptr;
  books::importer::Reference item;
};

const std::vector<Column<AnyRow>>& AnyColumns() {
  static const std::vector<Column<AnyRow>> kColumns = {
      {.name = "t", .caption = "文", .target = &AnyRow::text, .needed = true},
      {.name = "q", .caption = "数量", .target = &AnyRow::quantity, .least = 0},
      {.name = "a", .caption = "金额", .target = &AnyRow::amount},
      {.name = "p", .caption = "单价", .target = &AnyRow::price},
      {.name = "w", .caption = "行号", .target = &AnyRow::whole, .least = 1, .most = 100},
      {.name = "d", .caption = "日期", .target = &AnyRow::date},
      {.name = "f", .caption = "审核", .target = &AnyRow::flag},
      {.name = "c", .caption = "类型", .target = &AnyRow::billClass},
      {.name = "i", .caption = "商品", .target = &AnyRow::item, .refersTo = books::schema::BaseClass::kItem},
  };
  return kColumns;
}

bool IsUtf8(std::string_view text) {
  books::importer::Utf8Check check;
  for (const char c : text) {
    if (!check.Take(static_cast<unsigned char>(c))) return false;
  }
  return check.AtBoundary();
}

void CheckFindings(const Findings& findings) {
  for (const books::ImportError& error : findings.Errors()) {
    Require(!error.file.empty() && !error.problem.empty() && !error.remedy.empty() && error.line >= 0);
    Require(IsUtf8(error.ToText()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static books::database::Connection book = books::schema::CreateBookInMemory();
  static const books::importer::Known known(book);
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("csv_fuzz_" + std::to_string(getpid()) + ".csv");
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the fuzzer's bytes are unsigned
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

  Findings rowFindings;
  std::int64_t line = 0;
  books::importer::ReadCsv(file, "any.csv", rowFindings, [&](const CsvRow& row) {
    Require(row.line > line && !row.cells.empty());
    line = row.line;
    for (const std::string_view cell : row.cells) Require(IsUtf8(cell));
  });
  CheckFindings(rowFindings);

  Findings findings;
  books::importer::ReadTable<AnyRow>(file, "any.csv", AnyColumns(), known, findings,
                                     [&](const AnyRow& row, const Place& place, bool sound) {
                                       Require(place.line > 1);
                                       Require(!sound || !row.text.empty());
                                     });
  CheckFindings(findings);
  return 0;
}
