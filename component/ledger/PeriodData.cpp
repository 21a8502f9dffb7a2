#include "component/ledger/PeriodData.h"

namespace component {
namespace {

using platform::FieldType;
using platform::Recordset;
using platform::Ref;
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
  kInQty,
  kInPrice,
  kInAmount,
  kOutQty,
  kOutPrice,
  kOutAmount,
};
static_assert(std::size(kMovementFields) == kOutAmount + 1);

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
  count_ = rows_->ViewCount();
  knowsColumns_ = knowsColumns_ && sameTable;
  if (count_ == 0 || knowsColumns_) return;
  if (!Fits()) FindColumns();
  knowsColumns_ = true;
}

void LedgerSource::FindColumns() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::size_t index = rows_->FieldIndex(fields_[i]);
    const FieldType type = rows_->Fields()[index].type;
    columns_[i] = {.index = index, .isText = platform::IsTextType(type), .isDate = type == FieldType::kDate};
  }
}

Variant LedgerSource::ValueOf(std::size_t field) const {
  Variant value = row_.Value(columns_[field].index);
  return value.IsNull() ? Variant() : value;
}

std::string_view LedgerSource::TextOf(std::size_t field) {
  texts_[field] = platform::ToText(ValueOf(field));
  return texts_[field];
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

LedgerBalance PeriodData::Balance(LedgerSource& source, std::size_t position) {
  source.GoTo(position);
  LedgerBalance balance{.batchNo = source.Text(kBatchNo), .figures = {}};
  balance.figures.quantity = source.Double(kQty);
  balance.figures.amount = source.Amount(kAmount);
  balance.figures.diff = source.Amount(kDiff);
  balance.figures.price = SafePrice(balance.figures.quantity, source.Double(kAmount));
  return balance;
}

LedgerMovement PeriodData::Movement(std::size_t position, bool withDiff) {
  happened.GoTo(position);
  LedgerMovement movement;
  movement.id = happened.Integer(kInterId);
  movement.entryId = happened.Integer(kEntryId);
  movement.date = happened.Day(kDate);
  movement.voucherNo = happened.Text(kVoucherNo);
  movement.batchNo = happened.Text(kMovementBatchNo);
  movement.note = happened.Text(kNote);
  movement.tranTypeName = happened.Text(kTranTypeName);
  movement.auxName = happened.Text(kAuxName);
  movement.billNo = happened.Text(kBillNo);
  movement.tranType = happened.Integer(kTranType);
  movement.in.quantity = happened.Double(kInQty);
  movement.in.price = happened.Double(kInPrice);
  movement.in.amount = happened.Amount(kInAmount);
  movement.out.quantity = happened.Double(kOutQty);
  movement.out.price = happened.Double(kOutPrice);
  movement.out.amount = happened.Amount(kOutAmount);
  if (withDiff) {
    differences.GoTo(position);
    movement.in.diff = differences.Amount(0);
    movement.out.diff = differences.Amount(1);
  }
  return movement;
}

Ref<Recordset> KeyedAnswer::Rows(std::string_view key) const {
  Ref<Recordset> rows = Value(key).AsRef<Recordset>();
  if (!rows) {
    throw platform::Error(platform::ErrorNumber::kTypeMismatch, "TOVStockRpt.Rpt10402",
                          "type mismatch: the data component answers no recordset under " + std::string(key));
  }
  return rows;
}

}  // namespace component
