#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "books/import/Findings.h"
#include "books/import/Known.h"
#include "books/import/files/CsvReader.h"
#include "books/import/files/Values.h"

namespace books::importer {

// A base data row that a cell names. Nothing when the cell is empty.
using Reference = std::optional<std::int64_t>;

// Where a cell's value goes, by kind.
template <class Row>
using Target = std::variant<std::string_view Row::*, std::optional<database::Quantity> Row::*,
                            std::optional<platform::Currency> Row::*, std::optional<double> Row::*,
                            std::optional<std::int32_t> Row::*, std::optional<platform::Date> Row::*,
                            std::optional<bool> Row::*, const BillClassFacts * Row::*, Reference Row::*>;

// A column of a file. Tables of these say what a file may hold.
template <class Row>
struct Column {
  std::string_view name;
  std::string_view caption;  // the same heading in Chinese
  Target<Row> target;
  bool needed = false;                // the column must be there and filled in every row
  schema::BaseClass refersTo{};       // of a Reference; none: a unit
  bool group = false;                 // a Reference may name a group
  std::optional<std::int64_t> least;  // of a quantity, amount or whole number, in whole units
  std::optional<std::int64_t> most;
};

// A value's kind and the bounds of its column, apart from where it goes.
struct CellRules {
  std::string_view name;
  schema::BaseClass refersTo{};
  bool group = false;
  std::optional<std::int64_t> least;
  std::optional<std::int64_t> most;
};

// Reads one cell; what is wrong with it is reported, and false is answered. A cell that names a row which was
// refused answers false without a report.
class CellReader {
 public:
  CellReader(const Known& known, Findings& findings) : known_(known), findings_(findings) {}

  bool Read(const Place& place, const CellRules& rules, std::string_view cell, std::string_view& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell,
            std::optional<database::Quantity>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell,
            std::optional<platform::Currency>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell, std::optional<double>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell,
            std::optional<std::int32_t>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell,
            std::optional<platform::Date>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell, std::optional<bool>& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell, const BillClassFacts*& value);
  bool Read(const Place& place, const CellRules& rules, std::string_view cell, Reference& value);

 private:
  bool Bounded(const Place& place, const CellRules& rules, std::string_view cell, std::int64_t units,
               std::int64_t scale);

  const Known& known_;
  Findings& findings_;
};

// The heading of a file: for each of its cells the position of the column that it names. Unknown and doubled
// headings and columns that must be there are reported; nothing then.
struct HeadingColumn {
  std::string_view name;
  std::string_view caption;
  bool needed = false;
};
std::optional<std::vector<std::size_t>> ReadHeading(const Place& place,
                                                    std::span<const std::string_view> cells,
                                                    std::span<const HeadingColumn> columns,
                                                    Findings& findings);
void ReportCellCount(const Place& place, std::size_t count, std::size_t expected, Findings& findings);
void ReportEmptyFile(std::string_view file, Findings& findings);

// Walks a file: reads every row by the columns and hands it to `take(row, place, sound)`. A row with a faulty
// cell is handed over too, unsound and with what could be read, so that its number can be remembered. False
// when the file cannot be used at all.
template <class Row, class Take>
bool ReadTable(const std::filesystem::path& path, std::string_view file, std::span<const Column<Row>> columns,
               const Known& known, Findings& findings, Take&& take) {
  std::optional<std::vector<std::size_t>> order;
  bool begun = false;
  CellReader reader(known, findings);
  const bool readable = ReadCsv(path, file, findings, [&](const CsvRow& csv) {
    const Place place{file, csv.line};
    if (!begun) {
      begun = true;
      std::vector<HeadingColumn> heading;
      for (const Column<Row>& column : columns)
        heading.push_back({column.name, column.caption, column.needed});
      order = ReadHeading(place, csv.cells, heading, findings);
      return;
    }
    if (!order) return;
    if (csv.cells.size() != order->size()) {
      ReportCellCount(place, csv.cells.size(), order->size(), findings);
      return;
    }
    Row row;
    bool sound = true;
    for (std::size_t i = 0; i < csv.cells.size(); ++i) {
      const Column<Row>& column = columns[(*order)[i]];
      const std::string_view cell = csv.cells[i];
      if (cell.empty()) {
        if (!column.needed) continue;
        findings.Add(place, column.name, {}, "the value is missing", "fill it in");
        sound = false;
        continue;
      }
      const CellRules rules{.name = column.name,
                            .refersTo = column.refersTo,
                            .group = column.group,
                            .least = column.least,
                            .most = column.most};
      sound = std::visit([&](auto member) { return reader.Read(place, rules, cell, row.*member); },
                         column.target) &&
              sound;
    }
    take(row, place, sound);
  });
  if (!begun && readable) ReportEmptyFile(file, findings);
  return order.has_value();
}

}  // namespace books::importer
