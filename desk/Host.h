#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "desk/Desk.h"
#include "platform/form/Screen.h"
#include "platform/object/LoadedComponent.h"

namespace desk {

// Where the component's library is looked for: beside the executable.
std::filesystem::path DefaultComponentPath();

// The component loaded into this process, with a desk around it, a screen in front of it and a process value
// store. A class is looked for in this order: objects that stand first, the desk's services, data
// components, the component's own classes. One host at a time.
class Host {
 public:
  // The backend, witness and screen are borrowed. An empty path loads no component. Raises kCannotCreate
  // for a library that cannot be loaded.
  Host(Backend& backend, Witness& witness, platform::Screen& screen, const std::filesystem::path& component);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  Host(Host&&) = delete;
  Host& operator=(Host&&) = delete;
  // Objects of the component must be gone; a component that still has some stays in the process.
  ~Host();

  using Resolver = platform::ClassRegistry::Resolver;
  void SetFirst(Resolver first) { first_ = std::move(first); }
  void SetDataComponents(Resolver data) { data_ = std::move(data); }

  const std::shared_ptr<Desk>& GetDesk() const { return desk_; }
  // The component's classes in its own order; none without a component.
  std::vector<platform::ComponentClass> Classes() const;

 private:
  platform::Ref<platform::Object> Resolve(std::string_view programmaticId) const;

  std::shared_ptr<Desk> desk_;
  Resolver first_;
  Resolver data_;
  std::unique_ptr<platform::LoadedComponent> component_;
};

}  // namespace desk
