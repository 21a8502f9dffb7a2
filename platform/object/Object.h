#pragma once

#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "platform/object/Ref.h"

namespace platform {

class Variant;
class EventSource;

enum class CallKind { kMethod, kGet, kPut };

// Anything that can be called by name. A class with an operation table gets Invoke from it (Exposed in
// OperationTable.h); a class whose members are known only at run time writes its own.
class Object : public RefCounted {
 public:
  // The class's name as callers know it: the programmatic id where it has one.
  virtual std::string ClassName() const = 0;

  // Calls a member. `arguments` come in calling order; what a member takes by reference is written back
  // into them, also when it raises. For kPut the new value is the last argument. Raises kUnknownMember,
  // kArgumentCount or kTypeMismatch with the member's name before anything runs.
  virtual Variant Invoke(std::string_view member, CallKind kind, std::span<Variant> arguments) = 0;

  // The object's events, for a caller that wants to listen; null for an object that raises none.
  virtual EventSource* Events() { return nullptr; }

  // Invoke with plain C++ arguments. What is passed as a non-const Variant is by reference: it holds
  // afterwards what the member left there. Defined in platform/value/Variant.h.
  template <class... Arguments>
  Variant Call(std::string_view member, Arguments&&... arguments);
  template <class... Arguments>
  Variant Get(std::string_view member, Arguments&&... arguments);
  template <class... Arguments>
  void Put(std::string_view member, Arguments&&... arguments);

 private:
  template <class... Arguments>
  Variant InvokeWith(std::string_view member, CallKind kind, Arguments&&... arguments);
};

// The object as a T; null for none and for one of another class. A class that none derives from is known by
// its type alone, which is quicker than to look for it among the bases.
template <class T>
T* ObjectAs(Object* object) {
  if constexpr (std::is_final_v<T>) {
    return object != nullptr && typeid(*object) == typeid(T) ? static_cast<T*>(object) : nullptr;
  } else {
    return dynamic_cast<T*>(object);
  }
}

}  // namespace platform
