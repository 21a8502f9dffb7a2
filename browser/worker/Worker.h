#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "desk/DataBackend.h"

namespace browser {

// What the process of one session is started with.
struct WorkerOptions {
  int descriptor = 0;  // its end of the socket pair
  std::string book;
  std::int32_t userId = 0;  // 0: nobody in particular, whom no rights restrict
  std::filesystem::path component;
  desk::BookOpener openBook;
};

// Serves the session until its parent ends it; the process then ends at once. An exception that comes out is
// a session that could not be begun.
[[noreturn]] void RunWorker(const WorkerOptions& options);

}  // namespace browser
