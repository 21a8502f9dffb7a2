#pragma once

#include <filesystem>

#include "books/Book.h"

namespace bench {

// The demo book of this size, 24 months of business up to a fixed day, so that every run measures the same
// rows. It stands beside the bench program: made when it is not there, which takes minutes for the large one,
// and kept.
const std::filesystem::path& DemoBookFile(books::DemoSize size);

}  // namespace bench
