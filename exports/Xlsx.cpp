// A workbook is written in constant memory: a row is on disk when the next one begins. So everything of a
// row, merged groups included, is written before the row below it, and a heading is never merged downwards.
#include "exports/Xlsx.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include <xlsxwriter.h>

#include "platform/value/Error.h"

namespace exports {
namespace {

constexpr lxw_row_t kLinesOfASheet = 1'000'000;  // a sheet ends at 1,048,576
constexpr std::size_t kMostPageBreaks = 1023;    // of a sheet
constexpr double kNarrowest = 6;                 // widths in characters
constexpr double kWidest = 40;
constexpr double kBold = 1.1;               // how much wider a bold text is
constexpr double kCharactersOfAPage = 130;  // on lying A4 between its margins
constexpr double kSmallestScale = 10;       // in percent
constexpr std::size_t kFrozenColumns = 2;

[[noreturn]] void CannotWrite(const std::filesystem::path& file, const char* reason) {
  throw platform::Error(
      platform::ErrorNumber::kBadArgument, "exports",
      "cannot write " + file.string() + " (" + reason + "); name a file in a folder that you may write to");
}

// What a sheet may be called: 31 characters, some of them not.
std::string SheetName(const std::string& name, std::size_t number) {
  constexpr std::size_t kMost = 24;
  std::string plain;
  std::size_t characters = 0;
  for (const char c : name) {
    const bool begins = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    if (begins && ++characters > kMost) break;
    plain += std::string_view("[]:*?/\\'").find(c) != std::string_view::npos ? '-' : c;
  }
  if (plain.empty()) plain = "Sheet";
  return number == 0 ? plain : plain + " (" + std::to_string(number + 1) + ")";
}

// Characters as a spreadsheet counts widths: a Chinese one takes two.
double WidthOf(std::string_view text) {
  double width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0U) == 0x80U) continue;
    width += byte >= 0xE0U ? 2 : 1;
  }
  return width;
}

// Negative ones red; a third section without content hides a zero.
std::string NumberFormat(const Grid& grid, std::size_t column) {
  if (const std::optional<int> decimals = grid.DecimalsOf(column)) {
    std::string figure = "#,##0";
    if (*decimals > 0) figure += '.' + std::string(static_cast<std::size_t>(*decimals), '0');
    return figure + ";[Red]-" + figure + (grid.IsEmptyForZero() ? ";" : "");
  }
  const std::string& type = grid.Columns()[column].type;
  if (type == "6") return "#,##0.00;[Red]-#,##0.00";
  if (type == "4") return "#,##0.00##;[Red]-#,##0.00##";
  return "#,##0.####;[Red]-#,##0.####";
}

class Workbook {
 public:
  Workbook(const std::filesystem::path& file, const Sheet& sheet) : file_(file), sheet_(sheet) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(file.string().c_str(), &options);
    if (book_ == nullptr) CannotWrite(file, "no memory");
    MakeFormats();
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;
  ~Workbook() {
    if (book_ == nullptr) return;
    Close();
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }

  bool Write(const Progress& progress) {
    const ProgressSteps steps(progress, sheet_.RowCount());
    BeginSheet();
    std::size_t row = 0;
    for (std::size_t item = 0; item == 0 || row < sheet_.RowCount(); ++item) {
      const bool inItems = sheet_.items != nullptr && item < sheet_.items->Count();
      if (inItems) WriteItemTitle(item);
      const std::size_t end = inItems ? sheet_.items->End(item) : sheet_.RowCount();
      for (; row < std::min(end, sheet_.RowCount()); ++row) {
        if (!steps.GoesOn(row)) return false;
        if (line_ >= kLinesOfASheet) {
          EndSheet();
          BeginSheet();
        }
        WriteRow(row);
      }
    }
    EndSheet();
    if (const lxw_error error = Close(); error != LXW_NO_ERROR) CannotWrite(file_, lxw_strerror(error));
    return true;
  }

 private:
  struct Width {
    double cells = 0;     // of heading and texts, in characters
    double largest = 0;   // figure, without its sign
    std::size_t row = 0;  // where that stands
  };
  struct ColumnFormats {
    lxw_format* plain = nullptr;
    lxw_format* summary = nullptr;
  };

  lxw_error Close() { return workbook_close(std::exchange(book_, nullptr)); }

  lxw_format* Format(bool bold) {
    lxw_format* format = workbook_add_format(book_);
    if (bold) format_set_bold(format);
    return format;
  }

  void MakeFormats() {
    name_ = Format(true);
    format_set_font_size(name_, 14);
    heading_ = Format(true);
    format_set_align(heading_, LXW_ALIGN_CENTER);
    format_set_border(heading_, LXW_BORDER_THIN);
    format_set_bg_color(heading_, 0xEDF1F5);
    itemTitle_ = Format(true);
    format_set_bg_color(itemTitle_, 0xE3EAF2);
    for (std::size_t i = 0; i < sheet_.grid.Columns().size(); ++i) {
      ColumnFormats formats{.plain = Format(false), .summary = Format(true)};
      for (lxw_format* format : {formats.plain, formats.summary}) {
        if (sheet_.grid.Columns()[i].alignment == Alignment::kRight) {
          format_set_num_format(format, NumberFormat(sheet_.grid, i).c_str());
          format_set_align(format, LXW_ALIGN_RIGHT);
        }
      }
      format_set_bg_color(formats.summary, 0xF5F7FA);
      formats_.push_back(formats);
    }
  }

