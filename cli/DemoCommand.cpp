#include <cmath>
#include <iostream>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "books/Book.h"
#include "cli/Commands.h"
#include "platform/value/Error.h"

namespace cli {
namespace {

struct DemoArguments {
  std::string file;
  std::string size = "small";
  books::DemoOptions options;
  bool quiet = false;
};

// One line a step, so that a log stays readable.
books::DemoProgress ProgressLines() {
  auto last = std::make_shared<std::string>();
  return [last](std::string_view step, double done) {
    if (*last == step) return;
    *last = step;
    std::cerr << "  " << std::lround(done * 100) << "%  " << step << '\n';
  };
}

int MakeDemo(const DemoArguments& arguments) {
  books::DemoOptions options = arguments.options;
  options.size = *books::DemoSizeOf(arguments.size);  // one of the three, as the option's check has seen to
  try {
    books::MakeDemoBook(arguments.file, options, arguments.quiet ? books::DemoProgress() : ProgressLines());
  } catch (const platform::Error& error) {
    throw UsageError(error.Description());
  }
  return 0;
}

}  // namespace

void AddDemoCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<DemoArguments>();
  CLI::App* command = app.add_subcommand("demo", "Make the stock book of an invented trading company.");
  command->add_option("file", arguments->file, "The book to make")->required();
  command->add_option("--size", arguments->size, "How large the company is")
      ->check(CLI::IsMember({"small", "medium", "large"}))
      ->capture_default_str();
  command->add_option("--items", arguments->options.items, "The number of items, in place of the size's")
      ->check(CLI::Range(1, 100000));
  command
      ->add_option("--months", arguments->options.months,
                   "The number of months, the last one being this month")
      ->check(CLI::Range(1, 120));
  command->add_option("--seed", arguments->options.seed, "The same seed makes the same company")
      ->capture_default_str();
  command->add_flag("--force", arguments->options.replace, "Replace a book that is there already");
  command->add_flag("--quiet", arguments->quiet, "Say nothing while working");
  command->callback([arguments, &status] { status = MakeDemo(*arguments); });
}

}  // namespace cli
