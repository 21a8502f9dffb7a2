#include "exports/Paper.h"

#include <algorithm>

#include "platform/value/Convert.h"

namespace exports {
namespace {

template <class Table>
const typename Table::value_type* Find(const Table& table, std::string_view name) {
  const auto found = std::ranges::find_if(
      table, [name](const auto& row) { return platform::EqualsIgnoreCase(row.name, name); });
  return found == table.end() ? nullptr : &*found;
}

}  // namespace

std::optional<Paper> FindPaper(std::string_view name) {
  const Paper* paper = Find(kPapers, name);
  return paper != nullptr ? std::optional(*paper) : std::nullopt;
}

std::optional<Orientation> FindOrientation(std::string_view name) {
  const OrientationName* found = Find(kOrientations, name);
  return found != nullptr ? std::optional(found->orientation) : std::nullopt;
}

std::string PaperNames() {
  std::string names;
  for (const Paper& paper : kPapers) {
    if (!names.empty()) names += ", ";
    names += paper.name;
  }
  return names;
}

}  // namespace exports
