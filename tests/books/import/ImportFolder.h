#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "books/import/Import.h"

namespace books::test {

// The files of a folder by name.
using Files = std::map<std::string, std::string>;

// A small set that is sound: one item of each kind, two warehouses and a gift warehouse, three bills in
// September and October 2026.
Files SoundFiles();

// A folder of CSV files and a book beside it, removed with this object.
class ImportFolder {
 public:
  ImportFolder();
  explicit ImportFolder(const Files& files) : ImportFolder() { Write(files); }
  ImportFolder(const ImportFolder&) = delete;
  ImportFolder& operator=(const ImportFolder&) = delete;
  ~ImportFolder();

  // Replaces all files of the folder.
  void Write(const Files& files) const;
  const std::filesystem::path& Folder() const { return folder_; }
  const std::filesystem::path& Book() const { return book_; }

  ImportReport Import(bool dryRun = false) const;
  // "items.csv:3: unit …", one line an error; empty for a report without errors.
  static std::string ErrorsOf(const ImportReport& report);
  // Rows of a query on the book, as tests/books/TinyBook.h writes them, each with its line end.
  std::string Rows(std::string_view sql) const;
  // What `check` finds in the book, one line each.
  std::string Violations() const;

 private:
  std::filesystem::path top_;
  std::filesystem::path folder_;
  std::filesystem::path book_;
};

}  // namespace books::test
