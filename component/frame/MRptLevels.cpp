// Items are numbered in a dotted hierarchy: 01.02.003 lies under 01.02. The batch cuts each item's number at
// the dot that ends a level, and then joins the category of that number for its name. Four texts grow side
// by side, one piece a level, and are put together at the end.
#include "component/frame/MRpt.h"
#include "component/frame/ProcessState.h"

namespace component {
namespace {

constexpr std::string_view kNewLine = "\r\n";

std::string ItemCondition(const ItemLevelRange& range) {
  std::string condition;
  if (!range.likeNumber.empty()) condition += " AND FNumber Like '" + std::string(range.likeNumber) + ".%'";
  const std::string field = ProcessState::Get().isLongNumber ? "FNumber" : "FShortNumber";
  if (!range.beginNumber.empty()) condition += " AND " + field + ">='" + std::string(range.beginNumber) + "'";
  if (!range.endNumber.empty()) condition += " AND " + field + "<='" + std::string(range.endNumber) + "'";
  return condition;
}

// The position of the dot after the one that `position` finds.
std::string NextDot(const std::string& position) { return "CharIndex('.',FFullNumber," + position + "+1)"; }

}  // namespace

std::string BuildItemLevelSql(const ItemLevelRange& range) {
  const std::string newLine(kNewLine);
  const std::string classId = std::to_string(range.classId);
  std::string create = "CREATE TABLE #ItemLevel( " + newLine;
  std::string insert = " Insert Into #ItemLevel SELECT  " + newLine;
  std::string update = " Update t0 SET ";
  std::string from = " From #ItemLevel t0";

  std::string dot = "CharIndex('.',FFullNumber)";
  for (std::int32_t level = 1; level < range.beginLevel; ++level) dot = NextDot(dot);

  for (std::int32_t level = range.beginLevel; level <= range.endLevel; ++level) {
    const std::string n = std::to_string(level);
    create += " FNumber" + n + " nvarchar(355)," + newLine + " FName" + n + " nvarchar(355)," + newLine;
    insert += " Case When " + dot + "-1= -1 or FLevel<" + std::to_string(level + 1) +
              " THEN NULL ELSE SUBSTRING(FNumber, 1," + dot + "-1)  END, " + newLine + " ''," + newLine;
    dot = NextDot(dot);
    update += "t0.FName" + n + (range.showNumber == 1 ? "='[' + t" + n + ".FNumber + ']'+ t" : "=t") + n +
              ".FName,";
    from += " left join t_Item t" + n + " On t0.FNumber" + n + "=t" + n + ".FNumber " + " AND t" + n +
            ".FItemClassID=" + classId + " AND t" + n + ".FDetail=0 " + newLine;
  }
  update.pop_back();  // the comma behind the last level, or the last blank when there is no level
  update += newLine + from;
  create += " FItemID int," + newLine + " FNumber nvarchar(355))" + newLine;
  insert += " FItemID,FNumber From t_Item" + newLine + " Where FItemClassID=" + classId + newLine +
            " AND FDetail=1" + ItemCondition(range) + " ##ITEMFILTER##";
  return create + insert + newLine + newLine + update;
}

}  // namespace component
