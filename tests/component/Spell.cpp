#include "tests/component/Spell.h"

#include "platform/value/Convert.h"

namespace component {

using platform::Dictionary;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

namespace {

std::string SpellObject(const Variant& value) {
  if (value.IsNothing()) return "nothing";
  std::string text;
  if (const Ref<Dictionary> dictionary = value.AsRef<Dictionary>()) {
    for (const Dictionary::Entry& entry : dictionary->Entries()) {
      text += (text.empty() ? "" : ", ") + entry.key + ": " + Spell(entry.value);
    }
    return "{" + text + "}";
  }
  if (const Ref<Vector> list = value.AsRef<Vector>()) {
    for (const Variant& item : list->Items()) text += (text.empty() ? "" : ", ") + Spell(item);
    return "[" + text + "]";
  }
  return "<" + value.AsObject().ClassName() + ">";
}

}  // namespace

std::string Spell(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::kEmpty:
      return "empty";
    case Variant::Kind::kNull:
      return "null";
    case Variant::Kind::kMissing:
      return "missing";
    case Variant::Kind::kInt16:
      return platform::ToText(value) + "s";
    case Variant::Kind::kDouble: {
      const std::string number = platform::ToText(value);
      return number.find('.') == std::string::npos ? number + ".0" : number;
    }
    case Variant::Kind::kText:
      return "'" + *value.As<std::string>() + "'";
    case Variant::Kind::kObject:
      return SpellObject(value);
    default:
      return platform::ToText(value);
  }
}

std::string Spell(std::span<const Variant> arguments) {
  std::string text;
  for (const Variant& argument : arguments) text += (text.empty() ? "" : ", ") + Spell(argument);
  return "(" + text + ")";
}

std::vector<std::string> SpellTitle(const Ref<Vector>& lines) {
  std::vector<std::string> texts;
  for (const Variant& item : lines->Items()) {
    const Ref<Dictionary> line = item.AsRef<Dictionary>();
    const Variant* caption = line->Find("FCaption");
    texts.push_back(platform::ToText(line->Value("FIndex")) + " " +
                    (caption == nullptr ? "(no caption)" : platform::ToText(*caption)));
  }
  return texts;
}

Ref<Dictionary> Keys(std::initializer_list<std::pair<std::string_view, Variant>> entries) {
  Ref<Dictionary> dictionary = MakeRef<Dictionary>();
  for (const auto& [key, value] : entries) dictionary->Set(key, value);
  return dictionary;
}

Ref<Recordset> TextRows(std::initializer_list<std::string_view> fields,
                        const std::vector<std::vector<Variant>>& rows) {
  Ref<Recordset> recordset = MakeRef<Recordset>();
  for (const std::string_view field : fields) recordset->AppendField(field, platform::FieldType::kText);
  recordset->Open();
  for (const std::vector<Variant>& row : rows) {
    recordset->AddNew();
    for (std::size_t column = 0; column < row.size(); ++column) recordset->SetValue(column, row[column]);
    recordset->Update();
  }
  if (recordset->RecordCount() > 0) recordset->MoveFirst();
  return recordset;
}

}  // namespace component
