#pragma once

#include <string>

namespace platform {

// A library loaded at run time; it stays loaded until the object ends. Loading or finding an entry that is
// not there raises kCannotCreate with the system's own reason.
class SharedLibrary {
 public:
  explicit SharedLibrary(const std::string& path);
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  SharedLibrary(SharedLibrary&&) = delete;
  SharedLibrary& operator=(SharedLibrary&&) = delete;
  ~SharedLibrary();

  template <class Function>
  Function* Entry(const char* name) const {
    // An entry's type is agreed on; the system knows none.
    return reinterpret_cast<Function*>(Address(name));
  }

 private:
  void* Address(const char* name) const;

  std::string path_;
  void* handle_ = nullptr;
};

}  // namespace platform
