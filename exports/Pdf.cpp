// First the columns are measured by their widest cells and parted into pages across; then page after page
// is drawn, all rows of the first page across, then all rows of the second.
#include "exports/Pdf.h"

#include <algorithm>
#include <memory>

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include "exports/Measures.h"
#include "exports/PageLayout.h"
#include "platform/value/Error.h"

namespace exports {
namespace {

constexpr double kPointsAMillimetre = 72 / 25.4;
constexpr double kMargin = 36;
constexpr double kFontSize = 8;
constexpr double kNameSize = 13;
constexpr double kLine = 13;  // of a row
constexpr double kNameLine = 22;
constexpr double kFooter = 18;
constexpr double kPadding = 3;
constexpr double kNarrowest = 24;
constexpr double kWidest = 190;
constexpr double kSmallest = 0.75;  // columns that nearly fit are made smaller down to this
constexpr std::size_t kMeasuredRows = 100'000;
constexpr std::size_t kKeyColumns = 2;
constexpr const char* kFont = "Noto Sans CJK SC";

struct Colour {
  double red;
  double green;
  double blue;
};
constexpr Colour kInk{0.13, 0.15, 0.18};
constexpr Colour kNegative{0.78, 0.11, 0.11};
constexpr Colour kRule{0.75, 0.78, 0.82};
constexpr Colour kHeadingGround{0.93, 0.945, 0.96};
constexpr Colour kSummaryGround{0.965, 0.97, 0.98};

struct Unref {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using Surface = std::unique_ptr<cairo_surface_t, Unref>;
using Context = std::unique_ptr<cairo_t, Unref>;
using Layout = std::unique_ptr<PangoLayout, Unref>;

struct Box {
  double left;
  double width;
};

class Document {
 public:
  Document(const std::filesystem::path& file, const Sheet& sheet, const PageSetup& setup)
      : file_(file),
        sheet_(sheet),
        orientation_(setup.orientation),
        width_(setup.paper.width * kPointsAMillimetre),
        height_(setup.paper.height * kPointsAMillimetre),
        surface_(cairo_pdf_surface_create(file.string().c_str(), width_, height_)),
        context_(cairo_create(surface_.get())),
        plain_(MakeLayout(kFontSize, false)),
        bold_(MakeLayout(kFontSize, true)),
        name_(MakeLayout(kNameSize, true)) {
    RequireSound();
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE, sheet.name.c_str());
  }

  bool Write(const Progress& progress) {
    if (!Measure(progress)) return false;
    ChoosePages();
    const ProgressSteps steps(progress, sheet_.RowCount() * pages_.size());
    const std::size_t all = PageCount();
    std::size_t number = 0;
    std::size_t done = 0;
    for (const PageColumns& columns : pages_) {
      std::size_t row = 0;
      do {
        const bool first = row == 0;
        BeginPage(columns, first, ++number, all);
        const std::size_t end = std::min(sheet_.RowCount(), row + RowsOfPage(first));
        for (; row < end; ++row) {
          if (!steps.GoesOn(done++)) return false;
          DrawRow(columns, row);
        }
        cairo_show_page(context_.get());
      } while (row < sheet_.RowCount());
    }
    cairo_surface_finish(surface_.get());
    RequireSound();
    return true;
  }

 private:
  void RequireSound() const {
    const cairo_status_t status = cairo_surface_status(surface_.get());
    if (status == CAIRO_STATUS_SUCCESS) return;
    throw platform::Error(platform::ErrorNumber::kBadArgument, "exports",
                          "cannot write " + file_.string() + " (" + cairo_status_to_string(status) +
                              "); name a file in a folder that you may write to");
  }

  Layout MakeLayout(double size, bool bold) const {
    Layout layout(pango_cairo_create_layout(context_.get()));
    const std::unique_ptr<PangoFontDescription, Unref> font(pango_font_description_new());
    pango_font_description_set_family(font.get(), kFont);
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    pango_font_description_set_weight(font.get(), bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout.get(), font.get());
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    return layout;
  }

  static double WidthOf(PangoLayout* layout, const std::string& text) {
    if (text.empty()) return 0;
    pango_layout_set_width(layout, -1);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    return static_cast<double>(width) / PANGO_SCALE;
  }

  static Measures MeasuresOf(PangoLayout* layout) {
    Measures measures;
    for (unsigned char c = ' '; c < 0x7FU; ++c) {
      // Several, as a single one may be rounded.
      constexpr int kTimes = 10;
      measures.plain[c] = WidthOf(layout, std::string(kTimes, static_cast<char>(c))) / kTimes;
    }
    measures.wide = WidthOf(layout, "库");
    return measures;
  }

