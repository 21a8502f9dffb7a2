#include "books/import/DocumentIndex.h"

#include "platform/value/Convert.h"

namespace books::importer {

DocumentIndex::DocumentIndex(Run& run, std::string_view table, std::string_view file)
    : run_(run),
      table_(table),
      file_(file),
      firstNew_(run.LastId(table) + 1),
      next_(firstNew_),
      find_(run.connection.Prepare("SELECT id FROM " + table_ + " WHERE bill_class = ? AND number = ?")) {}

std::int64_t DocumentIndex::Lookup(const BillClassFacts& billClass, std::string_view number) {
  find_.Bind(billClass.id, number);
  const std::int64_t id = find_.Step() ? find_.Integer(0) : 0;
  find_.Reset();
  return id;
}

void DocumentIndex::Remember(std::int64_t id, std::int64_t line) {
  const auto position = static_cast<std::size_t>(id);
  if (lines_.size() <= position) lines_.resize(position + 1 + (position / 2));
  lines_[position] = static_cast<std::uint32_t>(line);
}

std::int64_t DocumentIndex::LineOf(std::int64_t id) const {
  const auto position = static_cast<std::size_t>(id);
  return position < lines_.size() ? lines_[position] : 0;
}

std::optional<std::int64_t> DocumentIndex::Register(const Place& place, const BillClassFacts& billClass,
                                                    std::string_view number) {
  const std::int64_t id = Lookup(billClass, number);
  if (id == 0) return 0;
  if (const std::int64_t line = LineOf(id); line != 0) {
    run_.findings.Add(place, "number", number,
                      "the number stands in line " + std::to_string(line) + " already",
                      "give every document of a class a number of its own");
    return std::nullopt;
  }
  Remember(id, place.line);
  return id;
}

std::int64_t DocumentIndex::NewId(std::int64_t line) {
  Remember(next_, line);
  return next_++;
}

void DocumentIndex::Refuse(const BillClassFacts& billClass, std::string_view number) {
  run_.known.AddFaulty(table_, static_cast<std::int64_t>(billClass.id), number);
}

std::optional<DocumentIndex::Found> DocumentIndex::Find(const Place& place, const BillClassFacts& billClass,
                                                        std::string_view number) {
  if (last_ && lastClass_ == billClass.id && platform::EqualsIgnoreCase(lastNumber_, number)) return last_;
  const std::int64_t id = Lookup(billClass, number);
  if (id == 0) {
    if (!run_.known.IsFaulty(table_, static_cast<std::int64_t>(billClass.id), number) &&
        !run_.known.IsUnread(file_)) {
      run_.findings.Add(place, "number", number, "there is no such document of this class",
                        "correct it or add it to " + file_);
    }
    return std::nullopt;
  }
  lastClass_ = billClass.id;
  lastNumber_ = number;
  last_ = Found{.id = id, .isNew = id >= firstNew_};
  return last_;
}

}  // namespace books::importer
