// A user may be restricted to some warehouses, suppliers and the like. The restriction goes to the data
// component as a clause over the right list of each base table.
#include <algorithm>
#include <array>

#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "component/frame/MRpt.h"
#include "component/frame/ProcessState.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::CreateObject;
using platform::Dictionary;
using platform::MakeRef;
using platform::Object;
using platform::Ref;
using platform::Variant;
using platform::Vector;

constexpr std::array<std::string_view, 6> kRestrictedTables = {
    "t_item", "t_supplier", "t_stock", "t_Organization", "t_ls_branchshop", "t_ls_cashier"};

bool IsRestrictedTable(std::string_view table) {
  return std::ranges::any_of(kRestrictedTables, [table](std::string_view known) {
    return platform::EqualsIgnoreCase(known, table);
  });
}

Variant FetchNeedAuthrize() {
  const Ref<Object> security = CreateObject("TOVEBSBase.SecurityInfo");
  Variant need = security->Call("NeedAutorized", GetSessionValueOrEmpty("PropsString"));
  SetProcessValue("NeedAuthrize", need);
  return need;
}

// A row is visible when the user's number occurs in its right list, or when it joins no base item at all. The
// number is matched as a plain substring: that is how the lists are stored.
std::string RightClause(const std::string& alias) {
  return " (CharIndex('" + std::to_string(GetUserID()) + "'," + alias + ".FRightUserID)>0 OR ISNULL(" +
         alias + ".FItemID,0)=0) ";
}

}  // namespace

bool GetNeedAuthrize() {
  bool need = false;
  platform::SkipErrors([&] {
    bool& wasRead = ProcessState::Get().needAuthrizeRead;
    if (!wasRead) {
      FetchNeedAuthrize();
      wasRead = true;
    }
    Variant value = GetProcessValue("NeedAuthrize");
    // Another component of the process may have cleared it.
    if (value.IsEmpty()) value = FetchNeedAuthrize();
    need = platform::ToBoolean(value);
  });
  return need;
}

std::string GetAuthrizeItemClassList() {
  Variant list = GetProcessValue("AuthrizeItemClassList");
  if (list.IsEmpty()) {
    list = CreateObject("TOVEBCGLView.GLData")->Call("GetAuthItemClassList");
    SetProcessValue("AuthrizeItemClassList", list);
  }
  return platform::ToText(list);
}

Ref<Vector> DataRightEntries(std::span<const DataRight> rights) {
  const Ref<Vector> entries = MakeRef<Vector>();
  for (const DataRight& right : rights) {
    const Ref<Dictionary> entry = MakeRef<Dictionary>();
    entry->Set("DataTable", right.table);
    entry->Set("DataTableAs", right.alias);
    entry->Set("ItemClassType", right.itemClass);
    entries->Add(entry);
  }
  return entries;
}

bool MakeDataRightWhere(const Ref<Vector>& entries, std::string& clause) {
  if (!GetNeedAuthrize()) return false;
  ParsePropsString(GetPropsString());
  for (const Variant& item : entries->Items()) {
    const Ref<Dictionary> entry = item.AsRef<Dictionary>();
    if (!entry || !IsRestrictedTable(platform::ToText(entry->Value("DataTable")))) continue;
    const std::string itemClass = platform::ToText(entry->Value("ItemClassType"));
    if (GetAuthrizeItemClassList().find(itemClass) == std::string::npos) continue;
    if (!platform::TrimBlanks(clause).empty()) clause += " And ";
    clause += RightClause(platform::ToText(entry->Value("DataTableAs")));
  }
  return true;
}

}  // namespace component
