#include "books/reports/movement/Data10412.h"

#include "books/database/Connection.h"
#include "books/reports/movement/SummaryFields.h"

namespace books::reports {
namespace {

using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::RowAppender;

// A group of figures, and what its fields are called.
struct FigureGroup {
  std::string_view quantity;
  std::string_view packages;
  std::string_view auxQuantity;
  std::string_view price;
  std::string_view amount;
  Sums (*of)(const SummaryFigures& figures);
};
constexpr FigureGroup kGroups[] = {
    {"FBegQty", "FComplexQtyDisBeg", "FBegSecQty", "FBegPrice", "FBegBal",
     [](const SummaryFigures& figures) { return figures.opening; }},
    {"FInQty", "FComplexQtyDisIn", "FInSecQty", "FInPrice", "FInAmount",
     [](const SummaryFigures& figures) { return figures.receipts; }},
    {"FOutQty", "FComplexQtyDisOut", "FOutSecQty", "FOutPrice", "FOutAmount",
     [](const SummaryFigures& figures) { return figures.issues; }},
    {"FEndQty", "FComplexQtyDisEnd", "FEndSecQty", "FEndPrice", "FEndBal",
     [](const SummaryFigures& figures) { return figures.Closing(); }},
};
constexpr std::size_t kGroupWidth = 5;

SummaryShape ShapeOf(const ReportFilter& asked, MovementGoods goods) {
  constexpr std::int32_t kGroupings = 3;
  SummaryShape shape;
  shape.goods = goods;
  const bool itsOwn = goods == MovementGoods::kBatchManaged && asked.Text("cmbGroup").empty();
  shape.by = itsOwn ? SummaryBy::kBatch : static_cast<SummaryBy>(ChoiceOf(asked, "cmbGroup", kGroupings));
  shape.levels = LevelsOf(asked);
  shape.onlySums = FlagOf(asked, "chkOnlyTotal");
  shape.hidesUnmoved = FlagOf(asked, "chkNoAmt");
  shape.hidesEmpty = FlagOf(asked, "chkNoBal");
  return shape;
}

void AddFigureFields(Recordset& rows) {
  for (const FigureGroup& group : kGroups) {
    rows.AppendField(group.quantity, FieldType::kDouble);
    rows.AppendField(group.packages, FieldType::kText);
    rows.AppendField(group.auxQuantity, FieldType::kDouble);
    rows.AppendField(group.price, FieldType::kDouble);
    rows.AppendField(group.amount, FieldType::kCurrency);
  }
}

void SetGroups(RowAppender& to, std::size_t column, const SummaryLine& line) {
  for (const FigureGroup& group : kGroups) {
    const Sums sums = group.of(line.figures);
    SetFigures(to, {.quantity = column, .auxQuantity = column + 2, .amount = column + 4}, line, sums);
    if (line.item != nullptr) {
      to.SetText(column + 1, WholeAndLoose(sums.quantity, line.item->packages, line.item->unit));
    }
    to.SetDouble(column + 3, PriceOf(sums));
    column += kGroupWidth;
  }
}

}  // namespace

Ref<Recordset> ReadMovementSummary(services::Store& store, const platform::Variant& filter,
                                   MovementGoods goods) {
  const ReportFilter asked(filter);
  const database::Transaction onePicture(store.Reading(), database::Transaction::Kind::kRead);
  const SummaryShape shape = ShapeOf(asked, goods);
  MovementSummary summary(store, asked, MovementChoice(store, asked, "t4"), shape);
  const Ref<Recordset> rows = MakeRef<Recordset>();
  const SummaryFields leading(shape, "FCommonName", *rows);
  const std::size_t firstFigure = rows->Fields().size();
  AddFigureFields(*rows);
  rows->Open();
  RowAppender to(*rows);
  summary.Read([&](const SummaryLine& line) {
    leading.Set(to, line, line.item != nullptr ? summary.SupplierOf(line.item->id) : std::string_view());
    SetGroups(to, firstFigure, line);
    to.CommitRow();
  });
  return rows;
}

}  // namespace books::reports
