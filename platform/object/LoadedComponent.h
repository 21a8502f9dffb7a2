#pragma once

#include <string>
#include <vector>

#include "platform/object/ComponentServer.h"
#include "platform/system/SharedLibrary.h"

namespace platform {

// A component in this process: loaded and registered when this object is made, unregistered and unloaded when
// it ends. No object of the component may be alive then.
class LoadedComponent {
 public:
  // Raises kCannotCreate when the library cannot be loaded, lacks an entry, or refuses to register.
  explicit LoadedComponent(const std::string& path);
  LoadedComponent(const LoadedComponent&) = delete;
  LoadedComponent& operator=(const LoadedComponent&) = delete;
  LoadedComponent(LoadedComponent&&) = delete;
  LoadedComponent& operator=(LoadedComponent&&) = delete;
  ~LoadedComponent();

  // The classes in the component's own order.
  const std::vector<ComponentClass>& Classes() const { return classes_; }
  bool CanUnload() const { return canUnload_() == kServerOk; }

 private:
  SharedLibrary library_;
  DllUnregisterServerEntry* unregister_;
  DllCanUnloadNowEntry* canUnload_;
  std::vector<ComponentClass> classes_;
};

}  // namespace platform
