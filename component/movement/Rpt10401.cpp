// One sequence of bill classes serves all three layouts: what came in, its total, what went out, its total,
// between the opening and the closing balance. The numbers in the field names are the bill classes: 102 buys,
// 103 sells, 104 moves stock; a class that works both ways has In or Out before the figure.
#include "component/movement/Rpt10401.h"

#include <algorithm>

#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/movement/MovementColumns.h"
#include "component/movement/frmFirter10401.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using enum ColumnType;

constexpr LeadingColumn kLeading[] = {
    {.column = {.caption = "仓库$", .type = kText, .field = "FStockName"}, .group = kByStock},
    {.column = {.caption = "商品代码$", .type = kText, .field = "FItemNumber"}},
    {.column = {.caption = "商品名称$", .type = kText, .field = "FItemName"}},
    {.column = {.caption = "规格型号$", .type = kText, .field = "FModel"}},
    {.column = {.caption = "条形码$", .type = kText, .field = "FBarCode"}},
    {.column = {.caption = "批号$", .type = kText, .field = "FBatchNo"}, .group = kByBatch},
    {.column = {.caption = "单位$", .type = kText, .field = "FUnitName"}},
    {.column = {.caption = "辅助单位$", .type = kText, .field = "FSecUnitName", .mask = kWithAuxiliaryUnits}},
};

// The caption of the amounts is a blank, not an empty text.
constexpr FigureColumn kFigures[] = {
    {.field = &FigureFields::qty, .second = "数量", .type = kQuantity},
    {.field = &FigureFields::secQty, .second = "辅助数量", .type = kQuantity, .mask = kWithAuxiliaryUnits},
    {.field = &FigureFields::amount, .second = "金额", .type = kAmount, .caption = " "},
};

// A group of three columns, or a single amount where there is no quantity.
struct BillClass {
  FigureGroup group;
  bool rebate = false;                  // only where rebates are given in goods
  std::string_view secQtyByStock = {};  // where the rows by warehouse spell the field in their own way
};

constexpr BillClass kBillClasses[] = {
    {.group = {.name = "期初余额",
               .fields = {.qty = "FBegQty", .secQty = "FBegSecQty", .amount = "FBegAmount"}}},
    {.group = {.name = "采购收货",
               .fields = {.qty = "FQty1020002", .secQty = "FSecQty1020002", .amount = "FAmount1020002"}}},
    {.group = {.name = "估价入库",
               .fields = {.qty = "FQty1020003", .secQty = "FSecQty1020003", .amount = "FAmount1020003"},
               .mask = kWithAuxiliaryUnits}},
    {.group = {.name = "其他入库",
               .fields = {.qty = "FQty1040001", .secQty = "FSecQty1040001", .amount = "FAmount1040001"}}},
    {.group = {.name = "采购返利单(返商品)",
               .fields = {.qty = "FQty1020004", .secQty = "FSecQty1020004", .amount = "FAmount1020004"},
               .mask = kWithAuxiliaryUnits},
     .rebate = true},
    {.group = {.name = "盘盈入库",
               .fields = {.qty = "FQty1040003", .secQty = "FSecQty1040003", .amount = "FAmount1040003"}}},
    {.group = {.name = "组装入库",
               .fields = {.qty = "FInQty1040005", .secQty = "FInSecQty1040005", .amount = "FInAmount1040005"},
               .mask = kWithAuxiliaryUnits}},
    {.group = {.name = "拆卸入库",
               .fields = {.qty = "FInQty1040006", .secQty = "FInSecQty1040006", .amount = "FInAmount1040006"},
               .mask = kWithAuxiliaryUnits}},
    {.group = {.name = "调拨入库",
               .fields = {.qty = "FInQty1040007",
                          .secQty = "FInSecQty1040007",
                          .amount = "FInAmount1040007"}}},
    {.group = {.name = "返利净额$", .fields = {.amount = "FRebateAmount"}}, .rebate = true},
    {.group = {.name = "调价金额$", .fields = {.amount = "FAmount1040008"}}},
    {.group = {.name = "入库合计",
               .fields = {.qty = "FInQtyTotal", .secQty = "FInSecQtyTotal", .amount = "FInAmountTotal"}}},
    {.group = {.name = "销售发货",
               .fields = {.qty = "FQty1030002", .secQty = "FSecQty1030002", .amount = "FAmount1030002"}}},
    {.group = {.name = "委托代销",
               .fields = {.qty = "FQty1030003", .secQty = "FSecQty1030003", .amount = "FAmount1030003"},
               .mask = kWithAuxiliaryUnits}},
    {.group = {.name = "其他出库",
               .fields = {.qty = "FQty1040002", .secQty = "FSecQty1040002", .amount = "FAmount1040002"}}},
    {.group = {.name = "销售返利单(返商品)",
               .fields = {.qty = "FQty1030004", .secQty = "FSecQty1030004", .amount = "FAmount1030004"},
               .mask = kWithAuxiliaryUnits},
     .rebate = true},
    {.group = {.name = "盘亏损毁",
               .fields = {.qty = "FQty1040004", .secQty = "FSecQty1040004", .amount = "FAmount1040004"}}},
    {.group = {.name = "组装出库",
               .fields = {.qty = "FOutQty1040005",
                          .secQty = "FOutSecQty1040005",
                          .amount = "FOutAmount1040005"},
               .mask = kWithAuxiliaryUnits}},
    {.group = {.name = "拆卸出库",
               .fields = {.qty = "FOutQty1040006",
                          .secQty = "FOutSecQty1040006",
                          .amount = "FOutAmount1040006"},
               .mask = kWithAuxiliaryUnits},
     .secQtyByStock = "FOutSevQty1040006"},
    {.group = {.name = "调拨出库",
               .fields = {.qty = "FOutQty1040007",
                          .secQty = "FOutSecQty1040007",
                          .amount = "FOutAmount1040007"}}},
    {.group = {.name = "出库合计",
               .fields = {.qty = "FOutQtyTotal", .secQty = "FOutSecQtyTotal", .amount = "FOutAmountTotal"}}},
    {.group = {.name = "期末余额",
               .fields = {.qty = "FBalQty", .secQty = "FBalSecQty", .amount = "FBalAmount"}}},
};

