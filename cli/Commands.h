#pragma once

#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

namespace cli {

// What a user gave cannot be used: a report, key or file that is not there, a value that does not fit. The
// text names it and the remedy. Ends the program with status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Each adds a subcommand, whose work runs while the command line is parsed; `status` is the exit status that
// it ends with.
void AddListCommand(CLI::App& app, int& status);
void AddRunCommand(CLI::App& app, int& status);
void AddPlayCommand(CLI::App& app, int& status);
void AddDemoCommand(CLI::App& app, int& status);
void AddImportCommand(CLI::App& app, int& status);
void AddCheckCommand(CLI::App& app, int& status);
void AddUserCommand(CLI::App& app, int& status);
void AddServeCommand(CLI::App& app, int& status);

// The book that a command works on: the one given, or else the one named by STOCKRPT_BOOK.
std::string NamedBook(const std::string& given);

}  // namespace cli
