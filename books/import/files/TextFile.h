#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "books/import/Findings.h"

namespace books::importer {

// Tells valid UTF-8 (no surrogates, no longer forms than needed) from anything else, byte by byte.
class Utf8Check {
 public:
  bool Take(unsigned char byte);
  bool AtBoundary() const { return missing_ == 0; }

 private:
  int missing_ = 0;
  unsigned char low_ = 0x80;
  unsigned char high_ = 0xBF;
};

// A text file read piece by piece as UTF-8, in bounded memory. It may be UTF-8 with or without byte order
// mark, or GB18030 (and so GBK and GB2312), which is what spreadsheets on Chinese Windows write.
class TextFile {
 public:
  // Reads the file once to find its encoding: bytes that are valid UTF-8 throughout are UTF-8. A file that
  // cannot be read or is in no known encoding is reported, and Next then answers nothing.
  TextFile(const std::filesystem::path& path, std::string_view name, Findings& findings);
  ~TextFile();
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  bool IsReadable() const { return readable_; }
  // The next piece, valid until the next call; empty at the end. A character may be cut between two pieces.
  std::string_view Next();

 private:
  class Converter;

  bool FindEncoding(Findings& findings);
  bool IsGb18030();
  std::string_view ReadPiece();
  void Rewind(std::streamoff offset);

  std::string name_;
  std::ifstream stream_;
  std::string piece_;
  std::unique_ptr<Converter> converter_;  // null for UTF-8
  bool readable_ = false;
};

}  // namespace books::importer
