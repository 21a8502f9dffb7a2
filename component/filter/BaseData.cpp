#include "component/filter/BaseData.h"

#include <algorithm>
#include <array>

#include "component/frame/SysObjects.h"
#include "component/frame/VEZPublic.h"
#include "platform/form/Screen.h"
#include "platform/object/ClassRegistry.h"
#include "platform/rows/Recordset.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

constexpr std::int32_t kUnit = 7;
constexpr std::int32_t kCurrency = 12;
constexpr std::int32_t kAccount = 13;
constexpr std::int32_t kSettlementType = 130;

constexpr std::array<std::int32_t, 10> kItemTypes = {kCustomer, kDepartment,        kEmployee, kItem, kStock,
                                                     kSupplier, kAuxiliaryProperty, 1121,      1122,  2014};
// Account items of linked bills: the kind of base data is the last decimal digit.
constexpr std::array<std::int32_t, 7> kLinkedTypes = {104031, 104032,  104033, 104034,
                                                      104038, 1040301, 1040308};

template <std::size_t N>
bool Holds(const std::array<std::int32_t, N>& types, std::int32_t type) {
  return std::ranges::find(types, type) != types.end();
}

std::string WithoutDisabled(const std::string& filter) {
  const bool showDisabled = platform::ToBoolean(GetSystemProfile("Base", "DisplayDeleted", 1));
  if (filter.empty()) return showDisabled ? "" : " t1.FDeleted=0 ";
  return filter + " And " + (showDisabled ? " 1=1 " : " t1.FDeleted=0 ");
}

Variant LookUpItem(std::int32_t dataType, const std::string& text, const std::string& filter,
                   std::int16_t show) {
  const Ref<Dictionary> options = MakeRef<Dictionary>();
  const std::string condition = WithoutDisabled(filter);
  options->Set("GetDataType", show);
  options->Set("Search", text);
  GetGLData().Call("Refresh");  // so that base data entered meanwhile is seen
  Variant optionsArgument(options);
  return GetGLView().Call("ItemLookUp", dataType, text, condition, optionsArgument);
}

Variant LookUp(std::int32_t dataType, const std::string& text, const std::string& filter, std::int16_t show) {
  if (Holds(kItemTypes, dataType)) return LookUpItem(dataType, text, filter, show);
  if (Holds(kLinkedTypes, dataType)) return LookUpItem(dataType % 10, text, filter, show);
  if (dataType == kUnit) {
    return GetGLView().Call("UnitLookup", platform::ToInt32(platform::LeadingNumber(filter)), text);
  }
  if (dataType == kCurrency) return GetGLView().Call("CurrencyLookup", text);
  if (dataType == kAccount) return GetGLView().Call("AccountLookup", text);
  if (dataType == kSettlementType) return GetGLView().Call("SettTypeLookup", text);
  if (dataType >= 20 && dataType <= 999) return GetGLView().Call("SubMesLookup", dataType, text);
  return nullptr;
}

Ref<Object> Chosen(std::int32_t dataType, const Variant& answer) {
  Ref<Object> lookup = answer.AsRef<Object>();
  if (!lookup) return lookup;
  const Ref<Object> chosen = lookup->Get("ReturnObject").AsRef<Object>();
  if (!chosen || dataType != kAccount || platform::ToBoolean(chosen->Get("Detail"))) return lookup;
  platform::Screen::Current().Ask({.text = ResString("不能选择非明细科目 "), .title = ResString("信息提示")});
  return {};
}

}  // namespace

Ref<Object> LookupBaseData(std::int32_t dataType, const std::string& text, const std::string& filter,
                           std::int16_t show) {
  try {
    return Chosen(dataType, LookUp(dataType, text, filter, show));
  } catch (const std::exception&) {
    platform::Screen::Current().Ask({.text = ResString("基础资料可能没有授权！"),
                                     .title = ResString("信息提示"),
                                     .icon = platform::MessageIcon::kInformation});
    return {};
  }
}

std::string LookupBatch(const Variant& keyWord, const std::string& filter, bool stockOnly,
                        const std::string& filterItem) {
  const Ref<Object> list = platform::CreateObject("TOVBaseList.BaseList");
  std::string condition = filter;
  if (stockOnly) condition = filter.empty() ? "( FQty<>0 )" : "(" + filter + " AND FQty<>0 )";
  list->Put("FilterItem", filterItem);
  list->Put("Filter", condition);
  list->Put("KeyWord", keyWord);
  const Ref<Recordset> rows = list->Call("Show", 1).AsRef<Recordset>();
  if (!rows || (rows->AtBeginning() && rows->AtEnd())) return {};
  const Variant batch = rows->Value("FBatchNo");
  rows->Close();
  return batch.IsNull() ? std::string() : platform::ToText(batch);
}

}  // namespace component
