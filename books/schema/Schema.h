#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "books/database/Connection.h"

// Tables and views of a book: docs/book.md tells what they hold.
namespace books::schema {

// "StkB" as a number, in the header of the file.
inline constexpr std::int64_t kApplication = 0x53746B42;

// Scripts that turn a book of the version before into this one. Steps are never changed once books made with
// them are in use; a change of the schema is a new step.
struct UpgradeStep {
  std::int64_t version = 0;
  std::span<const std::string_view> scripts;
};

// From an empty database on, in order, versions 1, 2, 3…
std::span<const UpgradeStep> Steps();
std::int64_t NewestVersion();

// A new book in a new file, with the base classes, valuation methods and bill classes, and nothing else.
database::Connection CreateBook(const std::filesystem::path& file);
database::Connection CreateBookInMemory();

// Raises with the reason when the file is missing, no database, no stock book, damaged, locked, or written by
// a newer version of the program. An older book is upgraded when it is opened for writing, and refused with
// the remedy when it is opened for reading.
database::Connection OpenBook(const std::filesystem::path& file, database::Access access,
                              const database::OpenOptions& options = {});

// Brings a database to the last of `steps`, in one transaction: after a failure it is as it was.
void Upgrade(database::Connection& connection, std::span<const UpgradeStep> steps = Steps());

// Writes level, detail mark and ancestors of all base data from their parents. To be run after base data was
// inserted or moved; raises for a parent of another class and for a circle.
void RebuildTrees(database::Connection& connection);

// Adds the twelve periods of the years named, each a calendar month. Years that exist stay as they are.
void AddCalendarYears(database::Connection& connection, std::int32_t firstYear, std::int32_t lastYear);

}  // namespace books::schema
