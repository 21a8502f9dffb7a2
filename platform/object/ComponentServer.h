#pragma once

// The border of a component that is loaded at run time: four entries, and what they exchange. A component
// exports exactly these four; a host reaches everything else by programmatic id and method name.

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/object/ClassRegistry.h"

namespace platform {

// A class's identity, 16 bytes in the order in which it is written.
struct ClassId {
  std::array<std::uint8_t, 16> bytes{};

  friend constexpr bool operator==(const ClassId&, const ClassId&) = default;
};

// One class that a component serves.
struct ComponentClass {
  std::string_view programmaticId;
  ClassId classId;
  std::string_view number;  // the report number that it starts with
  std::string_view title;   // its name for users
};

// What the entries answer; negative is a failure.
enum ServerStatus : std::int32_t {
  kServerOk = 0,
  kServerFalse = 1,
  kServerFailed = -1,
  kServerNoSuchClass = -2,
};

// What DllGetClassObject hands out: makes objects of one class. Owned by the component, valid while it is
// loaded.
class ClassFactory {
 public:
  ClassFactory() = default;
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  ClassFactory(ClassFactory&&) = delete;
  ClassFactory& operator=(ClassFactory&&) = delete;
  virtual ~ClassFactory() = default;

  virtual const ComponentClass& Class() const = 0;
  // Raises kCannotCreate for a class that cannot be created.
  virtual Ref<Object> CreateInstance() = 0;
};

// Called once for each class of a component.
using ClassVisitor = void (*)(void* context, const ComponentClass& served);

extern "C" {
// Registers the component's classes with the process's ClassRegistry, and shows each to `visit` when given.
using DllRegisterServerEntry = std::int32_t(ClassVisitor visit, void* context);
// Takes them out again.
using DllUnregisterServerEntry = std::int32_t();
// The factory of a class; kServerNoSuchClass and null for a class that the component does not serve.
using DllGetClassObjectEntry = std::int32_t(const ClassId& classId, ClassFactory** factory);
// kServerOk when no object of the component is alive, otherwise kServerFalse.
using DllCanUnloadNowEntry = std::int32_t();
}

}  // namespace platform
