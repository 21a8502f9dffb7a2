// One page: its title lines, its heading, its right clause, and the walk over the periods.
#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/ledger/Rpt10402.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;
using enum ColumnType;

constexpr std::int32_t kBatchCost = 80;  // FTrack of items that are costed batch by batch
constexpr std::int32_t kNoItemTrack = 78;
constexpr std::int32_t kAppTypeWithoutBatches = 1;

// Columns that are not always there.
enum class Shown : std::uint8_t { kAlways, kWithVouchers, kWithBatches };

struct LedgerColumn {
  Column column;
  Shown shown = Shown::kAlways;
};

constexpr LedgerColumn kColumns[] = {
    {.column = {.caption = "会计期间$", .type = kText, .field = "FPeriodName"}},
    {.column = {.caption = "日期$", .type = kText, .field = "FDate"}},
    {.column = {.caption = "凭证字号$", .type = kText, .field = "FVoucherNo"}, .shown = Shown::kWithVouchers},
    {.column = {.caption = "批号$", .type = kText, .field = "FBatchNo"}, .shown = Shown::kWithBatches},
    {.column = {.caption = "单据号码$", .type = kText, .field = "FBillNo"}},
    {.column = {.caption = "事务类型$", .type = kText, .field = "FTranTypeName"}},
    {.column = {.caption = "辅助属性$", .type = kText, .field = "FAuxName", .mask = kWithAuxiliaryUnits}},
    {.column = {.caption = "收入+|+|", .second = "数量", .type = kQuantity, .field = "FInQty"}},
    {.column = {.second = "单价", .type = kPrice, .field = "FInPrice"}},
    {.column = {.second = "金额", .type = kAmount, .field = "FInAmount"}},
    {.column = {.caption = "发出+|+|", .second = "数量", .type = kQuantity, .field = "FOutQty"}},
    {.column = {.second = "单价", .type = kPrice, .field = "FOutPrice"}},
    {.column = {.second = "金额", .type = kAmount, .field = "FOutAmount"}},
    {.column = {.caption = "结存+|+|", .second = "数量", .type = kQuantity, .field = "FBalQty"}},
    {.column = {.second = "单价", .type = kPrice, .field = "FBalPrice"}},
    {.column = {.second = "金额", .type = kAmount, .field = "FBalAmount"}},
    {.column = {.caption = "备注$", .type = kText, .field = "FNote"}},
};

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "v4", .itemClass = "5"}};

// A title line over a range of numbers, by which of its ends are filled.
struct RangeCaptions {
  std::string_view name;  // the filter's keys are B and E followed by it
  std::string_view range;
  std::string_view from;
  std::string_view to;
  std::string_view all;
};

constexpr RangeCaptions kBatchCaptions = {"BatchNo", "批号：", "批号：大于", "批号：小于", "全部批号"};
constexpr RangeCaptions kStockCaptions = {"StockNumber", "仓库代码：", "仓库代码：大于", "仓库代码：小于",
                                          "全部仓库"};

std::string RangeLine(const Dictionary& filter, const RangeCaptions& captions) {
  const std::string from = platform::ToText(filter.Value("B" + std::string(captions.name)));
  const std::string to = platform::ToText(filter.Value("E" + std::string(captions.name)));
  if (!from.empty() && !to.empty()) return ResString(captions.range) + from + " - " + to;
  if (!from.empty()) return ResString(captions.from) + from;
  if (!to.empty()) return ResString(captions.to) + to;
  return ResString(captions.range) + std::string(captions.all);
}

std::string TextOf(const Recordset& row, std::string_view field) {
  const Variant value = row.Value(field);
  return value.IsNull() ? std::string() : platform::ToText(value);
}

}  // namespace

void Rpt10402::BuildItemTitle() {
  const Dictionary& filter = RequireFilter();
  const Ref<Vector> lines = MakeRef<Vector>();
  SetTitle(lines);
  auto add = [&lines](const std::string& caption) {
    const Ref<Dictionary> line = MakeRef<Dictionary>();
    line->Set("FCaption", caption);
    line->Set("FIndex", static_cast<std::int16_t>(lines->Items().size()));
    lines->Add(line);
  };
  add(ResString("起始日期：") + platform::ToText(filter.Value("BDate")));
  add(ResString("截止日期：") + platform::ToText(filter.Value("EDate")));
  if (!items_ || items_->AtEnd()) return;
  add(ResString("商品名称：") + TextOf(*items_, "FName") + "(" + TextOf(*items_, "FNumber") + ")");
  add(ResString("规格型号：") + TextOf(*items_, "FModel"));
  add(ResString("计价方法：") + TextOf(*items_, "FTrackName"));
  add(RangeLine(filter, kBatchCaptions));
  add(RangeLine(filter, kStockCaptions));
}

