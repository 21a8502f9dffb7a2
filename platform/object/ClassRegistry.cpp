#include "platform/object/ClassRegistry.h"

#include "platform/rows/Dictionary.h"
#include "platform/rows/Recordset.h"
#include "platform/rows/Vector.h"
#include "platform/value/Convert.h"

namespace platform {

ClassRegistry& ClassRegistry::Process() {
  static ClassRegistry registry = [] {
    ClassRegistry foundation;
    foundation.Register(Dictionary::kClassName, [] { return Ref<Object>(MakeRef<Dictionary>()); });
    foundation.Register(Recordset::kClassName, [] { return Ref<Object>(MakeRef<Recordset>()); });
    foundation.Register(Vector::kClassName, [] { return Ref<Object>(MakeRef<Vector>()); });
    return foundation;
  }();
  return registry;
}

void ClassRegistry::Register(std::string_view programmaticId, Factory factory) {
  factories_[ToLowerAscii(programmaticId)] = std::move(factory);
}

void ClassRegistry::Unregister(std::string_view programmaticId) {
  factories_.erase(ToLowerAscii(programmaticId));
}

bool ClassRegistry::IsRegistered(std::string_view programmaticId) const {
  return factories_.contains(ToLowerAscii(programmaticId));
}

Ref<Object> ClassRegistry::Create(std::string_view programmaticId) const {
  if (override_) {
    if (Ref<Object> object = override_(programmaticId)) return object;
  }
  if (const auto found = factories_.find(ToLowerAscii(programmaticId)); found != factories_.end()) {
    if (Ref<Object> object = found->second()) return object;
  }
  if (fallback_) {
    if (Ref<Object> object = fallback_(programmaticId)) return object;
  }
  throw Error(ErrorNumber::kCannotCreate, "ClassRegistry",
              "class not registered: " + std::string(programmaticId));
}

Ref<Object> CreateObject(std::string_view programmaticId) {
  return ClassRegistry::Process().Create(programmaticId);
}

}  // namespace platform
