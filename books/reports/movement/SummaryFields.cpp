#include "books/reports/movement/SummaryFields.h"

#include "books/database/Quantity.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::Recordset;
using platform::RowAppender;
using Kind = SummaryLine::Kind;

// Behind the levels, in the order of this list.
enum Leading : std::size_t {
  kWarehouse,
  kWarehouseId,
  kNumber,
  kName,
  kModel,
  kBarCode,
  kUnit,
  kAuxUnit,
  kSupplier,
  kBatch,
  kItemId,
  kSumSort,
};

double AsQuantity(std::int64_t millionths) { return database::Quantity::FromUnits(millionths).ToDouble(); }

std::int32_t AsField(std::int64_t id) { return static_cast<std::int32_t>(id); }

}  // namespace

SummaryFields::SummaryFields(const SummaryShape& shape, std::string_view warehouseName, Recordset& rows)
    : levels_(static_cast<std::size_t>(shape.levels.Count())),
      byWarehouse_(shape.by == SummaryBy::kWarehouse) {
  for (std::int32_t level = shape.levels.begin; level <= shape.levels.end; ++level) {
    rows.AppendField("FItemLevel0" + std::to_string(level) + "Name", FieldType::kText);
  }
  rows.AppendField(warehouseName, FieldType::kText);
  rows.AppendField("FCommonID", FieldType::kInt32);
  for (const char* text : {"FItemNumber", "FItemName", "FModel", "FBarCode", "FUnitName", "FSecUnitName",
                           "FSource", "FBatchNo"}) {
    rows.AppendField(text, FieldType::kText);
  }
  rows.AppendField("FItemID", FieldType::kInt32);
  rows.AppendField("FSumSort", FieldType::kInt32);
}

std::string_view SummaryFields::Caption(const SummaryLine& line) const {
  switch (line.kind) {
    case Kind::kRow:
      return {};
    case Kind::kTotal:
      return "合计";
    default:
      return "小计";
  }
}

std::size_t SummaryFields::CaptionColumn(const SummaryLine& line) const {
  if (line.kind == Kind::kItemSum) return levels_ + kBatch;
  if (line.kind == Kind::kWarehouseSum) return levels_ + kNumber;
  const std::size_t column = line.above.size();
  return column < levels_ || byWarehouse_ ? column : levels_ + kNumber;
}

void SummaryFields::Set(RowAppender& to, const SummaryLine& line, std::string_view supplier) const {
  for (std::size_t i = 0; i < line.above.size(); ++i) {
    if (line.above[i] != nullptr) to.SetText(i, line.above[i]->name);
  }
  if (line.warehouse != nullptr) to.SetText(levels_ + kWarehouse, line.warehouse->name);
  to.SetInteger(levels_ + kWarehouseId, line.warehouse != nullptr ? AsField(line.warehouse->id) : 0);
  if (line.item != nullptr) {
    to.SetText(levels_ + kNumber, line.item->number);
    to.SetText(levels_ + kName, line.item->name);
    to.SetText(levels_ + kModel, line.item->model);
    to.SetText(levels_ + kBarCode, line.item->barcode);
    to.SetText(levels_ + kUnit, line.item->unit);
    to.SetText(levels_ + kAuxUnit, line.item->auxUnit);
    to.SetText(levels_ + kSupplier, supplier);
    to.SetInteger(levels_ + kItemId, AsField(line.item->id));
  }
  if (line.kind == Kind::kRow) {
    to.SetText(levels_ + kBatch, line.batch);
  } else {
    to.SetText(CaptionColumn(line), Caption(line));
  }
  to.SetInteger(levels_ + kSumSort, line.sumSort);
}

void SetFigures(RowAppender& to, const FigureColumns& columns, const SummaryLine& line, const Sums& sums) {
  to.SetDouble(columns.quantity, AsQuantity(sums.quantity));
  if (line.item == nullptr || !line.item->auxUnit.empty()) {
    to.SetDouble(columns.auxQuantity, AsQuantity(sums.auxQuantity));
  }
  to.SetCurrency(columns.amount, Currency::FromUnits(sums.amount));
}

}  // namespace books::reports
