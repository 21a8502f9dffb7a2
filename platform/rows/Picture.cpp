#include "platform/rows/Picture.h"

#include "platform/value/Convert.h"

namespace platform {
namespace {

std::string CellText(const Recordset& recordset, std::size_t column, std::size_t row) {
  const Variant value = recordset.ValueAt(column, row);
  if (value.IsNull()) return "null";
  if (!value.IsText()) return ToText(value);
  return std::string("'").append(*value.As<std::string>()).append("'");
}

std::string Heading(const Field& field) {
  std::string text = field.name + " " + std::string(ToString(field.type));
  if (field.width != 0) text += "(" + std::to_string(field.width) + ")";
  return text;
}

std::string PositionText(const Recordset& recordset) {
  if (recordset.IsAdding()) return "adding";
  if (recordset.AtEnd()) return recordset.AtBeginning() ? "empty" : "end";
  if (recordset.AtBeginning()) return "beginning";
  return std::to_string(recordset.AbsolutePosition());
}

}  // namespace

std::string Picture(const Recordset& recordset) {
  if (!recordset.IsOpen()) return "not open\n";
  const std::size_t columns = recordset.Fields().size();
  std::string picture;
  for (std::size_t column = 0; column < columns; ++column) {
    picture.append(column == 0 ? "" : " | ").append(Heading(recordset.Fields()[column]));
  }
  const bool onRow = !recordset.IsAdding() && !recordset.AtEnd() && !recordset.AtBeginning();
  for (std::size_t position = 0; position < recordset.ViewCount(); ++position) {
    const std::size_t row = recordset.RowAt(position);
    picture += onRow && row == recordset.CurrentRow() ? "\n> " : "\n  ";
    for (std::size_t column = 0; column < columns; ++column) {
      picture.append(column == 0 ? "" : " | ").append(CellText(recordset, column, row));
    }
  }
  if (!recordset.Filter().empty()) picture += "\nfilter " + recordset.Filter();
  return picture + "\nposition " + PositionText(recordset) + " of " + std::to_string(recordset.ViewCount()) +
         "\n";
}

}  // namespace platform
