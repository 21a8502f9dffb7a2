// Base data are trees, and a dotted number says where a row stands: 01.02.003 stands under 01.02. Each file
// is read twice, first for the numbers alone, so that rows may stand in any order: the second time it is
// known which rows are groups and whether every group is there.
#include <algorithm>
#include <utility>

#include "books/import/BaseDataRows.h"
#include "books/schema/Schema.h"

namespace books::importer {
namespace {

using schema::BaseClass;

constexpr std::size_t kLongestNumber = 80;
constexpr std::ptrdiff_t kDeepestLevel = 20;

std::string_view ParentOf(std::string_view number) {
  const std::size_t dot = number.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : number.substr(0, dot);
}

bool HasEmptyLevel(std::string_view number) {
  return number.starts_with('.') || number.ends_with('.') || number.find("..") != std::string_view::npos;
}

// One file of base data.
class BaseFile {
 public:
  BaseFile(Run& run, std::string_view file, BaseClass baseClass)
      : run_(run), file_(file), baseClass_(baseClass) {}

  void Import() {
    if (!run_.Has(file_)) return;
    ReadNumbers();
    run_.Read<BaseRow>(file_, BaseColumns(baseClass_),
                       [&](const BaseRow& row, const Place& place, bool sound) {
                         ++run_.Count(file_).rows;
                         if (!row.number.empty()) Take(row, place, sound);
                       });
    WriteParents();
  }

 private:
  void ReadNumbers() {
    Findings muted(0);
    ReadTable<BaseRow>(run_.folder / file_, file_, BaseColumns(baseClass_), run_.known, muted,
                       [&](const BaseRow& row, const Place&, bool) {
                         if (HasEmptyLevel(row.number)) return;
                         numbers_.insert(std::string(row.number));
                         for (std::string_view up = ParentOf(row.number); !up.empty(); up = ParentOf(up)) {
                           groups_.insert(std::string(up));
                         }
                       });
  }

  void Take(const BaseRow& row, const Place& place, bool sound) {
    const auto [first, fresh] = lines_.emplace(std::string(row.number), place.line);
    if (!fresh) {
      run_.findings.Add(place, "number", row.number,
                        "the number stands in line " + std::to_string(first->second) + " already",
                        "give every row a number of its own");
      return;
    }
    const Node* known = run_.known.FindBase(baseClass_, row.number);
    const bool old = known != nullptr;
    BaseState state{
        .baseClass = baseClass_,
        .id = old ? known->id : 0,
        .group = row.group.value_or(false) || groups_.contains(row.number) || (old && !known->detail)};
    sound = CheckNumber(row, place) && CheckGroup(row, place, old && known->detail && state.group) && sound;
    std::optional<BaseCodes> codes;
    if (sound) codes = CheckBaseFacts(run_, place, row, state);
    if (!codes) {
      if (!old) run_.known.AddBase(baseClass_, row.number, {.id = 0, .detail = !state.group});
      return;
    }
    ++(old ? run_.Count(file_).known : run_.Count(file_).added);
    if (old) {
      Update(row, state);
    } else {
      state.id = run_.known.NewBaseId();
      Insert(row, state, *codes);
    }
  }

  bool CheckNumber(const BaseRow& row, const Place& place) {
    const std::string_view number = row.number;
    const bool pieces = !HasEmptyLevel(number);
    if (pieces && number.size() <= kLongestNumber && std::ranges::count(number, '.') < kDeepestLevel)
      return true;
    run_.findings.Add(
        place, "number", number,
        pieces ? "the number is too long or has too many levels" : "a level of the number is empty",
        "write it like 01.02.003");
    return false;
  }

  bool CheckGroup(const BaseRow& row, const Place& place, bool becomesGroup) {
    if (becomesGroup) {
      run_.findings.Add(place, "number", row.number, "the row is no group in the book and cannot become one",
                        "give what stands under it another number");
      return false;
    }
    const std::string_view parent = ParentOf(row.number);
    if (parent.empty() || numbers_.contains(parent)) return true;
    const Node* group = run_.known.FindBase(baseClass_, parent);
    if (group != nullptr && !group->detail) return true;
    run_.findings.Add(place, "number", row.number,
                      group == nullptr ? "there is no group " + std::string(parent) + " for it"
                                       : std::string(parent) + " is no group in the book",
                      group == nullptr ? "add a row for the group" : "give the row another number");
    return false;
  }

  void Insert(const BaseRow& row, const BaseState& state, const BaseCodes& codes) {
    const std::string_view parent = ParentOf(row.number);
    const std::string_view piece = parent.empty() ? row.number : row.number.substr(parent.size() + 1);
    run_.connection.Execute(
        "INSERT INTO base_data (id, class_id, number, short_number, name, detail, disabled) "
        "VALUES (?, ?, ?, ?, ?, ?, ?)",
        state.id, static_cast<std::int32_t>(baseClass_), row.number,
        row.shortNumber.empty() ? piece : row.shortNumber, row.name, !state.group,
        row.disabled.value_or(false));
    run_.known.AddBase(baseClass_, row.number, {.id = state.id, .detail = !state.group});
    if (!parent.empty()) parents_.emplace_back(state.id, std::string(parent));
    InsertBaseFacts(run_, row, state, codes);
  }

  void Update(const BaseRow& row, const BaseState& state) {
    run_.connection.Execute(
        "UPDATE base_data SET name = ?, short_number = CASE WHEN ? = '' THEN short_number ELSE ? END, "
        "disabled = COALESCE(?, disabled) WHERE id = ?",
        row.name, row.shortNumber, row.shortNumber, row.disabled, state.id);
    UpdateBaseFacts(run_, row, state);
  }

  void WriteParents() {
    // Groups before what stands in them, because rights are handed down.
    std::ranges::stable_sort(parents_, {},
                             [](const auto& each) { return std::ranges::count(each.second, '.'); });
    for (const auto& [id, number] : parents_) {
      const Node* parent = run_.known.FindBase(baseClass_, number);
      if (parent == nullptr || parent->id == 0) continue;  // its own row is refused
      run_.connection.Execute(
          "UPDATE base_data SET parent_id = ?, right_users = (SELECT right_users FROM base_data WHERE id = "
          "?) "
          "WHERE id = ?",
          parent->id, parent->id, id);
    }
  }

  Run& run_;
  std::string_view file_;
  BaseClass baseClass_;
  std::unordered_set<std::string, CodeHash, CodeEqual> numbers_;
  std::unordered_set<std::string, CodeHash, CodeEqual> groups_;  // that something stands under
  ByCode<std::int64_t> lines_;
  std::vector<std::pair<std::int64_t, std::string>> parents_;  // of new rows: id, number of the parent
};

}  // namespace

void ImportBaseData(Run& run) {
  struct File {
    std::string_view name;
    BaseClass baseClass;
  };
  // Suppliers before the items that name them.
  constexpr File kFiles[] = {
      {"departments.csv", BaseClass::kDepartment},
      {"employees.csv", BaseClass::kEmployee},
      {"customers.csv", BaseClass::kCustomer},
      {"suppliers.csv", BaseClass::kSupplier},
      {"properties.csv", BaseClass::kAuxiliaryProperty},
      {"warehouses.csv", BaseClass::kWarehouse},
      {"items.csv", BaseClass::kItem},
  };
  bool any = false;
  for (const File& file : kFiles) {
    any = any || run.Has(file.name);
    BaseFile(run, file.name, file.baseClass).Import();
  }
  if (any) schema::RebuildTrees(run.connection);
}

}  // namespace books::importer
