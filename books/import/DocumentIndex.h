#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/import/Run.h"

namespace books::importer {

inline constexpr std::int64_t kLastLine = 1'000'000;

// Bills or orders by class and number. They are looked up in the book, where this import's own stand as well;
// remembered are four bytes for each.
class DocumentIndex {
 public:
  struct Found {
    std::int64_t id = 0;
    bool isNew = false;  // brought by this import
  };

  DocumentIndex(Run& run, std::string_view table, std::string_view file);

  // For a row of the heads' file: the id that the book has for it, 0 when it is new. A number that stands in
  // the file twice is reported, and nothing is answered.
  std::optional<std::int64_t> Register(const Place& place, const BillClassFacts& billClass,
                                       std::string_view number);
  // The id for the row that is written next.
  std::int64_t NewId(std::int64_t line);
  // A refused row: rows that name it are left out without a report of their own.
  void Refuse(const BillClassFacts& billClass, std::string_view number);

  // For a row that belongs to a document. What is not there is reported.
  std::optional<Found> Find(const Place& place, const BillClassFacts& billClass, std::string_view number);

  std::int64_t FirstNew() const { return firstNew_; }
  // Of a document that this import has seen, in the heads' file; 0 for others.
  std::int64_t LineOf(std::int64_t id) const;

 private:
  std::int64_t Lookup(const BillClassFacts& billClass, std::string_view number);
  void Remember(std::int64_t id, std::int64_t line);

  Run& run_;
  std::string table_;
  std::string file_;
  std::int64_t firstNew_;
  std::int64_t next_;
  database::Statement find_;
  std::vector<std::uint32_t> lines_;  // by id

  // The document of the last row: most rows stand beside others of the same document.
  schema::BillClass lastClass_{};
  std::string lastNumber_;
  std::optional<Found> last_;
};

}  // namespace books::importer
