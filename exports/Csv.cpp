#include "exports/Csv.h"

#include <ostream>

namespace exports {
namespace {

std::string CsvValue(std::string text, bool isText) {
  if (isText && !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos) {
    text.insert(0, 1, '\'');
  }
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

std::string CsvCaption(const Grid& grid, std::size_t index, std::string& group, std::size_t& left) {
  const GridColumn& column = grid.Columns()[index];
  if (column.groupSpan > 0) {
    group = column.group;
    left = column.groupSpan;
  }
  const std::string first = left > 0 ? group : column.caption;
  if (left > 0) --left;
  return first.empty() || column.second.empty() ? first + column.second : first + " " + column.second;
}

}  // namespace

bool WriteCsv(std::ostream& out, const Sheet& sheet, const Progress& progress) {
  const Grid& grid = sheet.grid;
  out << "\xEF\xBB\xBF";
  std::string group;
  std::size_t left = 0;
  for (std::size_t i = 0; i < grid.Columns().size(); ++i) {
    out << (i > 0 ? "," : "") << CsvValue(CsvCaption(grid, i, group, left), true);
  }
  out << "\r\n";
  ProgressSteps steps(progress, sheet.RowCount());
  for (std::size_t row = 0; row < sheet.RowCount(); ++row) {
    if (!steps.GoesOn(row)) return false;
    for (std::size_t i = 0; i < grid.Columns().size(); ++i) {
      const bool isText = grid.Columns()[i].alignment == Alignment::kLeft;
      out << (i > 0 ? "," : "") << CsvValue(grid.ExactCell(i, row), isText);
    }
    out << "\r\n";
  }
  return true;
}

}  // namespace exports
