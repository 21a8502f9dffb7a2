#include "desk/Host.h"

#include <exception>

#include "platform/rows/ProcessStore.h"

namespace desk {

using platform::ClassRegistry;
using platform::Object;
using platform::Ref;

namespace {

// Components that cannot be unloaded any more: code of theirs is still referred to. The list itself lives as
// long as the process, past every destructor.
void KeepLoaded(std::unique_ptr<platform::LoadedComponent> component) {
  static auto& kept = *new std::vector<std::unique_ptr<platform::LoadedComponent>>();
  kept.push_back(std::move(component));
}

}  // namespace

std::filesystem::path DefaultComponentPath() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  return (error ? std::filesystem::current_path() : executable.parent_path()) / "TOVStockRpt.so";
}

Host::Host(Backend& backend, Witness& witness, platform::Screen& screen,
           const std::filesystem::path& component)
    : desk_(Desk::Open(backend, witness)) {
  if (!component.empty()) component_ = std::make_unique<platform::LoadedComponent>(component.string());
  ClassRegistry::Process().SetOverride([this](std::string_view id) { return Resolve(id); });
  platform::SetProcessStore(platform::MakeRef<platform::Dictionary>());
  platform::Screen::Use(&screen);
}

Host::~Host() {
  ClassRegistry::Process().SetOverride({});
  platform::Screen::Use(nullptr);
  platform::SetProcessStore(nullptr);
  desk_->Close();
  // Code that an object or an error on its way out still refers to must not go away under it.
  const bool inUse = component_ && (!component_->CanUnload() || std::uncaught_exceptions() > 0);
  if (inUse) KeepLoaded(std::move(component_));
}

std::vector<platform::ComponentClass> Host::Classes() const {
  return component_ ? component_->Classes() : std::vector<platform::ComponentClass>();
}

Ref<Object> Host::Resolve(std::string_view programmaticId) const {
  if (first_) {
    if (Ref<Object> object = first_(programmaticId)) return object;
  }
  if (Ref<Object> service = desk_->Create(programmaticId)) return service;
  return data_ ? data_(programmaticId) : Ref<Object>();
}

}  // namespace desk
