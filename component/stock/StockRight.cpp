// A warehouse's right is a text that holds the numbers of its users. Groups of which the user's share is not
// chosen at all fall away first, then what the user may not see; for showing, a wholly chosen group stands
// for its members.
#include "component/stock/StockRight.h"

#include <cstdint>
#include <functional>
#include <string>

#include "component/frame/MMTS.h"
#include "component/frame/MParse.h"
#include "platform/object/ClassRegistry.h"

namespace component {
namespace {

using platform::Dictionary;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;

constexpr std::int32_t kStockClass = 5;
const std::string kNewLine = "\r\n";

// "(1,2)" of a field, empty without rows.
std::string Bracketed(Recordset& rows, const char* field,
                      const std::function<bool(const std::string&)>& takes = {}) {
  std::string list;
  for (; !rows.AtEnd(); rows.MoveNext()) {
    const std::string number = platform::ToText(rows.Value(field));
    if (!takes || takes(number)) list += number + ",";
  }
  if (list.empty()) return list;
  list.back() = ')';
  return "(" + list;
}

std::string GroupsWithoutChoiceSql(const std::string& user, const std::string& chosen) {
  return "select distinct a.FItemID,a.FNumber from t_Item  a inner join t_Item b on a.FItemID=b.FParentID" +
         kNewLine + "where a.FItemClassID=5 and charindex(b.FRightUserID,'" + user +
         "')>0 and a.FItemID not in(select FParentID from t_Item where FItemID in" + chosen +
         " and charindex(FRightUserID,'" + user + "')>0 ) order by a.FNumber ";
}

std::string PermittedSql(const std::string& user, const std::string& list, const std::string& groups) {
  return " Select FItemID from t_Item where charindex(FRightUserID,'" + user + "')>0 And FItemID in " + list +
         " And FItemID not in" + groups;
}

std::string HiddenNodesSql(const std::string& user, const std::string& list) {
  return "select b.FParentID from t_Item  a inner join t_Item b on a.FItemID=b.FParentID " + kNewLine +
         "where a.FItemClassID=5 and b.FItemID not in " + list + " and charindex(b.FRightUserID,'" + user +
         "')>0 " + kNewLine + " Union " + kNewLine + " select FItemID from t_Item where fItemID  in " + list +
         " and FParentID>0 and FItemClassID=5  and charindex(FRightUserID,'" + user +
         "')>0 and  FParentid not in(" + kNewLine + " select FParentID  from t_Item where FParentID  in " +
         list + " and FItemid not in " + list + " and charindex(FRightUserID,'" + user + "')>0 )" + kNewLine;
}

}  // namespace

Ref<Recordset> ReadStockList(const Variant& condition) {
  const Ref<Object> items = platform::CreateObject("TOVebsglitem.ItemInfo");
  const std::string props = GetPropsString();
  const Variant rows = condition.IsMissing()
                           ? items->Call("GetList", props, kStockClass)
                           : items->Call("GetList", props, kStockClass, platform::Missing(), condition);
  Ref<Recordset> list = rows.AsRef<Recordset>();
  if (!list) {
    throw platform::Error(platform::ErrorNumber::kObjectNotSet, "TOVebsglitem.ItemInfo",
                          "the list of warehouses was not answered");
  }
  return list;
}

void WritePermittedScope(Dictionary& scope) {
  auto write = [&](const char* key, const std::string& text) { scope.Set(key, text); };
  auto writeNothing = [&] {
    write("sShowList", "");
    write("strStock", "");
  };
  const std::string chosen = platform::ToText(scope.Value("FStockID"));
  if (chosen.empty()) return writeNothing();
  ParsePropsString(GetPropsString());
  const std::string user = std::to_string(GetUserID());
  std::string list = Bracketed(*ReadStockList(), "FItemID", [&](const std::string& number) {
    return chosen.find(number) != std::string::npos;
  });
  if (list.empty()) return writeNothing();
  const std::string groups = Bracketed(*ExecuteSqlOrRaise(GroupsWithoutChoiceSql(user, chosen)), "FItemID");
  if (!groups.empty()) {
    list = Bracketed(*ExecuteSqlOrRaise(PermittedSql(user, list, groups)), "FItemID");
    if (list.empty()) return writeNothing();
  }
  write("strStock", list);
  std::string hidden = Bracketed(*ExecuteSqlOrRaise(HiddenNodesSql(user, list)), "FParentid");
  if (hidden.empty()) hidden = "(0)";
  const Ref<Recordset> shown = ReadStockList("FItemID in " + list + " And FItemID not in" + hidden);
  std::string names;
  for (; !shown->AtEnd(); shown->MoveNext()) {
    if (!names.empty()) names += ",";
    names += platform::ToText(shown->Value("FNumber")) + "-" + platform::ToText(shown->Value("FName"));
  }
  write("sShowList", names);
}

}  // namespace component
