#include "component/ledger/PeriodData.h"

namespace component {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::Recordset;
using platform::Ref;
using platform::RowText;
using platform::Variant;

constexpr std::string_view kOpeningFields[] = {"FBatchNo", "FBegQty", "FBegAmount", "FBegDiff"};
constexpr std::string_view kClosingFields[] = {"FBatchNo", "FEndQty", "FEndAmount", "FEndDiff"};
enum BalanceField : std::uint8_t { kBatchNo, kQty, kAmount, kDiff };

constexpr std::string_view kMovementFields[] = {
    "FInterID", "FEntryID",  "FDate",  "FVoucherNo", "FBatchNo",  "FNote",   "FTranTypeName", "FAuxName",
    "FBillNo",  "FTranType", "FInQty", "FInPrice",   "FInAmount", "FOutQty", "FOutPrice",     "FOutAmount"};
enum MovementField : std::uint8_t {
  kInterId,
  kEntryId,
  kDate,
  kVoucherNo,
  kMovementBatchNo,
  kNote,
  kTranTypeName,
  kAuxName,
  kBillNo,
  kTranType,
  kInQty,  // price and amount follow
  kOutQty = kInQty + 3,
};
static_assert(std::size(kMovementFields) == kOutQty + 3);

constexpr std::string_view kDifferenceFields[] = {"FInDiff", "FOutDiff"};

}  // namespace

bool LedgerSource::Fits() const {
  const std::vector<platform::Field>& fields = rows_->Fields();
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::size_t index = columns_[i].index;
    if (index >= fields.size() || fields[index].name != fields_[i] ||
        platform::IsTextType(fields[index].type) != columns_[i].isText ||
        (fields[index].type == FieldType::kDate) != columns_[i].isDate) {
      return false;
    }
  }
  return true;
}

void LedgerSource::Take(const Ref<Recordset>& rows) {
  const bool sameTable = rows_ && rows_->IsOpen() && &rows->Fields() == &rows_->Fields();
  rows_ = rows;
  ++takes_;
  converted_.clear();
  count_ = rows_->ViewCount();
  knowsColumns_ = knowsColumns_ && sameTable;
  stretches_.clear();
  if (count_ == 0) return;
  FindStretches();
  if (knowsColumns_) return;
  if (!Fits()) FindColumns();
  knowsColumns_ = true;
}

void LedgerSource::FindStretches() {
  for (std::size_t from = 0; from < count_; from += stretches_.back().count) {
    const std::size_t first = rows_->RowAt(from);
    const bool restFollows = rows_->RowAt(count_ - 1) - first == count_ - 1 - from;
    stretches_.push_back({.firstRow = first, .count = restFollows ? count_ - from : 1});
  }
}

void LedgerSource::FindColumns() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::size_t index = rows_->FieldIndex(fields_[i]);
    const FieldType type = rows_->Fields()[index].type;
    columns_[i] = {.index = index, .isText = platform::IsTextType(type), .isDate = type == FieldType::kDate};
  }
}

PeriodData::PeriodData()
    : opening(kOpeningFields),
      happened(kMovementFields),
      differences(kDifferenceFields),
      closing(kClosingFields) {}

void PeriodData::Take(const Variant& answer) {
  const KeyedAnswer keyed(answer);
  opening.Take(keyed.Rows("rsBegBal"));
  happened.Take(keyed.Rows("rsHappen"));
  closing.Take(keyed.Rows("rsEndBal"));
  firstDay = platform::ToDate(keyed.Value("BDate"));
  lastDay = platform::ToDate(keyed.Value("EDate")).AddDays(-1);
}

const LedgerBalance& PeriodData::Balance(LedgerSource& source, Known<LedgerBalance>& known,
                                         std::size_t position) {
  if (known.take != source.Takes()) {
    std::vector<LedgerBalance>& rows = known.rows;
    rows.assign(source.Count(), {});
    source.Texts(kBatchNo, [&](std::size_t i, const RowText& text) { rows[i].batchNo = text; });
    source.Doubles(kQty, [&](std::size_t i, double number) { rows[i].figures.quantity = number; });
    source.Amounts(kAmount, [&](std::size_t i, Currency amount) { rows[i].figures.amount = amount; });
    source.Amounts(kDiff, [&](std::size_t i, Currency amount) { rows[i].figures.diff = amount; });
    source.Doubles(kAmount, [&](std::size_t i, double amount) {
      rows[i].figures.price = SafePrice(rows[i].figures.quantity, amount);
    });
    known.take = source.Takes();
  }
  return known.rows[position];
}

const LedgerRow& PeriodData::Movement(std::size_t position, bool withDiff) {
  if (movements_.take != happened.Takes()) ReadMovements(withDiff);
  return movements_.rows[position];
}

void PeriodData::ReadMovements(bool withDiff) {
  std::vector<LedgerRow>& rows = movements_.rows;
  rows.assign(happened.Count(), {});
  auto integer = [&](std::size_t field, std::int32_t LedgerRow::*number) {
    happened.Integers(field, [&](std::size_t i, std::int32_t value) { rows[i].*number = value; });
  };
  auto text = [&](std::size_t field, RowText LedgerRow::*target) {
    happened.Texts(field, [&](std::size_t i, const RowText& value) { rows[i].*target = value; });
  };
  auto figures = [&](std::size_t first, LedgerFigures LedgerRow::*side) {
    happened.Doubles(first, [&](std::size_t i, double value) { (rows[i].*side).quantity = value; });
    happened.Doubles(first + 1, [&](std::size_t i, double value) { (rows[i].*side).price = value; });
    happened.Amounts(first + 2, [&](std::size_t i, Currency value) { (rows[i].*side).amount = value; });
  };
  auto difference = [&](std::size_t field, LedgerFigures LedgerRow::*side) {
    differences.Amounts(field, [&](std::size_t i, Currency value) { (rows[i].*side).diff = value; });
  };
  integer(kInterId, &LedgerRow::id);
  integer(kEntryId, &LedgerRow::entryId);
  happened.Days(kDate, [&](std::size_t i, platform::Date date) { rows[i].date = date; });
  text(kVoucherNo, &LedgerRow::voucherNo);
  text(kMovementBatchNo, &LedgerRow::batchNo);
  text(kNote, &LedgerRow::note);
  text(kTranTypeName, &LedgerRow::tranTypeName);
  text(kAuxName, &LedgerRow::auxName);
  text(kBillNo, &LedgerRow::billNo);
  integer(kTranType, &LedgerRow::classTypeId);
  figures(kInQty, &LedgerRow::in);
  figures(kOutQty, &LedgerRow::out);
  if (withDiff) {
    difference(0, &LedgerRow::in);
    difference(1, &LedgerRow::out);
  }
  movements_.take = happened.Takes();
}

Ref<Recordset> KeyedAnswer::Rows(std::string_view key) const {
  Ref<Recordset> rows =
      dictionary_ != nullptr ? dictionary_->Value(key).AsRef<Recordset>() : Value(key).AsRef<Recordset>();
  if (!rows) {
    throw platform::Error(platform::ErrorNumber::kTypeMismatch, "TOVStockRpt.Rpt10402",
                          "type mismatch: the data component answers no recordset under " + std::string(key));
  }
  return rows;
}

}  // namespace component
