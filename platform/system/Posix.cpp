// The calls that differ from one operating system to the next, for those that follow POSIX.
#include <atomic>

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include "platform/system/Process.h"
#include "platform/system/SharedLibrary.h"
#include "platform/value/Error.h"

namespace platform {
namespace {

[[noreturn]] void RaiseLastError(const std::string& path) {
  const char* reason =
      dlerror();  // NOLINT(concurrency-mt-unsafe): libraries are loaded on the one session thread
  throw Error(ErrorNumber::kCannotCreate, "SharedLibrary",
              "cannot load " + path + ": " + (reason == nullptr ? "unknown reason" : reason));
}

}  // namespace

// Asked for with every call of a service, and each time a call of the system: known until the process splits.
std::int32_t ProcessId() {
  static std::atomic<std::int32_t> known{0};
  static const int watched = pthread_atfork(nullptr, nullptr, [] { known = 0; });
  if (watched != 0) return getpid();
  std::int32_t id = known.load(std::memory_order_relaxed);
  if (id == 0) known = id = getpid();
  return id;
}

SharedLibrary::SharedLibrary(const std::string& path)
    : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) RaiseLastError(path_);
}

SharedLibrary::~SharedLibrary() { dlclose(handle_); }

void* SharedLibrary::Address(const char* name) const {
  void* address = dlsym(handle_, name);
  if (address == nullptr) RaiseLastError(path_);
  return address;
}

}  // namespace platform
