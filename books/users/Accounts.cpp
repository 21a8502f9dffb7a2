#include <algorithm>
#include <set>
#include <string>

#include "books/database/Connection.h"
#include "books/schema/Schema.h"
#include "books/users/Password.h"
#include "books/users/Users.h"
#include "platform/value/Convert.h"
#include "platform/value/Error.h"

namespace books {
namespace {

using database::Access;
using database::Connection;
using database::Statement;
using database::Transaction;

constexpr std::size_t kShortestPassword = 10;
constexpr std::size_t kLongestPassword = 200;
constexpr std::size_t kDifferentCharacters = 5;
constexpr std::size_t kLongestName = 50;
// From here on to 9999 no id is a piece of another one.
constexpr std::int32_t kFirstId = 1001;
constexpr std::int32_t kLastId = 999'999;

[[noreturn]] void Refuse(const std::string& description) {
  throw platform::Error(platform::ErrorNumber::kBadArgument, "books.Users", description);
}

// Characters of a UTF-8 text; a bad byte counts as one.
std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

bool HasControls(std::string_view text) {
  return std::ranges::any_of(text, [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) == 0x7F;
  });
}

void CheckName(std::string_view name) {
  if (name.empty() || platform::TrimBlanks(name) != name) {
    Refuse("a user's name is not empty and does not begin or end with a blank");
  }
  if (CountCharacters(name) > kLongestName) {
    Refuse("a user's name has at most " + std::to_string(kLongestName) + " characters");
  }
  if (HasControls(name) || name.find_first_of(",;=") != std::string_view::npos) {
    Refuse("a user's name holds no control characters and none of , ; =");
  }
}

bool Touches(const std::string& left, const std::string& right) {
  return left.find(right) != std::string::npos || right.find(left) != std::string::npos;
}

std::int32_t NewId(Connection& connection) {
  std::set<std::int32_t> taken;
  Statement rows = connection.Query("SELECT id FROM book_user");
  while (rows.Step()) taken.insert(rows.Int32(0));
  for (std::int32_t id = kFirstId; id <= kLastId; ++id) {
    const std::string text = std::to_string(id);
    if (std::ranges::none_of(taken,
                             [&](std::int32_t other) { return Touches(text, std::to_string(other)); })) {
      return id;
    }
  }
  Refuse("the book has no id left for another user");
}

UserAccount Read(Connection& connection, std::string_view name) {
  Statement row = connection.Query(
      "SELECT id, name, restricted, disabled, password_hash <> '' FROM book_user WHERE name = ?", name);
  if (!row.Step()) Refuse("there is no user " + std::string(name) + "; `stockrpt user list` shows them");
  return {.id = row.Int32(0),
          .name = row.Text(1),
          .restricted = row.Boolean(2),
          .disabled = row.Boolean(3),
          .hasPassword = row.Boolean(4)};
}

void Change(const std::filesystem::path& book, std::string_view name, std::string_view column, bool value) {
  Connection connection = schema::OpenBook(book, Access::kReadWrite);
  Transaction transaction(connection);
  const UserAccount account = Read(connection, name);
  connection.Execute("UPDATE book_user SET " + std::string(column) + " = ? WHERE id = ?", value, account.id);
  transaction.Commit();
}

}  // namespace

void CheckPasswordRules(std::string_view name, std::string_view password) {
  const std::size_t length = CountCharacters(password);
  if (length < kShortestPassword) {
    Refuse("the password is too short: take at least " + std::to_string(kShortestPassword) + " characters");
  }
  if (length > kLongestPassword) {
    Refuse("the password is too long: take at most " + std::to_string(kLongestPassword) + " characters");
  }
  if (HasControls(password)) Refuse("the password holds a control character: leave it out");
  if (std::ranges::all_of(password, [](char c) { return c >= '0' && c <= '9'; })) {
    Refuse("the password has only digits: add letters or signs");
  }
  if (std::set<char>(password.begin(), password.end()).size() < kDifferentCharacters) {
    Refuse("the password repeats itself: take at least " + std::to_string(kDifferentCharacters) +
           " different characters");
  }
  if (!name.empty() &&
      platform::ToLowerAscii(password).find(platform::ToLowerAscii(name)) != std::string::npos) {
    Refuse("the password holds the user's name: take another one");
  }
}

UserAccount AddUser(const std::filesystem::path& book, std::string_view name, std::string_view password,
                    bool restricted) {
  CheckName(name);
  CheckPasswordRules(name, password);
  Connection connection = schema::OpenBook(book, Access::kReadWrite);
  Transaction transaction(connection);
  if (connection.Query("SELECT 1 FROM book_user WHERE name = ?", name).Step()) {
    Refuse("there is a user " + std::string(name) + " already; choose another name");
  }
  connection.Execute("INSERT INTO book_user (id, name, password_hash, restricted) VALUES (?, ?, ?, ?)",
                     NewId(connection), name, users::HashPassword(password), restricted);
  UserAccount account = Read(connection, name);
  transaction.Commit();
  return account;
}

void SetPassword(const std::filesystem::path& book, std::string_view name, std::string_view password) {
  CheckPasswordRules(name, password);
  Connection connection = schema::OpenBook(book, Access::kReadWrite);
  Transaction transaction(connection);
  const UserAccount account = Read(connection, name);
  connection.Execute("UPDATE book_user SET password_hash = ? WHERE id = ?", users::HashPassword(password),
                     account.id);
  transaction.Commit();
}

void SetRestricted(const std::filesystem::path& book, std::string_view name, bool restricted) {
  Change(book, name, "restricted", restricted);
}

void SetDisabled(const std::filesystem::path& book, std::string_view name, bool disabled) {
  Change(book, name, "disabled", disabled);
}

std::vector<UserAccount> ListUsers(const std::filesystem::path& book) {
  Connection connection = schema::OpenBook(book, Access::kReadOnly);
  Statement rows = connection.Query(
      "SELECT id, name, restricted, disabled, password_hash <> '' FROM book_user ORDER BY name");
  std::vector<UserAccount> accounts;
  while (rows.Step()) {
    accounts.push_back({.id = rows.Int32(0),
                        .name = rows.Text(1),
                        .restricted = rows.Boolean(2),
                        .disabled = rows.Boolean(3),
                        .hasPassword = rows.Boolean(4)});
  }
  return accounts;
}

std::optional<UserAccount> CheckLogin(const std::filesystem::path& book, std::string_view name,
                                      std::string_view password) {
  Connection connection = schema::OpenBook(book, Access::kReadOnly);
  Statement row =
      connection.Query("SELECT password_hash FROM book_user WHERE name = ? AND disabled = 0", name);
  const std::string hash = row.Step() ? row.Text(0) : std::string();
  row.Reset();
  if (!users::VerifyPassword(hash, password)) return std::nullopt;
  return Read(connection, name);
}

}  // namespace books