  void BeginSheet() {
    page_ = workbook_add_worksheet(book_, SheetName(sheet_.name, sheets_++).c_str());
    if (page_ == nullptr) CannotWrite(file_, "the sheet's name is refused");
    MeasureHeading();
    line_ = 0;
    Text(0, sheet_.name, name_);
    ++line_;
    for (const std::string& title :
         sheet_.items == nullptr ? sheet_.titleLines : std::vector<std::string>()) {
      Text(0, title, nullptr);
      ++line_;
    }
    WriteHeading();
    const std::size_t frozen = std::min(kFrozenColumns, sheet_.grid.Columns().size() - 1);
    worksheet_freeze_panes(page_, line_, static_cast<lxw_col_t>(frozen));
    worksheet_repeat_rows(page_, 0, line_ - 1);
    worksheet_set_landscape(page_);
    worksheet_set_paper(page_, 9);
    worksheet_set_footer(page_, "&L&D&C第 &P 页，共 &N 页");
  }

  void EndSheet() {
    const double width = SetWidths();
    if (pageBreaks_.empty()) {
      worksheet_fit_to_pages(page_, 1, 0);
      return;
    }
    // A sheet that is fitted to pages takes no breaks.
    const double scale = std::clamp(100 * kCharactersOfAPage / width, kSmallestScale, 100.0);
    worksheet_set_print_scale(page_, static_cast<std::uint16_t>(scale));
    pageBreaks_.push_back(0);  // marks their end
    worksheet_set_h_pagebreaks(page_, pageBreaks_.data());
    pageBreaks_.clear();
  }

  // In the first cell: what stands in it runs on over the empty ones beside it.
  void WriteItemTitle(std::size_t item) {
    if (item > 0) {
      ++line_;
      if (pageBreaks_.size() < kMostPageBreaks) pageBreaks_.push_back(line_);
    }
    std::string text;
    for (const std::string& line : sheet_.items->TitleLines(item))
      text += (text.empty() ? "" : "    ") + line;
    for (std::size_t i = 0; i < formats_.size(); ++i) Text(i, i == 0 ? text : none_, itemTitle_);
    ++line_;
  }

  void MeasureHeading() {
    widths_.clear();
    for (const GridColumn& column : sheet_.grid.Columns()) {
      widths_.push_back({.cells = std::max(WidthOf(column.caption), WidthOf(column.second))});
    }
  }

  // A figure that finds no room shows as ####: the largest one counts, wherever it stands. Answers the width
  // of all columns.
  double SetWidths() {
    double all = 0;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      const Width& width = widths_[i];
      double wanted = width.cells;
      if (width.largest > 0) wanted = std::max(wanted, 1 + WidthOf(sheet_.grid.Cell(i, width.row)));
      const auto at = static_cast<lxw_col_t>(i);
      const double given = std::clamp(wanted, kNarrowest, kWidest) * kBold + 1;
      worksheet_set_column(page_, at, at, given, nullptr);
      all += given;
    }
    return all;
  }

  // A caption without a group stands in the lower line, right above its figures.
  void WriteHeading() {
    const auto& columns = sheet_.grid.Columns();
    if (sheet_.grid.HasSecondLine()) {
      for (std::size_t i = 0; i < columns.size();) {
        const std::size_t span = std::max<std::size_t>(columns[i].groupSpan, 1);
        const bool own = columns[i].groupSpan == 0 && !columns[i].second.empty();
        const std::string& text = columns[i].groupSpan > 0 ? columns[i].group
                                  : own                    ? columns[i].caption
                                                           : none_;
        if (span > 1) {
          worksheet_merge_range(page_, line_, static_cast<lxw_col_t>(i), line_,
                                static_cast<lxw_col_t>(i + span - 1), text.c_str(), heading_);
        } else {
          Text(i, text, heading_);
        }
        i += span;
      }
      ++line_;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      Text(i, columns[i].second.empty() ? columns[i].caption : columns[i].second, heading_);
    }
    ++line_;
  }

  void WriteRow(std::size_t row) {
    const bool summary = sheet_.grid.IsSummary(row);
    for (std::size_t i = 0; i < formats_.size(); ++i) {
      lxw_format* format = summary ? formats_[i].summary : formats_[i].plain;
      if (const std::optional<double> number = sheet_.grid.Number(i, row)) {
        worksheet_write_number(page_, line_, static_cast<lxw_col_t>(i), *number, format);
        if (std::abs(*number) > widths_[i].largest) {
          widths_[i].largest = std::abs(*number);
          widths_[i].row = row;
        }
      } else {
        const std::string text = sheet_.grid.Cell(i, row);
        widths_[i].cells = std::max(widths_[i].cells, WidthOf(text));
        Text(i, text, format);
      }
    }
    ++line_;
  }

  void Text(std::size_t column, const std::string& text, lxw_format* format) {
    if (text.empty()) {
      worksheet_write_blank(page_, line_, static_cast<lxw_col_t>(column), format);
    } else {
      worksheet_write_string(page_, line_, static_cast<lxw_col_t>(column), text.c_str(), format);
    }
  }

  const std::filesystem::path& file_;
  const Sheet& sheet_;
  lxw_workbook* book_ = nullptr;  // owned until it is closed
  lxw_worksheet* page_ = nullptr;
  lxw_row_t line_ = 0;
  lxw_format* name_ = nullptr;
  lxw_format* heading_ = nullptr;
  lxw_format* itemTitle_ = nullptr;
  std::size_t sheets_ = 0;
  std::vector<lxw_row_t> pageBreaks_;  // of the present sheet
  std::vector<ColumnFormats> formats_;
  std::vector<Width> widths_;
  const std::string none_;
};

}  // namespace

bool WriteXlsx(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) {
  if (sheet.grid.Columns().empty()) {
    throw platform::Error(platform::ErrorNumber::kBadArgument, "exports", "there are no columns to export");
  }
  return Workbook(file, sheet).Write(progress);
}

}  // namespace exports
