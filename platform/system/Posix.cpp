// The calls that differ from one operating system to the next, for those that follow POSIX.
#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include "platform/system/Memory.h"
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

std::int32_t ProcessId() { return static_cast<std::int32_t>(getpid()); }

void PreferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
  madvise(memory, size, MADV_HUGEPAGE);  // advice: a refusal changes nothing
#endif
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