// What the rows stand for, by the number in "SumItem".
struct SummaryLayout {
  RowGroup rows = kByItem;
  std::int32_t frozenColumns = 0;  // behind the category levels
  std::string_view dataComponent;
};
constexpr SummaryLayout kLayouts[] = {
    {.rows = kByItem, .frozenColumns = 4, .dataComponent = "TOVMStockRpt.Data1040101"},
    {.rows = kByStock, .frozenColumns = 5, .dataComponent = "TOVMStockRpt.Data1040102"},
    {.rows = kByBatch, .frozenColumns = 5, .dataComponent = "TOVMStockRpt.Data1040104"},
};
constexpr std::int32_t kFrozenWithoutLayout = 6;

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "ts", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10401",
    .name = "收发业务汇总表",
    .property = 10,
    .rows = RowsKind::kObject,
    .titleInsideBox = true,
    .hasDateRange = true,
    .dataComponent = kLayouts[0].dataComponent,
    .dataMethod = "GetRptData",
    .dataRights = kDataRights,
};

// Null for a number that nobody knows.
const SummaryLayout* LayoutOf(const platform::Dictionary& filter) {
  const RowGroup wanted = FilterGroup(filter, "SumItem");
  const auto* const found =
      std::ranges::find_if(kLayouts, [&](const SummaryLayout& layout) { return layout.rows == wanted; });
  return found == std::end(kLayouts) ? nullptr : found;
}

bool GivesRebatesInGoods() { return GetAppType() == 4 && GetIndustryType() == 0; }

void AddBillClass(const BillClass& billClass, RowGroup rows) {
  if (billClass.rebate && !GivesRebatesInGoods()) return;
  FigureGroup group = billClass.group;
  if (group.fields.qty.empty()) {
    const Column single = {.caption = group.name, .type = kAmount, .field = group.fields.amount};
    return AddColumns({&single, 1});
  }
  if (rows == kByStock && !billClass.secQtyByStock.empty()) group.fields.secQty = billClass.secQtyByStock;
  AddFigureGroup(group, kFigures);
}

}  // namespace

Rpt10401::Rpt10401() : Exposed(kFacts) {}

void Rpt10401::SetUpProperty(platform::Dictionary& property) { property.Set("HasDefaultFilterOption", true); }

// The layout's columns and its frozen block.
void Rpt10401::AddReportColumns() {
  const SummaryLayout& layout = *LayoutOf(RequireFilter());
  Property()->Set("FrozenColumn", layout.frozenColumns + levels_.Count());
  AddLeadingColumns(kLeading, Variety::kGoods, layout.rows);
  for (const BillClass& billClass : kBillClasses) AddBillClass(billClass, layout.rows);
}

// The layout is chosen after the data right, and the shared heading stays with this report until the rows are
// there; after a failure until the next report takes it.
void Rpt10401::Fetch() {
  levels_ = ReadLevelRange(RequireFilter());
  AccessCheck();
  platform::Ref<platform::Object> data;
  try {
    StartHeading();
    AddLevelColumns(levels_);
    Property()->Set("FrozenColumn", kFrozenWithoutLayout + levels_.Count());
    WriteDataRight();
    const SummaryLayout* const layout = LayoutOf(RequireFilter());
    if (layout == nullptr) return SetHeadVector({});
    AddReportColumns();
    data = platform::CreateObject(layout->dataComponent);
    ProgBar().HideProgBar();
    ProgBar().SetMsg(ResString("正在从服务器读取数据，请稍候..."));
    KeepRows(CallData(*data));
    SetHeadVector({});
    ProgBar().Unload();
    SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
    ProgBar().Unload();
  }
}

platform::Ref<ReportFilterDialog> Rpt10401::MakeDialog() { return platform::MakeRef<frmFirter10401>(); }

}  // namespace component
