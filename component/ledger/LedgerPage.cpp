#include "component/ledger/LedgerPage.h"

#include <algorithm>

#include "component/frame/VEZPublic.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Field;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::RowText;
using platform::TextStore;
using platform::Variant;
using platform::Vector;

// The fields of a page in their order, and their places in kFields. Figures stand four in a row: quantity,
// price, amount, difference.
enum Place : std::uint8_t {
  kYear,
  kPeriod,
  kPeriodName,
  kId,
  kEntryId,
  kDate,
  kVoucherNo,
  kBatchNo,
  kBillNo,
  kTranTypeName,
  kClassTypeId,
  kAuxName,
  kQtyDecimal,
  kPriceDecimal,
  kIn,
  kOut = kIn + 4,
  kBalance = kOut + 4,
  kNote = kBalance + 4,
  kSumSort,
  kFieldCount,
};

struct PageField {
  std::string_view name;
  FieldType type;
  std::size_t width = 0;
};

constexpr PageField kFields[] = {
    {"FYear", FieldType::kInt16},
    {"FPeriod", FieldType::kInt16},
    {"FPeriodName", FieldType::kText, 30},
    {"FID", FieldType::kInt32},
    {"FEntryID", FieldType::kInt32},
    {"FDate", FieldType::kDate},
    {"FVoucherNo", FieldType::kWideText, 50},
    {"FBatchNo", FieldType::kText, 350},
    {"FBillNo", FieldType::kText, 255},
    {"FTranTypeName", FieldType::kWideText, 355},
    {"FClassTypeID", FieldType::kInt32},
    {"FAuxName", FieldType::kWideText, 355},
    {"FQtyDecimal", FieldType::kInt16},
    {"FPriceDecimal", FieldType::kInt16},
    {"FInQty", FieldType::kDouble},
    {"FInPrice", FieldType::kDouble},
    {"FInAmount", FieldType::kCurrency},
    {"FInDiff", FieldType::kCurrency},
    {"FOutQty", FieldType::kDouble},
    {"FOutPrice", FieldType::kDouble},
    {"FOutAmount", FieldType::kCurrency},
    {"FOutDiff", FieldType::kCurrency},
    {"FBalQty", FieldType::kDouble},
    {"FBalPrice", FieldType::kDouble},
    {"FBalAmount", FieldType::kCurrency},
    {"FBalDiff", FieldType::kCurrency},
    {"FNote", FieldType::kText, 355},
    {"FSumSort", FieldType::kInt32},
};
static_assert(std::size(kFields) == kFieldCount);

constexpr std::size_t kTitleWidth = 355;
constexpr std::int32_t kSummarySort = 101;
// Rows that may wait: enough to write columns quickly, few enough for the processor's cache.
constexpr std::size_t kMostWaiting = 64;

std::string TitleField(std::size_t index) { return "FTitle" + std::to_string(index + 1); }

void AppendTitles(Recordset& page) {
  for (std::size_t i = 0; i < kLedgerTitles; ++i)
    page.AppendField(TitleField(i), FieldType::kText, kTitleWidth);
}

Ref<Recordset> NewTarget(const Recordset& source) {
  Ref<Recordset> target = MakeRef<Recordset>();
  for (const Field& field : source.Fields()) {
    const bool number = field.type == FieldType::kNumeric;
    target->AppendField(field.name, number ? FieldType::kDouble : field.type, field.width);
  }
  target->AppendField("FYear", FieldType::kInt16);
  target->AppendField("FPeriod", FieldType::kInt16);
  target->Open();
  return target;
}

}  // namespace

Ref<Recordset> NewLedgerRs(bool withTitles) {
  Ref<Recordset> page = MakeRef<Recordset>();
  for (const PageField& field : kFields) page->AppendField(field.name, field.type, field.width);
  if (withTitles) AppendTitles(*page);
  page->Open();
  return page;
}

