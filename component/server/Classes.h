#pragma once

#include <span>

#include "platform/object/ComponentServer.h"

namespace component {

// One class of the class table. `make` is null for a report that this version of the component lists but
// cannot create.
struct ServedClass {
  platform::ComponentClass description;
  platform::Ref<platform::Object> (*make)() = nullptr;
};

// The fifteen report classes, in the order in which users read them.
std::span<const ServedClass> ServedClasses();

// A new object of the class; raises kCannotCreate for one that cannot be created.
platform::Ref<platform::Object> CreateServed(const ServedClass& served);

}  // namespace component
