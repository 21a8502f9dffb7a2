#pragma once

#include "desk/DataBackend.h"

namespace player {

// A stock book behind the desk. Raises for a file that is no book, with the reason.
std::unique_ptr<desk::DataBackend> OpenBook(const std::string& file,
                                            const std::function<std::int32_t()>& userId);

}  // namespace player
