#pragma once

#include <filesystem>
#include <memory>

#include "books/database/Backend.h"
#include "books/database/Connection.h"

// Books in SQLite files: write-ahead logging, so that reports read while something writes; foreign keys on.
namespace books::database::sqlite {

std::unique_ptr<ConnectionBackend> Open(const std::filesystem::path& file, Access access,
                                        const OpenOptions& options);
std::unique_ptr<ConnectionBackend> OpenInMemory();

}  // namespace books::database::sqlite
