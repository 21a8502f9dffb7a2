#pragma once

#include <span>

#include "platform/object/ComponentServer.h"

namespace component {

// One class of the class table.
struct ServedClass {
  platform::ComponentClass description;
  platform::Ref<platform::Object> (*make)() = nullptr;
};

// The fifteen report classes, in the order in which users read them.
std::span<const ServedClass> ServedClasses();

// A new object of the class.
platform::Ref<platform::Object> CreateServed(const ServedClass& served);

}  // namespace component
