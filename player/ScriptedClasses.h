#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "desk/Desk.h"
#include "player/Json.h"

namespace player {

// One object class as a script describes it. All its objects share it, and with it the count of answers.
struct ScriptedClass {
  std::string programmaticId;
  std::shared_ptr<desk::Desk> desk;
  const Names* names = nullptr;
  Json methods = Json::object();
  Json properties = Json::object();
  std::map<std::string, std::size_t> answered;  // calls so far, by method in lower case
  std::size_t generation = 0;                   // goes up when a script describes the class anew
};

// The object classes that a script has described. Each call is told before it is answered, and every answer
// is built afresh.
class ScriptedClasses {
 public:
  // `names` is borrowed until the desk closes.
  ScriptedClasses(std::shared_ptr<desk::Desk> desk, const Names& names)
      : desk_(std::move(desk)), names_(names) {}

  // Takes a `component` step. A class that is described again answers anew, also through its old objects.
  void Define(const Json& step);

  enum class Told { kYes, kNo };
  // An object of the class; null for a class that no step described. kNo makes one whose coming and going
  // is told to nobody.
  platform::Ref<platform::Object> Create(std::string_view programmaticId, Told told) const;

 private:
  std::shared_ptr<desk::Desk> desk_;
  const Names& names_;
  std::map<std::string, std::shared_ptr<ScriptedClass>, std::less<>> classes_;  // by id in lower case
};

}  // namespace player
