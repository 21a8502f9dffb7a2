#include "component/ledger/PeriodData.h"

#include "platform/rows/Dictionary.h"

namespace component {
namespace {

using platform::Currency;
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
        platform::IsTextType(fields[index].type) != columns_[i].isText) {
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
    columns_[i] = {.index = index, .isText = platform::IsTextType(rows_->Fields()[index].type)};
  }
}

Variant LedgerSource::ValueOf(std::size_t field, std::size_t row) const {
  Variant value = rows_->ValueAt(columns_[field].index, row);
  return value.IsNull() ? Variant() : value;
}

std::string_view LedgerSource::Text(std::size_t field, std::size_t row) {
  if (columns_[field].isText) return rows_->TextAt(columns_[field].index, row);
  texts_[field] = platform::ToText(ValueOf(field, row));
  return texts_[field];
}

std::int32_t LedgerSource::Integer(std::size_t field, std::size_t row) const {
  if (columns_[field].isText) return platform::ToInt32(ValueOf(field, row));
  return rows_->IntegerAt(columns_[field].index, row);
}

double LedgerSource::Double(std::size_t field, std::size_t row) const {
  if (columns_[field].isText) return platform::ToDouble(ValueOf(field, row));
  return rows_->DoubleAt(columns_[field].index, row);
}

Currency LedgerSource::Amount(std::size_t field, std::size_t row) const {
  if (columns_[field].isText) return platform::ToCurrency(ValueOf(field, row));
  return rows_->CurrencyAt(columns_[field].index, row);
}

platform::Date LedgerSource::Day(std::size_t field, std::size_t row) const {
  if (rows_->Fields()[columns_[field].index].type == platform::FieldType::kDate) {
    return rows_->DateAt(columns_[field].index, row);
  }
  return platform::ToDate(ValueOf(field, row));
}

PeriodData::PeriodData()
    : opening(kOpeningFields),
      happened(kMovementFields),
      differences(kDifferenceFields),
      closing(kClosingFields) {}

void PeriodData::Take(const Variant& answer) {
  opening.Take(KeyedRows(answer, "rsBegBal"));
  happened.Take(KeyedRows(answer, "rsHappen"));
  closing.Take(KeyedRows(answer, "rsEndBal"));
  firstDay = platform::ToDate(KeyedValue(answer, "BDate"));
  lastDay = platform::ToDate(KeyedValue(answer, "EDate")).AddDays(-1);
}

LedgerBalance PeriodData::Balance(LedgerSource& source, std::size_t position) {
  const std::size_t row = source.RowAt(position);
  LedgerBalance balance{.batchNo = source.Text(kBatchNo, row), .figures = {}};
  balance.figures.quantity = source.Double(kQty, row);
  balance.figures.amount = source.Amount(kAmount, row);
  balance.figures.diff = source.Amount(kDiff, row);
  balance.figures.price = SafePrice(balance.figures.quantity, source.Double(kAmount, row));
  return balance;
}

LedgerMovement PeriodData::Movement(std::size_t position, bool withDiff) {
  const std::size_t row = happened.RowAt(position);
  LedgerMovement movement;
  movement.id = happened.Integer(kInterId, row);
  movement.entryId = happened.Integer(kEntryId, row);
  movement.date = happened.Day(kDate, row);
  movement.voucherNo = happened.Text(kVoucherNo, row);
  movement.batchNo = happened.Text(kMovementBatchNo, row);
  movement.note = happened.Text(kNote, row);
  movement.tranTypeName = happened.Text(kTranTypeName, row);
  movement.auxName = happened.Text(kAuxName, row);
  movement.billNo = happened.Text(kBillNo, row);
  movement.tranType = happened.Integer(kTranType, row);
  movement.in.quantity = happened.Double(kInQty, row);
  movement.in.price = happened.Double(kInPrice, row);
  movement.in.amount = happened.Amount(kInAmount, row);
  movement.out.quantity = happened.Double(kOutQty, row);
  movement.out.price = happened.Double(kOutPrice, row);
  movement.out.amount = happened.Amount(kOutAmount, row);
  if (withDiff) {
    const std::size_t same = differences.RowAt(position);
    movement.in.diff = differences.Amount(0, same);
    movement.out.diff = differences.Amount(1, same);
  }
  return movement;
}

Variant KeyedValue(const Variant& answer, const std::string& key) {
  platform::Object& keyed = answer.AsObject();
  if (const auto* dictionary = dynamic_cast<const platform::Dictionary*>(&keyed))
    return dictionary->Value(key);
  return keyed.Get("Item", key);
}

Ref<Recordset> KeyedRows(const Variant& answer, const std::string& key) {
  Ref<Recordset> rows = KeyedValue(answer, key).AsRef<Recordset>();
  if (!rows) {
    throw platform::Error(platform::ErrorNumber::kTypeMismatch, "TOVStockRpt.Rpt10402",
                          "type mismatch: the data component answers no recordset under " + key);
  }
  return rows;
}

}  // namespace component
