// The groups are a table in the order of the report's columns. What no group of its own takes counts as other
// business of its side, so that groups and totals always agree.
#include "books/reports/movement/Data10401.h"

#include <algorithm>
#include <array>

#include "books/database/Connection.h"
#include "books/reports/movement/SummaryFields.h"
#include "books/schema/Codes.h"

namespace books::reports {
namespace {

using platform::Currency;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::RowAppender;
using schema::BillClass;

struct ClassGroup {
  BillClass billClass = BillClass::kPurchaseReceipt;
  bool receipt = true;
  bool bothWays = false;    // its fields say In or Out
  bool amountOnly = false;  // one field
};
constexpr ClassGroup kGroups[] = {
    {BillClass::kPurchaseReceipt},
    {BillClass::kEstimatedReceipt},
    {BillClass::kOtherReceipt},
    {BillClass::kPurchaseRebateGoods},
    {BillClass::kCountGain},
    {.billClass = BillClass::kAssembly, .bothWays = true},
    {.billClass = BillClass::kDisassembly, .bothWays = true},
    {.billClass = BillClass::kTransfer, .bothWays = true},
    {.billClass = BillClass::kPurchaseRebateMoney, .amountOnly = true},
    {.billClass = BillClass::kPriceAdjustment, .amountOnly = true},
    {.billClass = BillClass::kSalesIssue, .receipt = false},
    {.billClass = BillClass::kConsignment, .receipt = false},
    {.billClass = BillClass::kOtherIssue, .receipt = false},
    {.billClass = BillClass::kSalesRebateGoods, .receipt = false},
    {.billClass = BillClass::kCountLoss, .receipt = false},
    {.billClass = BillClass::kAssembly, .receipt = false, .bothWays = true},
    {.billClass = BillClass::kDisassembly, .receipt = false, .bothWays = true},
    {.billClass = BillClass::kTransfer, .receipt = false, .bothWays = true},
};
constexpr std::size_t kOtherReceipts = 2;
constexpr std::size_t kOtherIssues = 12;
static_assert(kGroups[kOtherReceipts].billClass == BillClass::kOtherReceipt);
static_assert(kGroups[kOtherIssues].billClass == BillClass::kOtherIssue);

std::size_t GroupOf(const Move& move) {
  const auto billClass = static_cast<BillClass>(move.billClass);
  const auto* group = std::ranges::find_if(kGroups, [&](const ClassGroup& each) {
    return each.billClass == billClass && each.receipt == move.receipt;
  });
  if (group == std::end(kGroups)) return move.receipt ? kOtherReceipts : kOtherIssues;
  return static_cast<std::size_t>(group - kGroups);
}

std::string FieldOf(const ClassGroup& group, std::string_view figure) {
  std::string name = "F";
  if (group.bothWays) name += group.receipt ? "In" : "Out";
  return name + std::string(figure) + std::to_string(static_cast<std::int32_t>(group.billClass));
}

std::string AmountFieldOf(const ClassGroup& group) {
  return group.billClass == BillClass::kPurchaseRebateMoney ? "FRebateAmount" : FieldOf(group, "Amount");
}

// By warehouse the auxiliary quantity that goes into disassemblies has a name of its own.
std::string AuxFieldOf(const ClassGroup& group, SummaryBy by) {
  const bool misspelt =
      by == SummaryBy::kWarehouse && group.billClass == BillClass::kDisassembly && !group.receipt;
  return FieldOf(group, misspelt ? "SevQty" : "SecQty");
}

// Where the figures of a report are, once its fields are added.
class BusinessFields {
 public:
  BusinessFields(Recordset& rows, SummaryBy by) : rows_(rows) {
    opening_ = Add("FBegQty", "FBegSecQty", "FBegAmount");
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      const ClassGroup& group = kGroups[i];
      if (group.amountOnly) {
        groups_[i].amount = AddField(AmountFieldOf(group), FieldType::kCurrency);
      } else {
        groups_[i] = Add(FieldOf(group, "Qty"), AuxFieldOf(group, by), AmountFieldOf(group));
      }
    }
    receipts_ = Add("FInQtyTotal", "FInSecQtyTotal", "FInAmountTotal");
    issues_ = Add("FOutQtyTotal", "FOutSecQtyTotal", "FOutAmountTotal");
    closing_ = Add("FBalQty", "FBalSecQty", "FBalAmount");
  }

  void Set(RowAppender& to, const SummaryLine& line) const {
    const SummaryFigures& figures = line.figures;
    SetFigures(to, opening_, line, figures.opening);
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      if (kGroups[i].amountOnly) {
        to.SetCurrency(groups_[i].amount, Currency::FromUnits(figures.groups[i].amount));
      } else {
        SetFigures(to, groups_[i], line, figures.groups[i]);
      }
    }
    SetFigures(to, receipts_, line, figures.receipts);
    SetFigures(to, issues_, line, figures.issues);
    SetFigures(to, closing_, line, figures.Closing());
  }

 private:
  std::size_t AddField(std::string_view name, FieldType type) {
    rows_.AppendField(name, type);
    return rows_.Fields().size() - 1;
  }
  FigureColumns Add(std::string_view quantity, std::string_view auxQuantity, std::string_view amount) {
    FigureColumns columns;
    columns.quantity = AddField(quantity, FieldType::kDouble);
    columns.auxQuantity = AddField(auxQuantity, FieldType::kDouble);
    columns.amount = AddField(amount, FieldType::kCurrency);
    return columns;
  }

  Recordset& rows_;
  FigureColumns opening_;
  std::array<FigureColumns, std::size(kGroups)> groups_;
  FigureColumns receipts_;
  FigureColumns issues_;
  FigureColumns closing_;
};

}  // namespace

Ref<Recordset> ReadBusinessSummary(services::Store& store, const platform::Variant& filter, SummaryBy by) {
  const ReportFilter asked(filter);
  const database::Transaction onePicture(store.Reading(), database::Transaction::Kind::kRead);
  SummaryShape shape;
  shape.by = by;
  shape.levels = LevelsOf(asked);
  shape.onlySums = FlagOf(asked, "OnlyTotal");
  shape.hidesUnmoved = FlagOf(asked, "ShowNoHappen");
  shape.hidesEmpty = FlagOf(asked, "Balance");
  shape.groupCount = std::size(kGroups);
  shape.groupOf = GroupOf;
  MovementSummary summary(store, asked, MovementChoice(store, asked, "ts"), shape);
  const Ref<Recordset> rows = MakeRef<Recordset>();
  const SummaryFields leading(shape, "FStockName", *rows);
  const BusinessFields fields(*rows, by);
  rows->Open();
  RowAppender to(*rows);
  summary.Read([&](const SummaryLine& line) {
    leading.Set(to, line, line.item != nullptr ? summary.SupplierOf(line.item->id) : std::string_view());
    fields.Set(to, line);
    to.CommitRow();
  });
  return rows;
}

}  // namespace books::reports
