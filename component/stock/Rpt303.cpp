#include "component/stock/Rpt303.h"

#include "component/frame/MMTS.h"
#include "component/stock/frmFirter303.h"

namespace component {
namespace {

using enum ColumnType;

constexpr Column kFirstCategory[] = {
    {.caption = "类别代码$", .type = kText, .field = "FNumber1"},
    {.caption = "商品一级类别$", .type = kText, .field = "FName1"},
};
constexpr Column kSecondCategory[] = {
    {.caption = "类别代码$", .type = kText, .field = "FNumber2"},
    {.caption = "商品一级类别$", .type = kText, .field = "FName1"},
    {.caption = "商品二级类别$", .type = kText, .field = "FName2", .mask = kWithAuxiliaryUnits},
};
constexpr Column kItems[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品一级类别$", .type = kText, .field = "FName1"},
    {.caption = "商品二级类别$", .type = kText, .field = "FName2", .mask = kWithAuxiliaryUnits},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "单位$", .type = kText, .field = "FUnitName"},
};
constexpr Column kBatchColumn[] = {{.caption = "批号$", .type = kText, .field = "FBatchNo"}};

constexpr Column kFigures[] = {
    {.caption = "当前库存数$", .type = kQuantity, .field = "FQty"},
    {.caption = "当前库存金额$", .type = kAmount, .field = "FBal"},
    {.caption = "占比%$", .type = kAmount, .field = "FPercent"},
    {.caption = "总占比%$", .type = kAmount, .field = "FPercentTT"},
    {.caption = "累计占比%$", .type = kAmount, .field = "FPercentST", .visible = false},
};

// What the rows are summed up by, in the order of the numbers of "cmbtype".
struct Summary {
  std::span<const Column> columns;
  bool byBatch = false;
};
constexpr Summary kSummaries[] = {
    {.columns = kFirstCategory},
    {.columns = kSecondCategory},
    {.columns = kItems},
    {.columns = kItems, .byBatch = true},
};

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "d", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "303",
    .name = "库存结构分析表",
    .property = 10,
    .rows = RowsKind::kVector,
    .hasTitleObject = false,
    .dataComponent = "TOVMStockRpt.Data303",
    .dataMethod = "GetRpt303Data",
    .dataRights = kDataRights,
};

}  // namespace

Rpt303::Rpt303() : Exposed(kFacts) {}

void Rpt303::AddReportColumns() {
  const double chosen = platform::LeadingNumber(platform::ToText(RequireFilter().Value("cmbtype")));
  for (std::size_t i = 0; i < std::size(kSummaries); ++i) {
    if (chosen != static_cast<double>(i)) continue;
    AddColumns(kSummaries[i].columns);
    // Left out, not added and hidden as in the sibling reports.
    if (kSummaries[i].byBatch && GetAppType() != 1) AddColumns(kBatchColumn);
    AddColumns(kFigures);
  }
}

platform::Ref<TOVRptFilterDialog> Rpt303::MakeDialog() { return platform::MakeRef<frmFirter303>(); }

}  // namespace component
