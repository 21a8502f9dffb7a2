#include "books/reports/stock/Data332.h"

#include "books/database/Connection.h"
#include "books/reports/stock/FigureFields.h"
#include "books/reports/stock/InstantStock.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::Recordset;
using platform::Ref;
using platform::RowAppender;

class WarehouseRows final : public StockRowSink {
 public:
  WarehouseRows(const InstantStock& stock, Recordset& rows)
      : warehouses_(stock.Warehouses()), leading_(stock, rows), first_(rows.Fields().size()) {
    rows.AppendField("FStockName", FieldType::kText);
    rows.AppendField("FQty", FieldType::kDouble);
    rows.AppendField("FComplexQtyDis", FieldType::kText);
    rows.AppendField("FSecQty", FieldType::kDouble);
    rows.AppendField("FAvgBal", FieldType::kDouble);
    rows.AppendField("FBal", FieldType::kCurrency);
    rows.Open();
    to_.emplace(rows);
  }

  void Row(const StockRow& row, std::span<const Placed> places) override {
    for (const Placed& placed : places) AddRow(row, warehouses_[placed.warehouse].name, placed.figures);
    if (places.empty()) AddRow(row, "", {});
  }

  void Sum(const SumRow& row) override {
    Figures sum;
    for (const Figures& figures : row.byWarehouse) sum += figures;
    leading_.SetSum(*to_, row);
    SetFigures(sum);
    to_->SetDouble(first_ + 3, AsQuantity(sum.auxQuantity));
    to_->CommitRow();
  }

 private:
  void AddRow(const StockRow& row, std::string_view warehouse, const Figures& figures) {
    leading_.SetRow(*to_, row);
    to_->SetText(first_, warehouse);
    to_->SetText(first_ + 2, WholeAndLoose(figures.quantity, row.item->packages, row.item->unit));
    SetFigures(figures);
    if (!row.item->auxUnit.empty()) to_->SetDouble(first_ + 3, AsQuantity(figures.auxQuantity));
    if (figures.valued != 0) to_->SetDouble(first_ + 4, PriceOf(figures.amount, figures.valued));
    to_->CommitRow();
  }

  void SetFigures(const Figures& figures) {
    to_->SetDouble(first_ + 1, AsQuantity(figures.quantity));
    to_->SetCurrency(first_ + 5, Currency::FromUnits(figures.amount));
  }

  const std::vector<Warehouse>& warehouses_;
  InstantFields leading_;
  std::size_t first_;
  std::optional<RowAppender> to_;
};

}  // namespace

Ref<platform::Vector> Data332::GetRptData(const std::string& /*props*/, platform::Variant& filter) {
  const database::Transaction onePicture(store_->Reading(), database::Transaction::Kind::kRead);
  const InstantStock stock(*store_, ReportFilter(filter));
  const auto rows = platform::MakeRef<Recordset>();
  {
    WarehouseRows byWarehouse(stock, *rows);
    stock.Walk(byWarehouse);
  }
  auto answer = platform::MakeRef<platform::Vector>();
  answer->Add(rows);
  return answer;
}

}  // namespace books::reports
