#include "books/reports/movement/DetailFields.h"

#include "books/database/Quantity.h"

namespace books::reports {
namespace {

using database::Quantity;
using platform::Currency;
using platform::FieldType;
using platform::Recordset;

struct DetailField {
  const char* name;
  FieldType type;
};

enum Column : std::size_t {
  kDate,
  kBillType,
  kBillNo,
  kExplanation,
  kItemNumber,
  kItemName,
  kModel,
  kPartnerName,
  kPartnerNumber,
  kAuxProp,
  kBatchNo,
  kBarCode,
  kUnit,
  kShownUnit,
  kAuxUnit,
  kIn,
  kOut = kIn + 7,
  kStock = kOut + 7,
  kNote = kStock + 7,
  kSumSort,
  kItemId,
  kBillId,
  kBillClass,
};

constexpr DetailField kFields[] = {
    {"FDate", FieldType::kDate},
    {"FBillType", FieldType::kText},
    {"FBillNo", FieldType::kText},
    {"FExplanation", FieldType::kText},
    {"FItemNumber", FieldType::kText},
    {"FItemName", FieldType::kText},
    {"FModel", FieldType::kText},
    {"FBussinessName", FieldType::kText},
    {"FBussinessNumber", FieldType::kText},
    {"FAuxProp", FieldType::kText},
    {"FBatchNo1", FieldType::kText},
    {"FBarCode", FieldType::kText},
    {"FUnitName", FieldType::kText},
    {"FShowUnitName", FieldType::kText},
    {"FAuxUnitName", FieldType::kText},
    {"FInQty", FieldType::kDouble},
    {"FInPrice", FieldType::kDouble},
    {"FShowInQty", FieldType::kDouble},
    {"FComplexQtyDisIn", FieldType::kText},
    {"FShowInPrice", FieldType::kDouble},
    {"FAuxInQty", FieldType::kDouble},
    {"FInAmount", FieldType::kCurrency},
    {"FOutQty", FieldType::kDouble},
    {"FOutPrice", FieldType::kDouble},
    {"FShowOutQty", FieldType::kDouble},
    {"FComplexQtyDisOut", FieldType::kText},
    {"FShowOutPrice", FieldType::kDouble},
    {"FAuxOutQty", FieldType::kDouble},
    {"FOutAmount", FieldType::kCurrency},
    {"FStockQty", FieldType::kDouble},
    {"FStockPrice", FieldType::kDouble},
    {"FShowStockQty", FieldType::kDouble},
    {"FComplexQtyDis", FieldType::kText},
    {"FShowStockPrice", FieldType::kDouble},
    {"FAuxStockQty", FieldType::kDouble},
    {"FStockAmount", FieldType::kCurrency},
    {"FNote", FieldType::kText},
    {"FSumSort", FieldType::kInt32},
    {"FItemID", FieldType::kInt32},
    {"FInterID", FieldType::kInt32},
    {"FTranType", FieldType::kInt32},
};
static_assert(std::size(kFields) == kBillClass + 1);

double AsQuantity(std::int64_t millionths) { return Quantity::FromUnits(millionths).ToDouble(); }

}  // namespace

DetailFields::DetailFields(Recordset& rows, DetailFacts& facts) : facts_(facts) {
  for (const DetailField& field : kFields) rows.AppendField(field.name, field.type);
  rows.Open();
  to_.emplace(rows);
}

void DetailFields::SetItem(const StockItem& item) {
  to_->SetText(kItemNumber, item.number);
  to_->SetText(kItemName, item.name);
  to_->SetText(kModel, item.model);
  to_->SetText(kBarCode, item.barcode);
  to_->SetText(kUnit, item.unit);
  to_->SetText(kAuxUnit, item.auxUnit);
  to_->SetInteger(kItemId, static_cast<std::int32_t>(item.id));
}

void DetailFields::SetSide(std::size_t column, const StockItem* item, const Sums& sums, double shown) {
  const Currency amount = Currency::FromUnits(sums.amount);
  to_->SetDouble(column, AsQuantity(sums.quantity));
  to_->SetDouble(column + 1, PriceOf(sums));
  to_->SetDouble(column + 2, shown);
  if (item != nullptr) {
    to_->SetText(column + 3, WholeAndLoose(sums.quantity, item->packages, item->unit));
  }
  to_->SetDouble(column + 4, shown == 0 ? 0 : amount.ToDouble() / shown);
  if (item == nullptr || !item->auxUnit.empty()) to_->SetDouble(column + 5, AsQuantity(sums.auxQuantity));
  to_->SetCurrency(column + 6, amount);
}

void DetailFields::AddMove(const StockItem& item, const Move& move, const std::optional<Sums>& balance) {
  const DetailFacts::Bill& bill = facts_.BillOf(move.billId);
  const DetailFacts::Entry entry = facts_.EntryOf(bill, move.line);
  const DetailFacts::Named& partner = facts_.BaseDataOf(bill.partnerId);
  to_->SetDate(kDate, move.date);
  to_->SetText(kBillType, facts_.ClassName(move.billClass));
  to_->SetText(kBillNo, bill.number);
  to_->SetText(kExplanation, bill.explanation);
  SetItem(item);
  to_->SetText(kPartnerName, partner.name);
  to_->SetText(kPartnerNumber, partner.number);
  to_->SetText(kAuxProp, facts_.BaseDataOf(move.place.auxId).name);
  to_->SetText(kBatchNo, facts_.BatchNumber(move.place.batchId));
  to_->SetText(kShownUnit, entry.unitId == 0 ? item.unit : facts_.UnitName(entry.unitId));
  // The bill's own figure, which no factor can blur, with the sign of the side.
  const bool turned = (move.sums.quantity < 0) != (entry.unitQuantity < 0);
  const double shown = AsQuantity(turned ? -entry.unitQuantity : entry.unitQuantity);
  SetSide(move.receipt ? kIn : kOut, &item, move.sums, shown);
  if (balance) {
    const double factor = AsQuantity(facts_.FactorOf(item.id, entry.unitId));
    SetSide(kStock, &item, *balance, AsQuantity(balance->quantity) / factor);
  }
  to_->SetText(kNote, facts_.NoteOf(entry));
  to_->SetInteger(kSumSort, 0);
  to_->SetInteger(kBillId, static_cast<std::int32_t>(move.billId));
  to_->SetInteger(kBillClass, move.billClass);
  to_->CommitRow();
}

void DetailFields::AddSum(const DetailSum& sum) {
  to_->SetText(kBillType, sum.caption);
  if (sum.item != nullptr) {
    SetItem(*sum.item);
    to_->SetText(kShownUnit, sum.item->unit);
  }
  const auto set = [&](std::size_t column, const std::optional<Sums>& sums) {
    if (sums) SetSide(column, sum.item, *sums, AsQuantity(sums->quantity));
  };
  set(kIn, sum.receipts);
  set(kOut, sum.issues);
  set(kStock, sum.balance);
  to_->SetInteger(kSumSort, sum.sumSort);
  to_->CommitRow();
}

}  // namespace books::reports
