#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/rows/Picture.h"
#include "platform/rows/RowAppender.h"
#include "platform/value/Convert.h"

namespace platform {

using Action = std::function<void(Recordset&)>;

struct ActionCase {
  std::string name;
  Action run;
  std::string picture;
};

struct RefusedCase {
  std::string name;
  Action run;
  ErrorNumber number = ErrorNumber::kNoCurrentRow;
};

// FItemID counts from 1; the name "null" leaves FName null.
inline Ref<Recordset> Items(const std::vector<std::string>& names) {
  Ref<Recordset> items = MakeRef<Recordset>();
  items->AppendField("FItemID", FieldType::kInt32);
  items->AppendField("FName", FieldType::kText, 10);
  items->Open();
  RowAppender rows(*items);
  for (std::size_t i = 0; i < names.size(); ++i) {
    rows.SetInteger(0, static_cast<std::int32_t>(i) + 1);
    if (names[i] != "null") rows.SetText(1, names[i]);
    rows.CommitRow();
  }
  return items;
}

// A picture in one line, without the columns: "1 bolt, >2 nut (2 of 2)".
inline std::string Short(const Recordset& recordset) {
  std::string text;
  const bool onRow = !recordset.IsAdding() && !recordset.AtEnd() && !recordset.AtBeginning();
  auto cell = [&](std::size_t column, std::size_t row) {
    const Variant value = recordset.ValueAt(column, row);
    return value.IsNull() ? "null" : ToText(value);
  };
  for (std::size_t i = 0; i < recordset.ViewCount(); ++i) {
    const std::size_t row = recordset.RowAt(i);
    text += i == 0 ? "" : ", ";
    text += onRow && recordset.CurrentRow() == row ? ">" : "";
    text += cell(0, row) + " " + cell(1, row);
  }
  const std::string picture = Picture(recordset);
  const std::size_t position = picture.rfind("position ") + 9;
  return text + (text.empty() ? "(" : " (") + picture.substr(position, picture.size() - position - 1) + ")";
}

}  // namespace platform
