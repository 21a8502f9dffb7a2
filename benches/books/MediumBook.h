#pragma once

#include <filesystem>

#include "books/Book.h"

namespace bench {

// A book of 5,000 items in 12 warehouses, two batches of each everywhere; made once a run, gone with it.
const std::filesystem::path& MediumBookFile();
const books::Book& MediumBook();

}  // namespace bench
