// The command `stockrpt`. Each subcommand is a file of its own that declares its options and runs; this one
// only puts them together and turns failures into messages and exit statuses:
// 0 done, 1 the work failed, 2 the command line or its input cannot be used.
#include <exception>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "cli/Commands.h"
#include "platform/value/Error.h"

int main(int argc, char** argv) {
  CLI::App app(
      "Inventory reports of a stock book: list them, run them, serve them as a web page, play scripts "
      "against them.",
      "stockrpt");
  app.set_version_flag("--version", "stockrpt " STOCKRPT_VERSION);
  app.require_subcommand(1);
  app.failure_message(CLI::FailureMessage::simple);
  app.footer("`stockrpt COMMAND --help` tells the options of a command.");

  int status = 0;
  cli::AddListCommand(app, status);
  cli::AddRunCommand(app, status);
  cli::AddPlayCommand(app, status);
  cli::AddDemoCommand(app, status);
  cli::AddImportCommand(app, status);
  cli::AddCheckCommand(app, status);
  cli::AddUserCommand(app, status);
  cli::AddServeCommand(app, status);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : 2;
  } catch (const cli::UsageError& error) {
    std::cerr << "stockrpt: " << error.what() << '\n';
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "stockrpt: " << error.what() << '\n';
    return 1;
  }
  return status;
}
