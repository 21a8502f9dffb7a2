#include "books/posting/Groups.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace books::posting {
namespace {

// Sets that grow together; each set is known by one of its members.
class Sets {
 public:
  Id Find(Id item) {
    Id& above = parents_.try_emplace(item, item).first->second;
    if (above == item) return item;
    const Id root = Find(above);
    parents_[item] = root;
    return root;
  }
  void Join(Id one, Id other) { parents_[Find(one)] = Find(other); }
  const std::unordered_map<Id, Id>& Members() const { return parents_; }

 private:
  std::unordered_map<Id, Id> parents_;
};

}  // namespace

std::vector<Id> GroupOf(database::Connection& connection, Id item) {
  std::set<Id> group = {item};
  std::vector<Id> open = {item};
  database::Statement mates = connection.Prepare(
      "SELECT DISTINCT e.item_id FROM movement m JOIN bill_entry e ON e.bill_id = m.bill_id "
      "WHERE m.item_id = ? AND m.bill_class IN (1040005, 1040006)");
  while (!open.empty()) {
    mates.Bind(open.back());
    open.pop_back();
    while (mates.Step()) {
      const Id mate = mates.Integer(0);
      if (group.insert(mate).second) open.push_back(mate);
    }
  }
  return {group.begin(), group.end()};
}

std::vector<std::vector<Id>> GroupsOf(database::Connection& connection, std::span<const Id> items) {
  Sets sets;
  database::Statement ties = connection.Query(
      "SELECT b.id, e.item_id FROM bill b JOIN bill_entry e ON e.bill_id = b.id "
      "WHERE b.bill_class IN (1040005, 1040006) AND b.audited = 1");
  std::unordered_map<Id, Id> firstOfBill;
  while (ties.Step()) {
    const auto first = firstOfBill.try_emplace(ties.Integer(0), ties.Integer(1)).first;
    sets.Join(ties.Integer(1), first->second);
  }
  std::set<Id> wanted;
  for (const Id item : items) wanted.insert(sets.Find(item));
  std::vector<Id> tied;
  for (const auto& [item, above] : sets.Members()) tied.push_back(item);
  std::map<Id, std::vector<Id>> groups;  // by the set's member that it is known by
  for (const Id item : tied) {
    const Id root = sets.Find(item);
    if (wanted.contains(root)) groups[root].push_back(item);
  }
  std::vector<std::vector<Id>> result;
  for (auto& [root, group] : groups) {
    std::ranges::sort(group);
    result.push_back(std::move(group));
  }
  // In the order of the tables' keys, so that their rows are written one behind the other.
  std::ranges::sort(result);
  return result;
}

}  // namespace books::posting
