// Items come by their categories; each one's stock is added to the line it belongs to, and lines of one
// category stand together. Shares are worked out once all amounts are known.
#include "books/reports/stock/Data303.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/StockItems.h"
#include "platform/rows/RowAppender.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::RowAppender;

constexpr std::int32_t kTotalSort = 101;
constexpr LevelRange kTwoLevels{.begin = 1, .end = 2};

enum class SummedBy : std::int8_t { kFirst, kSecond, kItem, kBatch };
constexpr std::int32_t kSummaries = 4;

enum Column : std::size_t {
  kNumber1,
  kNumber2,
  kName1,
  kName2,
  kItemNumber,
  kItemName,
  kModel,
  kUnitName,
  kBatchNo,
  kQty,
  kBal,
  kPercent,
  kPercentTT,
  kPercentST,
  kSumSort,
};

struct NamedField {
  std::string_view name;
  FieldType type = FieldType::kText;
};
constexpr std::array<NamedField, kSumSort + 1> kFields = {{
    {"FNumber1"},
    {"FNumber2"},
    {"FName1"},
    {"FName2"},
    {"FItemNumber"},
    {"FItemName"},
    {"FModel"},
    {"FUnitName"},
    {"FBatchNo"},
    {"FQty", FieldType::kDouble},
    {"FBal", FieldType::kCurrency},
    {"FPercent", FieldType::kDouble},
    {"FPercentTT", FieldType::kDouble},
    {"FPercentST", FieldType::kDouble},
    {"FSumSort", FieldType::kInt32},
}};

struct Line {
  const Category* first = nullptr;
  const Category* second = nullptr;
  const StockItem* item = nullptr;  // null for the line of a category
  std::string batch;
  Figures figures;
  std::int64_t cumulated = 0;  // amount of this line and all larger ones
};

ItemSort SortOf(const ReportFilter& filter) {
  static constexpr SortField kSortFields[] = {
      {"FItemNumber", "b.number"}, {"FItemName", "b.name"}, {"FModel", "i.model"}};
  return {.sql = filter.OrderBy(kSortFields, "b.number, b.id"), .descending = false};
}

using BatchFigures = std::pair<std::string_view, Figures>;

// What lies of an item, by batch if batches count. Good until the next item's.
std::vector<BatchFigures> PartsOf(const StockItem& item, bool byBatch, StockCells& cells) {
  std::vector<BatchFigures> parts;
  for (const Cell& cell : cells.Of(item.id)) {
    const std::string_view batch =
        byBatch ? std::string_view(cells.Batch(cell.batch).number) : std::string_view();
    const auto part = std::ranges::find(parts, batch, &BatchFigures::first);
    if (part == parts.end()) {
      parts.emplace_back(batch, cell.figures);
    } else {
      part->second += cell.figures;
    }
  }
  std::ranges::sort(parts, {}, &BatchFigures::first);
  return parts;
}

std::vector<Line> LinesOf(SummedBy by, const StockItems& items, StockCells& cells) {
  std::vector<Line> lines;
  for (const StockItem& item : items.All()) {
    for (const auto& [batch, figures] : PartsOf(item, by == SummedBy::kBatch, cells)) {
      Line line{.first = item.above[0], .batch = std::string(batch), .figures = figures};
      if (by != SummedBy::kFirst) line.second = item.above[1];
      if (by >= SummedBy::kItem) line.item = &item;
      const bool same = line.item == nullptr && !lines.empty() && lines.back().first == line.first &&
                        lines.back().second == line.second;
      if (same) {
        lines.back().figures += figures;
      } else {
        lines.push_back(std::move(line));
      }
    }
  }
  std::erase_if(lines, [](const Line& line) { return line.figures.IsZero(); });
  return lines;
}

void Cumulate(std::vector<Line>& lines) {
  std::vector<Line*> byAmount;
  byAmount.reserve(lines.size());
  for (Line& line : lines) byAmount.push_back(&line);
  std::ranges::stable_sort(byAmount, std::greater(), [](const Line* line) { return line->figures.amount; });
  std::int64_t sum = 0;
  for (Line* line : byAmount) line->cumulated = sum += line->figures.amount;
}

class StructureRows {
 public:
  StructureRows(platform::Recordset& rows, SummedBy by, bool onlySums, std::int64_t total)
      : to_(rows), by_(by), onlySums_(onlySums), total_(total) {}

