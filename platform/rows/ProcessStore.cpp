#include "platform/rows/ProcessStore.h"

namespace platform {
namespace {

Ref<Dictionary>& Store() {
  static Ref<Dictionary> store;
  return store;
}

}  // namespace

Ref<Dictionary> ProcessStore() { return Store(); }

void SetProcessStore(Ref<Dictionary> store) { Store() = std::move(store); }

}  // namespace platform
