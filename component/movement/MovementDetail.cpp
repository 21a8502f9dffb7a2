#include "component/movement/MovementDetail.h"

namespace component {
namespace {

using enum ColumnType;

constexpr std::int16_t kWithBatches = 6;

// With batches the batch and the base unit are what the rows are read by; the partner and the notes fall
// away.
constexpr LeadingColumn kLeading[] = {
    {.column = {.caption = "日期$", .type = kText, .field = "FDate"}},
    {.column = {.caption = "单据类型$", .type = kText, .field = "FBillType"}},
    {.column = {.caption = "单据编号$", .type = kText, .field = "FBillNo"}},
    {.column = {.caption = "摘要$", .type = kText, .field = "FExplanation"}, .variety = Variety::kGoods},
    {.column = {.caption = "商品代码$", .type = kText, .field = "FItemNumber"}},
    {.column = {.caption = "商品名称$", .type = kText, .field = "FItemName"}},
    {.column = {.caption = "规格型号$", .type = kText, .field = "FModel"}},
    {.column = {.caption = "往来单位$", .type = kText, .field = "FBussinessName"},
     .variety = Variety::kGoods},
    {.column = {.caption = "往来单位代码$", .type = kText, .field = "FBussinessNumber", .visible = false},
     .variety = Variety::kGoods},
    {.column = {.caption = "辅助属性$",
                .type = kText,
                .field = "FAuxProp",
                .visible = false,
                .mask = kWithAuxiliaryUnits}},
    {.column = {.caption = "批号$", .type = kText, .field = "FBatchNo1", .visible = false},
     .variety = Variety::kGoods,
     .appTypes = kWithBatches},
    {.column = {.caption = "批号$", .type = kText, .field = "FBatchNo1"}, .variety = Variety::kBatches},
    {.column = {.caption = "条形码$", .type = kText, .field = "FBarCode", .visible = false}},
    {.column = {.caption = "基本单位$", .type = kText, .field = "FUnitName", .visible = false},
     .variety = Variety::kGoods},
    {.column = {.caption = "基本单位$", .type = kText, .field = "FUnitName"}, .variety = Variety::kBatches},
    {.column = {.caption = "单位$", .type = kText, .field = "FShowUnitName"}},
    {.column = {.caption = "辅助单位$",
                .type = kText,
                .field = "FAuxUnitName",
                .visible = false,
                .mask = kWithAuxiliaryUnits}},
};

constexpr FigureColumn kLayout[] = {
    {.field = &FigureFields::baseQty, .second = "基本单位数量", .type = kQuantity, .visible = false},
    {.field = &FigureFields::basePrice, .second = "基本单位单价", .type = kPrice, .visible = false},
    {.field = &FigureFields::qty, .second = "数量", .type = kQuantity},
    {.field = &FigureFields::packages, .second = "整件散包", .type = kPackages},
    {.field = &FigureFields::price, .second = "单价", .type = kPrice},
    {.field = &FigureFields::secQty,
     .second = "辅助数量",
     .type = kQuantity,
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.field = &FigureFields::amount, .second = "金额", .type = kAmount},
};

constexpr FigureGroup kReceipt = {.name = "收入",
                                  .fields = {.baseQty = "FInQty",
                                             .basePrice = "FInPrice",
                                             .qty = "FShowInQty",
                                             .packages = "FComplexQtyDisIn",
                                             .price = "FShowInPrice",
                                             .secQty = "FAuxInQty",
                                             .amount = "FInAmount"}};
constexpr FigureGroup kIssue = {.name = "发出",
                                .fields = {.baseQty = "FOutQty",
                                           .basePrice = "FOutPrice",
                                           .qty = "FShowOutQty",
                                           .packages = "FComplexQtyDisOut",
                                           .price = "FShowOutPrice",
                                           .secQty = "FAuxOutQty",
                                           .amount = "FOutAmount"}};
constexpr FigureGroup kBalance = {.name = "结存",
                                  .fields = {.baseQty = "FStockQty",
                                             .basePrice = "FStockPrice",
                                             .qty = "FShowStockQty",
                                             .packages = "FComplexQtyDis",
                                             .price = "FShowStockPrice",
                                             .secQty = "FAuxStockQty",
                                             .amount = "FStockAmount"}};

constexpr LeadingColumn kTrailing[] = {
    {.column = {.caption = "备注$", .type = kText, .field = "FNote"}, .variety = Variety::kGoods},
};

}  // namespace

void AddDetailColumns(Variety variety, const platform::Dictionary& filter) {
  AddLeadingColumns(kLeading, variety);
  AddFigureGroup(kReceipt, kLayout, variety);
  AddFigureGroup(kIssue, kLayout, variety);
  // A running balance means nothing between rows of different items.
  if (FilterNumber(filter, "chkGroupByGood") == 1) AddFigureGroup(kBalance, kLayout, variety);
  AddLeadingColumns(kTrailing, variety);
}

}  // namespace component
