// First the columns are measured by their widest cells and parted into pages across; then page after page
// is drawn, item by item where the sheet has items: all rows of the first page across, then all rows of the
// second.
#include "exports/Pdf.h"

#include <algorithm>

#include "exports/Canvas.h"
#include "exports/CarriedTotals.h"
#include "exports/PageLayout.h"
#include "platform/value/Clock.h"
#include "platform/value/Error.h"

namespace exports {
namespace {

constexpr double kLine = 13;  // of a row
constexpr double kNameLine = 22;
constexpr double kTitleGap = 16;
constexpr double kFooter = 18;
constexpr double kNarrowest = 24;
constexpr double kWidest = 190;
constexpr double kSmallest = 0.75;  // columns that nearly fit are made smaller down to this
constexpr double kWidened = 1.25;   // columns that leave room are made wider up to this
constexpr std::size_t kMeasuredRows = 100'000;
constexpr std::size_t kKeyColumns = 2;
constexpr const char* kCarriedOver = "过次页";
constexpr const char* kBroughtForward = "承前页";

constexpr Colour kNegative{0.78, 0.11, 0.11};
constexpr Colour kHeadingGround{0.93, 0.945, 0.96};
constexpr Colour kSummaryGround{0.965, 0.97, 0.98};

constexpr std::size_t kNoGroup = static_cast<std::size_t>(-1);

std::string PageOf(std::size_t number, std::size_t all) {
  return "第 " + std::to_string(number) + " 页，共 " + std::to_string(all) + " 页";
}

// Rows that begin a page under title lines of their own: an item's, or all there are.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::vector<std::string> titleLines;
  std::vector<std::size_t> titleEnds;  // of the lines that these take side by side
};

struct PageNumber {
  std::size_t own = 0;  // within the item
  std::size_t ownAll = 0;
  std::size_t number = 0;
  std::size_t all = 0;
};

class Document {
 public:
  Document(const std::filesystem::path& file, const Sheet& sheet, const PageSetup& setup)
      : sheet_(sheet),
        orientation_(setup.orientation),
        canvas_(file, sheet.name, setup.paper),
        measures_(canvas_.MeasuresOf(Font::kPlain)),
        printed_("打印日期：" + platform::Clock::Today().ToText()) {
    if (sheet.items != nullptr) carried_.emplace(*sheet.items, sheet.grid);
  }

  bool Write(const Progress& progress) {
    if (!Measure(progress)) return false;
    ChoosePages();
    const ProgressSteps steps(progress, sheet_.RowCount() * pages_.size());
    PageNumber number{.all = PageCount()};
    for (std::size_t i = 0; i < StretchCount(); ++i) {
      if (!WriteStretch(i, steps, number)) return false;
    }
    canvas_.Finish();
    return true;
  }

 private:
  std::size_t StretchCount() const {
    if (sheet_.items == nullptr) return 1;
    std::size_t count = sheet_.items->Count();
    while (count > 1 && sheet_.items->Begin(count - 1) >= sheet_.RowCount()) --count;
    return std::max<std::size_t>(count, 1);
  }

  Stretch StretchAt(std::size_t item) const {
    Stretch stretch{.end = sheet_.RowCount(), .titleLines = sheet_.titleLines};
    if (sheet_.items != nullptr && sheet_.items->Count() > 0) {
      stretch = {.begin = sheet_.items->Begin(item),
                 .end = std::min(sheet_.items->End(item), sheet_.RowCount()),
                 .titleLines = sheet_.items->TitleLines(item)};
    }
    std::vector<double> widths;
    for (const std::string& line : stretch.titleLines) widths.push_back(WidthOfTitle(line));
    stretch.titleEnds = FlowTexts(widths, kTitleGap, canvas_.Width());
    return stretch;
  }

  double WidthOfTitle(const std::string& line) const { return measures_.WidthOf(line) + 2 * kPadding; }

  // What a column's cells need: a figure that is cut would be a wrong one.
  double WidthOfCells(std::size_t column, const Measures& bold) const {
    const std::size_t rows = sheet_.RowCount();
    const std::size_t step = std::max<std::size_t>(rows / kMeasuredRows, 1);
    double width = 0;
    for (std::size_t row = 0; row < rows; row += step) {
      const Measures& measures = sheet_.grid.IsSummary(row) ? bold : measures_;
      width = std::max(width, measures.WidthOf(sheet_.grid.Cell(column, row)));
    }
    return width;
  }

