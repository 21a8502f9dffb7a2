#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/value/Error.h"

namespace platform {

// The error that `action` raises; a failure of the test when it raises none.
inline Error Raised(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  ADD_FAILURE() << "nothing was raised";
  return {ErrorNumber{}, "", ""};
}

}  // namespace platform
