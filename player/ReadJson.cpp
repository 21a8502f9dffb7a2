// Values in. Every form is looked at twice: WhyNoValue says what is wrong with it before anything runs, and
// FromJson builds it, as often as it is needed.
#include <array>
#include <limits>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"
#include "player/Json.h"

namespace player {
namespace {

using platform::Currency;
using platform::Date;
using platform::Dictionary;
using platform::Error;
using platform::ErrorNumber;
using platform::MakeRef;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

using Reason = std::optional<std::string>;

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

Reason WhyNoDate(const Json& content) {
  if (content.is_string() && Date::FromText(content.get<std::string>())) return {};
  return "\"date\" is a text like 2024-03-02 or 2024-03-02 13:30:00, of a day that exists";
}

Variant ReadDate(const Json& content, const Names*) { return *Date::FromText(content.get<std::string>()); }

Reason WhyNoCurrency(const Json& content) {
  try {
    if (content.is_string()) {
      Currency::FromText(content.get<std::string>());
      return {};
    }
  } catch (const Error& error) {
    return "\"currency\": " + error.Description();
  }
  return "\"currency\" is a text like 12.3400";
}

Variant ReadCurrency(const Json& content, const Names*) {
  return Currency::FromText(content.get<std::string>());
}

template <class Value>
Variant ReadMark(const Json&, const Names*) {
  return Value{};
}

Reason WhyNoMark(const Json& content) {
  if (content.is_boolean() && content.get<bool>()) return {};
  return "\"dbnull\", \"nothing\" and \"missing\" are written with true";
}

Reason WhyNoDictionary(const Json& content) {
  if (!content.is_object()) return "\"dictionary\" is an object of keys and values";
  for (const auto& [key, value] : content.items()) {
    if (Reason reason = WhyNoValue(value)) return "key " + Quoted(key) + ": " + *reason;
  }
  return {};
}

Variant ReadDictionary(const Json& content, const Names* names) {
  const Ref<Dictionary> dictionary = MakeRef<Dictionary>();
  for (const auto& [key, value] : content.items()) dictionary->Set(key, FromJson(value, names));
  return dictionary;
}

Reason WhyNoVector(const Json& content) {
  if (!content.is_array()) return "\"vector\" is a list of values";
  for (const Json& item : content) {
    if (Reason reason = WhyNoValue(item)) return reason;
  }
  return {};
}

Variant ReadVector(const Json& content, const Names* names) {
  const Ref<Vector> vector = MakeRef<Vector>();
  for (const Json& item : content) vector->Add(FromJson(item, names));
  return vector;
}

Reason WhyNoField(const Json& field) {
  if (!field.is_array() || field.size() != 2 || !field[0].is_string() || !field[1].is_string()) {
    return "a recordset's field is [\"NAME\",\"TYPE\"]";
  }
  const auto type = field[1].get<std::string>();
  if (platform::FieldTypeFromText(type)) return {};
  return "field " + Quoted(field[0].get<std::string>()) + ": there is no type " + Quoted(type) +
         ", use text, smallint, integer, double, numeric, currency, date or boolean";
}

Reason WhyNoRow(const Json& row, std::size_t fields) {
  if (!row.is_array() || row.size() != fields) {
    return "a recordset's row is a list with a value for each of its " + std::to_string(fields) + " fields";
  }
  for (const Json& value : row) {
    if (Reason reason = WhyNoValue(value)) return reason;
  }
  return {};
}

Reason WhyNoRecordset(const Json& content) {
  if (!content.is_object() || !content.contains("fields") || !content["fields"].is_array()) {
    return "\"recordset\" is an object with \"fields\" and \"rows\"";
  }
  const Json& fields = content["fields"];
  for (const Json& field : fields) {
    if (Reason reason = WhyNoField(field)) return reason;
  }
  for (const auto& [key, part] : content.items()) {
    if (key == "fields") continue;
    if (key == "position") {
      if (!part.is_number_integer()) return "\"position\" is an integer";
    } else if (key != "rows") {
      return "a recordset has no " + Quoted(key);
    } else if (!part.is_array()) {
      return "\"rows\" is a list of rows";
    } else {
      for (const Json& row : part) {
        if (Reason reason = WhyNoRow(row, fields.size())) return reason;
      }
    }
  }
  return {};
}

void StandAt(Recordset& recordset, std::int32_t position) {
  if (recordset.RecordCount() == 0) return;
  if (position > 0) {
    recordset.SetAbsolutePosition(position);
  } else if (position == 0) {
    recordset.MoveFirst();
    recordset.MovePrevious();
  } else {
    recordset.MoveLast();
    recordset.MoveNext();
  }
}

Variant ReadRecordset(const Json& content, const Names* names) {
  const Ref<Recordset> recordset = MakeRef<Recordset>();
  for (const Json& field : content["fields"]) {
    recordset->AppendField(field[0].get<std::string>(),
                           *platform::FieldTypeFromText(field[1].get<std::string>()));
  }
  if (recordset->FieldCount() == 0) return recordset;
  recordset->Open();
  if (!content.contains("rows")) return recordset;
  for (const Json& row : content["rows"]) {
    recordset->AddNew();
    for (std::size_t column = 0; column < row.size(); ++column) {
      const Variant value = FromJson(row[column], names);
      // A field cannot be empty, so an empty value can only mean the database's null.
      recordset->SetValue(column, value.IsEmpty() ? Variant(platform::Null{}) : value);
    }
    recordset->Update();
  }
  if (recordset->RecordCount() != 0) recordset->MoveFirst();
  if (content.contains("position")) StandAt(*recordset, content["position"].get<std::int32_t>());
  return recordset;
}

Reason WhyNoObject(const Json& content) {
  if (content.is_string() && content.get<std::string>() != "?") return {};
  return "\"object\" is the name that a step gave an object; one without a name cannot be given";
}

Variant ReadObject(const Json& content, const Names* names) {
  const auto name = content.get<std::string>();
  if (names == nullptr) {
    throw Error(ErrorNumber::kObjectNotSet, "player", "there is no object named " + Quoted(name));
  }
  return names->Named(name);
}

struct ValueForm {
  std::string_view tag;
  Reason (*whyNot)(const Json& content);
  Variant (*read)(const Json& content, const Names* names);
};

constexpr std::array kForms = {
    ValueForm{"date", WhyNoDate, ReadDate},
    ValueForm{"currency", WhyNoCurrency, ReadCurrency},
    ValueForm{"dbnull", WhyNoMark, ReadMark<platform::Null>},
    ValueForm{"nothing", WhyNoMark, ReadMark<Ref<platform::Object>>},
    ValueForm{"dictionary", WhyNoDictionary, ReadDictionary},
    ValueForm{"vector", WhyNoVector, ReadVector},
    ValueForm{"recordset", WhyNoRecordset, ReadRecordset},
    ValueForm{"object", WhyNoObject, ReadObject},
    ValueForm{"missing", WhyNoMark, ReadMark<platform::Missing>},
};

const ValueForm* FindForm(const Json& json) {
  if (!json.is_object() || json.size() != 1) return nullptr;
  for (const ValueForm& form : kForms) {
    if (form.tag == json.begin().key()) return &form;
  }
  return nullptr;
}

Variant ReadInteger(const Json& json) {
  const auto number = json.get<std::int64_t>();
  if (number >= std::numeric_limits<std::int32_t>::min() &&
      number <= std::numeric_limits<std::int32_t>::max()) {
    return static_cast<std::int32_t>(number);
  }
  return number;
}

}  // namespace

std::optional<std::string> WhyNoValue(const Json& json) {
  if (json.is_array()) return "a list is written as {\"vector\":[…]}";
  if (json.is_number_unsigned() &&
      json.get<std::uint64_t>() > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return "the integer " + json.dump() + " has more than 64 bits";
  }
  if (!json.is_object()) return {};
  const ValueForm* form = FindForm(json);
  if (form == nullptr) {
    return "an object with the keys of " + ToLine(json).substr(0, 60) +
           " is no value; dictionaries are written as {\"dictionary\":{…}}";
  }
  return form->whyNot(json.front());
}

Variant FromJson(const Json& json, const Names* names) {
  switch (json.type()) {
    case Json::value_t::string:
      return json.get<std::string>();
    case Json::value_t::boolean:
      return json.get<bool>();
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned:
      return ReadInteger(json);
    case Json::value_t::number_float:
      return json.get<double>();
    case Json::value_t::object:
      if (const ValueForm* form = FindForm(json)) return form->read(json.front(), names);
      break;
    default:
      break;
  }
  return {};
}

}  // namespace player
