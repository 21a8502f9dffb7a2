#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Who may log in to a book, and what restricted users may see. Each function opens the book for the moment
// and is one transaction. Failures are platform::Error with the remedy; names compare without regard to case.
namespace books {

struct UserAccount {
  std::int32_t id = 0;
  std::string name;
  bool restricted = false;  // sees only what rights were granted for, in the classes that rights are kept for
  bool disabled = false;    // cannot log in
  bool hasPassword = false;
};

// Raises with the rule that a password breaks: 10 to 200 characters, not only digits, not fewer than 5
// different characters, not holding the user's name.
void CheckPasswordRules(std::string_view name, std::string_view password);

// Ids are chosen so that none is a piece of another: the rights clause of reports looks for a user's id as a
// piece of text in the list of those who may see a row.
UserAccount AddUser(const std::filesystem::path& book, std::string_view name, std::string_view password,
                    bool restricted);
void SetPassword(const std::filesystem::path& book, std::string_view name, std::string_view password);
void SetRestricted(const std::filesystem::path& book, std::string_view name, bool restricted);
void SetDisabled(const std::filesystem::path& book, std::string_view name, bool disabled);
// In order of their names.
std::vector<UserAccount> ListUsers(const std::filesystem::path& book);

// The account when name and password fit and it is not disabled. Takes as long when there is no such user, so
// that nobody can find out names.
std::optional<UserAccount> CheckLogin(const std::filesystem::path& book, std::string_view name,
                                      std::string_view password);

// Rows of one class of base data: a group stands for all that is in it, an empty number for the whole class.
struct RightChange {
  std::string user;
  std::int32_t dataType =
      0;  // 1 customer, 2 department, 3 employee, 4 item, 5 warehouse, 8 supplier, 10 property
  std::string number;
  // A class in which nobody has a right is open to all users, so withdrawing the last right is refused unless
  // this says that it is meant.
  bool mayOpenClass = false;
};

// Answer how many rows changed.
std::int64_t GrantRight(const std::filesystem::path& book, const RightChange& change);
std::int64_t WithdrawRight(const std::filesystem::path& book, const RightChange& change);

// What a user may see, as short as it can be told: a group that may be seen with all that is in it stands for
// that.
struct UserRight {
  std::int32_t dataType = 0;
  std::string className;
  std::string number;  // empty: the whole class
  std::string name;
  bool whole = false;  // a group or class with all that is in it
};
std::vector<UserRight> ListRights(const std::filesystem::path& book, std::string_view user);

}  // namespace books
