#include "browser/server/PageFiles.h"

#include <array>
#include <fstream>
#include <sstream>

#include "platform/value/Error.h"

namespace browser {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = 32UL * 1024 * 1024;

struct MediaType {
  std::string_view ending;
  std::string_view type;
};

constexpr std::array kTypes = {
    MediaType{".html", "text/html; charset=utf-8"},
    MediaType{".js", "text/javascript; charset=utf-8"},
    MediaType{".css", "text/css; charset=utf-8"},
    MediaType{".json", "application/json"},
    MediaType{".svg", "image/svg+xml"},
    MediaType{".png", "image/png"},
    MediaType{".ico", "image/x-icon"},
    MediaType{".woff2", "font/woff2"},
    MediaType{".md", "text/markdown; charset=utf-8"},
    MediaType{".txt", "text/plain; charset=utf-8"},
};

std::string TypeOf(const fs::path& file) {
  const std::string ending = file.extension().string();
  for (const MediaType& known : kTypes) {
    if (known.ending == ending) return std::string(known.type);
  }
  return "application/octet-stream";
}

std::string TextOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

PageFiles PageFiles::Read(const fs::path& folder) {
  PageFiles page;
  std::error_code error;
  for (fs::recursive_directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    // A link may lead out of the folder.
    if (at->is_symlink() || !at->is_regular_file() || at->file_size() > kLargestFile) continue;
    const std::string name = "/" + at->path().lexically_relative(folder).generic_string();
    page.files_[name] = {
        .type = TypeOf(at->path()), .text = TextOf(at->path()), .keeps = name.starts_with("/assets/")};
  }
  if (!page.files_.contains("/index.html")) {
    throw platform::Error(
        platform::ErrorNumber::kBadArgument, "browser",
        "there is no built page in " + folder.string() +
            "; build it with `npm ci && npm run build` in web/, or name its folder with --page");
  }
  return page;
}

const PageFile* PageFiles::Find(std::string_view target) const {
  const std::string_view path = target.substr(0, target.find_first_of("?#"));
  const bool isPage = path == "/" || path == "/r" || path.starts_with("/r/");
  const auto found = files_.find(isPage ? std::string_view("/index.html") : path);
  return found == files_.end() ? nullptr : &found->second;
}

fs::path DefaultPagePath() {
  std::error_code error;
  const fs::path executable = fs::read_symlink("/proc/self/exe", error);
  const fs::path beside = executable.parent_path() / "page";
  if (fs::exists(beside / "index.html", error)) return beside;
  // build/PRESET/bin/stockrpt
  return executable.parent_path().parent_path().parent_path().parent_path() / "web" / "dist";
}

}  // namespace browser
