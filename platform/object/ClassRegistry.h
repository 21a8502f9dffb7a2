#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/object/Object.h"

namespace platform {

// Creation of objects by programmatic id, without regard to case. One registry serves the process: a loaded
// component registers its classes in it, a host its services, and both create through it.
class ClassRegistry {
 public:
  using Factory = std::function<Ref<Object>()>;
  // Answers a programmatic id that it serves, and null for any other.
  using Resolver = std::function<Ref<Object>(std::string_view programmaticId)>;

  // The process's registry. The foundation's own classes (Dictionary, Vector, Recordset) stand in it from the
  // start.
  static ClassRegistry& Process();

  void Register(std::string_view programmaticId, Factory factory);
  void Unregister(std::string_view programmaticId);
  bool IsRegistered(std::string_view programmaticId) const;

  // Asked before the registered classes, and asked after them. An empty resolver removes it.
  void SetOverride(Resolver resolver) { override_ = std::move(resolver); }
  void SetFallback(Resolver resolver) { fallback_ = std::move(resolver); }

  // Never null: a class that nobody serves raises kCannotCreate, "class not registered: ID".
  Ref<Object> Create(std::string_view programmaticId) const;

 private:
  std::map<std::string, Factory, std::less<>> factories_;  // by id in lower case
  Resolver override_;
  Resolver fallback_;
};

// ClassRegistry::Process().Create.
Ref<Object> CreateObject(std::string_view programmaticId);

}  // namespace platform
