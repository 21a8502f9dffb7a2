#include "desk/ReportRows.h"

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"

namespace desk {
namespace {

using platform::Dictionary;
using platform::FieldType;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

// The field type that holds both; text for kinds that do not go together.
FieldType Wider(FieldType one, FieldType other) {
  if (one == other) return one;
  auto isNumber = [](FieldType type) {
    return type == FieldType::kInt32 || type == FieldType::kDouble || type == FieldType::kCurrency;
  };
  if (!isNumber(one) || !isNumber(other)) return FieldType::kText;
  return one == FieldType::kDouble || other == FieldType::kDouble ? FieldType::kDouble : FieldType::kCurrency;
}

std::optional<FieldType> TypeOf(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::kBoolean:
      return FieldType::kBoolean;
    case Variant::Kind::kInt16:
    case Variant::Kind::kInt32:
      return FieldType::kInt32;
    case Variant::Kind::kInt64:
    case Variant::Kind::kDouble:
      return FieldType::kDouble;
    case Variant::Kind::kCurrency:
      return FieldType::kCurrency;
    case Variant::Kind::kDate:
      return FieldType::kDate;
    case Variant::Kind::kText:
      return FieldType::kText;
    default:
      return std::nullopt;
  }
}

Ref<Recordset> FromDictionaries(const Vector& list) {
  std::vector<std::pair<std::string, std::optional<FieldType>>> fields;
  auto fieldOf = [&](const std::string& key) -> auto& {
    for (auto& field : fields) {
      if (platform::EqualsIgnoreCase(field.first, key)) return field.second;
    }
    return fields.emplace_back(key, std::nullopt).second;
  };
  for (const Variant& item : list.Items()) {
    const Ref<Dictionary> row = item.AsRef<Dictionary>();
    if (!row) return {};
    for (const Dictionary::Entry& entry : row->Entries()) {
      std::optional<FieldType>& known = fieldOf(entry.key);
      const std::optional<FieldType> type = TypeOf(entry.value);
      if (type) known = known ? Wider(*known, *type) : *type;
    }
  }
  const Ref<Recordset> rows = MakeRef<Recordset>();
  for (const auto& [name, type] : fields) rows->AppendField(name, type.value_or(FieldType::kText));
  rows->Open();
  for (const Variant& item : list.Items()) {
    rows->AddNew();
    const Ref<Dictionary> row = item.AsRef<Dictionary>();
    for (const Dictionary::Entry& entry : row->Entries()) {
      if (!TypeOf(entry.value)) continue;
      const std::size_t column = rows->FieldIndex(entry.key);
      const bool asText = platform::IsTextType(rows->Fields()[column].type);
      rows->SetValue(column, asText ? Variant(platform::ToText(entry.value)) : entry.value);
    }
    rows->Update();
  }
  return rows;
}

// A cursor of its own, or nothing where the rows are closed.
Ref<Recordset> OwnCursor(const Recordset& rows) { return rows.IsOpen() ? rows.Clone() : Ref<Recordset>(); }

}  // namespace

Ref<Recordset> ReportRows(const Variant& rows) {
  if (const Ref<Recordset> recordset = rows.AsRef<Recordset>()) return OwnCursor(*recordset);
  const Ref<Vector> list = rows.AsRef<Vector>();
  if (!list) return {};
  if (list->Count() > 0) {
    if (const Ref<Recordset> first = list->Item(0).AsRef<Recordset>()) return OwnCursor(*first);
  }
  return FromDictionaries(*list);
}

}  // namespace desk
