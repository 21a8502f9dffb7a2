#include "platform/object/LoadedComponent.h"

#include "platform/value/Error.h"

namespace platform {

LoadedComponent::LoadedComponent(const std::string& path)
    : library_(path),
      unregister_(library_.Entry<DllUnregisterServerEntry>("DllUnregisterServer")),
      canUnload_(library_.Entry<DllCanUnloadNowEntry>("DllCanUnloadNow")) {
  library_.Entry<DllGetClassObjectEntry>("DllGetClassObject");  // raises when the component lacks it
  auto* registerServer = library_.Entry<DllRegisterServerEntry>("DllRegisterServer");
  const ClassVisitor remember = [](void* context, const ComponentClass& served) {
    static_cast<std::vector<ComponentClass>*>(context)->push_back(served);
  };
  if (registerServer(remember, &classes_) != kServerOk) {
    throw Error(ErrorNumber::kCannotCreate, "LoadedComponent",
                "the component " + path + " refuses to register");
  }
}

LoadedComponent::~LoadedComponent() { unregister_(); }

}  // namespace platform