  // Asks for every column: all of them together may take longer than a user waits without a word.
  bool Measure(const Progress& progress) {
    const auto& columns = sheet_.grid.Columns();
    const Measures bold = canvas_.MeasuresOf(Font::kBold);
    bool keys = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (progress && !progress(0, sheet_.RowCount())) return false;
      const double width = std::max({canvas_.WidthOf(Font::kBold, columns[i].caption),
                                     canvas_.WidthOf(Font::kBold, columns[i].second), WidthOfCells(i, bold)});
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
    const bool isNarrow = wanted > canvas_.Width();
    if (orientation_ == Orientation::kLandscape || (orientation_ == Orientation::kAuto && isNarrow)) {
      canvas_.TurnToLying();
    }
    const double usable = canvas_.Width();
    if (wanted > usable && wanted * kSmallest <= usable) canvas_.SetScale(usable / wanted);
    pages_ = SplitColumns(columns_, canvas_.Width());
    if (wanted >= usable) return;
    const double wider = std::min(usable / wanted, kWidened);
    for (PaperColumn& column : columns_) column.width *= wider;
  }

  double HeadingHeight() const { return sheet_.grid.HasSecondLine() ? 2 * kLine : kLine; }

  PageRoom RoomOf(const Stretch& stretch) const {
    const double titles = static_cast<double>(stretch.titleEnds.size()) * kLine;
    const double free = canvas_.Height() - kNameLine - titles - HeadingHeight() - kFooter;
    return {.lines = static_cast<std::size_t>(std::max(free / kLine, 1.0)),
            .carries = carried_ && carried_->Carries()};
  }

  std::size_t PageCount() const {
    std::size_t pages = 0;
    for (std::size_t i = 0; i < StretchCount(); ++i) {
      const Stretch stretch = StretchAt(i);
      pages += PagesOfRows(RoomOf(stretch), stretch.end - stretch.begin);
    }
    return pages * pages_.size();
  }

  bool WriteStretch(std::size_t item, const ProgressSteps& steps, PageNumber& number) {
    const Stretch stretch = StretchAt(item);
    const PageRoom room = RoomOf(stretch);
    number.own = 0;
    number.ownAll = PagesOfRows(room, stretch.end - stretch.begin) * pages_.size();
    for (const PageColumns& columns : pages_) {
      if (carried_) carried_->BeginItem();
      std::size_t row = stretch.begin;
      do {
        const bool first = row == stretch.begin;
        ++number.own;
        ++number.number;
        BeginPage(columns, stretch, number);
        if (!first && room.carries) DrawCarried(columns, kBroughtForward);
        for (const std::size_t end = row + RowsOfPage(room, stretch.end - row, first); row < end; ++row) {
          if (!steps.GoesOn(done_++)) return false;
          DrawRow(columns, row);
          if (carried_) carried_->Add(row);
        }
        if (row < stretch.end && room.carries) DrawCarried(columns, kCarriedOver);
        DrawUprights(columns);
        canvas_.EndPage();
      } while (row < stretch.end);
    }
    return true;
  }

  double WidthOf(const PageColumns& columns) const {
    double width = 0;
    for (const std::size_t column : columns) width += columns_[column].width;
    return width;
  }

  void BeginPage(const PageColumns& columns, const Stretch& stretch, const PageNumber& number) {
    canvas_.BeginPage();
    const Box whole{0, canvas_.Width()};
    DrawFooter(whole, number);
    top_ = 0;
    canvas_.Text(Font::kName, sheet_.name, whole, top_, Place::kCentre);
    top_ = kNameLine;
    std::size_t text = 0;
    for (const std::size_t end : stretch.titleEnds) {
      double left = 0;
      for (; text < end; ++text) {
        // The last one may run to the edge, where it is cut.
        canvas_.Text(Font::kPlain, stretch.titleLines[text], {left, whole.width - left}, top_, Place::kLeft);
        left += WidthOfTitle(stretch.titleLines[text]) + kTitleGap;
      }
      top_ += kLine;
    }
    DrawHeading(columns);
  }

  void DrawFooter(const Box& whole, const PageNumber& number) const {
    const double top = canvas_.Height() - kLine;
    const bool items = sheet_.items != nullptr;
    canvas_.Text(Font::kPlain, printed_, whole, top, Place::kLeft);
    canvas_.Text(Font::kPlain, items ? PageOf(number.own, number.ownAll) : PageOf(number.number, number.all),
                 whole, top, Place::kCentre);
    if (items)
      canvas_.Text(Font::kPlain, "总" + PageOf(number.number, number.all), whole, top, Place::kRight);
  }

