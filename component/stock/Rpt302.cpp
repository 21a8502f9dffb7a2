// The bands of columns come after the data: the component answers, next to the rows, three lists that tell
// the warehouses' field prefixes, captions and types.
#include "component/stock/Rpt302.h"

#include <vector>

#include "component/frame/MMTS.h"
#include "component/frame/VEZPublic.h"
#include "component/stock/frmFirter302.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Recordset.h"

namespace component {
namespace {

using enum ColumnType;
using platform::Dictionary;
using platform::Object;
using platform::Ref;
using platform::Variant;

constexpr DataRight kDataRights[] = {{.table = "t_stock", .alias = "d", .itemClass = "5"}};

constexpr ReportFacts kFacts = {
    .number = "10422",
    .name = "即时库存表",
    .property = 10422,
    .rows = RowsKind::kVector,
    .titleInsideBox = true,
    .hasTitleObject = false,
    .dataComponent = "TOVMStockRpt.Data302",
    .dataMethod = "GetRptData",
    .dataRights = kDataRights,
};

// A warehouse of this type is kept at cost; the others are kept by quantity alone.
constexpr double kCostedWarehouse = 500;
constexpr std::int32_t kWeighingIndustry = 1;
constexpr std::string_view kWarehouseCountSql = "select count(*) as FStockCount from t_Stock";

constexpr std::string_view kBandOfFive = "+|+|+|+|";
constexpr std::string_view kBandOfThree = "+|+|";

// Which columns show no figures while unaudited bills count.
enum class Amounts : std::uint8_t { kAlways, kAuditedOnly };

struct BandColumn {
  std::string_view second;
  std::string_view industrySecond;  // where quantities are theoretical and weights real
  ColumnType type = kQuantity;
  std::string_view suffix;
  bool visible = true;
  std::int16_t mask = kEveryAppType;
  Amounts amounts = Amounts::kAlways;
  bool costedOnly = false;
};

constexpr BandColumn kBand[] = {
    {.second = "数量", .industrySecond = "理论数量", .suffix = "FQty"},
    // Hidden with the amounts, unlike its like in the band of all warehouses.
    {.second = "整件散包",
     .industrySecond = "整件散包",
     .type = kPackages,
     .suffix = "FComplexQtyDis",
     .amounts = Amounts::kAuditedOnly},
    {.second = "辅助数量",
     .industrySecond = "实际重量",
     .suffix = "FSecQty",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.second = "平均单价", .industrySecond = "平均理论单价", .suffix = "FAvgBal", .costedOnly = true},
    {.second = "金额",
     .industrySecond = "金额",
     .type = kAmount,
     .suffix = "FBal",
     .amounts = Amounts::kAuditedOnly,
     .costedOnly = true},
};

// Always in the plain words, whatever the industry.
constexpr Column kAllWarehouses[] = {
    {.caption = "全部仓库+|+|+|+|", .second = "数量", .type = kQuantity, .field = "FQtySum"},
    {.second = "整件散包", .type = kPackages, .field = "FComplexQtyDisSum"},
    {.second = "辅助数量",
     .type = kQuantity,
     .field = "FSecQtySum",
     .visible = false,
     .mask = kWithAuxiliaryUnits},
    {.second = "平均单价", .type = kQuantity, .field = "FAvgBalSum"},
};
constexpr Column kAllWarehousesAmount = {.second = "金额", .type = kAmount, .field = "FBalSum"};

std::vector<std::string> Split(const std::string& list) {
  std::vector<std::string> entries;
  if (list.empty()) return entries;
  std::size_t begin = 0;
  for (std::size_t comma = list.find(','); comma != std::string::npos; comma = list.find(',', begin)) {
    entries.push_back(list.substr(begin, comma - begin));
    begin = comma + 1;
  }
  entries.push_back(list.substr(begin));
  return entries;
}

const std::string& EntryOf(const std::vector<std::string>& entries, std::size_t index, const char* list) {
  if (index >= entries.size()) {
    throw platform::Error(platform::ErrorNumber::kSubscriptOutOfRange, std::string(kFacts.dataComponent),
                          std::string("the list of stock ") + list + " has only " +
                              std::to_string(entries.size()) + " entries");
  }
  return entries[index];
}

// An apparent limit of sixty warehouses that limits nothing: the report runs with any number of them. The
// count is asked for at every fetch all the same, and one that cannot be read stops the report.
void AskWarehouseCount() {
  const Ref<Object> information = platform::CreateObject("TOVMClass.ClassInfo");
  const std::string props = GetPropsString();
  Variant sql{std::string(kWarehouseCountSql)};
  const Variant answer = information->Call("GetData", props, sql);
  const Ref<platform::Recordset> rows = answer.AsRef<platform::Recordset>();
  if (!rows) {
    throw platform::Error(platform::ErrorNumber::kObjectNotSet, "TOVMClass.ClassInfo",
                          "the count of warehouses was not answered");
  }
  if (!rows->AtEnd()) platform::ToInt32(rows->Value(std::size_t{0}));
}

}  // namespace

Rpt302::Rpt302() : Exposed(kFacts) {}

Ref<ReportFilterDialog> Rpt302::MakeDialog() { return platform::MakeRef<frmFirter302>(); }

void Rpt302::BeforeRead() { AskWarehouseCount(); }

Variant Rpt302::CallData(Object& data) {
  const std::string props = GetPropsString();
  Variant filter(Filter());
  Variant fields("");
  Variant names("");
  Variant types("");
  Variant rows = data.Call(Facts().dataMethod, props, filter, fields, names, types);
  AcceptFilter(platform::detail::FromVariant<Ref<Dictionary>>(filter));
  fields_ = platform::ToText(fields);
  names_ = platform::ToText(names);
  types_ = platform::ToText(types);
  return rows;
}

void Rpt302::AfterRead() {
  if (fields_.empty() || names_.empty()) return;
  const std::vector<std::string> fields = Split(fields_);
  const std::vector<std::string> names = Split(names_);
  const std::vector<std::string> types = Split(types_);
  SetHeadVector(Header());
  if (fields.size() > 1) {
    AddColumns(kAllWarehouses);
    Column amount = kAllWarehousesAmount;
    amount.mask = AmountMask();
    AddColumns({&amount, 1});
  }
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const bool hasCost = platform::ToDouble(EntryOf(types, i, "types")) == kCostedWarehouse;
    AddWarehouseBand(fields[i], EntryOf(names, i, "names"), hasCost);
  }
  SetHeadVector({});
}

void Rpt302::AddWarehouseBand(const std::string& prefix, const std::string& name, bool hasCost) const {
  const bool weighs = GetIndustryType() == kWeighingIndustry;
  std::string caption = name + std::string(hasCost ? kBandOfFive : kBandOfThree);
  for (const BandColumn& column : kBand) {
    if (column.costedOnly && !hasCost) continue;
    const bool isQuantity = !caption.empty();
    const bool isWeight = column.suffix == "FSecQty";
    // A warehouse without cost has no theoretical quantity to tell from a counted one.
    const bool inIndustryWords = weighs && (hasCost || !isQuantity);
    const std::string field = prefix + std::string(column.suffix);
    AddColumn(caption, ResString(inIndustryWords ? column.industrySecond : column.second),
              std::to_string(static_cast<int>(column.type)), field,
              column.visible || (isWeight && weighs) ? 1 : 0,
              column.amounts == Amounts::kAuditedOnly ? AmountMask() : column.mask);
    caption.clear();
  }
}

}  // namespace component
