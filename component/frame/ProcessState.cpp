#include "component/frame/ProcessState.h"

namespace component {

ProcessState& ProcessState::Get() {
  static ProcessState state;
  return state;
}

}  // namespace component