Ref<Recordset> NewBatchLedgerRs() {
  std::array<PageField, kFieldCount> fields{};
  std::ranges::copy(kFields, fields.begin());
  for (PageField& field : fields) {
    if (field.type == FieldType::kWideText && field.width == kTitleWidth) field.type = FieldType::kText;
  }
  std::swap(fields[kClassTypeId], fields[kAuxName]);
  Ref<Recordset> page = MakeRef<Recordset>();
  for (const PageField& field : fields) page->AppendField(field.name, field.type, field.width);
  AppendTitles(*page);
  page->Open();
  return page;
}

LedgerTitles TitlesOf(const Ref<Vector>& lines) {
  LedgerTitles titles;
  if (!lines) return titles;
  for (const Variant& item : lines->Items()) {
    const Ref<Dictionary> line = item.AsRef<Dictionary>();
    if (!line) continue;
    titles.at(static_cast<std::size_t>(platform::ToInt32(line->Value("FIndex")))) =
        platform::ToText(line->Value("FCaption"));
  }
  return titles;
}

LedgerPage::LedgerPage(Recordset& page, const LedgerTitles* titles)
    : page_(page), rows_(page), titles_(titles), untitled_(rows_.Row()) {
  targets_.reserve(kFieldCount + kLedgerTitles);
  waiting_.reserve(kMostWaiting);
  const std::vector<Field>& fields = page.Fields();
  auto add = [&](std::string_view name) {
    std::size_t column = targets_.size();  // where it nearly always stands
    if (column >= fields.size() || fields[column].name != name) column = page.FieldIndex(name);
    targets_.push_back({.column = column, .width = fields[column].width});
  };
  for (const PageField& field : kFields) add(field.name);
  if (!page.FindField(TitleField(0))) return;
  for (std::size_t i = 0; i < kLedgerTitles; ++i) add(TitleField(i));
}

RowText LedgerPage::Caption(LedgerRowKind kind) {
  std::optional<RowText>& caption = captions_.at(static_cast<std::size_t>(kind));
  if (!caption) caption.emplace(*page_.Texts(), page_.Texts()->Keep(ResString(CaptionOf(kind))));
  return *caption;
}

RowText LedgerPage::Fitting(std::size_t field, const RowText& text) const {
  const std::size_t width = targets_[field].width;
  const std::string_view view = text.View();
  return view.size() > width ? RowText(platform::CutToWidth(view, width)) : text;
}

RowText LedgerPage::PeriodName(std::int16_t year, std::int16_t period) {
  const std::int32_t wanted = (std::int32_t{year} << 16) + period;
  if (!periodName_ || namedPeriod_ != wanted) {
    std::string name = std::to_string(year);
    name += '.';
    name += std::to_string(period);
    periodName_.emplace(*page_.Texts(), page_.Texts()->Keep(name));
    namedPeriod_ = wanted;
  }
  return *periodName_;
}

void LedgerPage::ShareTexts(const Recordset& source) {
  if (RowCount() == 0 && page_.Texts() != source.Texts()) page_.KeepTextsIn(source.Texts());
}

void LedgerPage::AddLedgerRow(const LedgerRow& row) {
  waiting_.push_back(row);
  if (waiting_.size() == kMostWaiting) WriteRows();
}

void LedgerPage::AddLedgerRowTitled(const LedgerRow& row, const LedgerTitles& titles) {
  Finish();
  AddLedgerRow(row);
  WriteRows();
  for (std::size_t i = kFieldCount; i < targets_.size(); ++i) WriteTitle(i, titles[i - kFieldCount]);
  untitled_ = rows_.Row();
}

void LedgerPage::Finish() {
  WriteRows();
  for (std::size_t i = kFieldCount; i < targets_.size() && titles_ != nullptr; ++i) {
    WriteTitle(i, (*titles_)[i - kFieldCount]);
  }
  untitled_ = rows_.Row();
}

void LedgerPage::WriteTitle(std::size_t field, std::string_view title) {
  if (!title.empty()) rows_.FillText(targets_[field].column, untitled_, Fitting(field, title).View());
}

template <class Value>
void LedgerPage::Write(std::size_t firstRow, std::size_t field, Value value) {
  rows_.Fill(targets_[field].column, firstRow, waiting_.size(),
             [&](std::size_t i) { return value(waiting_[i]); });
}

