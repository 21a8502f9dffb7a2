#pragma once

#include <filesystem>
#include <istream>
#include <ostream>

#include "desk/DataBackend.h"

namespace player {

struct PlayOptions {
  std::filesystem::path component;  // the component's library; empty to play without one
  desk::BookOpener openBook;        // empty: a `book` step raises
};

// Plays a script from `in` and writes what happens to `out`, a JSON object a line. Returns the exit status:
// 0 when every step ran, 2 for a script that cannot be read, 1 for a component that cannot be loaded; the
// reason, with the script's line, goes to `err`.
int Play(std::istream& in, std::ostream& out, std::ostream& err, const PlayOptions& options);

}  // namespace player
