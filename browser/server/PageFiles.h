#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace browser {

struct PageFile {
  std::string type;
  std::string text;
  bool keeps = false;  // its name changes with its content, so it may be kept for ever
};

// The built page, read once and served from memory: only what was found in its folder has an address, so no
// path, however written, leads anywhere else.
class PageFiles {
 public:
  // A folder without index.html raises platform::Error with the remedy.
  static PageFiles Read(const std::filesystem::path& folder);

  // The file of a request target. Addresses of reports (/r/…) and of the start are the page itself. Null for
  // anything else.
  const PageFile* Find(std::string_view target) const;
  std::size_t Count() const { return files_.size(); }

 private:
  std::map<std::string, PageFile, std::less<>> files_;
};

// Where the built page is looked for: in `page` beside the executable, then in web/dist of the tree in which
// it was built.
std::filesystem::path DefaultPagePath();

}  // namespace browser
