// Items are numbered in a dotted hierarchy: 01.02.003 lies under 01.02. The batch cuts each item's number at
// the dot that ends a level, and then joins the category of that number for its name. Four texts grow side
// by side, one piece a level, and are put together at the end.
#include <initializer_list>

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

void Append(std::string& text, std::initializer_list<std::string_view> pieces) {
  for (const std::string_view piece : pieces) text += piece;
}

// To the position of the dot after the one that it finds.
void ToNextDot(std::string& position) {
  position.insert(0, "CharIndex('.',FFullNumber,");
  position += "+1)";
}

}  // namespace

std::string BuildItemLevelSql(const ItemLevelRange& range) {
  // Asked for with every page of a ledger: the texts take their room at once.
  constexpr std::size_t kRoom = 2048;
  const std::string classId = std::to_string(range.classId);
  std::string create;
  std::string insert;
  std::string update;
  std::string from;
  for (std::string* text : {&create, &insert, &update, &from}) text->reserve(kRoom);
  Append(create, {"CREATE TABLE #ItemLevel( ", kNewLine});
  Append(insert, {" Insert Into #ItemLevel SELECT  ", kNewLine});
  update += " Update t0 SET ";
  from += " From #ItemLevel t0";

  std::string dot = "CharIndex('.',FFullNumber)";
  for (std::int32_t level = 1; level < range.beginLevel; ++level) ToNextDot(dot);

  for (std::int32_t level = range.beginLevel; level <= range.endLevel; ++level) {
    const std::string n = std::to_string(level);
    Append(create, {" FNumber", n, " nvarchar(355),", kNewLine, " FName", n, " nvarchar(355),", kNewLine});
    Append(insert, {" Case When ", dot, "-1= -1 or FLevel<", std::to_string(level + 1),
                    " THEN NULL ELSE SUBSTRING(FNumber, 1,", dot, "-1)  END, ", kNewLine, " '',", kNewLine});
    ToNextDot(dot);
    Append(update, {"t0.FName", n});
    if (range.showNumber == 1) {
      Append(update, {"='[' + t", n, ".FNumber + ']'+ t"});
    } else {
      update += "=t";
    }
    Append(update, {n, ".FName,"});
    Append(from, {" left join t_Item t", n, " On t0.FNumber", n, "=t", n, ".FNumber ", " AND t", n,
                  ".FItemClassID=", classId, " AND t", n, ".FDetail=0 ", kNewLine});
  }
  update.pop_back();  // the comma behind the last level, or the last blank when there is no level
  Append(update, {kNewLine, from});
  Append(create, {" FItemID int,", kNewLine, " FNumber nvarchar(355))", kNewLine});
  Append(insert, {" FItemID,FNumber From t_Item", kNewLine, " Where FItemClassID=", classId, kNewLine,
                  " AND FDetail=1", ItemCondition(range), " ##ITEMFILTER##"});
  Append(create, {insert, kNewLine, kNewLine, update});
  return create;
}

}  // namespace component
