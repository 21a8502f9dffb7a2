// Rights stand in the base data themselves, as the list of the users who may see a row: "1001,1004". A
// group's right is written into every row below it, so that a report needs to look at one row only.
#include <algorithm>
#include <string>
#include <unordered_map>

#include "books/database/Connection.h"
#include "books/schema/Schema.h"
#include "books/users/Users.h"
#include "platform/value/Error.h"

namespace books {
namespace {

using database::Access;
using database::Connection;
using database::Statement;
using database::Transaction;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Users", description);
}

std::vector<std::string> Split(std::string_view list) {
  std::vector<std::string> ids;
  while (!list.empty()) {
    const std::size_t comma = list.find(',');
    ids.emplace_back(list.substr(0, comma));
    list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
  }
  return ids;
}

std::string Join(const std::vector<std::string>& ids) {
  std::string list;
  for (const std::string& id : ids) list += (list.empty() ? "" : ",") + id;
  return list;
}

bool Holds(std::string_view list, const std::string& id) {
  const std::vector<std::string> ids = Split(list);
  return std::ranges::find(ids, id) != ids.end();
}

std::string UserId(Connection& connection, std::string_view name) {
  Statement row = connection.Query("SELECT id FROM book_user WHERE name = ?", name);
  if (!row.Step()) Refuse("there is no user " + std::string(name) + "; `stockrpt user list` shows them");
  return row.Text(0);
}

void ExpectClass(Connection& connection, std::int32_t dataType) {
  if (connection.Query("SELECT 1 FROM base_class WHERE id = ?", dataType).Step()) return;
  Refuse("there is no class " + std::to_string(dataType) +
         " of base data: 1 customer, 2 department, 3 employee, 4 item, 5 warehouse, 8 supplier, "
         "10 auxiliary property");
}

struct ListedRow {
  std::int64_t id = 0;
  std::string users;
};

// The rows that a change names: a row and all below it, or the class.
std::vector<ListedRow> RowsOf(Connection& connection, const RightChange& change) {
  ExpectClass(connection, change.dataType);
  std::int64_t top = 0;
  if (!change.number.empty()) {
    Statement found = connection.Query("SELECT id FROM base_data WHERE class_id = ? AND number = ?",
                                       change.dataType, change.number);
    if (!found.Step()) {
      Refuse("the class " + std::to_string(change.dataType) + " has no number " + change.number);
    }
    top = found.Integer(0);
  }
  Statement rows = connection.Query(
      "SELECT b.id, b.right_users FROM base_data b WHERE b.class_id = ? AND (? = 0 OR b.id = ? OR EXISTS "
      "(SELECT 1 FROM base_ancestor a WHERE a.id = b.id AND a.ancestor_id = ?)) ORDER BY b.id",
      change.dataType, top, top, top);
  std::vector<ListedRow> listed;
  while (rows.Step()) listed.push_back({.id = rows.Integer(0), .users = rows.Text(1)});
  return listed;
}

std::int64_t Write(Connection& connection, const std::vector<ListedRow>& rows, const std::string& user,
                   bool grant) {
  std::int64_t changed = 0;
  for (const ListedRow& row : rows) {
    if (Holds(row.users, user) == grant) continue;
    std::vector<std::string> ids = Split(row.users);
    if (grant) {
      ids.push_back(user);
    } else {
      std::erase(ids, user);
    }
    connection.Execute("UPDATE base_data SET right_users = ? WHERE id = ?", Join(ids), row.id);
    ++changed;
  }
  return changed;
}

bool IsOpen(Connection& connection, std::int32_t dataType) {
  return !connection
              .Query("SELECT 1 FROM base_data WHERE class_id = ? AND right_users <> '' LIMIT 1", dataType)
              .Step();
}

// A tree while it is told which of its rows a user may see.
struct TreeRow {
  std::int64_t parent = 0;
  std::string number;
  std::string name;
  bool seen = false;
  bool group = false;
  bool whole = false;  // it and all below it are seen
};

void ListClass(Connection& connection, const std::string& user, std::int32_t dataType,
               const std::string& name, std::vector<UserRight>& rights) {
  Statement rows = connection.Query(
      "SELECT id, COALESCE(parent_id, 0), number, name, detail, right_users FROM base_data "
      "WHERE class_id = ? ORDER BY number",
      dataType);
  std::vector<std::int64_t> order;
  std::unordered_map<std::int64_t, TreeRow> tree;
  while (rows.Step()) {
    const bool seen = Holds(rows.TextView(5), user);
    order.push_back(rows.Integer(0));
    tree[rows.Integer(0)] = {.parent = rows.Integer(1),
                             .number = rows.Text(2),
                             .name = rows.Text(3),
                             .seen = seen,
                             .group = !rows.Boolean(4),
                             .whole = seen};
  }
  bool all = !order.empty();
  for (const auto& [id, row] : tree) {
    if (row.seen) continue;
    all = false;
    for (std::int64_t up = row.parent; up != 0; up = tree[up].parent) tree[up].whole = false;
  }
  if (all) {
    rights.push_back({.dataType = dataType, .className = name, .whole = true});
    return;
  }
  for (const std::int64_t id : order) {
    const TreeRow& row = tree[id];
    if (!row.seen || (row.parent != 0 && tree[row.parent].whole)) continue;
    rights.push_back({.dataType = dataType,
                      .className = name,
                      .number = row.number,
                      .name = row.name,
                      .whole = row.group && row.whole});
  }
}

}  // namespace

std::int64_t GrantRight(const std::filesystem::path& book, const RightChange& change) {
  Connection connection = schema::OpenBook(book, Access::kReadWrite);
  Transaction transaction(connection);
  const std::string user = UserId(connection, change.user);
  const std::int64_t changed = Write(connection, RowsOf(connection, change), user, true);
  transaction.Commit();
  return changed;
}

std::int64_t WithdrawRight(const std::filesystem::path& book, const RightChange& change) {
  Connection connection = schema::OpenBook(book, Access::kReadWrite);
  Transaction transaction(connection);
  const std::string user = UserId(connection, change.user);
  const std::int64_t changed = Write(connection, RowsOf(connection, change), user, false);
  if (changed > 0 && !change.mayOpenClass && IsOpen(connection, change.dataType)) {
    Refuse(
        "nobody would have a right in this class any more, and it would be open to all users; grant somebody "
        "else a right first, or say that this is meant");
  }
  transaction.Commit();
  return changed;
}

std::vector<UserRight> ListRights(const std::filesystem::path& book, std::string_view user) {
  Connection connection = schema::OpenBook(book, Access::kReadOnly);
  const Transaction transaction(connection, Transaction::Kind::kRead);
  const std::string id = UserId(connection, user);
  std::vector<UserRight> rights;
  Statement classes = connection.Query("SELECT id, name FROM base_class ORDER BY id");
  while (classes.Step()) ListClass(connection, id, classes.Int32(0), classes.Text(1), rights);
  return rights;
}

}  // namespace books