  // What a column's cells need: a figure that is cut would be a wrong one.
  double WidthOfCells(std::size_t column, const Measures& plain, const Measures& bold) const {
    const std::size_t rows = sheet_.RowCount();
    const std::size_t step = std::max<std::size_t>(rows / kMeasuredRows, 1);
    double width = 0;
    for (std::size_t row = 0; row < rows; row += step) {
      const Measures& measures = sheet_.grid.IsSummary(row) ? bold : plain;
      width = std::max(width, measures.WidthOf(sheet_.grid.Cell(column, row)));
    }
    return width;
  }

  // Asks for every column: all of them together may take longer than a user waits without a word.
  bool Measure(const Progress& progress) {
    const auto& columns = sheet_.grid.Columns();
    const Measures plain = MeasuresOf(plain_.get());
    const Measures bold = MeasuresOf(bold_.get());
    bool keys = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (progress && !progress(0, sheet_.RowCount())) return false;
      const double width = std::max({WidthOf(bold_.get(), columns[i].caption),
                                     WidthOf(bold_.get(), columns[i].second), WidthOfCells(i, plain, bold)});
      keys = keys && i < kKeyColumns && columns[i].alignment == Alignment::kLeft;
      columns_.push_back({.width = std::clamp(width + 2 * kPadding, kNarrowest, kWidest),
                          .groupSpan = columns[i].groupSpan,
                          .key = keys});
    }
    return true;
  }

  void ChoosePages() {
    double wanted = 0;
    for (const PaperColumn& column : columns_) wanted += column.width;
    const bool isNarrow = wanted > width_ - 2 * kMargin;
    if (orientation_ == Orientation::kLandscape || (orientation_ == Orientation::kAuto && isNarrow)) {
      std::swap(width_, height_);
      cairo_pdf_surface_set_size(surface_.get(), width_, height_);
    }
    const double usable = width_ - 2 * kMargin;
    if (wanted > usable && wanted * kSmallest <= usable) scale_ = usable / wanted;
    pages_ = SplitColumns(columns_, usable / scale_);
  }

  double HeadingHeight() const { return sheet_.grid.HasSecondLine() ? 2 * kLine : kLine; }

  std::size_t RowsOfPage(bool first) const {
    double free = height_ / scale_ - 2 * kMargin / scale_ - kNameLine - HeadingHeight() - kFooter;
    if (first) free -= static_cast<double>(sheet_.titleLines.size()) * kLine;
    return static_cast<std::size_t>(std::max(free / kLine, 1.0));
  }

  std::size_t PageCount() const {
    const std::size_t first = std::min(sheet_.RowCount(), RowsOfPage(true));
    const std::size_t later = (sheet_.RowCount() - first + RowsOfPage(false) - 1) / RowsOfPage(false);
    return pages_.size() * (1 + later);
  }

  void SetColour(const Colour& colour) const {
    cairo_set_source_rgb(context_.get(), colour.red, colour.green, colour.blue);
  }

  void Fill(Box box, double height, const Colour& colour) const {
    SetColour(colour);
    cairo_rectangle(context_.get(), box.left, top_, box.width, height);
    cairo_fill(context_.get());
  }

  void Line(double top, double width) const {
    SetColour(kRule);
    cairo_set_line_width(context_.get(), 0.4);
    cairo_move_to(context_.get(), 0, top);
    cairo_line_to(context_.get(), width, top);
    cairo_stroke(context_.get());
  }

  void Text(PangoLayout* layout, const std::string& text, Box box, PangoAlignment alignment,
            const Colour& colour) const {
    if (text.empty()) return;
    pango_layout_set_width(layout, static_cast<int>((box.width - 2 * kPadding) * PANGO_SCALE));
    pango_layout_set_alignment(layout, alignment);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    SetColour(colour);
    cairo_move_to(context_.get(), box.left + kPadding, top_ + 0.5);
    pango_cairo_show_layout(context_.get(), layout);
  }

  double WidthOf(const PageColumns& columns) const {
    double width = 0;
    for (const std::size_t column : columns) width += columns_[column].width;
    return width;
  }

