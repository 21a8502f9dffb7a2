#include "player/PlayWitness.h"

namespace player {
namespace {

Json Line(const char* key, std::string_view value) {
  Json line = Json::object();
  line[key] = std::string(value);
  return line;
}

}  // namespace

Json PlayWitness::List(Arguments arguments) const {
  Json list = Json::array();
  for (const platform::Variant& argument : arguments) list.push_back(ToJson(argument, &names_));
  return list;
}

void PlayWitness::OnCreated(std::string_view programmaticId) {
  transcript_.Write(Line("created", programmaticId));
}

void PlayWitness::OnReleased(std::string_view programmaticId) {
  transcript_.Write(Line("released", programmaticId));
}

void PlayWitness::OnCalled(std::string_view programmaticId, std::string_view method, Arguments arguments) {
  Json line = Line("called", programmaticId);
  line["method"] = std::string(method);
  line["args"] = List(arguments);
  transcript_.Write(line);
}

void PlayWitness::OnGot(std::string_view programmaticId, std::string_view property, Arguments index) {
  Json line = Line("got", programmaticId);
  line["property"] = std::string(property);
  if (!index.empty()) line["args"] = List(index);
  transcript_.Write(line);
}

void PlayWitness::OnPut(std::string_view programmaticId, std::string_view property, Arguments index,
                        const platform::Variant& value) {
  Json line = Line("put", programmaticId);
  line["property"] = std::string(property);
  if (!index.empty()) line["args"] = List(index);
  line["value"] = ToJson(value, &names_);
  transcript_.Write(line);
}

void PlayWitness::OnSql(std::string_view text) { transcript_.Write(Line("sql", text)); }

void PlayWitness::OnLookup(const desk::LookupQuery& query) {
  Json lookup = Json::object();
  lookup["kind"] = query.kind;
  lookup["type"] = query.dataType;
  lookup["text"] = query.text;
  lookup["filter"] = query.filter;
  Json line = Json::object();
  line["lookup"] = std::move(lookup);
  transcript_.Write(line);
}

void PlayWitness::OnUsage(std::string_view code, std::string_view text) {
  Json line = Json::object();
  line["usage"] = Json::array({std::string(code), std::string(text)});
  transcript_.Write(line);
}

}  // namespace player
