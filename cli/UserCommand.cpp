// Logins and rights of a book. Passwords are read from standard input, so that they stand in no command line.
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "books/Book.h"
#include "cli/Commands.h"
#include "platform/value/Error.h"

namespace cli {
namespace {

const std::map<std::string, std::int32_t> kClasses = {{"customer", 1}, {"department", 2}, {"employee", 3},
                                                      {"item", 4},     {"warehouse", 5},  {"supplier", 8},
                                                      {"property", 10}};

struct UserArguments {
  std::string book;
  std::string name;
  bool restricted = false;
  books::RightChange grant;
  books::RightChange withdraw;
};

std::string ReadPassword() {
  std::cerr << "password: " << std::flush;
  std::string password;
  if (!std::getline(std::cin, password)) throw UsageError("no password came on standard input");
  return password;
}

// Failures of these commands are what the user gave: a name, a number, a password.
template <class Action>
int Reported(Action&& action) {
  try {
    action();
    return 0;
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
}

void Add(const UserArguments& arguments) {
  const books::UserAccount account =
      books::AddUser(arguments.book, arguments.name, ReadPassword(), arguments.restricted);
  std::cout << "added " << account.name << " with id " << account.id << '\n';
}

void List(const UserArguments& arguments) {
  for (const books::UserAccount& account : books::ListUsers(arguments.book)) {
    std::cout << account.id << '\t' << account.name << '\t'
              << (account.restricted ? "restricted" : "sees all") << '\t'
              << (account.hasPassword ? "password" : "no password") << (account.disabled ? "\tdisabled" : "")
              << '\n';
  }
}

void ShowRights(const UserArguments& arguments) {
  for (const books::UserRight& right : books::ListRights(arguments.book, arguments.name)) {
    std::cout << right.className << '\t' << (right.number.empty() ? "*" : right.number) << '\t' << right.name
              << (right.whole && !right.number.empty() ? "\twith all in it" : "") << '\n';
  }
}

void Grant(books::RightChange change, const UserArguments& arguments) {
  change.user = arguments.name;
  std::cout << "granted on " << books::GrantRight(arguments.book, change) << " rows\n";
}

void Withdraw(books::RightChange change, const UserArguments& arguments) {
  change.user = arguments.name;
  std::cout << "withdrawn from " << books::WithdrawRight(arguments.book, change) << " rows\n";
}

void AddRightOptions(CLI::App& command, books::RightChange& change) {
  command.add_option("class", change.dataType, "The kind of base data")
      ->required()
      ->transform(CLI::CheckedTransformer(kClasses));
  command.add_option("number", change.number, "A row or a group; without it the whole class");
}

}  // namespace

void AddUserCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<UserArguments>();
  CLI::App* user = app.add_subcommand("user", "Keep the logins of a book and what they may see.");
  user->require_subcommand(1);
  auto addAction = [&](const char* name, const char* help, bool named) {
    CLI::App* command = user->add_subcommand(name, help);
    command->add_option("book", arguments->book, "The book")->required();
    if (named) command->add_option("name", arguments->name, "The login")->required();
    return command;
  };

  CLI::App* add = addAction("add", "Add a login; its password is read from standard input.", true);
  add->add_flag("--restricted", arguments->restricted, "Sees only what rights are granted for");
  add->callback([arguments, &status] { status = Reported([&] { Add(*arguments); }); });
  CLI::App* list = addAction("list", "List the logins: id, name, what they see.", false);
  list->callback([arguments, &status] { status = Reported([&] { List(*arguments); }); });
  CLI::App* rights = addAction("rights", "List what a login may see.", true);
  rights->callback([arguments, &status] { status = Reported([&] { ShowRights(*arguments); }); });
  CLI::App* grant = addAction("grant", "Let a login see a row, a group or a class.", true);
  AddRightOptions(*grant, arguments->grant);
  grant->callback([arguments, &status] { status = Reported([&] { Grant(arguments->grant, *arguments); }); });
  CLI::App* withdraw = addAction("withdraw", "Take a right away again.", true);
  AddRightOptions(*withdraw, arguments->withdraw);
  withdraw->add_flag("--open-class", arguments->withdraw.mayOpenClass,
                     "Also the last right of a class, which opens the class to all users");
  withdraw->callback(
      [arguments, &status] { status = Reported([&] { Withdraw(arguments->withdraw, *arguments); }); });
}

}  // namespace cli
