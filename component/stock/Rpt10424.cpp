#include "component/stock/Rpt10424.h"

#include "component/frame/VEZPublic.h"
#include "component/stock/frmFirter10424.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kColumns[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "辅助属性$", .type = kText, .field = "FAuxPropName"},
    {.caption = "基本单位$", .type = kText, .field = "FUnitName"},
    {.caption = "可用库存数量$", .type = kQuantity, .field = "FSuggestQty"},
    {.caption = "库存数量$", .type = kQuantity, .field = "FInvQty"},
    {.caption = "采购在订量$", .type = kQuantity, .field = "FMovingCgQty"},
    {.caption = "销售在订量$", .type = kQuantity, .field = "FMovingXsQty"},
    {.caption = "最低库存量$", .type = kQuantity, .field = "FLowLimitQty"},
};
// Item number, name, model and property; the unit scrolls with the figures.
constexpr std::int32_t kFrozenColumns = 4;

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "d", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10424",
    .name = "可用库存查询表",
    .property = 6,
    .rows = RowsKind::kVector,
    .hasTitleObject = false,
    .dataComponent = "TOVMStockRpt.Data10424",
    .dataMethod = "GetRptData",
    .dataRights = kDataRights,
};

}  // namespace

Rpt10424::Rpt10424() : Exposed(kFacts) {}

void Rpt10424::SetUpProperty(platform::Dictionary& property) {
  property.Set("UserDefinedGoods", NewUserFieldRequest(true, "FModel", "", ""));
}

void Rpt10424::AddReportColumns() {
  AddColumns(kColumns);
  Property()->Set("FrozenColumn", kFrozenColumns);
}

platform::Ref<TOVRptFilterDialog> Rpt10424::MakeDialog() { return platform::MakeRef<frmFirter10424>(); }

}  // namespace component