  // The lines of one first category.
  void AddCategory(std::span<const Line> lines) {
    Figures sum;
    for (const Line& line : lines) sum += line.figures;
    const std::int64_t whole = by_ == SummedBy::kFirst ? total_ : sum.amount;
    for (const Line& line : lines) {
      if (!onlySums_) AddLine(line, whole);
    }
    all_ += sum;
    if (by_ == SummedBy::kFirst) return;
    const Line& any = lines.front();
    SetCategory(kNumber1, kName1, any.first);
    AddSum("小计", sum, 1, sum.amount);
  }

  void AddTotal() { AddSum("合计", all_, kTotalSort, total_); }

 private:
  void AddLine(const Line& line, std::int64_t whole) {
    SetCategory(kNumber1, kName1, line.first);
    SetCategory(kNumber2, kName2, line.second);
    // What stands in a first category itself goes by that one's number.
    if (line.second == nullptr && line.first != nullptr) to_.SetText(kNumber2, line.first->number);
    if (line.item != nullptr) {
      to_.SetText(kItemNumber, line.item->number);
      to_.SetText(kItemName, line.item->name);
      to_.SetText(kModel, line.item->model);
      to_.SetText(kUnitName, line.item->unit);
      to_.SetText(kBatchNo, line.batch);
    }
    SetFigures(line.figures, whole);
    SetShare(kPercentST, line.cumulated, total_);
    to_.SetInteger(kSumSort, 0);
    to_.CommitRow();
  }

  // The caption stands in the report's first column.
  void AddSum(std::string_view caption, const Figures& figures, std::int32_t sort, std::int64_t whole) {
    constexpr std::array<Column, kSummaries> kFirstColumns = {kNumber1, kNumber2, kItemNumber, kItemNumber};
    to_.SetText(kFirstColumns.at(static_cast<std::size_t>(by_)), caption);
    SetFigures(figures, whole);
    to_.SetInteger(kSumSort, sort);
    to_.CommitRow();
  }

  void SetCategory(Column number, Column name, const Category* category) {
    to_.SetText(number, category == nullptr ? "" : category->number);
    to_.SetText(name, category == nullptr ? "" : category->name);
  }

  void SetFigures(const Figures& figures, std::int64_t whole) {
    to_.SetDouble(kQty, AsQuantity(figures.quantity));
    to_.SetCurrency(kBal, Currency::FromUnits(figures.amount));
    SetShare(kPercent, figures.amount, whole);
    SetShare(kPercentTT, figures.amount, total_);
  }

  void SetShare(Column column, std::int64_t part, std::int64_t whole) {
    constexpr double kPercents = 100;
    if (whole == 0) return;
    to_.SetDouble(column, static_cast<double>(part) / static_cast<double>(whole) * kPercents);
  }

  RowAppender to_;
  SummedBy by_;
  bool onlySums_;
  std::int64_t total_;
  Figures all_;
};

}  // namespace

platform::Ref<platform::Vector> Data303::GetRpt303Data(const std::string& /*props*/,
                                                       platform::Variant& filter) {
  const database::Transaction onePicture(store_->Reading(), database::Transaction::Kind::kRead);
  const ReportFilter asked(filter);
  const auto by = static_cast<SummedBy>(ChoiceOf(asked, "cmbtype", kSummaries));
  const bool onlySums = FlagOf(asked, "chkonlysum");
  const std::vector<Warehouse> warehouses = ChooseWarehouses(*store_, asked, "d");
  const StockItems items(*store_, ItemConditions(asked, store_->UsesShortNumbers()), SortOf(asked),
                         kTwoLevels);
  StockCells cells(*store_, warehouses, {});
  std::vector<Line> lines = LinesOf(by, items, cells);
  Cumulate(lines);
  const std::int64_t total =
      std::accumulate(lines.begin(), lines.end(), std::int64_t{0},
                      [](std::int64_t sum, const Line& line) { return sum + line.figures.amount; });

  const auto rows = platform::MakeRef<platform::Recordset>();
  for (const NamedField& field : kFields) rows->AppendField(field.name, field.type);
  rows->Open();
  {
    StructureRows to(*rows, by, onlySums, total);
    for (auto begin = lines.begin(); begin != lines.end();) {
      const auto end =
          std::find_if(begin, lines.end(), [&](const Line& line) { return line.first != begin->first; });
      to.AddCategory({begin, end});
      begin = end;
    }
    if (!lines.empty()) to.AddTotal();
  }
  auto answer = platform::MakeRef<platform::Vector>();
  answer->Add(rows);
  return answer;
}

}  // namespace books::reports
