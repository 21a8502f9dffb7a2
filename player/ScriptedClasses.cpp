#include "player/ScriptedClasses.h"

#include <algorithm>

#include "desk/services/Service.h"
#include "platform/value/Convert.h"

namespace player {
namespace {

using platform::CallKind;
using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::Ref;
using platform::Variant;

// A member of the script by name, without regard to case as all calls by name; null when there is none.
const Json* FindMember(const Json& members, std::string_view name) {
  for (const auto& [key, member] : members.items()) {
    if (platform::EqualsIgnoreCase(key, name)) return &member;
  }
  return nullptr;
}

class ScriptedObject final : public Object {
 public:
  ScriptedObject(std::shared_ptr<ScriptedClass> scripted, ScriptedClasses::Told told)
      : class_(std::move(scripted)), told_(told), generation_(class_->generation) {
    if (told_ == ScriptedClasses::Told::kYes) Witness().OnCreated(class_->programmaticId);
  }
  ScriptedObject(const ScriptedObject&) = delete;
  ScriptedObject& operator=(const ScriptedObject&) = delete;
  ScriptedObject(ScriptedObject&&) = delete;
  ScriptedObject& operator=(ScriptedObject&&) = delete;
  ~ScriptedObject() override {
    if (told_ == ScriptedClasses::Told::kYes) Witness().OnReleased(class_->programmaticId);
  }

  std::string ClassName() const override { return class_->programmaticId; }

  Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) override {
    const std::shared_ptr<ScriptedClass> kept = class_;  // an answer may end this object
    if (generation_ != class_->generation) {
      written_.clear();
      generation_ = class_->generation;
    }
    if (kind == CallKind::kPut) return Put(member, arguments);
    const Json* method = FindMember(class_->methods, member);
    const bool isProperty = FindMember(class_->properties, member) != nullptr || HasWritten(member);
    // What the script describes decides; a caller by name may take a property for a method.
    const bool call =
        kind == CallKind::kMethod ? method != nullptr || !isProperty : method != nullptr && !isProperty;
    return call ? Call(member, method, arguments) : Get(member, arguments);
  }

 private:
  desk::Witness& Witness() const { return class_->desk->Told(); }

  // An indexed property keeps a value for each index.
  static std::string PlaceOf(std::string_view property, std::span<const Variant> index) {
    std::string place = platform::ToLowerAscii(property);
    for (const Variant& part : index) place += '\n' + ToLine(ToJson(part));
    return place;
  }

  bool HasWritten(std::string_view property) const {
    const std::string place = platform::ToLowerAscii(property);
    return std::ranges::any_of(written_, [&](const auto& entry) {
      return entry.first == place || entry.first.starts_with(place + '\n');
    });
  }

  Variant Put(std::string_view property, std::span<Variant> arguments) {
    const Variant value = arguments.empty() ? Variant() : arguments.back();
    const auto index = arguments.empty() ? arguments : arguments.first(arguments.size() - 1);
    Witness().OnPut(class_->programmaticId, property, index, value);
    written_[PlaceOf(property, index)] = value;
    return {};
  }

  Variant Get(std::string_view property, std::span<Variant> arguments) {
    Witness().OnGot(class_->programmaticId, property, arguments);
    if (const auto found = written_.find(PlaceOf(property, arguments)); found != written_.end()) {
      return found->second;
    }
    const Json* scripted = FindMember(class_->properties, property);
    if (scripted == nullptr) RaiseUnknown(property, "property");
    class_->desk->Behind();  // raises when the script that answers has ended
    return FromJson(*scripted, class_->names);
  }

  Variant Call(std::string_view method, const Json* answers, std::span<Variant> arguments) {
    const std::shared_ptr<ScriptedClass> scripted = class_;
    Witness().OnCalled(scripted->programmaticId, method, arguments);
    desk::TellMeaning(Witness(), scripted->programmaticId, method, arguments,
                      [this](std::string_view property) {
                        const auto found = written_.find(PlaceOf(property, {}));
                        return found == written_.end() ? Variant() : found->second;
                      });
    if (answers == nullptr) RaiseUnknown(method, "method");
    scripted->desk->Behind();
    const std::size_t call = scripted->answered[platform::ToLowerAscii(method)]++;
    const Json answer = answers->is_array() ? (*answers)[std::min(call, answers->size() - 1)] : *answers;
    return Answer(*scripted, answer, arguments);
  }

  static Variant Answer(const ScriptedClass& scripted, const Json& answer, std::span<Variant> arguments) {
    if (answer.contains("args")) {
      for (const auto& [key, value] : answer["args"].items()) {
        const std::size_t position = std::stoul(key);
        if (position < arguments.size()) arguments[position] = FromJson(value, scripted.names);
      }
    }
    if (answer.contains("raises")) {
      throw Error(ErrorNumber::kUserDefined, scripted.programmaticId, answer["raises"].get<std::string>());
    }
    return answer.contains("returns") ? FromJson(answer["returns"], scripted.names) : Variant();
  }

  [[noreturn]] void RaiseUnknown(std::string_view member, const char* kind) const {
    throw Error(
        ErrorNumber::kUnknownMember, class_->programmaticId,
        class_->programmaticId + "." + std::string(member) + ": the script describes no such " + kind);
  }

  std::shared_ptr<ScriptedClass> class_;
  ScriptedClasses::Told told_;
  std::size_t generation_;
  std::map<std::string, Variant> written_;
};

}  // namespace

void ScriptedClasses::Define(const Json& step) {
  const auto programmaticId = step["component"].get<std::string>();
  std::shared_ptr<ScriptedClass>& scripted = classes_[platform::ToLowerAscii(programmaticId)];
  if (!scripted) scripted = std::make_shared<ScriptedClass>();
  scripted->programmaticId = programmaticId;
  scripted->desk = desk_;
  scripted->names = &names_;
  scripted->methods = step.contains("methods") ? step["methods"] : Json::object();
  scripted->properties = step.contains("properties") ? step["properties"] : Json::object();
  scripted->answered.clear();
  ++scripted->generation;
}

Ref<Object> ScriptedClasses::Create(std::string_view programmaticId, Told told) const {
  const auto found = classes_.find(platform::ToLowerAscii(programmaticId));
  if (found == classes_.end()) return {};
  return platform::MakeRef<ScriptedObject>(found->second, told);
}

}  // namespace player
