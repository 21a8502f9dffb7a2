#include "component/movement/MovementSummary.h"

namespace component {
namespace {

using enum ColumnType;

// With batches the batch stands before the model.
constexpr LeadingColumn kLeading[] = {
    {.column = {.caption = "仓库$", .type = kText, .field = "FCommonName"}, .group = kByStock},
    {.column = {.caption = "商品代码$", .type = kText, .field = "FItemNumber"}},
    {.column = {.caption = "商品名称$", .type = kText, .field = "FItemName"}},
    {.column = {.caption = "规格型号$", .type = kText, .field = "FModel"}, .variety = Variety::kGoods},
    {.column = {.caption = "批号$", .type = kText, .field = "FBatchNo"}, .group = kByBatch},
    {.column = {.caption = "规格型号$", .type = kText, .field = "FModel"}, .variety = Variety::kBatches},
    {.column = {.caption = "默认供应商$", .type = kText, .field = "FSource", .visible = false},
     .variety = Variety::kGoods},
    {.column = {.caption = "条形码$", .type = kText, .field = "FBarCode"}},
    {.column = {.caption = "单位$", .type = kText, .field = "FUnitName"}},
    {.column = {.caption = "辅助单位$", .type = kText, .field = "FSecUnitName", .mask = kWithAuxiliaryUnits}},
};

constexpr FigureColumn kLayout[] = {
    {.field = &FigureFields::qty, .second = "数量", .type = kQuantity},
    {.field = &FigureFields::packages, .second = "整件散包", .type = kPackages},
    {.field = &FigureFields::secQty, .second = "辅助数量", .type = kQuantity, .mask = kWithAuxiliaryUnits},
    {.field = &FigureFields::price, .second = "单价", .type = kPrice},
    {.field = &FigureFields::amount, .second = "金额", .type = kAmount},
};

constexpr FigureGroup kGroups[] = {
    {.name = "期初结存",
     .fields = {.qty = "FBegQty",
                .packages = "FComplexQtyDisBeg",
                .price = "FBegPrice",
                .secQty = "FBegSecQty",
                .amount = "FBegBal"}},
    {.name = "本期收入",
     .fields = {.qty = "FInQty",
                .packages = "FComplexQtyDisIn",
                .price = "FInPrice",
                .secQty = "FInSecQty",
                .amount = "FInAmount"}},
    {.name = "本期发出",
     .fields = {.qty = "FOutQty",
                .packages = "FComplexQtyDisOut",
                .price = "FOutPrice",
                .secQty = "FOutSecQty",
                .amount = "FOutAmount"}},
    {.name = "期末结存",
     .fields = {.qty = "FEndQty",
                .packages = "FComplexQtyDisEnd",
                .price = "FEndPrice",
                .secQty = "FEndSecQty",
                .amount = "FEndBal"}},
};

constexpr std::int32_t kFrozenForGoods = 5;
constexpr std::int32_t kFrozenForBatches = 4;

}  // namespace

void AddSummaryColumns(Variety variety, const LevelRange& levels, const platform::Dictionary& filter,
                       platform::Dictionary& property) {
  AddLevelColumns(levels);
  property.Set("FrozenColumn",
               (variety == Variety::kBatches ? kFrozenForBatches : kFrozenForGoods) + levels.Count());
  AddLeadingColumns(kLeading, variety, FilterGroup(filter, "cmbGroup"));
  for (const FigureGroup& group : kGroups) AddFigureGroup(group, kLayout, variety);
}

}  // namespace component