void LedgerPage::WriteRows() {
  if (waiting_.empty()) return;
  const std::size_t first = rows_.AddRows(waiting_.size());
  Write(first, kYear, [](const LedgerRow& row) { return row.year; });
  Write(first, kPeriod, [](const LedgerRow& row) { return row.period; });
  Write(first, kId, [](const LedgerRow& row) { return row.id; });
  Write(first, kEntryId, [](const LedgerRow& row) { return row.entryId; });
  Write(first, kDate, [](const LedgerRow& row) { return row.date.DayOnly(); });
  Write(first, kClassTypeId, [](const LedgerRow& row) { return row.classTypeId; });
  Write(first, kQtyDecimal, [](const LedgerRow& row) { return row.qtyDecimal; });
  Write(first, kPriceDecimal, [](const LedgerRow& row) { return row.priceDecimal; });
  Write(first, kSumSort,
        [](const LedgerRow& row) { return row.kind == LedgerRowKind::kMovement ? 0 : kSummarySort; });
  WriteFigures(first, kIn, &LedgerRow::in);
  WriteFigures(first, kOut, &LedgerRow::out);
  WriteFigures(first, kBalance, &LedgerRow::balance);
  WriteTexts(first);
  waiting_.clear();
}

void LedgerPage::WriteFigures(std::size_t firstRow, std::size_t firstField, LedgerFigures LedgerRow::*side) {
  Write(firstRow, firstField, [side](const LedgerRow& row) { return (row.*side).quantity; });
  Write(firstRow, firstField + 1, [side](const LedgerRow& row) { return (row.*side).price; });
  Write(firstRow, firstField + 2, [side](const LedgerRow& row) { return (row.*side).amount; });
  Write(firstRow, firstField + 3, [side](const LedgerRow& row) { return (row.*side).diff; });
}

void LedgerPage::WriteTexts(std::size_t firstRow) {
  // Texts that the page keeps are looked at only where one may be too long; the rows that the report adds
  // have next to none.
  const TextStore& kept = *page_.Texts();
  const RowText none(kept, page_.Texts()->Keep({}));
  auto write = [&](std::size_t field, RowText LedgerRow::*text) {
    const bool allFit = kept.Longest() <= targets_[field].width;
    Write(firstRow, field, [&, allFit, text](const LedgerRow& row) {
      if (allFit && (row.*text).IsKeptIn(kept)) return row.*text;
      return (row.*text).IsEmptyView() ? none : Fitting(field, row.*text);
    });
  };
  write(kVoucherNo, &LedgerRow::voucherNo);
  write(kBatchNo, &LedgerRow::batchNo);
  write(kNote, &LedgerRow::note);
  write(kAuxName, &LedgerRow::auxName);
  write(kBillNo, &LedgerRow::billNo);
  Write(firstRow, kTranTypeName, [&](const LedgerRow& row) {
    return row.kind == LedgerRowKind::kMovement ? Fitting(kTranTypeName, row.tranTypeName)
                                                : Caption(row.kind);
  });
  Write(firstRow, kPeriodName, [&](const LedgerRow& row) { return PeriodName(row.year, row.period); });
}

Variant MergeRecord(Ref<Recordset>& target, Recordset& source, std::int16_t year, std::int16_t period) {
  try {
    if (!target) target = NewTarget(source);
    if (source.RecordCount() == 0) return {};
    const std::size_t yearColumn = target->FieldIndex("FYear");
    const std::size_t periodColumn = target->FieldIndex("FPeriod");
    const std::size_t count = source.Fields().size();
    for (source.MoveFirst(); !source.AtEnd(); source.MoveNext()) {
      target->AddNew();
      for (std::size_t column = 0; column < count; ++column) target->SetValue(column, source.Value(column));
      target->SetInteger(yearColumn, year);
      target->SetInteger(periodColumn, period);
      target->Update();
    }
    return {};
  } catch (const std::exception& error) {
    throw platform::Error(platform::ErrorNumber{-1000}, "MergeRecord",
                          ResString("追加记录集出现错误：") + error.what());
  }
}

}  // namespace component
