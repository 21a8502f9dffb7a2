#include "books/services/Rows.h"

#include <string>

#include "platform/rows/RowAppender.h"
#include "platform/value/Error.h"

namespace books::services {
namespace {

using database::Statement;
using platform::FieldType;

void SetField(platform::RowAppender& row, std::size_t field, Kept kept, const Statement& statement) {
  const int column = static_cast<int>(field);
  if (statement.IsNull(column)) {
    row.SetNull(field);
    return;
  }
  switch (kept) {
    case Kept::kText:
      row.SetText(field, statement.TextView(column));
      break;
    case Kept::kInteger:
      row.SetValue(field, statement.Integer(column));
      break;
    case Kept::kReal:
      row.SetDouble(field, statement.Real(column));
      break;
    case Kept::kQuantity:
      row.SetDouble(field, statement.GetQuantity(column).ToDouble());
      break;
    case Kept::kAmount:
      row.SetCurrency(field, statement.Amount(column));
      break;
    case Kept::kDate:
      row.SetDate(field, statement.GetDate(column));
      break;
    case Kept::kBoolean:
      row.SetBoolean(field, statement.Boolean(column));
      break;
  }
}

}  // namespace

FieldType TypeOf(Kept kept) {
  switch (kept) {
    case Kept::kText:
      return FieldType::kText;
    case Kept::kInteger:
      return FieldType::kInt32;
    case Kept::kReal:
    case Kept::kQuantity:
      return FieldType::kDouble;
    case Kept::kAmount:
      return FieldType::kCurrency;
    case Kept::kDate:
      return FieldType::kDate;
    case Kept::kBoolean:
      return FieldType::kBoolean;
  }
  throw platform::Error(platform::ErrorNumber::kInvalidCall, "books::services", "no such kind of column");
}

platform::Ref<platform::Recordset> NewRows(std::span<const RowField> fields) {
  auto rows = platform::MakeRef<platform::Recordset>();
  for (const RowField& field : fields) rows->AppendField(field.name, TypeOf(field.kept), field.width);
  rows->Open();
  return rows;
}

platform::Ref<platform::Recordset> ReadRows(Statement& statement, std::span<const RowField> fields) {
  platform::Ref<platform::Recordset> rows = NewRows(fields);
  platform::RowAppender appender(*rows);
  while (statement.Step()) {
    for (std::size_t i = 0; i < fields.size(); ++i) SetField(appender, i, fields[i].kept, statement);
    appender.CommitRow();
  }
  return rows;
}

void BindAll(Statement& statement, std::span<const platform::Variant> values) {
  int parameter = 0;
  for (const platform::Variant& value : values) statement.BindAt(parameter++, value);
}

}  // namespace books::services
