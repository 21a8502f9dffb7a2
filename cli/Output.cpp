#include "cli/Output.h"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <ostream>

namespace cli {
namespace {

using exports::Alignment;
using exports::Grid;
using exports::GridColumn;

constexpr std::string_view kGap = "  ";

std::string Padded(std::string_view text, std::size_t width, Alignment alignment) {
  const std::size_t own = DisplayWidth(text);
  const std::string blanks(width > own ? width - own : 0, ' ');
  return alignment == Alignment::kRight ? blanks + std::string(text) : std::string(text) + blanks;
}

std::string Centred(std::string_view text, std::size_t width, char fill) {
  const std::size_t own = DisplayWidth(text);
  if (own >= width) return std::string(text);
  const std::size_t left = (width - own) / 2;
  return std::string(left, fill) + std::string(text) + std::string(width - own - left, fill);
}

void WriteTrimmed(std::ostream& out, std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

class TableWriter {
 public:
  TableWriter(std::ostream& out, const Grid& grid, std::size_t rowCount) : out_(out), grid_(grid) {
    cells_.reserve(rowCount * grid.Columns().size());
    for (std::size_t row = 0; row < rowCount; ++row) {
      for (std::size_t column = 0; column < grid.Columns().size(); ++column) {
        cells_.push_back(grid.Cell(column, row));
      }
    }
    Measure();
  }

  void Write() {
    WriteFirstLine();
    if (grid_.HasSecondLine()) WriteSecondLine();
    WriteRule();
    const std::size_t columns = grid_.Columns().size();
    for (std::size_t start = 0; start < cells_.size(); start += columns) {
      std::string line;
      for (std::size_t column = 0; column < columns; ++column) {
        if (column > 0) line += kGap;
        line += Padded(cells_[start + column], widths_[column], grid_.Columns()[column].alignment);
      }
      WriteTrimmed(out_, std::move(line));
    }
  }

 private:
  void Measure() {
    const auto& columns = grid_.Columns();
    for (const GridColumn& column : columns) {
      widths_.push_back(std::max(DisplayWidth(column.caption), DisplayWidth(column.second)));
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      std::size_t& width = widths_[i % columns.size()];
      width = std::max(width, DisplayWidth(cells_[i]));
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].groupSpan == 0) continue;
      const std::size_t wanted = DisplayWidth(columns[i].group);
      if (const std::size_t own = SpanWidth(i); own < wanted) widths_[i] += wanted - own;
    }
  }

  std::size_t SpanWidth(std::size_t first) const {
    const std::size_t span = grid_.Columns()[first].groupSpan;
    std::size_t width = (span - 1) * kGap.size();
    for (std::size_t i = first; i < first + span; ++i) width += widths_[i];
    return width;
  }

  void WriteFirstLine() {
    const auto& columns = grid_.Columns();
    std::string line;
    for (std::size_t i = 0; i < columns.size();) {
      if (i > 0) line += kGap;
      const bool group = columns[i].groupSpan > 0;
      line += group ? Centred(columns[i].group, SpanWidth(i), '-')
                    : Padded(columns[i].caption, widths_[i], columns[i].alignment);
      i += group ? columns[i].groupSpan : 1;
    }
    WriteTrimmed(out_, std::move(line));
  }

  void WriteSecondLine() {
    std::string line;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      if (i > 0) line += kGap;
      line += Padded(grid_.Columns()[i].second, widths_[i], grid_.Columns()[i].alignment);
    }
    WriteTrimmed(out_, std::move(line));
  }

  void WriteRule() {
    for (std::size_t i = 0; i < widths_.size(); ++i)
      out_ << (i > 0 ? kGap : "") << std::string(widths_[i], '=');
    out_ << '\n';
  }

  std::ostream& out_;
  const Grid& grid_;
  std::vector<std::string> cells_;
  std::vector<std::size_t> widths_;
};

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  static const bool located = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
  std::size_t width = 0;
  std::mbstate_t state{};
  while (!text.empty()) {
    wchar_t character = 0;
    const std::size_t length = located ? std::mbrtowc(&character, text.data(), text.size(), &state) : 0;
    if (length == 0 || length > text.size()) {  // a broken character shows as one mark
      state = {};
      text.remove_prefix(1);
      ++width;
      continue;
    }
    const int columns = wcwidth(character);
    width += columns > 0 ? static_cast<std::size_t>(columns) : 0;
    text.remove_prefix(length);
  }
  return width;
}

void WriteTable(std::ostream& out, const exports::Sheet& sheet) {
  out << sheet.name << '\n';
  for (const std::string& line : sheet.titleLines) out << line << '\n';
  out << '\n';
  TableWriter(out, sheet.grid, sheet.RowCount()).Write();
}

}  // namespace cli
