// `serve` is the parent of the web page's sessions; `session-worker`, which nobody types, is one session.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "books/Book.h"
#include "browser/server/PageFiles.h"
#include "browser/server/Serve.h"
#include "browser/worker/Worker.h"
#include "cli/Commands.h"
#include "desk/Host.h"
#include "platform/value/Convert.h"
#include "player/BookBackend.h"

namespace cli {
namespace {

using browser::SignedIn;

struct ServeArguments {
  std::string book;
  std::string listen = "127.0.0.1:8080";
  std::string user;
  std::string page;
  int idleMinutes = 60;
  std::size_t sessions = 100;
};

struct WorkerArguments {
  int descriptor = 0;
  std::string book;
  std::int32_t userId = 0;
};

bool CanSignIn(const books::UserAccount& account) { return account.hasPassword && !account.disabled; }

SignedIn UserNamed(const std::vector<books::UserAccount>& accounts, const std::string& name) {
  const auto found = std::ranges::find_if(accounts, [&](const books::UserAccount& account) {
    return platform::EqualsIgnoreCase(account.name, name);
  });
  if (found != accounts.end() && !found->disabled) return {.userId = found->id, .user = found->name};
  throw UsageError("the book has no user " + name +
                   " that may log in; `stockrpt user list BOOK` shows who there is");
}

// Whoever reaches the server may use it without a password, which goes on this machine only.
void DecideLogin(browser::ServeOptions& options, const ServeArguments& arguments, const std::string& book) {
  const std::vector<books::UserAccount> accounts = books::ListUsers(book);
  const bool hasLogins = std::ranges::any_of(accounts, CanSignIn);
  const bool isLocal = browser::IsLoopback(options.listen.host);
  if (!isLocal && !arguments.user.empty()) {
    throw UsageError("--user opens the book without a password, which is for 127.0.0.1 and [::1] only");
  }
  if (!isLocal && !hasLogins) {
    throw UsageError(
        "the book has no user with a password, so it is served at 127.0.0.1 and [::1] only; add one "
        "with `stockrpt user add BOOK NAME`");
  }
  if (!arguments.user.empty()) {
    options.anonymous = UserNamed(accounts, arguments.user);
  } else {
    options.needsLogin = hasLogins;
  }
  options.checkLogin = [book](const std::string& name,
                              const std::string& password) -> std::optional<SignedIn> {
    const std::optional<books::UserAccount> account = books::CheckLogin(book, name, password);
    if (!account) return std::nullopt;
    return SignedIn{.userId = account->id, .user = account->name};
  };
}

void Announce(const browser::ServeOptions& options, std::uint16_t port) {
  const bool isSix = options.listen.host.find(':') != std::string::npos;
  std::cout << "http://" << (isSix ? "[" : "") << options.listen.host << (isSix ? "]" : "") << ':' << port
            << "/\n"
            << std::flush;
}

int RunServe(const ServeArguments& arguments) {
  browser::ServeOptions options;
  const auto listen = browser::ReadListenAddress(arguments.listen);
  if (!listen) {
    throw UsageError("--listen " + arguments.listen + " is no address; write, for example, 127.0.0.1:8080");
  }
  options.listen = *listen;
  options.page = arguments.page.empty() ? browser::DefaultPagePath() : std::filesystem::path(arguments.page);
  options.idle = std::chrono::minutes(arguments.idleMinutes);
  options.mostSessions = arguments.sessions;
  options.mostConnections = 10 * arguments.sessions + 100;
  const std::string book = std::filesystem::absolute(NamedBook(arguments.book)).string();
  try {
    books::Book::Open(book);
    DecideLogin(options, arguments, book);
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    options.workerCommand = [program, book](std::int32_t userId) {
      return std::vector<std::string>{program, "session-worker", "--descriptor",        "{}", "--book",
                                      book,    "--user",         std::to_string(userId)};
    };
    options.onListening = [&options](std::uint16_t port) { Announce(options, port); };
    browser::Serve(options);
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
  return 0;
}

void AddWorkerCommand(CLI::App& app) {
  auto arguments = std::make_shared<WorkerArguments>();
  CLI::App* command = app.add_subcommand("session-worker", "One session of `serve`.");
  command->group("");
  command->add_option("--descriptor", arguments->descriptor)->required();
  command->add_option("--book", arguments->book)->required();
  command->add_option("--user", arguments->userId)->required();
  command->callback([arguments] {
    browser::RunWorker({.descriptor = arguments->descriptor,
                        .book = arguments->book,
                        .userId = arguments->userId,
                        .component = desk::DefaultComponentPath(),
                        .openBook = player::OpenBook});
  });
}

}  // namespace

void AddServeCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ServeArguments>();
  CLI::App* command = app.add_subcommand("serve", "Serve the reports of a stock book as a web page.");
  command->add_option("--book", arguments->book, "The stock book; without it the one named by STOCKRPT_BOOK");
  command->add_option("--listen", arguments->listen, "Address and port; port 0 takes a free one")
      ->capture_default_str();
  command->add_option("--user", arguments->user, "Open without a login as this user, on this machine only");
  command->add_option("--page", arguments->page, "The folder of the built page");
  command
      ->add_option("--idle-minutes", arguments->idleMinutes, "Sessions that nobody uses end after this time")
      ->check(CLI::Range(1, 1440))
      ->capture_default_str();
  command->add_option("--sessions", arguments->sessions, "The most sessions at a time")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  command->callback([arguments, &status] { status = RunServe(*arguments); });
  AddWorkerCommand(app);
}

}  // namespace cli
