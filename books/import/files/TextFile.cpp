// GB18030 is converted by the iconv of the C library: it is there wherever the program runs, it is kept up to
// date with the system, and one encoding in one direction does not justify a library of ICU's size.
#include "books/import/files/TextFile.h"

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include <iconv.h>

#include "platform/value/Error.h"

namespace books::importer {
namespace {

constexpr std::size_t kPieceBytes = 256UL * 1024;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kSaveAs = "save the file as CSV in UTF-8";

}  // namespace

bool Utf8Check::Take(unsigned char byte) {
  if (missing_ > 0) {
    if (byte < low_ || byte > high_) return false;
    low_ = 0x80;
    high_ = 0xBF;
    --missing_;
    return true;
  }
  if (byte < 0x80) return true;
  if (byte < 0xC2 || byte > 0xF4) return false;
  missing_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
  // The second byte is narrower where the whole range would allow longer forms, surrogates or too much.
  if (byte == 0xE0) low_ = 0xA0;
  if (byte == 0xED) high_ = 0x9F;
  if (byte == 0xF0) low_ = 0x90;
  if (byte == 0xF4) high_ = 0x8F;
  return true;
}

class TextFile::Converter {
 public:
  Converter() : handle_(iconv_open("UTF-8", "GB18030")) {
    // iconv_open marks its failure by the address -1.
    if (reinterpret_cast<std::intptr_t>(handle_) ==
        -1) {  // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast): as above
      throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Import",
                            "this system cannot convert GB18030; save the files as UTF-8");
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { iconv_close(handle_); }

  // False when the bytes are no GB18030. A character cut at the end is kept for the next call.
  bool Convert(std::string_view bytes, std::string& utf8) {
    rest_ += bytes;
    // No character of GB18030 takes more than 4 bytes of UTF-8, and none fewer than 1 byte itself.
    utf8.resize((rest_.size() * 4) + 4);
    char* from = rest_.data();
    std::size_t fromLeft = rest_.size();
    char* to = utf8.data();
    std::size_t toLeft = utf8.size();
    const std::size_t result = iconv(handle_, &from, &fromLeft, &to, &toLeft);
    const bool sound = result != static_cast<std::size_t>(-1) || errno == EINVAL;
    utf8.resize(utf8.size() - toLeft);
    rest_.erase(0, rest_.size() - fromLeft);
    return sound;
  }
  bool AtBoundary() const { return rest_.empty(); }

 private:
  iconv_t handle_;
  std::string rest_;
};

TextFile::TextFile(const std::filesystem::path& path, std::string_view name, Findings& findings)
    : name_(name), stream_(path, std::ios::binary) {
  std::error_code ignored;
  if (!stream_ || std::filesystem::is_directory(path, ignored)) {
    findings.Add({name_}, {}, {}, "the file cannot be read", "check its permissions");
    return;
  }
  readable_ = FindEncoding(findings);
}

TextFile::~TextFile() = default;

std::string_view TextFile::ReadPiece() {
  piece_.resize(kPieceBytes);
  stream_.read(piece_.data(), static_cast<std::streamsize>(piece_.size()));
  piece_.resize(static_cast<std::size_t>(stream_.gcount()));
  return piece_;
}

void TextFile::Rewind(std::streamoff offset) {
  stream_.clear();
  stream_.seekg(offset);
}

bool TextFile::FindEncoding(Findings& findings) {
  Utf8Check check;
  std::int64_t line = 1;
  bool sound = true;
  std::string_view piece = ReadPiece();
  if (piece.starts_with("\xFF\xFE") || piece.starts_with("\xFE\xFF")) {
    findings.Add({name_, 1}, {}, {}, "the file is UTF-16", std::string(kSaveAs));
    return false;
  }
  const bool marked = piece.starts_with(kUtf8Mark);
  for (; !piece.empty() && sound; piece = ReadPiece()) {
    for (const char c : piece) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte == 0) {
        findings.Add({name_, line}, {}, {}, "the file has a zero byte, so it is no text",
                     std::string(kSaveAs));
        return false;
      }
      sound = check.Take(byte);
      if (!sound) break;
      if (byte == '\n') ++line;
    }
    if (!sound) break;
  }
  sound = sound && check.AtBoundary();
  if (!sound && !marked && IsGb18030()) {
    converter_ = std::make_unique<Converter>();
    Rewind(0);
    return true;
  }
  if (!sound) {
    findings.Add({name_, line}, {}, {},
                 marked ? "the text is no UTF-8" : "the text is neither UTF-8 nor GB18030",
                 std::string(kSaveAs));
    return false;
  }
  Rewind(marked ? static_cast<std::streamoff>(kUtf8Mark.size()) : 0);
  return true;
}

bool TextFile::IsGb18030() {
  Rewind(0);
  Converter converter;
  std::string utf8;
  for (std::string_view piece = ReadPiece(); !piece.empty(); piece = ReadPiece()) {
    if (piece.find('\0') != std::string_view::npos || !converter.Convert(piece, utf8)) return false;
  }
  return converter.AtBoundary();
}

std::string_view TextFile::Next() {
  if (!readable_) return {};
  while (true) {
    const std::string_view piece = ReadPiece();
    if (piece.empty() || !converter_) return piece;
    std::string utf8;
    converter_->Convert(piece, utf8);
    piece_ = std::move(utf8);
    if (!piece_.empty()) return piece_;
  }
}

}  // namespace books::importer
