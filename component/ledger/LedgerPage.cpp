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

std::string TitleField(std::size_t index) { return "FTitle" + std::to_string(index + 1); }

void AppendTitles(Recordset& page) {
  for (std::size_t i = 0; i < kLedgerTitles; ++i)
    page.AppendField(TitleField(i), FieldType::kText, kTitleWidth);
}

struct KindFacts {
  std::int32_t id;
  std::string_view caption;
};

constexpr KindFacts FactsOf(LedgerRowKind kind) {
  switch (kind) {
    case LedgerRowKind::kOpening:
      return {-1, "期初结存"};
    case LedgerRowKind::kPeriodTotal:
      return {-2, "本期合计"};
    case LedgerRowKind::kClosing:
      return {-3, "期末结存"};
    case LedgerRowKind::kYearTotal:
      return {-2, "本年累计"};
    case LedgerRowKind::kYearToDate:
      return {-4, "本年累计"};
  }
  return {};
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

LedgerRow SummaryRow(LedgerRowKind kind, std::int16_t year, std::int16_t period, platform::Date date) {
  const KindFacts facts = FactsOf(kind);
  LedgerRow row;
  row.year = year;
  row.period = period;
  row.id = facts.id;
  row.date = date;
  row.tranTypeName = facts.caption;
  row.sumSort = kSummarySort;
  return row;
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
  auto add = [&](std::size_t column) {
    targets_.push_back({.column = column, .width = page.Fields()[column].width});
  };
  for (const PageField& field : kFields) add(page.FieldIndex(field.name));
  if (!page.FindField(TitleField(0))) return;
  for (std::size_t i = 0; i < kLedgerTitles; ++i) add(page.FieldIndex(TitleField(i)));
}

std::string_view LedgerPage::Fitting(std::size_t field, std::string_view text) const {
  const std::size_t width = targets_[field].width;
  return text.size() > width ? platform::CutToWidth(text, width) : text;
}

void LedgerPage::SetText(std::size_t field, std::string_view text) {
  rows_.SetText(targets_[field].column, Fitting(field, text));
}

void LedgerPage::SetFigures(std::size_t firstField, const LedgerFigures& figures) {
  rows_.SetDouble(targets_[firstField].column, figures.quantity);
  rows_.SetDouble(targets_[firstField + 1].column, figures.price);
  rows_.SetCurrency(targets_[firstField + 2].column, figures.amount);
  rows_.SetCurrency(targets_[firstField + 3].column, figures.diff);
}

std::string_view LedgerPage::PeriodName(std::int16_t year, std::int16_t period) {
  const std::int32_t wanted = (std::int32_t{year} << 16) + period;
  if (periodName_.empty() || namedPeriod_ != wanted) {
    periodName_ = std::to_string(year) + "." + std::to_string(period);
    namedPeriod_ = wanted;
  }
  return periodName_;
}

void LedgerPage::AddLedgerRow(const LedgerRow& row) {
  SetFields(row);
  rows_.CommitRow();
}

void LedgerPage::AddLedgerRowTitled(const LedgerRow& row, const LedgerTitles& titles) {
  Finish();
  SetFields(row);
  for (std::size_t i = kFieldCount; i < targets_.size(); ++i) {
    if (const std::string& title = titles[i - kFieldCount]; !title.empty()) SetText(i, title);
  }
  rows_.CommitRow();
  untitled_ = rows_.Row();
}

void LedgerPage::Finish() {
  for (std::size_t i = kFieldCount; i < targets_.size() && titles_ != nullptr; ++i) {
    const std::string& title = (*titles_)[i - kFieldCount];
    if (!title.empty()) rows_.FillText(targets_[i].column, untitled_, Fitting(i, title));
  }
  untitled_ = rows_.Row();
}

void LedgerPage::SetFields(const LedgerRow& row) {
  auto setInteger = [this](std::size_t field, std::int32_t number) {
    rows_.SetInteger(targets_[field].column, number);
  };
  setInteger(kYear, row.year);
  setInteger(kPeriod, row.period);
  SetText(kPeriodName, PeriodName(row.year, row.period));
  setInteger(kId, row.id);
  setInteger(kEntryId, row.entryId);
  rows_.SetDate(targets_[kDate].column, row.date.DayOnly());
  SetText(kVoucherNo, row.voucherNo);
  SetText(kBatchNo, row.batchNo);
  SetText(kNote, row.note);
  SetText(kTranTypeName, row.sumSort == 0 ? row.tranTypeName : ResString(row.tranTypeName));
  SetText(kAuxName, row.auxName);
  SetText(kBillNo, row.billNo);
  setInteger(kClassTypeId, row.classTypeId);
  setInteger(kQtyDecimal, row.qtyDecimal);
  setInteger(kPriceDecimal, row.priceDecimal);
  SetFigures(kIn, row.in);
  SetFigures(kOut, row.out);
  SetFigures(kBalance, row.balance);
  setInteger(kSumSort, row.sumSort);
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
