#pragma once

#include "platform/rows/Dictionary.h"

namespace platform {

// The values that the components of one process share, AppType and the like. The host makes the store; a
// process without one has none, and components then go by their defaults.
Ref<Dictionary> ProcessStore();
void SetProcessStore(Ref<Dictionary> store);

}  // namespace platform
