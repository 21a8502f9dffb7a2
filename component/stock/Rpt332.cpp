#include "component/stock/Rpt332.h"

#include "component/stock/frmFirter332.h"

namespace component {
namespace {

using enum ColumnType;

// The names of figures take no notice of the industry here.
constexpr Column kFigures[] = {
    {.caption = "仓库$", .type = kText, .field = "FStockName"},
    {.caption = "数量$", .type = kQuantity, .field = "FQty"},
    {.caption = "整件散包$", .type = kPackages, .field = "FComplexQtyDis"},
    {.caption = "辅助数量$",
     .type = kQuantity,
     .field = "FSecQty",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.caption = "平均单价$", .type = kQuantity, .field = "FAvgBal"},
};
constexpr Column kAmountColumn = {.caption = "金额$", .type = kAmount, .field = "FBal"};

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "d", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10432",
    .name = "即时库存行式查询",
    .property = 10422,  // the browser treats the two instant stock reports alike
    .rows = RowsKind::kVector,
    .titleInsideBox = true,
    .hasTitleObject = false,
    .dataComponent = "TOVMStockRpt.Data332",
    .dataMethod = "GetRptData",
    .dataRights = kDataRights,
};

}  // namespace

Rpt332::Rpt332() : Exposed(kFacts) {}

platform::Ref<ReportFilterDialog> Rpt332::MakeDialog() { return platform::MakeRef<frmFirter332>(); }

void Rpt332::AddFigureColumns() {
  AddColumns(kFigures);
  Column amount = kAmountColumn;
  amount.mask = AmountMask();
  AddColumns({&amount, 1});
}

}  // namespace component
