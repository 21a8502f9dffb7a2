#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace books {

// One thing that is wrong in a folder to be imported, for an operator.
struct ImportError {
  std::string file;
  std::int64_t line = 0;  // of the row's beginning, from 1; 0 for the file or the folder as a whole
  std::string column;     // heading as in the documentation; empty for the row as a whole
  std::string value;      // as it stands in the file, cut when it is long
  std::string problem;
  std::string remedy;

  // "items.csv:12: unit '箱子': there is no such unit; add it to units.csv"
  std::string ToText() const;
};

namespace importer {

// Where a value stands.
struct Place {
  std::string_view file;
  std::int64_t line = 0;
};

// Gathers all that is wrong. A file with millions of bad rows must not fill the memory, so a caller that
// wants every error takes them as they are found; the first `kept` of them stay here.
class Findings {
 public:
  using Listener = std::function<void(const ImportError&)>;
  explicit Findings(std::size_t kept = 1000, Listener listener = {})
      : kept_(kept), listener_(std::move(listener)) {}

  void Add(const Place& place, std::string_view column, std::string_view value, std::string problem,
           std::string remedy);

  std::int64_t Count() const { return count_; }
  const std::vector<ImportError>& Errors() const { return errors_; }

 private:
  std::size_t kept_;
  Listener listener_;
  std::int64_t count_ = 0;
  std::vector<ImportError> errors_;
};

}  // namespace importer
}  // namespace books
