#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/rows/Dictionary.h"
#include "platform/rows/Vector.h"

namespace component {

// What all report objects and dialogs of one process share. Each item comes into being on its first use and
// lives to the end of the process.
struct ProcessState {
  // Set by a host that offers a framework object; none does, so the session services are asked instead.
  platform::Ref<platform::Object> framework;
  // The parsed props: keys and values in their order, keys without regard to case.
  std::vector<std::pair<std::string, std::string>> props;
  std::string propsText;
  // Never filled: texts are Simplified Chinese, and translation stands idle.
  std::string language;
  // Whether codes are full numbers; each new report object sets it.
  bool isLongNumber = true;
  platform::Ref<platform::Vector> sharedHeading;
  bool needAuthrizeRead = false;
  platform::Ref<platform::Object> glData;
  platform::Ref<platform::Object> glView;
  platform::Ref<platform::Object> systemProfile;

  static ProcessState& Get();
};

}  // namespace component
