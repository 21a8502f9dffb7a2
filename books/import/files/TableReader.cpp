#include "books/import/files/TableReader.h"

#include <algorithm>
#include <utility>

#include "platform/value/Convert.h"

namespace books::importer {
namespace {

constexpr std::size_t kLongestText = 1000;

struct ClassFile {
  schema::BaseClass baseClass;
  std::string_view noun;
  std::string_view file;
};
constexpr ClassFile kClassFiles[] = {
    {schema::BaseClass::kCustomer, "customer", "customers.csv"},
    {schema::BaseClass::kDepartment, "department", "departments.csv"},
    {schema::BaseClass::kEmployee, "employee", "employees.csv"},
    {schema::BaseClass::kItem, "item", "items.csv"},
    {schema::BaseClass::kWarehouse, "warehouse", "warehouses.csv"},
    {schema::BaseClass::kSupplier, "supplier", "suppliers.csv"},
    {schema::BaseClass::kAuxiliaryProperty, "auxiliary property", "properties.csv"},
};

ClassFile FileOf(schema::BaseClass baseClass) {
  for (const ClassFile& each : kClassFiles) {
    if (each.baseClass == baseClass) return each;
  }
  return {baseClass, "unit", "units.csv"};
}

std::string Joined(std::span<const HeadingColumn> columns) {
  std::string names;
  for (const HeadingColumn& column : columns) {
    if (!names.empty()) names += ", ";
    names += column.name;
  }
  return names;
}

}  // namespace

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::string_view& value) {
  value = cell;
  if (cell.size() > kLongestText) {
    findings_.Add(place, rules.name, cell,
                  "the text is longer than " + std::to_string(kLongestText) + " bytes", "shorten it");
    return false;
  }
  for (const char c : cell) {
    if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F) continue;
    findings_.Add(place, rules.name, cell, "the text holds a line end or another control character",
                  "take it out");
    return false;
  }
  return true;
}

bool CellReader::Bounded(const Place& place, const CellRules& rules, std::string_view cell,
                         std::int64_t units, std::int64_t scale) {
  if (rules.least && units < *rules.least * scale) {
    findings_.Add(place, rules.name, cell, "the value is below " + std::to_string(*rules.least),
                  "correct it");
    return false;
  }
  if (rules.most && units > *rules.most * scale) {
    findings_.Add(place, rules.name, cell, "the value is above " + std::to_string(*rules.most), "correct it");
    return false;
  }
  return true;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<database::Quantity>& value) {
  value = ReadQuantity(cell);
  if (value) return Bounded(place, rules, cell, value->Units(), database::Quantity::kScale);
  findings_.Add(place, rules.name, cell, "this is no quantity",
                "write digits with at most six decimals, like 12.5, without separators of thousands");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<platform::Currency>& value) {
  value = ReadAmount(cell);
  if (value) return Bounded(place, rules, cell, value->Units(), platform::Currency::kScale);
  findings_.Add(place, rules.name, cell, "this is no amount",
                "write digits with at most four decimals, like 1234.56, without separators of thousands");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<double>& value) {
  value = ReadPrice(cell);
  if (value) return true;
  findings_.Add(place, rules.name, cell, "this is no price",
                "write digits with a point, like 12.34, not negative");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<std::int32_t>& value) {
  value = ReadWhole(cell);
  if (value) return Bounded(place, rules, cell, *value, 1);
  findings_.Add(place, rules.name, cell, "this is no whole number", "write digits only, like 12");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<platform::Date>& value) {
  value = ReadDate(cell);
  if (value) return true;
  findings_.Add(place, rules.name, cell, "this is no day between 1990 and 2100", "write it as 2026-01-31");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      std::optional<bool>& value) {
  value = ReadFlag(cell);
  if (value) return true;
  findings_.Add(place, rules.name, cell, "this is neither yes nor no", "write 1 or 0");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell,
                      const BillClassFacts*& value) {
  value = known_.FindBillClass(cell);
  if (value != nullptr) return true;
  findings_.Add(place, rules.name, cell, "there is no such class of bills",
                "write its number or name as docs/import.md lists them, like 1020002");
  return false;
}

bool CellReader::Read(const Place& place, const CellRules& rules, std::string_view cell, Reference& value) {
  const bool unit = rules.refersTo == schema::BaseClass{};
  const Node* node = unit ? known_.FindUnit(cell) : known_.FindBase(rules.refersTo, cell);
  const ClassFile file = FileOf(rules.refersTo);
  const std::string noun(file.noun);
  if (node == nullptr && known_.IsUnread(file.file)) return false;
  if (node == nullptr) {
    findings_.Add(place, rules.name, cell, "there is no such " + noun,
                  "correct it or add it to " + std::string(file.file));
    return false;
  }
  if (node->id == 0) return false;
  if (!node->detail && !rules.group) {
    findings_.Add(place, rules.name, cell, "this " + noun + " is a group", "name one within it");
    return false;
  }
  value = node->id;
  return true;
}

std::optional<std::vector<std::size_t>> ReadHeading(const Place& place,
                                                    std::span<const std::string_view> cells,
                                                    std::span<const HeadingColumn> columns,
                                                    Findings& findings) {
  std::vector<std::size_t> order;
  bool sound = true;
  for (const std::string_view cell : cells) {
    const auto found = std::ranges::find_if(columns, [&](const HeadingColumn& column) {
      return platform::EqualsIgnoreCase(column.name, cell) || column.caption == cell;
    });
    const auto position = static_cast<std::size_t>(found - columns.begin());
    if (found == columns.end()) {
      findings.Add(place, {}, cell, "there is no such column",
                   cell.empty() ? "name it or take it out" : "the columns are: " + Joined(columns));
      sound = false;
    } else if (std::ranges::find(order, position) != order.end()) {
      findings.Add(place, {}, cell, "the column stands here twice", "take one out");
      sound = false;
    }
    order.push_back(position);
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].needed || std::ranges::find(order, i) != order.end()) continue;
    findings.Add(place, columns[i].name, {}, "the column is missing", "add it to the heading");
    sound = false;
  }
  return sound ? std::optional(std::move(order)) : std::nullopt;
}

void ReportCellCount(const Place& place, std::size_t count, std::size_t expected, Findings& findings) {
  findings.Add(
      place, {}, {},
      "the row has " + std::to_string(count) + " values, the heading has " + std::to_string(expected),
      "add or take out commas, or put a value that holds a comma in quotes");
}

void ReportEmptyFile(std::string_view file, Findings& findings) {
  findings.Add({file}, {}, {}, "the file is empty", "write a heading in its first line, or remove the file");
}

}  // namespace books::importer
