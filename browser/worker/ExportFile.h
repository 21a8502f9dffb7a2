#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "desk/Backend.h"
#include "exports/Paper.h"
#include "exports/Sheet.h"

namespace browser {

// The decimals that a book wants its figures shown with.
exports::Decimals DecimalsOf(desk::Backend& book);

// A report as a file that has no name anywhere: it goes with this object, and with the process however that
// ends.
class ExportFile {
 public:
  // Raises platform::Error when no file can be made.
  explicit ExportFile(std::int32_t id);

  // `format` is "csv", "xlsx" or "pdf", which `setup` is for. False when `progress` stopped it; raises
  // platform::Error when the file cannot be written.
  bool Write(std::string_view format, const exports::Sheet& sheet, const exports::Progress& progress,
             const exports::PageSetup& setup = {});

  // Takes in how much another process has written. False when that cannot be told.
  bool Measure();

  std::int32_t Id() const { return id_; }
  std::size_t Size() const { return size_; }
  // The bytes from `start` on, at most kPart of them.
  std::string Read(std::size_t start) const;

  static constexpr std::size_t kPart = 192UL * 1024;

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::int32_t id_;
  std::unique_ptr<std::FILE, Close> file_;
  std::size_t size_ = 0;
};

// As messages carry bytes.
std::string Base64(std::string_view bytes);

}  // namespace browser
