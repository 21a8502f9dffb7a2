#pragma once

#include <string>
#include <vector>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"

namespace exports::test {

// A column of a heading, as a report describes it.
struct Column {
  std::string caption;
  std::string second;
  std::string type;
  std::string field;
  bool visible = true;
  bool forbidden = false;
};

inline void AddColumn(platform::Vector& header, const Column& column) {
  const platform::Ref<platform::Dictionary> description = platform::MakeRef<platform::Dictionary>();
  description->Set("FColCaption", column.caption);
  description->Set("FHeadSecond", column.second);
  description->Set("FColType", column.type);
  description->Set("FColName", column.field);
  description->Set("FVisible", column.visible ? 1 : 0);
  description->Set("FForceHide", column.forbidden);
  header.Add(description);
}

inline platform::Ref<platform::Vector> HeaderOf(const std::vector<Column>& columns) {
  platform::Ref<platform::Vector> header = platform::MakeRef<platform::Vector>();
  for (const Column& column : columns) AddColumn(*header, column);
  return header;
}

}  // namespace exports::test
