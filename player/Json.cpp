// Values out. A value's kind decides its form; the foundation's three containers are walked.
#include "player/Json.h"

#include <algorithm>
#include <vector>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"

namespace player {
namespace {

using platform::Currency;
using platform::Date;
using platform::Dictionary;
using platform::FieldType;
using platform::Object;
using platform::Recordset;
using platform::Ref;
using platform::Variant;
using platform::Vector;

Json Tagged(const char* tag, Json content) {
  Json json = Json::object();
  json[tag] = std::move(content);
  return json;
}

class Writer {
 public:
  explicit Writer(const Names* names) : names_(names) {}

  Json Write(const Variant& value) {
    return value.Visit([this](const auto& content) { return this->Form(content); });
  }

 private:
  static Json Form(platform::Empty) { return nullptr; }
  static Json Form(platform::Null) { return Tagged("dbnull", true); }
  static Json Form(platform::Missing) { return Tagged("missing", true); }
  template <class Plain>
  requires std::is_arithmetic_v<Plain>
  static Json Form(Plain value) { return value; }
  static Json Form(const std::string& text) { return text; }
  static Json Form(Currency amount) { return Tagged("currency", amount.ToFixedText()); }
  static Json Form(Date date) { return Tagged("date", date.ToText()); }

  Json Form(const Ref<Object>& object) {
    if (!object) return Tagged("nothing", true);
    if (std::ranges::find(inside_, object.Get()) != inside_.end()) return ByName(*object);
    inside_.push_back(object.Get());
    Json json;
    if (const auto* dictionary = dynamic_cast<const Dictionary*>(object.Get())) {
      json = Content(*dictionary);
    } else if (const auto* vector = dynamic_cast<const Vector*>(object.Get())) {
      json = Content(*vector);
    } else if (const auto* recordset = dynamic_cast<const Recordset*>(object.Get())) {
      json = Content(*recordset);
    } else {
      json = ByName(*object);
    }
    inside_.pop_back();
    return json;
  }

  Json ByName(const Object& object) const {
    const std::optional<std::string> name = names_ == nullptr ? std::nullopt : names_->NameOf(object);
    Json json = Tagged("object", name.value_or("?"));
    if (!name) json["class"] = object.ClassName();
    return json;
  }

  Json Content(const Dictionary& dictionary) {
    Json entries = Json::object();
    for (const Dictionary::Entry& entry : dictionary.Entries()) entries[entry.key] = Write(entry.value);
    return Tagged("dictionary", std::move(entries));
  }

  Json Content(const Vector& vector) {
    Json items = Json::array();
    for (const Variant& item : vector.Items()) items.push_back(Write(item));
    return Tagged("vector", std::move(items));
  }

  Json Content(const Recordset& recordset) {
    Json content = Json::object();
    Json fields = Json::array();
    Json rows = Json::array();
    std::int32_t position = -1;
    // A recordset that is not open has neither rows nor a position, and a closed one no fields.
    platform::SkipErrors([&] {
      for (const platform::Field& field : recordset.Fields()) {
        const FieldType type = platform::IsTextType(field.type) ? FieldType::kText : field.type;
        fields.push_back(Json::array({field.name, std::string(platform::ToString(type))}));
      }
    });
    if (recordset.IsOpen()) {
      const std::size_t columns = fields.size();
      const std::size_t count = recordset.ViewCount();
      for (std::size_t i = 0; i < count; ++i) {
        Json row = Json::array();
        const std::size_t number = recordset.RowAt(i);
        for (std::size_t column = 0; column < columns; ++column) {
          row.push_back(Write(recordset.ValueAt(column, number)));
        }
        rows.push_back(std::move(row));
      }
      position = recordset.AbsolutePosition();
    }
    content["fields"] = std::move(fields);
    content["rows"] = std::move(rows);
    content["position"] = position;
    return Tagged("recordset", std::move(content));
  }

  const Names* names_;
  std::vector<const Object*> inside_;
};

}  // namespace

Json ToJson(const Variant& value, const Names* names) { return Writer(names).Write(value); }

std::string ToLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace player