  void BeginPage(const PageColumns& columns, bool first, std::size_t number, std::size_t all) {
    cairo_identity_matrix(context_.get());
    cairo_translate(context_.get(), kMargin, kMargin);
    cairo_scale(context_.get(), scale_, scale_);
    const Box whole{0, (width_ - 2 * kMargin) / scale_};
    top_ = (height_ - 2 * kMargin) / scale_ - kLine;
    Text(plain_.get(), "第 " + std::to_string(number) + " 页，共 " + std::to_string(all) + " 页", whole,
         PANGO_ALIGN_CENTER, kInk);
    top_ = 0;
    Text(name_.get(), sheet_.name, whole, PANGO_ALIGN_CENTER, kInk);
    top_ = kNameLine;
    for (std::size_t i = 0; first && i < sheet_.titleLines.size(); ++i) {
      Text(plain_.get(), sheet_.titleLines[i], whole, PANGO_ALIGN_LEFT, kInk);
      top_ += kLine;
    }
    DrawHeading(columns);
  }

  void DrawHeading(const PageColumns& columns) {
    const double width = WidthOf(columns);
    const double upper = top_;
    Fill({0, width}, HeadingHeight(), kHeadingGround);
    if (sheet_.grid.HasSecondLine()) {
      DrawUpperLine(columns);
      top_ += kLine;
    }
    double left = 0;
    for (const std::size_t i : columns) {
      const GridColumn& column = sheet_.grid.Columns()[i];
      Text(bold_.get(), column.second.empty() ? column.caption : column.second, {left, columns_[i].width},
           PANGO_ALIGN_CENTER, kInk);
      left += columns_[i].width;
    }
    top_ += kLine;
    Line(upper, width);
    Line(top_, width);
  }

  // Group captions over those of their columns that are on this page.
  void DrawUpperLine(const PageColumns& columns) {
    double left = 0;
    for (std::size_t at = 0; at < columns.size();) {
      const std::size_t group = GroupOf(columns[at]);
      double width = 0;
      const std::size_t from = columns[at];
      do {
        width += columns_[columns[at++]].width;
      } while (group != kNoGroup && at < columns.size() && GroupOf(columns[at]) == group);
      const GridColumn& column = sheet_.grid.Columns()[group == kNoGroup ? from : group];
      const bool own = group == kNoGroup && !column.second.empty();
      if (group != kNoGroup) Text(bold_.get(), column.group, {left, width}, PANGO_ALIGN_CENTER, kInk);
      if (own) Text(bold_.get(), column.caption, {left, width}, PANGO_ALIGN_CENTER, kInk);
      left += width;
    }
  }

  static constexpr std::size_t kNoGroup = static_cast<std::size_t>(-1);

  // The column that begins the group which this column stands under.
  std::size_t GroupOf(std::size_t column) const {
    for (std::size_t first = column + 1; first-- > 0;) {
      const std::size_t span = sheet_.grid.Columns()[first].groupSpan;
      if (span > 0) return column < first + span ? first : kNoGroup;
    }
    return kNoGroup;
  }

  void DrawRow(const PageColumns& columns, std::size_t row) {
    const bool summary = sheet_.grid.IsSummary(row);
    const double width = WidthOf(columns);
    if (summary) Fill({0, width}, kLine, kSummaryGround);
    Line(top_, width);  // the ground may have covered it
    PangoLayout* layout = summary ? bold_.get() : plain_.get();
    double left = 0;
    for (const std::size_t i : columns) {
      const bool right = sheet_.grid.Columns()[i].alignment == Alignment::kRight;
      Text(layout, sheet_.grid.Cell(i, row), {left, columns_[i].width},
           right ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT, sheet_.grid.StandsOut(i, row) ? kNegative : kInk);
      left += columns_[i].width;
    }
    top_ += kLine;
    Line(top_, width);
  }

  const std::filesystem::path& file_;
  const Sheet& sheet_;
  Orientation orientation_;
  double width_;
  double height_;
  Surface surface_;
  Context context_;
  Layout plain_;
  Layout bold_;
  Layout name_;
  std::vector<PaperColumn> columns_;
  std::vector<PageColumns> pages_;
  double scale_ = 1;
  double top_ = 0;  // where the next line goes
};

}  // namespace

bool WritePdf(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress,
              const PageSetup& setup) {
  if (sheet.grid.Columns().empty()) {
    throw platform::Error(platform::ErrorNumber::kBadArgument, "exports", "there are no columns to export");
  }
  bool written = false;
  std::error_code ignored;
  try {
    written = Document(file, sheet, setup).Write(progress);
  } catch (...) {
    std::filesystem::remove(file, ignored);
    throw;
  }
  if (!written) std::filesystem::remove(file, ignored);
  return written;
}

}  // namespace exports