  // A caption of its own stands in the middle of both lines.
  void DrawHeading(const PageColumns& columns) {
    const double width = WidthOf(columns);
    headingTop_ = top_;
    canvas_.Fill({0, width}, top_, HeadingHeight(), kHeadingGround);
    canvas_.Rule(top_, {0, width});
    DrawGroups(columns);
    double left = 0;
    for (const std::size_t i : columns) {
      const GridColumn& column = sheet_.grid.Columns()[i];
      const Box box{left, columns_[i].width};
      const bool alone = column.second.empty() && GroupOf(i) == kNoGroup;
      const double lower = top_ + HeadingHeight() - kLine;
      canvas_.Text(Font::kBold, column.second.empty() ? column.caption : column.second, box,
                   alone ? (top_ + lower) / 2 : lower, Place::kCentre);
      if (!alone && GroupOf(i) == kNoGroup) {
        canvas_.Text(Font::kBold, column.caption, box, top_, Place::kCentre);
      }
      left += columns_[i].width;
    }
    top_ += HeadingHeight();
    canvas_.Rule(top_, {0, width});
  }

  // Group captions over those of their columns that are on this page.
  void DrawGroups(const PageColumns& columns) const {
    double left = 0;
    for (std::size_t at = 0; at < columns.size();) {
      const std::size_t group = GroupOf(columns[at]);
      double width = 0;
      do {
        width += columns_[columns[at++]].width;
      } while (group != kNoGroup && at < columns.size() && GroupOf(columns[at]) == group);
      if (group != kNoGroup) {
        const Box box{left, width};
        canvas_.Text(Font::kBold, sheet_.grid.Columns()[group].group, box, top_, Place::kCentre);
        if (sheet_.grid.HasSecondLine()) canvas_.Rule(top_ + kLine, box);
      }
      left += width;
    }
  }

  // Between columns; between those of one group only below its caption.
  void DrawUprights(const PageColumns& columns) const {
    double left = 0;
    canvas_.Upright(left, headingTop_, top_);
    for (std::size_t at = 0; at < columns.size(); ++at) {
      left += columns_[columns[at]].width;
      const std::size_t group = GroupOf(columns[at]);
      const bool goesOn = at + 1 < columns.size() && group != kNoGroup && GroupOf(columns[at + 1]) == group;
      canvas_.Upright(left, goesOn && sheet_.grid.HasSecondLine() ? headingTop_ + kLine : headingTop_, top_);
    }
  }

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
    BeginLine(columns, summary);
    double left = 0;
    for (const std::size_t i : columns) {
      DrawCell(i, sheet_.grid.Cell(i, row), left, summary, sheet_.grid.StandsOut(i, row));
      left += columns_[i].width;
    }
    EndLine(columns);
  }

  void DrawCarried(const PageColumns& columns, const std::string& caption) {
    BeginLine(columns, true);
    double left = 0;
    for (const std::size_t i : columns) {
      const std::string text = carried_->Cell(i, caption);
      DrawCell(i, text, left, true, text.starts_with('-'));
      left += columns_[i].width;
    }
    EndLine(columns);
  }

  void BeginLine(const PageColumns& columns, bool summary) const {
    const double width = WidthOf(columns);
    if (summary) canvas_.Fill({0, width}, top_, kLine, kSummaryGround);
    canvas_.Rule(top_, {0, width});  // the ground may have covered it
  }

  void DrawCell(std::size_t column, const std::string& text, double left, bool summary,
                bool standsOut) const {
    const bool right = sheet_.grid.Columns()[column].alignment == Alignment::kRight;
    canvas_.Text(summary ? Font::kBold : Font::kPlain, text, {left, columns_[column].width}, top_,
                 right ? Place::kRight : Place::kLeft, standsOut ? kNegative : kInk);
  }

  void EndLine(const PageColumns& columns) {
    top_ += kLine;
    canvas_.Rule(top_, {0, WidthOf(columns)});
  }

  const Sheet& sheet_;
  Orientation orientation_;
  Canvas canvas_;
  Measures measures_;  // of the plain font
  std::string printed_;
  std::optional<CarriedTotals> carried_;
  std::vector<PaperColumn> columns_;
  std::vector<PageColumns> pages_;
  std::size_t done_ = 0;  // rows, once for each page across
  double top_ = 0;        // where the next line goes
  double headingTop_ = 0;
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
