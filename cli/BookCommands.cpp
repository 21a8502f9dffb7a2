// The commands that keep a book: bring data in, verify it.
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "books/Book.h"
#include "cli/Commands.h"
#include "platform/value/Error.h"

namespace cli {
namespace {

struct ImportArguments {
  std::string book;
  std::string folder;
  bool dryRun = false;
};

int Import(const ImportArguments& arguments) {
  books::ImportOptions options;
  options.dryRun = arguments.dryRun;
  options.onError = [](const books::ImportError& error) { std::cerr << error.ToText() << '\n'; };
  try {
    const books::ImportReport report = books::Import(arguments.book, arguments.folder, options);
    std::cout << report.ToText() << std::flush;
    return report.errorCount == 0 ? 0 : 1;
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
}

int Check(const std::string& file) {
  std::vector<books::check::Violation> violations;
  try {
    violations = books::Book::Open(file).Check();
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
  for (const books::check::Violation& violation : violations) {
    std::cout << violation.rule << ": " << violation.description << '\n';
    for (const std::string& document : violation.documents) std::cout << "    " << document << '\n';
  }
  if (!violations.empty()) return 1;
  std::cout << "the book is sound\n";
  return 0;
}

}  // namespace

void AddImportCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<ImportArguments>();
  CLI::App* command =
      app.add_subcommand("import", "Bring a folder of CSV files into a book, all of it or nothing.");
  command->add_option("book", arguments->book, "The book; a file that does not exist becomes a new one")
      ->required();
  command->add_option("folder", arguments->folder, "The folder with the CSV files")->required();
  command->add_flag("--dry-run", arguments->dryRun, "Check everything and write nothing");
  command->callback([arguments, &status] { status = Import(*arguments); });
}

void AddCheckCommand(CLI::App& app, int& status) {
  auto file = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("check", "Verify what must always hold in a book.");
  command->add_option("book", *file, "The book")->required();
  command->callback([file, &status] { status = Check(*file); });
}

}  // namespace cli
