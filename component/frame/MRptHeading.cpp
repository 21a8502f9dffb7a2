#include "component/frame/MMTS.h"
#include "component/frame/MRpt.h"
#include "component/frame/ProcessState.h"
#include "component/frame/VEZPublic.h"

namespace component {

using platform::Dictionary;
using platform::MakeRef;
using platform::Ref;
using platform::Vector;

void AddColumn(const std::string& caption, const std::string& second, const std::string& type,
               const std::string& field, std::int16_t visible, std::int16_t mask) {
  const std::int32_t appType = GetAppType();
  const Ref<Dictionary> column = MakeRef<Dictionary>();
  column->Set("FColCaption", caption);
  column->Set("FHeadSecond", second);
  column->Set("FColType", type);
  column->Set("FColName", field);
  column->Set("FVisible", visible != 0 ? std::int16_t{1} : std::int16_t{0});
  column->Set("FForceHide", (mask & appType) != appType);
  Ref<Vector>& heading = ProcessState::Get().sharedHeading;
  if (!heading) heading = MakeRef<Vector>();
  heading->Add(column);
}

void AddColumns(std::span<const Column> columns) {
  for (const Column& column : columns) {
    AddColumn(ResString(column.caption), ResString(column.second),
              std::to_string(static_cast<int>(column.type)), std::string(column.field),
              column.visible ? 1 : 0, column.mask);
  }
}

LevelRange ReadLevelRange(const Dictionary& filter) {
  return {.on = platform::ToBoolean(filter.Value("MultiLevel")),
          .begin = platform::ToInt32(filter.Value("MultiLevelBegin")),
          .end = platform::ToInt32(filter.Value("MultiLevelEnd"))};
}

void AddLevelColumns(const LevelRange& levels) {
  if (!levels.on) return;
  for (std::int32_t level = levels.begin; level <= levels.end; ++level) {
    const std::string number = std::to_string(level);
    AddColumn(ResString("类别级次") + number + "$", "", std::to_string(static_cast<int>(ColumnType::kText)),
              "FItemLevel0" + number + "Name", 1, kEveryAppType);
  }
}

void SetHeadVector(const Ref<Vector>& heading) { ProcessState::Get().sharedHeading = heading; }

}  // namespace component
