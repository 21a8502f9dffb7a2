// libcsv knows quotes and separators but no line numbers, and it calls back from C, where nothing may be
// raised. So the text is fed to it line by line, which tells where a row begins, and a row is gathered first
// and handed on when the library has returned.
#include "books/import/files/CsvReader.h"

#include <string>
#include <vector>

#include <csv.h>

#include "books/import/files/TextFile.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books::importer {
namespace {

constexpr unsigned char kOptions = CSV_STRICT | CSV_STRICT_FINI;

// The values of one row, all in one text, so that a row costs no allocation.
struct GatheredRow {
  std::string text;
  std::vector<std::size_t> ends;
  bool complete = false;

  void Clear() {
    text.clear();
    ends.clear();
    complete = false;
  }
};

void TakeField(void* data, std::size_t size, void* row) {
  auto* gathered = static_cast<GatheredRow*>(row);
  gathered->text.append(static_cast<const char*>(data), size);
  gathered->ends.push_back(gathered->text.size());
}

void TakeRowEnd(int /*terminator*/, void* row) { static_cast<GatheredRow*>(row)->complete = true; }

class Parser {
 public:
  Parser() { Start(); }
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;
  ~Parser() { csv_free(&parser_); }

  // False when the bytes break the rules of CSV; the parser then stands at the beginning of a row again.
  bool Feed(std::string_view bytes, GatheredRow& row) {
    const std::size_t taken = csv_parse(&parser_, bytes.data(), bytes.size(), TakeField, TakeRowEnd, &row);
    return taken == bytes.size() || Restart();
  }
  bool Finish(GatheredRow& row) { return csv_fini(&parser_, TakeField, TakeRowEnd, &row) == 0 || Restart(); }
  std::size_t FieldSize() const { return parser_.entry_pos; }

 private:
  void Start() {
    if (csv_init(&parser_, kOptions) != 0) {
      throw platform::Error(platform::ErrorNumber::kUserDefined, "books.Import", "libcsv cannot be used");
    }
  }
  bool Restart() {
    csv_free(&parser_);
    Start();
    return false;
  }

  csv_parser parser_{};
};

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

// Up to the end of the first line; everything when there is no end.
std::size_t LineLength(std::string_view text) {
  const std::size_t feed = text.find('\n');
  const std::size_t carriage = text.substr(0, feed).find('\r');
  if (carriage == std::string_view::npos || carriage + 1 == feed) {
    return feed == std::string_view::npos ? text.size() : feed + 1;
  }
  return carriage + 1;
}

class Reader {
 public:
  Reader(std::string_view name, Findings& findings, const std::function<void(const CsvRow&)>& take)
      : name_(name), findings_(findings), take_(take) {}

  // False when reading must end.
  bool TakePiece(std::string_view piece) {
    while (!piece.empty()) {
      const std::string_view slice = piece.substr(0, LineLength(piece));
      piece.remove_prefix(slice.size());
      if (!TakeSlice(slice)) return false;
    }
    return true;
  }

  void Finish() {
    if (!parser_.Finish(row_)) {
      findings_.Add({name_, begin_}, {}, {}, "a quote is opened here and never closed",
                    "close it, or double a quote that is meant as a character");
      return;
    }
    HandOn();
  }

 private:
  // A slice is a line with its end, a part of a long line, or the line feed of an end that was cut in two.
  bool TakeSlice(std::string_view slice) {
    if (!rowOpen_) begin_ = line_;
    rowOpen_ = rowOpen_ || !IsBlank(slice);
    const bool ended = slice.back() == '\n' || slice.back() == '\r';
    const bool secondHalf = afterReturn_ && slice == "\n";
    afterReturn_ = slice.back() == '\r';
    if (!skipping_ && !FeedSlice(slice)) return false;
    if (skipping_ && ended) {
      skipping_ = false;
      rowOpen_ = false;
    }
    if (ended && !secondHalf) ++line_;
    return true;
  }

  bool FeedSlice(std::string_view slice) {
    if (!parser_.Feed(slice, row_)) {
      findings_.Add({name_, begin_}, {}, slice.substr(0, slice.find_last_not_of("\r\n") + 1),
                    "a quote stands within a value, or text follows a closing quote",
                    "put the whole value in quotes and double the quotes within it");
      row_.Clear();
      skipping_ = true;
    } else if (parser_.FieldSize() > kLongestField) {
      findings_.Add({name_, begin_}, {}, {},
                    "a value is longer than " + std::to_string(kLongestField) + " bytes",
                    "look for a quote that is not closed");
      return false;
    } else {
      HandOn();
    }
    return true;
  }

  void HandOn() {
    if (!row_.complete) return;
    cells_.clear();
    std::size_t from = 0;
    bool blank = true;
    for (const std::size_t end : row_.ends) {
      cells_.push_back(platform::TrimBlanks(std::string_view(row_.text).substr(from, end - from)));
      blank = blank && cells_.back().empty();
      from = end;
    }
    if (!blank) take_({begin_, cells_});
    row_.Clear();
    rowOpen_ = false;
  }

  std::string_view name_;
  Findings& findings_;
  const std::function<void(const CsvRow&)>& take_;
  Parser parser_;
  GatheredRow row_;
  std::vector<std::string_view> cells_;
  std::int64_t line_ = 1;   // being read
  std::int64_t begin_ = 1;  // of the row being read
  bool rowOpen_ = false;    // something of it has been read
  bool afterReturn_ = false;
  bool skipping_ = false;  // the rest of a line in which a row was given up
};

}  // namespace

bool ReadCsv(const std::filesystem::path& path, std::string_view name, Findings& findings,
             const std::function<void(const CsvRow&)>& take) {
  TextFile file(path, name, findings);
  Reader reader(name, findings, take);
  for (std::string_view piece = file.Next(); !piece.empty(); piece = file.Next()) {
    if (!reader.TakePiece(piece)) return true;
  }
  reader.Finish();
  return file.IsReadable();
}

}  // namespace books::importer
