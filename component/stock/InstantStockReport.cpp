// The heading grows from the left: category levels, the item's own columns, what the display mode adds to
// them, then the figures. The frozen block is counted along the way.
#include "component/stock/InstantStockReport.h"

#include <array>

#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using enum ColumnType;
using platform::Dictionary;
using platform::Object;
using platform::Ref;

constexpr Column kItemColumns[] = {
    {.caption = "商品代码$", .type = kText, .field = "FItemNumber"},
    {.caption = "商品名称$", .type = kText, .field = "FItemName"},
    {.caption = "规格型号$", .type = kText, .field = "FModel"},
    {.caption = "条形码$", .type = kText, .field = "FBarCode"},
    {.caption = "单位$", .type = kText, .field = "FUnitName"},
    {.caption = "辅助单位$",
     .type = kText,
     .field = "FSecUnitName",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
};

constexpr Column kProperty = {
    .caption = "辅助属性$", .type = kText, .field = "FAuxPropName", .mask = kWithAuxiliaryUnits};
constexpr Column kBatch = {.caption = "批号$", .type = kText, .field = "FBatchNo"};
constexpr std::array kPropertyOnly = {kProperty};
constexpr std::array kBatchOnly = {kBatch};
constexpr std::array kPropertyAndBatch = {kProperty, kBatch};

// A way to list the items. The frozen block takes as many columns with two keys as with one, and without a
// key it stops before the hidden auxiliary unit.
struct DisplayMode {
  std::int32_t frozenColumns = 0;  // behind the category levels
  std::span<const Column> columns;
};
constexpr DisplayMode kDisplayModes[] = {
    {.frozenColumns = 5, .columns = {}},
    {.frozenColumns = 6, .columns = kPropertyOnly},
    {.frozenColumns = 6, .columns = kBatchOnly},
    {.frozenColumns = 6, .columns = kPropertyAndBatch},
};
constexpr std::int32_t kFrozenWithoutMode = 6;

}  // namespace

void InstantStockReport::SetUpProperty(Dictionary& property) {
  property.Set("UserDefinedGoods", NewUserFieldRequest(true, "FModel", "", ""));
}

std::int16_t InstantStockReport::AmountMask() const {
  return platform::ToDouble(RequireFilter().Value("ContainBills")) == 0 ? kEveryAppType : std::int16_t{0};
}

void InstantStockReport::AddReportColumns() {
  AddLevelColumns(levels_);
  const std::int32_t levelCount = levels_.Count();
  Property()->Set("FrozenColumn", kFrozenWithoutMode + levelCount);
  AddColumns(kItemColumns);
  const double mode = platform::LeadingNumber(platform::ToText(RequireFilter().Value("ShowType")));
  for (std::size_t i = 0; i < std::size(kDisplayModes); ++i) {
    if (mode != static_cast<double>(i)) continue;
    Property()->Set("FrozenColumn", kDisplayModes[i].frozenColumns + levelCount);
    AddColumns(kDisplayModes[i].columns);
  }
  AddFigureColumns();
}

void InstantStockReport::AddDataRight(std::optional<Ref<Dictionary>>& dataRightDic) {
  std::string clause;
  MakeDataRightWhere(DataRightEntries(Facts().dataRights), clause);
  if (Filter()) Filter()->Set("DataRightWhere", clause);
  if (dataRightDic && *dataRightDic) (*dataRightDic)->Set("DataRightWhere", clause);
}

void InstantStockReport::Fetch() {
  levels_ = ReadLevelRange(RequireFilter());
  AccessCheck();
  Ref<Object> data;
  try {
    BuildHeading();
    std::optional<Ref<Dictionary>> noDictionary;
    AddDataRight(noDictionary);
    data = platform::CreateObject(Facts().dataComponent);
    ProgBar().HideProgBar();
    BeforeRead();
    ProgBar().SetMsg(ResString("正在从服务器读取数据，请稍候..."));
    KeepRows(CallData(*data));
    AfterRead();
    ProgBar().Unload();
    SetOutcome(true, "");
  } catch (const std::exception& error) {
    SetHeadVector({});
    SetOutcome(false, error.what());
    ProgBar().Unload();
  }
}

}  // namespace component
