#include "component/ledger/PeriodData.h"

namespace component {
namespace {

using platform::FieldType;
using platform::Recordset;
using platform::Ref;
using platform::RowReader;
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
  if (count_ == 0 || knowsColumns_) return;
  if (!Fits()) FindColumns();
  knowsColumns_ = true;
}

void LedgerSource::FindColumns() {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::size_t index = rows_->FieldIndex(fields_[i]);
    const FieldType type = rows_->Fields()[index].type;
    columns_[i] = {.index = static_cast<std::uint32_t>(index),
                   .isText = platform::IsTextType(type),
                   .isDate = type == FieldType::kDate};
  }
}

Variant LedgerSource::ValueOf(Column column, const RowReader& row) {
  Variant value = row.Value(column.index);
  return value.IsNull() ? Variant() : value;
}

platform::RowText LedgerSource::Converted(Column column, const RowReader& row) {
  return std::string_view(converted_.emplace_back(platform::ToText(ValueOf(column, row))));
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
    known.rows.resize(source.Count());
    source.EachRow([&](std::size_t i, const RowReader& row) {
      LedgerBalance& balance = known.rows[i];
      balance.batchNo = source.Text(kBatchNo, row);
      LedgerFigures& figures = balance.figures;
      figures.quantity = source.Double(kQty, row);
      figures.price = SafePrice(figures.quantity, source.Double(kAmount, row));
      figures.amount = source.Amount(kAmount, row);
      figures.diff = source.Amount(kDiff, row);
    });
    known.take = source.Takes();
  }
  return known.rows[position];
}

LedgerRow& PeriodData::Movement(std::size_t position, bool withDiff) {
  if (movements_.take != happened.Takes()) ReadMovements(withDiff);
  return movements_.rows[position];
}

void PeriodData::ReadMovements(bool withDiff) {
  std::vector<LedgerRow>& rows = movements_.rows;
  rows.assign(happened.Count(), {});
  happened.EachRow([&](std::size_t i, const RowReader& source) {
    LedgerRow& row = rows[i];
    auto figures = [&](std::size_t first, LedgerFigures& side) {
      side.quantity = happened.Double(first, source);
      side.price = happened.Double(first + 1, source);
      side.amount = happened.Amount(first + 2, source);
    };
    row.id = happened.Integer(kInterId, source);
    row.entryId = happened.Integer(kEntryId, source);
    row.date = happened.Day(kDate, source);
    row.voucherNo = happened.Text(kVoucherNo, source);
    row.batchNo = happened.Text(kMovementBatchNo, source);
    row.note = happened.Text(kNote, source);
    row.tranTypeName = happened.Text(kTranTypeName, source);
    row.auxName = happened.Text(kAuxName, source);
    row.billNo = happened.Text(kBillNo, source);
    row.classTypeId = happened.Integer(kTranType, source);
    figures(kInQty, row.in);
    figures(kOutQty, row.out);
  });
  if (withDiff) {
    differences.EachRow([&](std::size_t i, const RowReader& source) {
      rows[i].in.diff = differences.Amount(0, source);
      rows[i].out.diff = differences.Amount(1, source);
    });
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