void Rpt10402::MakeLedgerDataRight() {
  std::string clause;
  MakeDataRightWhere(DataRightEntries(kDataRights), clause);
  RequireFilter().Set("DataRightWhere", clause);
}

void Rpt10402::BuildLedgerHeader() {
  showsBatches_ = multiPage_;
  if (!multiPage_ && HasItems()) {
    const Variant managed = items_->Value("FBatchManager");
    const Variant track = items_->Value("FTrack");
    showsBatches_ = (!managed.IsNull() && platform::ToBoolean(managed)) ||
                    (!track.IsNull() && platform::ToInt32(track) == kBatchCost);
  }
  BuildHeading();
}

void Rpt10402::AddReportColumns() {
  const bool hasVouchers = GetGLAndICUnite();
  const bool hasBatches = GetAppType() != kAppTypeWithoutBatches;
  for (const LedgerColumn& each : kColumns) {
    if (each.shown == Shown::kWithVouchers && !hasVouchers) continue;
    if (each.shown == Shown::kWithBatches && !hasBatches) continue;
    Column column = each.column;
    if (each.shown == Shown::kWithBatches) column.visible = showsBatches_;
    AddColumns({&column, 1});
  }
}

LedgerDecimals Rpt10402::ItemDecimals() const {
  auto read = [this](std::string_view field) {
    const Variant value = items_->Value(field);
    return value.IsNull() ? std::int16_t{0} : platform::ToInt16(value);
  };
  return {.quantity = read("FQtyDecimal"), .price = read("FPriceDecimal")};
}

Variant Rpt10402::GetPerioddata(Object& data, std::int32_t itemId, std::int16_t year, std::int16_t period,
                                const std::string& condition) {
  Variant filter(Filter());
  Variant answer = data.Call("GetPerioddata", GetPropsString(), itemId, year, period, condition, filter);
  AcceptFilter(platform::detail::FromVariant<Ref<Dictionary>>(filter));  // it may hand back another one
  return answer;
}

Ref<Recordset> Rpt10402::GetRptList(std::int16_t iBeginYear, std::int16_t iBeginPeriod, std::int16_t iEndYear,
                                    std::int16_t iEndPeriod, std::int32_t ItemID,
                                    const std::optional<bool>& bShowNoHappen) {
  const Ref<Rpt10402> kept(this);
  try {
    Ref<Recordset> page = BuildPage(
        {.beginYear = iBeginYear, .beginPeriod = iBeginPeriod, .endYear = iEndYear, .endPeriod = iEndPeriod},
        ItemID, bShowNoHappen.value_or(false));
    if (!multiPage_) ProgBar().Unload();
    SetOutcome(true, "");
    return page;
  } catch (const std::exception& error) {
    SetOutcome(false, error.what());
    ProgBar().Unload();
    return nullptr;
  }
}

Ref<Recordset> Rpt10402::BuildPage(const LedgerRange& range, std::int32_t itemId, bool showNoHappen) {
  MakeLedgerDataRight();
  BuildItemLevelSql({.classId = 4,
                     .likeNumber = {},
                     .beginNumber = {},
                     .endNumber = {},
                     .beginLevel = 1,
                     .endLevel = 5,
                     .showNumber = 0});  // the ledger has no levels; its text reaches no server
  RequireFilter().Set("FTrack", HasItems() ? items_->Value("FTrack") : Variant(kNoItemTrack));
  Ref<Recordset> page = mutilPageRs_;
  if (!multiPage_) {
    page = NewLedgerRs(false);
    BuildLedgerHeader();
  }
  if (!page)
    throw platform::Error(platform::ErrorNumber::kObjectNotSet, std::string(kClassName), "no page is open");
  if (HasItems()) {
    const LedgerTitles titles = TitlesOf(multiPage_ ? Title() : Ref<Vector>());
    LedgerPage rows(*page, multiPage_ ? &titles : nullptr);
    LedgerWalk walk({.decimals = ItemDecimals(), .showNoHappen = showNoHappen}, periodData_,
                    LedgerProgress(ProgBar()), rows);
    walk.Run(range, [&](std::int16_t year, std::int16_t period) {
      const Ref<Object> data = platform::CreateObject(Facts().dataComponent);
      return GetPerioddata(*data, itemId, year, period, "");
    });
    rows.Finish();
  }
  if (page->RecordCount() > 0) page->MoveLast();  // where adding rows leaves a recordset
  return page;
}

}  // namespace component
