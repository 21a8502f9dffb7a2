// The component's four entries, the only symbols that it exports. Nothing happens when it is loaded.
#include <deque>

#include "component/frame/ProcessState.h"
#include "component/frame/Report.h"
#include "component/server/Classes.h"

namespace component {
namespace {

using platform::ClassFactory;
using platform::ComponentClass;
using platform::Object;
using platform::Ref;

class ServedFactory final : public ClassFactory {
 public:
  explicit ServedFactory(const ServedClass& served) : served_(served) {}
  const ComponentClass& Class() const override { return served_.description; }
  Ref<Object> CreateInstance() override { return CreateServed(served_); }

 private:
  const ServedClass& served_;
};

ClassFactory* FactoryOf(const platform::ClassId& classId) {
  static std::deque<ServedFactory> factories;  // a deque, as factories stay where they are made
  if (factories.empty()) {
    for (const ServedClass& served : ServedClasses()) factories.emplace_back(served);
  }
  for (ServedFactory& factory : factories) {
    if (factory.Class().classId == classId) return &factory;
  }
  return nullptr;
}

}  // namespace
}  // namespace component

extern "C" [[gnu::visibility("default")]] std::int32_t DllRegisterServer(platform::ClassVisitor visit,
                                                                         void* context) {
  for (const component::ServedClass& served : component::ServedClasses()) {
    platform::ClassRegistry::Process().Register(served.description.programmaticId,
                                                [&served] { return component::CreateServed(served); });
    if (visit != nullptr) visit(context, served.description);
  }
  return platform::kServerOk;
}

// The process ends its use of the component here, and with it what the component keeps for the process.
extern "C" [[gnu::visibility("default")]] std::int32_t DllUnregisterServer() {
  for (const component::ServedClass& served : component::ServedClasses()) {
    platform::ClassRegistry::Process().Unregister(served.description.programmaticId);
  }
  component::ProcessState::Get() = {};
  return platform::kServerOk;
}

extern "C" [[gnu::visibility("default")]] std::int32_t DllGetClassObject(const platform::ClassId& classId,
                                                                         platform::ClassFactory** factory) {
  if (factory == nullptr) return platform::kServerFailed;
  *factory = component::FactoryOf(classId);
  return *factory == nullptr ? platform::kServerNoSuchClass : platform::kServerOk;
}

extern "C" [[gnu::visibility("default")]] std::int32_t DllCanUnloadNow() {
  return component::Report::LiveCount() == 0 ? platform::kServerOk : platform::kServerFalse;
}
